#include "technology/recordimport.h"

#include <algorithm>

#include "model/design/fieldtext.h"
#include "technology/techpage.h"

CRecordImport::CRecordImport(CRecordTable& rows, CReportFile& report)
    : m_rows(rows), m_grid(rows.Grid()), m_design(rows.Page().Design()), m_report(report), m_new(rows.MakeNew()) {}

bool CRecordImport::Run() {
  const bool intoRows = m_rows.Options().importsToRows;
  m_taken.resize(static_cast<std::size_t>(m_grid.GetRowCount()));
  m_rowOf.reserve(intoRows ? 0 : m_taken.size());
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!intoRows && m_grid.GetItemData(row)) m_rowOf.emplace(m_grid.GetItemData(row), row);
    if (intoRows && m_grid.IsPresent(row) && !m_grid.Row(row).IsOwned())
      m_named.emplace(m_rows.Values(row).RecordName(), row);
  }
  const CSVImportResult result = CImportCSV::Import(
      m_rows.FileHeaders(),
      [&](const CFileFields& fields, std::size_t number) {
        m_number = IntText(static_cast<std::int64_t>(number));
        Take(fields);
      },
      [&](std::size_t number, const CString& reason) {
        m_number = IntText(static_cast<std::int64_t>(number));
        Refuse(reason);
      });
  if (result != CSVImportResult::Ok) return false;
  intoRows ? InsertOwned() : ShowInRows();
  return m_isWritten;
}

void CRecordImport::Refuse(const CString& reason) { m_report.Write(Text::RecordUnusable, m_number, reason); }

void CRecordImport::RefuseField(const CColumn& column, std::string_view field) {
  const CString text(field);
  if (column.importError == Text::RecordUnusable) {
    Refuse(TextOf(Text::ImportValueInvalid, CStringArray{text, TextOf(column.Header())}));
  } else {
    m_report.WriteText(column.importError, {m_number, text});
  }
}

void CRecordImport::Take(const CFileFields& fields) {
  const auto owned = static_cast<std::size_t>(m_rows.Options().ownedInFile);
  const bool isOwned = owned > 0 && fields.size() > owned && !fields[owned].empty();
  if (isOwned && m_rows.Kinds().Count() == 1) return Refuse(TextOf(Text::ExceptionNotPossible));
  const SFileRecord record{fields, m_rows.Kinds().At(isOwned ? 1 : 0), isOwned};
  const std::size_t wanted = record.kind.file.size();
  if (fields.size() != wanted)
    return Refuse(TextOf(Text::WrongFieldCount, CStringArray{IntText(static_cast<std::int64_t>(fields.size())),
                                                             IntText(static_cast<std::int64_t>(wanted))}));
  m_rows.Options().importsToRows ? TakeIntoRows(record) : TakeIntoDesign(record);
}

// ---- Reading

/// The values of a record that differs from `present`, or is new; null when nothing differs or something is wrong,
/// which stands in the report by then.
std::unique_ptr<CRecordBase> CRecordImport::Read(const SFileRecord& record, const CRecordBase* present) {
  std::unique_ptr<CRecordBase> values = present ? nullptr : record.isOwned ? record.kind.kind.make() : m_new->Clone();
  bool good = true;
  for (std::size_t place = 0; place < record.fields.size(); ++place) good &= ReadField(record, place, present, values);
  if (!good) return nullptr;
  if (!present && values->Kind().nameField && !m_rows.IsNewName(values->RecordName())) {
    Refuse(TextOf(Text::ImportNameInvalid, CStringArray{values->RecordName()}));
    return nullptr;
  }
  if (values && m_rows.Options().settled != ESettled::None) m_rows.Rules().Settle(*values);
  return values;
}

bool CRecordImport::ReadField(const SFileRecord& record, std::size_t place, const CRecordBase* present,
                              std::unique_ptr<CRecordBase>& values) {
  const CColumn& column = record.kind.file[place];
  const std::string_view text = record.fields[place];
  const CRecordBase& now = values ? *values : *present;
  const bool saysNothing = text.empty() && column.fileTest && !column.emptyInFileIsZero;
  if (!column.field || saysNothing || (present && m_rows.IsReadOnly(column, *present)) ||
      (column.shown && column.IsOff(now)))
    return true;
  std::int64_t number = 0;
  const bool isZero = text.empty() && column.emptyInFileIsZero;
  const int unitType = m_design.GetUnits()->GetType();
  if (!isZero && !ReadFieldNumber(*column.field->type, text, m_design, unitType, number)) {
    RefuseField(column, text);
    return false;
  }
  const bool sets = column.alsoSets && !isZero;
  if (!sets && FieldHolds(*column.field, now, number, text)) return true;
  if (!values) values = present->Clone();
  if (sets) column.alsoSets(*values);
  StoreField(*column.field, *values, number, text);
  const bool isKept = present && FieldHolds(*column.field, *present, number, text);
  if (!isKept && column.refusedFromFile && column.refusedFromFile(*values)) {
    column.whyRefused ? Refuse(TextOf(column.whyRefused, CStringArray{CString(text)})) : RefuseField(column, text);
    return false;
  }
  m_rows.Rules().Follow(*column.field, present ? *present : *m_new, *values);
  return true;
}

