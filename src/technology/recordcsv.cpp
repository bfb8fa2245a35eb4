// Import and export of the pages of records as delimited files.
#include <map>

#include "model/base/csv.h"
#include "model/services/files.h"
#include "model/services/report.h"
#include "technology/importcsv.h"
#include "technology/recordpage.h"

std::vector<int> CRecordPage::FileColumns() const {
  std::vector<int> columns;
  for (std::size_t col = 0; col < m_columns.size(); ++col)
    if (m_columns[col].field && m_columns[col].inFile) columns.push_back(static_cast<int>(col));
  return columns;
}

void CRecordPage::OnExport() {
  static std::map<unsigned, CString> lastUsed;  // by page, for the life of the program
  CString& proposed = lastUsed.try_emplace(m_options.exportName, TextOf(m_options.exportName)).first->second;
  const auto path = UserInterface().ChooseFile({SFileChooser::EKind::Save, proposed, TextOf(7560), TextOf(7561)});
  if (!path) return;
  proposed = *path;
  const std::vector<int> columns = FileColumns();
  CCsvWriter file(CImportCSV::GetCSVSeparator());
  for (const int col : columns) file.Quoted(m_grid.Column(col).title);
  file.EndRecord();
  CString text;
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!m_grid.IsPresent(row)) continue;
    for (const int col : columns) {
      text.clear();
      m_columns[static_cast<std::size_t>(col)].AppendFileText(text, ValuesOf(row), UserUnits());
      file.Quoted(text);
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
  for (const int col : FileColumns()) headers.push_back(m_grid.Column(col).title);
  const CSVImportResult result = CImportCSV::Import(
      headers, [&](const CStringArray& fields, std::size_t number) { ImportRecord(fields, number, report); },
      [&](std::size_t number, const CString& reason) {
        report.Write(7669, IntText(static_cast<std::int64_t>(number)), reason);
      });
  report.Close();
  if (result != CSVImportResult::Ok) return;
  CAppError::SetLastError(0);
  RefillAfterImport();
  Written();
  CancelToClose();
  report.View();
}

void CRecordPage::ImportRecord(const CStringArray& fields, std::size_t number, CReportFile& report) {
  const CString record = IntText(static_cast<std::int64_t>(number));
  const std::vector<int> columns = FileColumns();
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
    const CColumn& column = m_columns[static_cast<std::size_t>(columns[i])];
    if (column.readOnly && present && column.readOnly(*present)) continue;
    if (column.ReadFileText(fields[i], *values, m_design)) continue;
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
    report.Write(7669, record, CAppError::GetLastErrorString());
    return;
  }
  if (present) {
    for (const int col : columns) {
      const CField& field = *m_columns[static_cast<std::size_t>(col)].field;
      if (!field.type->equal(field.at(present->FieldsAddress()), field.at(values->FieldsAddress())))
        WriteField(*present, field, *values);
    }
    PlaceImported(*present);
    return;
  }
  CRecordBase& added = m_home.Append(std::move(values));
  PlaceImported(added);
  Added(added);
}

/// Shows what is in the design now. Cells that the person modified keep their edit, rows keep their order; a new record
/// gets a row behind that of the record before it.
void CRecordPage::RefillAfterImport() {
  std::map<const CRecordBase*, int> rows;
  for (int row = 1; row < m_grid.GetRowCount(); ++row)
    if (m_grid.GetItemData(row)) rows.emplace(m_grid.GetItemData(row), row);
  RefreshDrafts();
  std::map<int, std::vector<CRecordBase*>> added;  // by the row that they stand behind
  int behind = 0;
  for (CRecordBase* record = m_home.FirstRecord(); record; record = record->Next()) {
    const auto at = rows.find(record);
    if (at == rows.end()) {
      added[behind].push_back(record);
      continue;
    }
    behind = at->second;
    for (int col = 0; col < m_grid.GetColumnCount(); ++col)
      if (!m_grid.Cell(behind, col).modified) FillCell(behind, col, false);
  }
  for (auto at = added.rbegin(); at != added.rend(); ++at) {
    int row = at->first;
    for (CRecordBase* record : at->second) AppendRow(record, nullptr, ++row);
  }
  Changed();
}
