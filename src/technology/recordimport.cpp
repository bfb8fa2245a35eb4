#include "technology/recordimport.h"

#include <algorithm>

#include "model/design/fieldtext.h"
#include "technology/techpage.h"

CRecordImport::CRecordImport(CRecordTable& rows, CReportFile& report)
    : m_rows(rows),
      m_grid(rows.Grid()),
      m_design(rows.Page().Design()),
      m_report(report),
      m_unitTypes(rows.FileTitles().size(), m_design.GetUnits()->GetType()),
      m_new(rows.MakeNew()),
      m_newOwned(rows.Kinds().Count() > 1 ? rows.Kinds().At(1).kind.make() : nullptr) {}

bool CRecordImport::Run() {
  const bool intoRows = m_rows.Options().importsToRows;
  for (const bool isPresent : {true, false})  // a row that was deleted or merged here, where no other has the name
    for (int row = 1; intoRows && row < m_grid.GetRowCount(); ++row)
      if (m_grid.IsPresent(row) == isPresent && !m_grid.Row(row).IsOwned() && (isPresent || m_grid.GetItemData(row)))
        m_named.emplace(m_rows.Values(row).RecordName(), row);
  CFindings before;
  m_rows.Page().JudgeWhole(before);
  const CSVImportResult result =
      CImportCSV::Import([&](const CFileFields& fields) { return AreTitles(fields, m_rows.FileTitles(), m_unitTypes); },
                         [&](CCsvReader& reader) {
                           m_reader = &reader;
                           Take(reader.Fields());
                         },
                         [&](CCsvReader& reader) {
                           m_reader = &reader;
                           Refuse(reader.Error());
                         });
  if (result == CSVImportResult::Unreadable) m_rows.Page().FailCommand(CAppError::GetLastErrorString());
  if (result != CSVImportResult::Ok) return false;
  intoRows ? InsertOwned() : ShowInRows();
  ReportBroken(before);
  return m_isWritten;
}

/// People read in words where the record stands, scripts its number among the values.
void CRecordImport::Tell(CTextId id, const CString& what, CStringArray args) {
  m_report.WriteShown(id, std::move(args), TextOf(id, CStringArray{Place().Text(), what}));
}

void CRecordImport::Refuse(const CString& reason) { Tell(Text::RecordUnusable, reason, {Number()}); }

void CRecordImport::RefuseField(const CColumn& column, std::string_view field) {
  const CString text(field);
  if (column.importError == Text::RecordUnusable)
    return Refuse(TextOf(Text::ImportValueInvalid, CStringArray{text, TextOf(column.Header())}));
  Tell(column.importError, text, column.importErrorHasRecord ? CStringArray{Number(), text} : CStringArray{text});
}

/// What a rule has put right in a record that was taken.
void CRecordImport::ReportWithout() {
  if (!m_without.empty()) Tell(Text::RecordTakenWithout, m_without, {Number(), m_without});
}