/// Compares settled values with those of a record as they would be settled.
bool CRecordImport::IsSame(const CRecordBase& present, const CRecordBase& values) const {
  if (m_rows.Options().settled == ESettled::None) return HasEqualFields(present, values);
  const std::unique_ptr<CRecordBase> settled = present.Clone();
  m_rows.Rules().Settle(*settled);
  return HasEqualFields(*settled, values);
}

namespace {
/// A reason without the number of a row: a record of a file has none.
CString WithoutRow(CString reason, const CString& record) {
  const CString row = TextOf(Text::RowPrefix, CStringArray{record});
  if (reason.starts_with(row)) reason.erase(0, row.size());
  return reason;
}
}  // namespace

bool CRecordImport::IsAccepted(const SCheckedRow& row, const CRecordBase* present) {
  const CRecordRules& rules = m_rows.Rules();
  const auto check = [&](const SCheckedRow& one, CFindings& findings) {
    m_rows.Options().importsToRows ? rules.CheckValues(one, findings) : rules.Check(one, findings);
  };
  m_present = present;
  CFindings findings;
  check(row, findings);
  if (findings.IsEmpty()) return true;
  CFindings before;  // what was wrong already
  if (present) check({*present, row.record, *this, row.rows, row.row, row.ownerRow}, before);
  for (const SFinding& finding : findings.All()) {
    if (finding.kind == EFinding::Information) continue;
    if (std::ranges::any_of(before.All(), [&](const SFinding& old) { return old.SaysTheSame(finding); })) continue;
    const CString reason = WithoutRow(finding.Message(), m_number);
    if (finding.kind == EFinding::Refusal) return Refuse(reason), false;
    m_report.Write(Text::RecordTakenUnasked, m_number, reason);
  }
  return true;
}

std::span<const CRowContext::SOther> CRecordImport::All(const SCheckedRow& row) const {
  if (m_rows.Options().importsToRows) {
    const auto inRows = m_rows.All(row);
    m_others.assign(inRows.begin(), inRows.end());
    if (const auto toCome = m_owned.find(row.ownerRow); toCome != m_owned.end())
      for (const auto& draft : toCome->second)
        if (draft.get() != m_present) m_others.push_back({draft.get(), nullptr, 0});
    return m_others;
  }
  if (!std::exchange(m_othersKnown, true)) {
    m_others.clear();
    for (const CRecordBase* one = m_rows.Home().FirstRecord(); one; one = one->Next())
      m_others.push_back({one, one, 0});
  }
  return m_others;
}

const CRecordBase* CRecordImport::OwnerOf(const SCheckedRow& row) const {
  return row.ownerRow > 0 ? &m_rows.Values(row.ownerRow) : nullptr;
}

// ---- Into the rows

namespace {
/// Whether a record is the one that a file means: the field behind the name says so among those of one owner.
bool IsMeant(const CRecordBase& owned, const CColumn& column, std::string_view field, const CUnits& units) {
  CString text;
  column.AppendFileText(text, owned, units);
  return text == field;
}
}  // namespace

int CRecordImport::FindOwned(const SFileRecord& record, int owner) const {
  for (int row = owner + 1; row < m_grid.OwnedEnd(owner); ++row)
    if (m_grid.IsPresent(row) &&
        IsMeant(m_rows.Values(row), record.kind.file[1], record.fields[1], m_rows.Page().UserUnits()))
      return row;
  return 0;
}

/// A draft of this import that has no row yet, or null.
std::unique_ptr<CRecordBase>* CRecordImport::FindToCome(const SFileRecord& record, int owner) {
  for (auto& draft : m_owned[owner])
    if (IsMeant(*draft, record.kind.file[1], record.fields[1], m_rows.Page().UserUnits())) return &draft;
  return nullptr;
}

void CRecordImport::TakeIntoRows(const SFileRecord& record) {
  const CString name(record.fields[0]);
  const auto named = m_named.find(name);
  const int owner = named == m_named.end() ? 0 : named->second;
  if (record.isOwned && owner == 0) return m_report.WriteText(Text::RecordPadStyleUnknown, {m_number, name});
  std::unique_ptr<CRecordBase>* const toCome = record.isOwned ? FindToCome(record, owner) : nullptr;
  const int row = record.isOwned ? FindOwned(record, owner) : owner;
  const CRecordBase* const present = row ? &m_rows.Values(row) : toCome ? toCome->get() : nullptr;
  std::unique_ptr<CRecordBase> values = Read(record, present);
  if (!values || (present && IsSame(*present, *values))) return;
  const SCheckedRow checked{
      *values, row ? m_grid.GetItemData(row) : nullptr, *this, nullptr, row, record.isOwned ? owner : 0};
  if (!IsAccepted(checked, present)) return;
  if (row) {
    m_rows.TakeDraft(row, std::move(values));
  } else if (toCome) {
    *toCome = std::move(values);
  } else if (record.isOwned) {
    m_owned[owner].push_back(std::move(values));
  } else {
    m_named.emplace(name, m_rows.Append(nullptr, std::move(values)));
  }
  m_rows.Page().EditedRows();
}

