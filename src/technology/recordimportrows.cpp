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

void CRecordImport::FindPlaces(const CRecordBase& record) {
  const auto* const values = static_cast<const char*>(record.FieldsAddress());
  for (const CField& field : record.Kind().fields)
    m_places.push_back({&field, field.type, &field.As<char>(values) - values});
  const std::vector<CColumn>& columns = m_rows.Kinds().At(0).grid;
  for (std::size_t col = 0; col < columns.size(); ++col) {
    const CColumn& column = columns[col];
    if (column.shown || column.empty || column.enabledAtFill || column.enabledOnChange) {
      m_following.push_back(static_cast<int>(col));
    } else if (column.field) {
      m_places[static_cast<std::size_t>(column.field - record.Kind().fields.data())].col = static_cast<int>(col);
    }
  }
}

/// A record of the design and its row, 0 where it has none. Files mostly have records in the order of rows, so the next
/// row is looked at first.
CRecordBase* CRecordImport::FindInDesign(std::string_view name, int& row) {
  row = m_row + 1;
  CRecordBase* record = row < m_grid.GetRowCount() ? m_grid.GetItemData(row) : nullptr;
  m_rows.FetchAhead(row);
  if (!record || record->Home() != &m_rows.Home() || !record->IsIn() || record->RecordName() != name) {
    record = m_rows.Home().FindRecord(name);
    row = record ? RowOf(*record) : 0;
  }
  if (row > 0) m_row = row;
  return record;
}

int CRecordImport::RowOf(const CRecordBase& record) {
  if (m_rowOf.empty())
    for (int row = 1; row < m_grid.GetRowCount(); ++row) m_rowOf.emplace(m_grid.GetItemData(row), row);
  const auto at = m_rowOf.find(&record);
  return at == m_rowOf.end() ? 0 : at->second;
}

/// Shows what is in the design now, beyond what was shown as it was written. Cells that the person modified keep their
/// edit, rows keep their order; a new record gets a row behind that of the record before it. A row that was deleted or
/// merged here, and that the file has, is shown again.
void CRecordImport::ShowInRows() {
  for (const int row : m_toShow) m_rows.Show(row);
  if (m_rows.Options().ordered && !m_replaced.empty()) MoveReplacedRows();
  m_rows.Refresh();
  if (m_hasAdded) ShowNewRecords();
}

void CRecordImport::ShowNewRecords() {
  const std::vector<int> rowAt = RowsByPlace();
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
