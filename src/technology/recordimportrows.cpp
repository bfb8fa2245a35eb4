// What an import into the design shows in the rows afterwards.
#include <algorithm>

#include "technology/recordimport.h"
#include "technology/techpage.h"

/// The rows of the records of the design, by the places of these; 0 for a record without one.
std::vector<int> CRecordImport::RowsByPlace() const {
  const CCollectionBase& home = m_rows.Home();
  std::vector<int> rows(home.Count());
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    m_rows.FetchAhead(row);
    const SGridRow& line = m_grid.Row(row);
    if (line.record && !line.IsOwned() && line.record->IsIn()) rows[home.PlaceOf(*line.record)] = row;
  }
  return rows;
}

/// Moves the rows of records that the import put elsewhere behind the row of the record that stands before them now.
void CRecordImport::MoveReplacedRows() {
  const std::vector<int> rowAt = RowsByPlace();
  std::map<int, std::vector<int>> followers;  // by the row that they go behind
  int behind = 0;
  std::size_t place = 0;
  for (const CRecordBase* record = m_rows.Home().FirstRecord(); record; record = record->Next()) {
    const int row = rowAt[place++];
    if (row == 0) continue;
    if (m_replaced.contains(record)) {
      followers[behind].push_back(row);
    } else {
      behind = row;
    }
  }
  std::vector<int> order;
  for (int row = 0; row < m_grid.GetRowCount(); ++row) {
    if (row > 0 && !m_replaced.contains(m_grid.GetItemData(row))) order.push_back(row);
    const auto at = followers.find(row);
    if (at != followers.end()) order.insert(order.end(), at->second.begin(), at->second.end());
  }
  m_grid.Reorder(order);
}

/// The columns in which an import can change something: those of files, and those that follow from others.
std::vector<int> CRecordImport::ColumnsOfFiles() const {
  const SRowKind& kind = m_rows.Kinds().At(0);
  std::vector<int> columns;
  for (std::size_t col = 0; col < kind.grid.size(); ++col) {
    const CColumn& column = kind.grid[col];
    if (column.shown || column.empty || column.enabledAtFill || column.enabledOnChange ||
        std::ranges::any_of(kind.file, [&](const CColumn& one) { return one.field == column.field; }))
      columns.push_back(static_cast<int>(col));
  }
  return columns;
}

/// Shows what is in the design now. Cells that the person modified keep their edit, rows keep their order; a new record
/// gets a row behind that of the record before it. A row that was deleted or merged here, and that the file has, is
/// shown again.
void CRecordImport::ShowInRows() {
  if (m_rows.Options().ordered && !m_replaced.empty()) MoveReplacedRows();
  const CCollectionBase& home = m_rows.Home();
  const std::vector<int> rowAt = RowsByPlace(), columns = ColumnsOfFiles();
  const auto rowOf = [&](const CRecordBase* record) { return rowAt[home.PlaceOf(*record)]; };
  for (const CRecordBase* const record : m_taken)
    if (rowOf(record) > 0 && !m_grid.IsPresent(rowOf(record))) m_rows.Show(rowOf(record));
  m_rows.RefreshDrafts();
  for (const CRecordBase* const record : m_taken) {
    if (rowOf(record) == 0) continue;
    m_rows.FetchAhead(rowOf(record));
    m_rows.Refill(rowOf(record), columns);
  }
  m_rows.Refresh();
  if (std::ranges::find(rowAt, 0) != rowAt.end()) ShowNewRecords(rowAt);
}

void CRecordImport::ShowNewRecords(const std::vector<int>& rowAt) {
  const bool isAtEnd = m_rows.Options().styles;
  std::map<int, std::vector<CRecordBase*>> added;  // by the row that they stand behind
  int behind = isAtEnd ? m_grid.GetRowCount() - 1 : 0;
  std::size_t place = 0;
  for (CRecordBase* record = m_rows.Home().FirstRecord(); record; record = record->Next()) {
    const int row = rowAt[place++];
    if (row == 0) {
      added[behind].push_back(record);
    } else if (!isAtEnd) {
      behind = row;
    }
  }
  for (auto at = added.rbegin(); at != added.rend(); ++at) {
    int row = at->first;
    for (CRecordBase* record : at->second) m_rows.Append(record, nullptr, ++row);
  }
}
