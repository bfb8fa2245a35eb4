// Import and export of the pages of records as delimited files.
#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

#include "model/base/csv.h"
#include "model/services/files.h"
#include "model/services/report.h"
#include "technology/importcsv.h"
#include "technology/recordpage.h"

/// By binder. The first column is the name, in records of owned rows that of the owner.
std::vector<CRecordPage::FileColumns> CRecordPage::AllFileColumns() const {
  std::vector<FileColumns> all;
  for (const SRowBinder& binder : m_binders) {
    all.emplace_back();
    for (const CColumn& column : binder.fileColumns.empty() ? binder.columns : binder.fileColumns)
      if (column.inFile) all.back().push_back(&column);
  }
  return all;
}

void CRecordPage::OnExport() {
  static std::map<unsigned, CString> lastUsed;  // by page, for the life of the program
  CString& proposed = lastUsed.try_emplace(m_options.exportName, TextOf(m_options.exportName)).first->second;
  const auto path = UserInterface().ChooseFile(
      {SFileChooser::EKind::Save, proposed, TextOf(Text::CsvExtension), TextOf(Text::CsvFilter)});
  if (!path) return;
  proposed = *path;
  const std::vector<FileColumns> columns = AllFileColumns();
  CCsvWriter file(CImportCSV::GetCSVSeparator());
  for (const CColumn* column : columns.front()) file.Quoted(TextOf(column->header));
  file.EndRecord();
  CString text;
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!m_grid.IsPresent(row)) continue;
    const CRecordBase& values = ValuesOf(row);
    const FileColumns& ofRow = columns[static_cast<std::size_t>(m_grid.Row(row).binder)];
    for (const CColumn* column : ofRow) {
      text.clear();
      if (column == ofRow.front()) {
        file.Quoted(ValuesOf(m_grid.OwnerRow(row)).RecordName());
      } else if (!column->IsWritten(values)) {
        file.Plain(text);
      } else {
        column->AppendFileText(text, values, UserUnits());
        column->IsQuoted() ? file.Quoted(text) : file.Plain(text);
      }
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

struct CRecordPage::SFileRecord {
  const CStringArray& fields;
  int row;         // the number of the record, as checks of rows take it
  CString number;  // and as people read it
  const FileColumns& columns;
};

struct CRecordPage::SImport {
  CReportFile& report;
  std::vector<FileColumns> columns;
  // Of an import into the rows: those of the page's records by name, and what gets rows behind those of its owner.
  std::unordered_map<CString, int> rows{};
  std::map<int, std::vector<std::unique_ptr<CRecordBase>>> owned{};
};

void CRecordPage::OnImport() {
  CReportFile report(&m_design, Text::ImportProblems);
  report.Open();
  SImport import{report, AllFileColumns()};
  CStringArray headers;
  for (const CColumn* column : import.columns.front()) headers.push_back(TextOf(column->header));
  for (int row = 1; m_options.importsToRows && row < m_grid.GetRowCount(); ++row)
    if (m_grid.IsPresent(row) && !m_grid.Row(row).IsOwned()) import.rows.emplace(ValuesOf(row).RecordName(), row);
  if (m_options.writeLevel) m_design.StartNestedUndoLevel(m_options.writeLevel);
  const CSVImportResult result = CImportCSV::Import(
      headers,
      [&](const CStringArray& fields, std::size_t number) {
        const bool isOwned = m_binders.size() > 1 && IsOwnedInFile(fields);
        const SFileRecord record{fields, static_cast<int>(number), IntText(static_cast<std::int64_t>(number)),
                                 import.columns[isOwned ? 1 : 0]};
        m_options.importsToRows ? ImportRow(record, import) : ImportRecord(record, import);
      },
      [&](std::size_t number, const CString& reason) {
        report.Write(Text::RecordUnusable, IntText(static_cast<std::int64_t>(number)), reason);
      });
  if (m_options.writeLevel) m_design.EndNestedUndoLevel(m_options.writeLevel);
  report.Close();
  if (result != CSVImportResult::Ok) return;
  CAppError::SetLastError(0);
  m_options.importsToRows ? InsertOwned(import) : RefillAfterImport();
  if (std::exchange(m_imported, 0) > 0) {
    FinishWriting();
    CancelToClose();
  }
  report.View();
}

namespace {
/// Why a record was refused, without the number of a row: a record of a file has none.
CString ReasonFor(const CString& record) {
  if (!CAppError::HasLastError()) return TextOf(Text::ImportDeclined);  // the answer to a question
  CString reason = CAppError::GetLastErrorString();
  const CString row = TextOf(Text::RowPrefix, CStringArray{record});
  if (reason.starts_with(row)) reason.erase(0, row.size());
  return reason;
}
}  // namespace

bool CRecordPage::ReadRecord(const SFileRecord& record, const CRecordBase* present, CRecordBase& values,
                             SImport& import) {
  const CStringArray& fields = record.fields;
  if (fields.size() != record.columns.size()) {
    import.report.Write(
        Text::RecordUnusable, record.number,
        TextOf(Text::WrongFieldCount, CStringArray{IntText(static_cast<std::int64_t>(fields.size())),
                                                   IntText(static_cast<std::int64_t>(record.columns.size()))}));
    return false;
  }
  PrepareImport(values);
  bool good = true;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const CColumn& column = *record.columns[i];
    if (!column.field || (column.written && fields[i].empty())) continue;
    if (column.readOnly && present && column.readOnly(*present)) continue;
    const bool isRead = column.ReadFileText(fields[i], values, m_design);
    const bool isKept = present && column.IsEqual(*present, values);
    if (isRead && (isKept || !column.refused || !column.refused(values))) continue;
    good = false;
    if (column.importError == Text::RecordUnusable) {
      import.report.Write(Text::RecordUnusable, record.number,
                          TextOf(Text::ImportValueInvalid, CStringArray{fields[i], TextOf(column.header)}));
    } else {
      import.report.WriteText(column.importError, {record.number, fields[i]});
    }
  }
  if (!good) return false;
  if (!present && values.Kind().nameField && !IsNewName(fields[0])) {
    import.report.Write(Text::RecordUnusable, record.number, TextOf(Text::ImportNameInvalid, CStringArray{fields[0]}));
    return false;
  }
  AdjustImport(present, values);
  return true;
}

