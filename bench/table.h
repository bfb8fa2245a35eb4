// The table of goals: every operation beside the least work that gives the same result, measured in one run.
//
// A row is one entry. Machines differ and are shared, so only the ratio of the medians counts.
#pragma once
#include <benchmark/benchmark.h>

#include <span>
#include <vector>

struct SRow {
  using Run = void (*)(benchmark::State&);
  const char* operation;
  double items;         // handled by one iteration of both; times are shown for one
  Run ours;             // through the same classes that the dialogs use
  Run reference;        // null: a peer that is not here, shown as "-"
  double mostRatio;     // ours / reference; 0: no goal
  double mostTime = 0;  // nanoseconds an item; 0: no goal
  const char* unit = "ns";
};

/// A row that is no time: what one item takes in the row's unit is this counter instead.
inline constexpr const char* kAmount = "amount";

/// The rows of each part of the program.
std::span<const SRow> ModelRows();
std::span<const SRow> LengthRows();
std::span<const SRow> PageRows();
std::span<const SRow> FileRows();

/// What the writing of scalars is measured by: a 32-byte record for each field appended to blocks that are kept.
void AppendToBlockList(benchmark::State& state, const std::vector<int*>& fields);

/// The same by the classes of Qt; each null where Qt is not there.
struct SQtPeers {
  SRow::Run openTable = nullptr;
  SRow::Run changeUnits = nullptr;
  SRow::Run changeScalar = nullptr;
  SRow::Run rollBack = nullptr;
};
const SQtPeers& QtPeers();