/// The checks of the whole page that it would not pass any more.
void CRecordImport::ReportBroken(const CFindings& before) {
  CFindings now;
  m_rows.Page().JudgeWhole(now);
  for (const SFinding& finding : now.All()) {
    const auto isSame = [&](const SFinding& old) { return old.SaysTheSame(finding); };
    if (finding.kind == EFinding::Refusal && std::ranges::none_of(before.All(), isSame))
      m_report.Write(Text::ImportBreaksPage, finding.Message());
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
  if (const CTextId why = m_rows.Rules().WhyUnusable(record.kind, fields)) return Refuse(TextOf(why));
  m_without.clear();
  m_rows.Options().importsToRows ? TakeIntoRows(record) : TakeIntoDesign(record);
}

// ---- Reading

/// Reads the values of a record that differs from `present`, or is new; null when nothing differs. False when something
/// is wrong, which stands in the report by then.
bool CRecordImport::Read(const SFileRecord& record, const CRecordBase* present, std::unique_ptr<CRecordBase>& values) {
  if (!present) values = Blank(record).Clone();
  bool good = true;
  for (std::size_t place = 0; place < record.fields.size(); ++place) good &= ReadField(record, place, present, values);
  if (!good) return false;
  if (!present && values->Kind().nameField && !m_rows.IsNewName(values->RecordName())) {
    Refuse(TextOf(Text::ImportNameInvalid, CStringArray{values->RecordName()}));
    return false;
  }
  if (values && m_rows.Options().settled != ESettled::None) m_rows.Rules().Settle(*values);
  return true;
}

/// A draft with the fields of a record, and what it owns: for records that own nothing, the draft of an earlier one.
std::unique_ptr<CRecordBase> CRecordImport::CopyOf(const CRecordBase& present) {
  if (!m_spare || &m_spare->Kind() != &present.Kind() || present.Child(0)) return present.Clone();
  m_spare->CopyFields(present);
  return std::move(m_spare);
}

bool CRecordImport::ReadField(const SFileRecord& record, std::size_t place, const CRecordBase* present,
                              std::unique_ptr<CRecordBase>& values) {
  const CColumn& column = record.kind.file[place];
  const std::string_view text = record.fields[place];
  const CRecordBase& now = values ? *values : *present;
  const bool saysNothing = text.empty() && column.fileTest && !column.emptyInFileIsZero;
  if (!column.field || saysNothing || (present && m_rows.IsReadOnly(column, *present))) return true;
  std::int64_t number = 0;
  const bool isZero = text.empty() && column.emptyInFileIsZero;
  const bool isMissing = text.empty() && column.onlyOffered;
  if (isMissing || (!isZero && !ReadFieldNumber(*column.field->type, text, m_design, m_unitTypes[place], number))) {
    RefuseField(column, text);
    return false;
  }
  if (column.shown && column.IsOff(now)) return true;
  const bool sets = column.alsoSets && !isZero;
  if (!sets && FieldHolds(*column.field, now, number, text)) return true;
  if (!values) values = CopyOf(*present);
  if (sets) column.alsoSets(*values);
  StoreField(*column.field, *values, number, text);
  if (column.onlyOffered && !IsOffered(column, number)) {
    Refuse(TextOf(Text::ChoiceNotOffered, CStringArray{CString(text), TextOf(column.Header())}));
    return false;
  }
  const auto isKept = [&] { return present && FieldHolds(*column.field, *present, number, text); };
  if (column.refusedFromFile && !isKept() && column.refusedFromFile(*values)) {
    column.whyRefused ? Refuse(TextOf(column.whyRefused, CStringArray{CString(text)})) : RefuseField(column, text);
    return false;
  }
  m_rows.Rules().Follow(*column.field, present ? *present : Blank(record), *values);
  if (!FieldHolds(*column.field, *values, number, text))
    m_without += (m_without.empty() ? "" : ", ") +
                 TextOf(Text::WithDetail, CStringArray{TextOf(column.Header()), CString(text)});
  return true;
}

bool CRecordImport::IsOffered(const CColumn& column, std::int64_t value) {
  const auto [at, isNew] = m_offered.try_emplace(&column);
  if (isNew)
    for (const SComboItem& item : column.Offered(m_design, 0)) at->second.insert(item.value);
  return at->second.contains(value);
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
  const auto isLeft = [&](const SFinding& finding) {
    return finding.field ? finding.field->HasEqual(*present, row.values) : HasEqualFields(*present, row.values);
  };
  for (const SFinding& finding : findings.All()) {
    if (finding.kind == EFinding::Information) continue;
    const auto isSame = [&](const SFinding& old) { return old.SaysTheSame(finding) && isLeft(finding); };
    if (std::ranges::any_of(before.All(), isSame)) continue;
    const CString reason = WithoutRow(finding.Message(), Number());
    if (finding.kind == EFinding::Refusal) return Refuse(reason), false;
    Tell(Text::RecordTakenUnasked, reason, {Number(), reason});
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
  if (record.isOwned && owner == 0) return Tell(Text::RecordPadStyleUnknown, name, {Number(), name});
  if (record.isOwned) ShowAgain(owner);  // with what it owns, among which the record may be
  std::unique_ptr<CRecordBase>* const toCome = record.isOwned ? FindToCome(record, owner) : nullptr;
  const int row = record.isOwned ? FindOwned(record, owner) : owner;
  const CRecordBase* const present = row ? &m_rows.Values(row) : toCome ? toCome->get() : nullptr;
  std::unique_ptr<CRecordBase> values;
  if (!Read(record, present, values)) return;
  if (!values || (present && IsSame(*present, *values))) {
    ReportWithout();
    return ShowAgain(owner);
  }
  const SCheckedRow checked{
      *values, row ? m_grid.GetItemData(row) : nullptr, *this, nullptr, row, record.isOwned ? owner : 0};
  if (!IsAccepted(checked, present)) return;
  ReportWithout();
  ShowAgain(owner);
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

/// A row that was deleted or merged here, and that the file has, is shown again.
void CRecordImport::ShowAgain(int row) {
  if (row == 0 || m_grid.IsPresent(row)) return;
  m_rows.Show(row);
  m_rows.Page().EditedRows();
}

/// Gives the new owned records their rows, from below, so that the rows above stay where they are.
void CRecordImport::InsertOwned() {
  for (auto owner = m_owned.rbegin(); owner != m_owned.rend(); ++owner)
    for (auto& draft : owner->second) m_rows.Append(nullptr, std::move(draft), m_grid.OwnedEnd(owner->first));
}

// ---- Into the design

void CRecordImport::TakeIntoDesign(const SFileRecord& record) {
  int row = 0;
  CRecordBase* const present = FindInDesign(record.fields[0], row);
  std::unique_ptr<CRecordBase> values;
  if (!Read(record, present, values)) return;
  // What the file leaves as it is finds nothing that was not wrong before.
  if (values && !IsAccepted({*values, present, *this}, present)) return;
  ReportWithout();
  CRecordRules& rules = m_rows.Rules();
  if (!present) {
    m_isWritten = m_hasAdded = true;
    CRecordBase& added = m_rows.Home().Append(std::move(values));
    rules.PlaceImported(added);
    rules.Added(added);
    m_othersKnown = false;
    return;
  }
  if (row > 0 && !m_grid.IsPresent(row)) m_toShow.push_back(row);
  if (!values) return;
  WriteDifferences(*present, *values);
  m_spare = std::move(values);
  if (m_written.empty()) return;
  m_isWritten = true;
  const CRecordBase* const above = present->Previous();
  rules.PlaceImported(*present);
  if (present->Previous() != above) m_replaced.insert(present);
  if (row > 0) m_rows.Refill(row, m_toFill);
}

/// Writes the fields that are to be others: none when settling makes the same of both.
void CRecordImport::WriteDifferences(CRecordBase& present, const CRecordBase& values) {
  m_written.clear();
  if (m_rows.Options().settled != ESettled::None && IsSame(present, values)) return;
  const auto* const now = static_cast<const char*>(present.FieldsAddress());
  const auto* const wanted = static_cast<const char*>(values.FieldsAddress());
  if (m_places.empty()) FindPlaces(present);
  m_toFill = m_following;
  for (const SPlace& place : m_places) {
    if (place.type->AreEqual(now + place.offset, wanted + place.offset)) continue;
    m_written.push_back(place.field);
    if (place.col >= 0) m_toFill.push_back(place.col);
  }
  for (const CField* field : m_written) m_rows.Rules().WriteField(present, *field, values);
}
