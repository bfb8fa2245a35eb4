#include "technology/rowkinds.h"

#include <algorithm>

std::vector<CColumn> CRowKinds::Resolved(const CKind& kind, std::vector<CColumn> columns) {
  for (CColumn& column : columns) column.Resolve(kind);
  return columns;
}

void CRowKinds::Add(const CKind& kind, std::vector<CColumn> columns) {
  columns = Resolved(kind, std::move(columns));
  SRowKind added{kind, {}, {}, {}};
  for (CColumn& column : columns) {
    if (column.inForm && column.field) added.form.push_back(column);
    if (column.inFile) added.file.push_back(column);
    if (column.inGrid) added.grid.push_back(std::move(column));
  }
  for (std::size_t col = 0; col < added.grid.size(); ++col) {
    const CColumn& column = added.grid[col];
    if (!column.field) continue;
    if (added.cursorColumn < 0) added.cursorColumn = static_cast<int>(col);
    if (column.IsReference() || (column.shown && column.editor != EEditor::Length))
      added.shownColumns.push_back(static_cast<int>(col));
  }
  assert(m_kinds.empty() || m_kinds.front().grid.size() == added.grid.size());
  m_kinds.push_back(std::move(added));
}

void CRowKinds::SetForm(const CKind& kind, std::vector<CColumn> columns) {
  std::erase_if(columns, [](const CColumn& column) { return !column.inForm; });
  m_kinds[static_cast<std::size_t>(IndexOf(kind))].form = Resolved(kind, std::move(columns));
}

void CRowKinds::SetFile(const CKind& kind, std::vector<CColumn> columns) {
  std::erase_if(columns, [](const CColumn& column) { return !column.inFile; });
  m_kinds[static_cast<std::size_t>(IndexOf(kind))].file = Resolved(kind, std::move(columns));
}

bool CRowKinds::ShowOtherRecords() const {
  return std::ranges::any_of(m_kinds, [](const SRowKind& one) { return !one.shownColumns.empty(); });
}

bool CRowKinds::HasCell(const CField& field) const {
  return std::ranges::any_of(m_kinds, [&](const SRowKind& one) {
    return std::ranges::any_of(one.grid, [&](const CColumn& column) { return column.field == &field; });
  });
}

int CRowKinds::ColumnOf(const CField& field) const {
  const auto find = [&](const auto& has) {
    for (const SRowKind& one : m_kinds)
      for (std::size_t col = 0; col < one.grid.size(); ++col)
        if (has(one, one.grid[col])) return static_cast<int>(col);
    return -1;
  };
  const int own = find([&](const SRowKind&, const CColumn& column) { return column.field == &field; });
  if (own >= 0) return own;
  return find([&](const SRowKind& one, const CColumn& column) {
    return std::ranges::any_of(column.alsoFor, [&](const SMember& other) { return other.In(one.kind) == &field; });
  });
}
