// Import and export of the pages of records as delimited files.
#include <map>
#include <utility>

#include "model/base/csv.h"
#include "model/services/files.h"
#include "model/services/report.h"
#include "technology/importcsv.h"
#include "technology/recordpage.h"

std::vector<const CColumn*> CRecordPage::FileColumns() const {
  std::vector<const CColumn*> columns;
  for (const CColumn& column : m_fileColumns.empty() ? m_columns : m_fileColumns)
    if (column.field && column.inFile) columns.push_back(&column);
  return columns;
}

void CRecordPage::OnExport() {
  static std::map<unsigned, CString> lastUsed;  // by page, for the life of the program
  CString& proposed = lastUsed.try_emplace(m_options.exportName, TextOf(m_options.exportName)).first->second;
  const auto path = UserInterface().ChooseFile({SFileChooser::EKind::Save, proposed, TextOf(7560), TextOf(7561)});
  if (!path) return;
  proposed = *path;
  const std::vector<const CColumn*> columns = FileColumns();
  CCsvWriter file(CImportCSV::GetCSVSeparator());
  for (const CColumn* column : columns) file.Quoted(TextOf(column->header));
  file.EndRecord();
  CString text;
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!m_grid.IsPresent(row)) continue;
    for (const CColumn* column : columns) {
      text.clear();
      column->AppendFileText(text, ValuesOf(row), UserUnits());
      column->IsQuoted() ? file.Quoted(text) : file.Plain(text);
    }
    file.EndRecord();
  }
  CString error;
  if (!WriteTextFile(*path, file.Text(), error)) {
    CAppError::ReportError(error);
    return;
  }
  UserInterface().OpenFile(*path);
}

void CRecordPage::OnImport() {
  CReportFile report(&m_design, 20050);
  report.Open();
  CStringArray headers;
  for (const CColumn* column : FileColumns()) headers.push_back(TextOf(column->header));
  if (m_options.writeLevel) m_design.StartNestedUndoLevel(m_options.writeLevel);
  const CSVImportResult result = CImportCSV::Import(
      headers, [&](const CStringArray& fields, std::size_t number) { ImportRecord(fields, number, report); },
      [&](std::size_t number, const CString& reason) {
        report.Write(7669, IntText(static_cast<std::int64_t>(number)), reason);
      });
  if (m_options.writeLevel) m_design.EndNestedUndoLevel(m_options.writeLevel);
  report.Close();
  if (result != CSVImportResult::Ok) return;
  CAppError::SetLastError(0);
  RefillAfterImport();
  if (std::exchange(m_imported, 0) > 0) {
    Written();
    CancelToClose();
  }
  report.View();
}

namespace {
/// Why a record was refused, without the number of a row: a record of a file has none.
CString ReasonFor(const CString& record) {
  if (!CAppError::HasLastError()) return TextOf(20054);  // the answer to a question
  CString reason = CAppError::GetLastErrorString();
  const CString row = TextOf(20055, CStringArray{record});
  if (reason.starts_with(row)) reason.erase(0, row.size());
  return reason;
}
}  // namespace

void CRecordPage::ImportRecord(const CStringArray& fields, std::size_t number, CReportFile& report) {
  const CString record = IntText(static_cast<std::int64_t>(number));
  const std::vector<const CColumn*> columns = FileColumns();
  if (fields.size() != columns.size()) {
    report.Write(7669, record,
                 TextOf(20051, CStringArray{IntText(static_cast<std::int64_t>(fields.size())),
                                            IntText(static_cast<std::int64_t>(columns.size()))}));
    return;
  }
  CRecordBase* const present = m_home.FindRecord(fields[0]);
  std::unique_ptr<CRecordBase> values = present ? present->Clone() : MakeNew();
  bool good = true;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const CColumn& column = *columns[i];
    if (column.readOnly && present && column.readOnly(*present)) continue;
    const bool isRead = column.ReadFileText(fields[i], *values, m_design);
    const bool isKept = present && column.IsEqual(*present, *values);
    if (isRead && (isKept || !column.refused || !column.refused(*values))) continue;
    good = false;
    if (column.importError == 7669) {
      report.Write(7669, record, TextOf(20053, CStringArray{fields[i], TextOf(column.header)}));
    } else {
      report.WriteText(column.importError, {record, fields[i]});
    }
  }
  if (!good) return;
  if (!present && !m_options.validName(fields[0])) {
    report.Write(7669, record, TextOf(20052, CStringArray{fields[0]}));
    return;
  }
  AdjustImport(present, *values);
  CAppError::SetLastError(0);
  if (!CheckRow({static_cast<int>(number), present, *values, EPass::Import})) {
    report.Write(7669, record, ReasonFor(record));
    return;
  }
  ++m_imported;
  if (present) {
    const CRecordBase* const above = present->Previous();
    for (const CColumn* column : columns)
      if (!column->IsEqual(*present, *values)) WriteField(*present, *column->field, *values);
    PlaceImported(*present);
    if (present->Previous() != above) m_replaced.insert(present);
    return;
  }
  CRecordBase& added = m_home.Append(std::move(values));
  PlaceImported(added);
  Added(added);
}

/// Moves the rows of records that the import put elsewhere behind the row of the record that stands before them now.
void CRecordPage::MoveReplacedRows() {
  if (!m_options.ordered || m_replaced.empty()) return m_replaced.clear();
  std::map<const CRecordBase*, int> rows;
  for (int row = 1; row < m_grid.GetRowCount(); ++row) rows.emplace(m_grid.GetItemData(row), row);
  std::map<int, std::vector<int>> followers;  // by the row that they go behind
  int behind = 0;
  for (const CRecordBase* record = m_home.FirstRecord(); record; record = record->Next()) {
    const auto at = rows.find(record);
    if (at == rows.end()) continue;
    if (m_replaced.contains(record)) {
      followers[behind].push_back(at->second);
    } else {
      behind = at->second;
    }
  }
  std::vector<int> order;
  for (int row = 0; row < m_grid.GetRowCount(); ++row) {
    if (row > 0 && !m_replaced.contains(m_grid.GetItemData(row))) order.push_back(row);
    const auto at = followers.find(row);
    if (at != followers.end()) order.insert(order.end(), at->second.begin(), at->second.end());
  }
  m_replaced.clear();
  m_grid.Reorder(order);
}

/// Shows what is in the design now. Cells that the person modified keep their edit, rows keep their order; a new record
/// gets a row behind that of the record before it.
void CRecordPage::RefillAfterImport() {
  MoveReplacedRows();
  std::map<const CRecordBase*, int> rows;
  for (int row = 1; row < m_grid.GetRowCount(); ++row)
    if (m_grid.GetItemData(row)) rows.emplace(m_grid.GetItemData(row), row);
  RefreshDrafts();
  std::map<int, std::vector<CRecordBase*>> added;  // by the row that they stand behind
  int behind = m_options.styles ? m_grid.GetRowCount() - 1 : 0;
  for (CRecordBase* record = m_home.FirstRecord(); record; record = record->Next()) {
    const auto at = rows.find(record);
    if (at == rows.end()) {
      added[behind].push_back(record);
      continue;
    }
    if (!m_options.styles) behind = at->second;
    for (int col = 0; col < m_grid.GetColumnCount(); ++col)
      if (!m_grid.Cell(at->second, col).modified) FillCell(at->second, col, false);
  }
  for (auto at = added.rbegin(); at != added.rend(); ++at) {
    int row = at->first;
    for (CRecordBase* record : at->second) AppendRow(record, nullptr, ++row);
  }
  Changed();
}