/// Styles of another design that are built in there come as such.
bool CRecordPage::IsNewName(const CString& name) const {
  if (m_options.validName(name)) return true;
  return m_options.styles && name.size() > 2 && name.starts_with('[') && name.ends_with(']') &&
         m_options.validName(name.substr(1, name.size() - 2));
}

bool CRecordPage::CheckImport(const SFileRecord& record, CRecordBase* present, const CRecordBase& values,
                              SImport& import) {
  CAppError::SetLastError(0);
  if (CheckRow({record.row, present, values, EPass::Import})) return true;
  import.report.Write(Text::RecordUnusable, record.number, ReasonFor(record.number));
  return false;
}

namespace {
/// Whether a record is the one that a file means: the field behind the name says so among those of one owner.
bool IsMeant(const CRecordBase& owned, const CColumn& column, const CString& field, const CUnits& units) {
  CString text;
  column.AppendFileText(text, owned, units);
  return text == field;
}
}  // namespace

int CRecordPage::FindOwned(const SFileRecord& record, int owner) const {
  for (int row = owner + 1; row < m_grid.OwnedEnd(owner); ++row)
    if (m_grid.IsPresent(row) && IsMeant(ValuesOf(row), *record.columns[1], record.fields[1], UserUnits())) return row;
  return 0;
}

void CRecordPage::ImportRow(const SFileRecord& record, SImport& import) {
  const bool isOwned = &record.columns != &import.columns.front();
  if (!isOwned && IsOwnedInFile(record.fields))
    return import.report.Write(Text::RecordUnusable, record.number, TextOf(Text::ExceptionNotPossible));
  const auto named = import.rows.find(record.fields[0]);
  int row = named == import.rows.end() ? 0 : named->second;
  std::unique_ptr<CRecordBase>* toCome = nullptr;  // a draft of this import that has no row yet
  if (isOwned) {
    if (row == 0) return import.report.WriteText(Text::RecordPadStyleUnknown, {record.number, record.fields[0]});
    for (auto& draft : import.owned[row])
      if (IsMeant(*draft, *record.columns[1], record.fields[1], UserUnits())) toCome = &draft;
    row = FindOwned(record, row);
  }
  const CRecordBase* const present = row ? &ValuesOf(row) : toCome ? toCome->get() : nullptr;
  std::unique_ptr<CRecordBase> values = present ? present->Clone() : isOwned ? m_binders[1].kind.make() : MakeNew();
  if (!ReadRecord(record, present, *values, import)) return;
  const auto isEqual = [&](const CColumn* column) { return !column->field || column->IsEqual(*present, *values); };
  if (present && std::all_of(record.columns.begin(), record.columns.end(), isEqual)) return;
  if (!CheckImport(record, row ? m_grid.GetItemData(row) : nullptr, *values, import)) return;
  if (row) {
    TakeDraft(row, std::move(values));
  } else if (toCome) {
    *toCome = std::move(values);
  } else if (isOwned) {
    import.owned[named->second].push_back(std::move(values));
  } else {
    row = AppendRow(nullptr, std::move(values));
    m_grid.SetRowModified(row);
    import.rows.emplace(record.fields[0], row);
  }
  SetModified();
}

