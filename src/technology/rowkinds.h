// The kinds of rows in one grid: the records of a page, and those that they own, each with columns of its own.
#pragma once
#include "technology/columns.h"

/// What the rows of one kind of record are made of.
struct SRowKind {
  const CKind& kind;
  std::vector<CColumn> grid;  // as many as the grid has
  std::vector<CColumn> form;
  std::vector<CColumn> file;
  int cursorColumn = -1;            // where the cursor goes: the first one with a field
  std::vector<int> shownColumns{};  // of the grid, that show something of another record
};

class CRowKinds {
 public:
  /// One list says what stands in the grid, in the form and in files.
  void Add(const CKind& kind, std::vector<CColumn> columns);
  /// Where form or files hold other fields than that list; columns that are not for them are left out.
  void SetForm(const CKind& kind, std::vector<CColumn> columns);
  void SetFile(const CKind& kind, std::vector<CColumn> columns);

  int Count() const { return static_cast<int>(m_kinds.size()); }
  const SRowKind& At(int index) const { return m_kinds[static_cast<std::size_t>(index)]; }
  int IndexOf(const CKind& kind) const { return Count() > 1 && &m_kinds[1].kind == &kind ? 1 : 0; }
  const SRowKind& Of(const CKind& kind) const { return At(IndexOf(kind)); }
  /// The column of the grid that shows a field or stands for it, -1 for a field without one.
  int ColumnOf(const CField& field) const;
  /// Whether some column shows something of another record.
  bool ShowOtherRecords() const;
  /// Whether some cell shows the field itself.
  bool HasCell(const CField& field) const;

 private:
  static std::vector<CColumn> Resolved(const CKind& kind, std::vector<CColumn> columns);
  std::vector<SRowKind> m_kinds;  // the page's records, then those that they own
};