/// Gives the new owned records their rows, from below, so that the rows above stay where they are.
void CRecordImport::InsertOwned() {
  for (auto owner = m_owned.rbegin(); owner != m_owned.rend(); ++owner)
    for (auto& draft : owner->second) m_rows.Append(nullptr, std::move(draft), m_grid.OwnedEnd(owner->first));
}

// ---- Into the design

void CRecordImport::TakeIntoDesign(const SFileRecord& record) {
  CRecordBase* const present = m_rows.Home().FindRecord(record.fields[0]);
  const std::size_t before = m_report.Lines().size();
  std::unique_ptr<CRecordBase> values = Read(record, present);
  if (m_report.Lines().size() > before) return;
  const CRecordBase& judged = values ? *values : *present;
  if (!IsAccepted({judged, present, *this}, present)) return;
  m_isWritten = true;
  CRecordRules& rules = m_rows.Rules();
  if (!present) {
    CRecordBase& added = m_rows.Home().Append(std::move(values));
    rules.PlaceImported(added);
    rules.Added(added);
    m_othersKnown = false;
    return;
  }
  const auto row = m_rowOf.find(present);
  if (row != m_rowOf.end()) m_taken[static_cast<std::size_t>(row->second)] = true;
  if (!values || IsSame(*present, *values)) return;
  const CRecordBase* const above = present->Previous();
  for (const CField& field : record.kind.kind.fields)
    if (!field.HasEqual(*present, *values)) rules.WriteField(*present, field, *values);
  rules.PlaceImported(*present);
  if (present->Previous() != above) m_replaced.insert(present);
}

/// Moves the rows of records that the import put elsewhere behind the row of the record that stands before them now.
void CRecordImport::MoveReplacedRows() {
  std::map<int, std::vector<int>> followers;  // by the row that they go behind
  int behind = 0;
  for (const CRecordBase* record = m_rows.Home().FirstRecord(); record; record = record->Next()) {
    const auto at = m_rowOf.find(record);
    if (at == m_rowOf.end()) continue;
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
  m_grid.Reorder(order);
  std::vector<bool> taken(m_taken.size());
  for (std::size_t i = 0; i < order.size(); ++i) taken[i + 1] = m_taken[static_cast<std::size_t>(order[i])];
  m_taken = std::move(taken);
}

/// The columns in which an import can change something: those of files, and those that follow from others.
std::vector<bool> CRecordImport::ColumnsOfFiles() const {
  const SRowKind& kind = m_rows.Kinds().At(0);
  std::vector<bool> changes;
  for (const CColumn& column : kind.grid)
    changes.push_back(column.shown || column.empty || column.enabledAtFill || column.enabledOnChange ||
                      std::ranges::any_of(kind.file, [&](const CColumn& one) { return one.field == column.field; }));
  return changes;
}

/// Shows what is in the design now. Cells that the person modified keep their edit, rows keep their order; a new record
/// gets a row behind that of the record before it. A row that was deleted or merged here, and that the file has, is
/// shown again.
void CRecordImport::ShowInRows() {
  const bool isOrdered = m_rows.Options().ordered;
  if (isOrdered && !m_replaced.empty()) MoveReplacedRows();
  m_rows.RefreshDrafts();
  const std::vector<bool> columns = ColumnsOfFiles();
  for (int row = 1; row < static_cast<int>(m_taken.size()); ++row) {
    if (!m_taken[static_cast<std::size_t>(row)]) continue;
    if (!m_grid.IsPresent(row)) m_rows.Show(row);
    m_rows.Refill(row, columns);
  }
  m_rows.Refresh();
  std::unordered_map<const CRecordBase*, int> rowOf;
  if (m_rows.Home().Count() > m_rowOf.size() || !m_replaced.empty())
    for (int row = 1; row < m_grid.GetRowCount(); ++row) rowOf.emplace(m_grid.GetItemData(row), row);
  std::map<int, std::vector<CRecordBase*>> added;  // by the row that they stand behind
  int behind = m_rows.Options().styles ? m_grid.GetRowCount() - 1 : 0;
  for (CRecordBase* record = rowOf.empty() ? nullptr : m_rows.Home().FirstRecord(); record; record = record->Next()) {
    const auto at = rowOf.find(record);
    if (at == rowOf.end()) {
      added[behind].push_back(record);
    } else if (!m_rows.Options().styles) {
      behind = at->second;
    }
  }
  for (auto at = added.rbegin(); at != added.rend(); ++at) {
    int row = at->first;
    for (CRecordBase* record : at->second) m_rows.Append(record, nullptr, ++row);
  }
}
