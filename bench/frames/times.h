#pragma once
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

/// How long each of several frames took.
struct STimes {
  std::vector<double> milliseconds;
  template <class Frame>
  STimes(int frames, const Frame& frame) {
    QElapsedTimer clock;
    for (int i = 0; i < frames; ++i) {
      clock.start();
      frame(i);
      milliseconds.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(milliseconds.begin(), milliseconds.end());
  }
  void Print(const char* what) const {
    const std::size_t n = milliseconds.size();
    std::printf("%-34s median %7.2f ms   95 %% %7.2f ms   worst %7.2f ms\n", what, milliseconds[n / 2],
                milliseconds[n * 95 / 100], milliseconds.back());
  }
};

/// The same for the technology dialog on a page of `rows` rows: opening it, keys pressed in it.
void MeasureDialog(int rows);
