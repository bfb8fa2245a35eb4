// Several cells entered at once: pasted, filled or toggled. Either all that can be edited fit, or nothing is entered;
// cells that cannot be edited are left as they are, and counted.
#pragma once
#include <QString>
#include <vector>

#include "model/controls/grid.h"

class CGridEntries {
 public:
  explicit CGridEntries(CEditGrid& grid) : m_grid(grid) {}

  void Add(int row, int col, SInput input) { m_entries.push_back({row, col, std::move(input)}); }
  /// Adds what a text of the clipboard means to a cell. The row may be one that is yet to be added; `like` is a row
  /// of the same kind, or the row itself.
  void AddText(int row, int col, const QString& text, int like);
  bool IsEmpty() const { return m_entries.empty(); }

  /// False, with the reason in `why`, when a cell cannot hold what is meant for it.
  bool Fit(QString& why) const;
  /// Enters everything, and returns how many cells were left as they were because they cannot be edited.
  int Enter();

 private:
  struct SEntry {
    int row, col;
    SInput input;
    int like = 0;  // row that tells what fits one which is not there yet
  };
  bool IsAlready(const SEntry& entry) const;

  CEditGrid& m_grid;
  std::vector<SEntry> m_entries;
};
