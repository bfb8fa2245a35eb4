#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "bench/table.h"

namespace {

constexpr const char* kOurs = "ours: ";
constexpr const char* kReference = "reference: ";

std::vector<SRow> AllRows() {
  std::vector<SRow> rows;
  for (const std::span<const SRow> part : {ModelRows(), LengthRows(), PageRows(), FileRows()})
    rows.insert(rows.end(), part.begin(), part.end());
  return rows;
}

double Median(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

std::string Number(const char* format, double value) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), format, value);
  return text.data();
}

/// Collects the figures of all repetitions and prints the table when they are complete.
class CTable : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred) std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
      if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
      const auto amount = run.counters.find(kAmount);
      m_figures[run.run_name.function_name].push_back(
          amount != run.counters.end() ? static_cast<double>(amount->second)
                                       : run.cpu_accumulated_time * 1e9 / static_cast<double>(run.iterations));
    }
  }
  void Finalize() override {
    std::printf("%-58s %12s %12s %7s  %s\n", "operation", "ours", "reference", "ratio", "goal");
    for (const SRow& row : AllRows()) {
      const double ours = OfOneItem(kOurs, row);
      const double reference = OfOneItem(kReference, row);
      const std::string unit = std::string("%.2f ") + row.unit;
      if (ours == 0) continue;  // filtered out
      std::string goal;
      if (row.mostRatio > 0) goal = Number("<= %.3g x", row.mostRatio);
      if (row.mostTime > 0) goal += Number(goal.empty() ? "<= %.3g ns" : ", <= %.3g ns", row.mostTime);
      const bool missed = (row.mostRatio > 0 && reference > 0 && ours > row.mostRatio * reference) ||
                          (row.mostTime > 0 && ours > row.mostTime);
      std::printf("%-58s %12s %12s %7s  %s%s\n", row.operation, Number(unit.c_str(), ours).c_str(),
                  reference > 0 ? Number(unit.c_str(), reference).c_str() : "-",
                  reference > 0 ? Number("%.2f", ours / reference).c_str() : "-", goal.empty() ? "-" : goal.c_str(),
                  missed ? "  MISSED" : "");
    }
  }

 private:
  /// 0 when the row has no such side or was filtered out.
  double OfOneItem(const char* side, const SRow& row) const {
    const auto at = m_figures.find(std::string(side) + row.operation);
    return at == m_figures.end() ? 0 : Median(at->second) / row.items;
  }
  std::map<std::string, std::vector<double>> m_figures;  // of one iteration: nanoseconds, or amounts
};

}  // namespace

int main(int argc, char** argv) {
  // What the user types comes last and wins.
  std::vector<std::string> arguments = {argv[0], "--benchmark_enable_random_interleaving=true",
                                        "--benchmark_repetitions=7", "--benchmark_min_time=0.03"};
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  std::vector<char*> pointers;
  for (std::string& one : arguments) pointers.push_back(one.data());
  int count = static_cast<int>(pointers.size());
  benchmark::Initialize(&count, pointers.data());
  if (benchmark::ReportUnrecognizedArguments(count, pointers.data())) return 1;
  for (const SRow& row : AllRows()) {
    benchmark::RegisterBenchmark((kOurs + std::string(row.operation)).c_str(), row.ours);
    if (row.reference) benchmark::RegisterBenchmark((kReference + std::string(row.operation)).c_str(), row.reference);
  }
  CTable table;
  benchmark::RunSpecifiedBenchmarks(&table);
  return 0;
}