/// Gives the new owned records their rows, from below, so that the rows above stay where they are.
void CRecordPage::InsertOwned(SImport& import) {
  for (auto owner = import.owned.rbegin(); owner != import.owned.rend(); ++owner)
    for (auto& draft : owner->second)
      m_grid.SetRowModified(AppendRow(nullptr, std::move(draft), m_grid.OwnedEnd(owner->first)));
  Changed();
}

void CRecordPage::ImportRecord(const SFileRecord& record, SImport& import) {
  CRecordBase* const present = m_home.FindRecord(record.fields[0]);
  std::unique_ptr<CRecordBase> values = present ? present->Clone() : MakeNew();
  if (!ReadRecord(record, present, *values, import)) return;
  if (!CheckImport(record, present, *values, import)) return;
  ++m_imported;
  if (present) {
    m_taken.insert(present);
    const CRecordBase* const above = present->Previous();
    for (const CColumn* column : record.columns)
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

/// The columns in which an import can change something: those of files, and those that follow from others.
std::vector<bool> CRecordPage::ColumnsOfFiles() const {
  std::vector<bool> changes;
  const std::vector<FileColumns> files = AllFileColumns();
  for (const CColumn& column : m_binders.front().columns)
    changes.push_back(column.shown || column.empty || column.enabledAtFill || column.enabledOnChange ||
                      std::any_of(files.front().begin(), files.front().end(),
                                  [&](const CColumn* inFile) { return inFile->field == column.field; }));
  return changes;
}

void CRecordPage::RefillRow(int row, const std::vector<bool>& columns) {
  for (int col = 0; col < m_grid.GetColumnCount(); ++col)
    if (columns[static_cast<std::size_t>(col)] && !m_grid.Cell(row, col).modified) FillCell(row, col, false);
}

/// Shows what is in the design now. Cells that the person modified keep their edit, rows keep their order; a new record
/// gets a row behind that of the record before it.
void CRecordPage::RefillAfterImport() {
  MoveReplacedRows();
  std::unordered_map<const CRecordBase*, int> rows;
  rows.reserve(static_cast<std::size_t>(m_grid.GetRowCount()));
  for (int row = 1; row < m_grid.GetRowCount(); ++row)
    if (m_grid.GetItemData(row)) rows.emplace(m_grid.GetItemData(row), row);
  RefreshDrafts();
  const std::vector<bool> written = ColumnsOfFiles();
  std::map<int, std::vector<CRecordBase*>> added;  // by the row that they stand behind
  int behind = m_options.styles ? m_grid.GetRowCount() - 1 : 0;
  for (CRecordBase* record = m_home.FirstRecord(); record; record = record->Next()) {
    const auto at = rows.find(record);
    if (at == rows.end()) {
      added[behind].push_back(record);
      continue;
    }
    if (!m_options.styles) behind = at->second;
    if (m_taken.contains(record) && !m_grid.IsPresent(at->second)) {  // the file wants it to be
      ShowRow(at->second);
      m_merged.erase(record);
    }
    if (m_taken.contains(record)) RefillRow(at->second, written);
  }
  RefreshMarks();
  RefreshShown();
  for (auto at = added.rbegin(); at != added.rend(); ++at) {
    int row = at->first;
    for (CRecordBase* record : at->second) AppendRow(record, nullptr, ++row);
  }
  m_taken.clear();
  Changed();
}
