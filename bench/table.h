// The table of goals: every operation beside the least work that gives the same result, measured in one run.
//
// A row is one entry. Machines differ and are shared, so only the ratio of the medians counts.
#pragma once
#include <benchmark/benchmark.h>

#include <span>

struct SRow {
  using Run = void (*)(benchmark::State&);
  const char* operation;
  double items;         // handled by one iteration of both; times are shown for one
  Run ours;             // through the same classes that the dialogs use
  Run reference;        // null: a peer that is not here, shown as "-"
  double mostRatio;     // ours / reference; 0: no goal
  double mostTime = 0;  // nanoseconds an item; 0: no goal
};

/// The rows of each part of the program.
std::span<const SRow> ModelRows();
std::span<const SRow> LengthRows();
