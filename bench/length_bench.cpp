#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "bench/table.h"
#include "model/design/units.h"

namespace {

constexpr int kLengths = 10'000;

const std::vector<int>& Lengths() {
  static const std::vector<int> lengths = [] {
    std::mt19937 random(1);
    std::vector<int> some;
    for (int i = 0; i < kLengths; ++i) some.push_back(static_cast<int>(random() % 400'000'000));
    return some;
  }();
  return lengths;
}

const std::vector<CString>& Texts() {
  static const std::vector<CString> texts = [] {
    std::vector<CString> some;
    for (const int dsu : Lengths()) some.push_back(LengthText(dsu, CUnits(EUnitType::Millimetre, 3), false));
    return some;
  }();
  return texts;
}

void ToText(benchmark::State& state) {
  const CUnits units(EUnitType::Millimetre, 3);
  CString out;
  for (auto _ : state)
    for (const int dsu : Lengths()) {
      out.clear();
      AppendLength(out, dsu, units, false);
      benchmark::DoNotOptimize(out.data());
    }
}
void ToDigits(benchmark::State& state) {
  CString out;
  for (auto _ : state)
    for (const int dsu : Lengths()) {
      std::array<char, 12> digits{};
      char* at = digits.end();
      auto rest = static_cast<unsigned>(dsu);
      do *--at = static_cast<char>('0' + rest % 10);
      while ((rest /= 10) > 0);
      out.assign(at, digits.end());
      benchmark::DoNotOptimize(out.data());
    }
}
void ToTextByPrintf(benchmark::State& state) {
  std::array<char, 64> out{};
  for (auto _ : state)
    for (const int dsu : Lengths()) {
      std::snprintf(out.data(), out.size(), "%.3f", dsu / 1e6);
      benchmark::DoNotOptimize(out.data());
    }
}

void FromText(benchmark::State& state) {
  for (auto _ : state)
    for (const CString& text : Texts()) {
      int dsu = 0;
      ReadLength(text, EUnitType::Millimetre, dsu);
      benchmark::DoNotOptimize(dsu);
    }
}
void FromDigits(benchmark::State& state) {
  for (auto _ : state)
    for (const CString& text : Texts()) {
      int value = 0;
      for (const char c : text)
        if (c != '.') value = value * 10 + (c - '0');
      benchmark::DoNotOptimize(value);
    }
}
void FromTextByStrtod(benchmark::State& state) {
  for (auto _ : state)
    for (const CString& text : Texts()) {
      double value = std::strtod(text.c_str(), nullptr);
      benchmark::DoNotOptimize(value);
    }
}

}  // namespace

std::span<const SRow> LengthRows() {
  static constexpr SRow kRows[] = {
      {"Length to text / integer digits", kLengths, ToText, ToDigits, 2},
      {"Length to text / snprintf", kLengths, ToText, ToTextByPrintf, 0.1},
      {"Length from text / integer digits", kLengths, FromText, FromDigits, 2.5},
      {"Length from text / strtod", kLengths, FromText, FromTextByStrtod, 0.5},
  };
  return kRows;
}
