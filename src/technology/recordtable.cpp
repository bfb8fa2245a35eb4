#include "technology/recordtable.h"

#include <algorithm>

#include "technology/recordimport.h"
#include "technology/techpage.h"

void CRecordRules::WriteField(CRecordBase& record, const CField& field, const CRecordBase& values) {
  field.set(record, field.at(const_cast<void*>(values.FieldsAddress())));
}

// ---- What a checked row stands among

SCheckedRow CRecordTable::Checked(int row, const CRecordBase& values, int ownerRow) const {
  const bool isOwned = &values.Kind() != &Home().Kind();
  return {values, row > 0 ? m_grid.GetItemData(row) : nullptr, *this, this, row, isOwned ? ownerRow : 0};
}

SCheckedRow CRecordTable::Checked(int row) const {
  const SGridRow& line = m_grid.Row(row);
  return {Values(line), line.record, *this, this, row, line.IsOwned() ? m_grid.OwnerRow(row) : 0};
}

std::span<const CRowContext::SOther> CRecordTable::All(const SCheckedRow& row) const {
  if (row.ownerRow > 0) {
    m_ownedOthers.clear();
    for (int owned = row.ownerRow + 1; owned < m_grid.OwnedEnd(row.ownerRow); ++owned)
      if (m_grid.IsPresent(owned)) m_ownedOthers.push_back({&Values(owned), m_grid.GetItemData(owned), owned});
    return m_ownedOthers;
  }
  if (!std::exchange(m_othersKnown, m_isJudging)) {
    m_others.clear();
    for (const int other : PresentRows())
      if (!m_grid.Row(other).IsOwned()) m_others.push_back({&Values(other), m_grid.GetItemData(other), other});
  }
  return m_others;
}

const CRecordBase* CRecordTable::OwnerOf(const SCheckedRow& row) const {
  return row.ownerRow > 0 ? &Values(row.ownerRow) : nullptr;
}

// ---- Apply

void CRecordTable::Prepare() {
  ShowUndeletable();
  RefreshDrafts();
}

/// A record whose deletion was confirmed, and that cannot go all the same, takes part in every check as a row that is
/// shown again.
void CRecordTable::ShowUndeletable() {
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    CRecordBase* const record = m_grid.GetItemData(row);
    if (m_grid.Row(row).deletionConfirmed && record && record->IsIn()) ShowIfKept(row, *record);
  }
}

/// Whoever confirmed the deletion is told why the record stays.
void CRecordTable::ShowIfKept(int row, CRecordBase& record) {
  const CRecordBase* const keeper = Page().Design().KeeperOf(record);
  if (!keeper) return;
  Show(row);
  ShowMessage(Text::RecordStays, {record.RecordName(), keeper->Description()});
}

void CRecordTable::SettleRow(int row) {
  const ESettled which = Options().settled;
  if (which == ESettled::None || (which == ESettled::Edited && !m_grid.GetRowModified(row))) return;
  std::unique_ptr<CRecordBase> settled = Values(row).Clone();
  Rules().Settle(*settled);
  if (HasEqualFields(*settled, Values(row))) return;
  TakeSettled(row, std::move(settled));
  m_othersKnown = false;
}

/// The refusal of a deletion that the design does not allow; the row is shown again with what went with it.
SFinding CRecordTable::StaysInUse(int row) {
  Show(row);
  return {.rows = this,
          .row = row,
          .field = Home().Kind().nameField,
          .id = Options().inUse,
          .args = {Values(row).RecordName()}};
}

std::optional<SFinding> CRecordTable::TakeOut(int row) {
  SGridRow& line = m_grid.Row(row);
  CRecordBase& record = *line.record;
  CDesign& design = Page().Design();
  if (line.deletionConfirmed ? design.DeleteUsedRecord(record) : design.DeleteRecord(record)) {
    line.record = nullptr;
    Rules().Deleted(record);
    return {};
  }
  if (!line.deletionConfirmed) return StaysInUse(row);
  ShowIfKept(row, record);
  line.draft.reset();  // no check has seen what was typed
  return {};
}

std::optional<SFinding> CRecordTable::Write(const CFindings& findings, int before) {
  Merges().Write(Page().Design());
  // Row by row, a row may be written above a record that cannot go, and may have taken its name: such a record refuses
  // before the first row is written.
  for (int row = 1; Options().rowByRow && row < m_grid.GetRowCount(); ++row) {
    const CRecordBase* const record = m_grid.IsPresent(row) ? nullptr : m_grid.GetItemData(row);
    if (record && CTechnology::IsUsed(*record)) return StaysInUse(row);
  }
  std::vector<const SFinding*> informations;
  for (const SFinding& finding : findings.All())
    if (finding.rows == this && finding.kind == EFinding::Information) informations.push_back(&finding);
  std::size_t place = 0;
  for (int row = 1; row < std::min(before, m_grid.GetRowCount()); ++row) {
    SGridRow& line = m_grid.Row(row);
    if (!m_grid.IsPresent(row) && line.record) {
      if (line.IsOwned() && !m_grid.IsPresent(m_grid.OwnerRow(row))) {
        line.record = nullptr;  // it went with its owner
      } else if (auto refusal = TakeOut(row)) {
        return refusal;
      }
    }
    if (!m_grid.IsPresent(row)) continue;
    for (const SFinding* const told : informations)
      if (told->row == row) ShowMessage(told->id, told->args);
    WriteRow(row, place++);
  }
  return {};
}

void CRecordTable::WriteRow(int row, std::size_t place) {
  SGridRow& line = m_grid.Row(row);
  if (line.record && !line.modified && !Options().ordered) return;
  if (!line.record) {
    CCollectionBase& home = line.IsOwned() ? *m_grid.GetItemData(m_grid.OwnerRow(row))->Child(0) : Home();
    line.record = &home.Append(line.draft->Clone());
    Rules().Added(*line.record);
    for (SCell& cell : line.cells) cell.modified = false;
  } else if (line.draft && line.modified) {
    for (std::size_t col = 0; col < line.cells.size(); ++col) {
      if (!line.cells[col].modified) continue;
      const CField* const field = KindOf(row).grid[col].field;
      if (field) Rules().WriteField(*line.record, *field, *line.draft);
      line.cells[col].modified = false;
    }
    for (const CField* field : line.editedInForm) Rules().WriteField(*line.record, *field, *line.draft);
  }
  line.editedInForm.clear();
  line.draft.reset();
  line.modified = false;
  if (Options().ordered) Home().SetPlace(*line.record, place);
}

namespace {
struct SKeptRow {
  int row;
  CRecordBase* record;
  std::unique_ptr<CRecordBase> draft;
  std::vector<SCell> cells;
  std::set<const CField*> editedInForm;
  bool modified;
};
struct SKeptRecords final : CGridRows::CKept {
  std::vector<SKeptRow> rows;
  CMerges merges;
};
}  // namespace

/// Writing touches neither rows that nobody edited, nor which rows are shown, save those it shows for good.
std::unique_ptr<CGridRows::CKept> CRecordTable::Keep() const {
  auto kept = std::make_unique<SKeptRecords>();
  kept->merges = Merges();
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    const SGridRow& line = m_grid.Row(row);
    if (!line.draft && !line.modified && m_grid.IsPresent(row)) continue;
    kept->rows.push_back(
        {row, line.record, line.draft ? line.draft->Clone() : nullptr, line.cells, line.editedInForm, line.modified});
  }
  return kept;
}

void CRecordTable::Restore(std::unique_ptr<CKept> kept) {
  auto& before = static_cast<SKeptRecords&>(*kept);
  Merges() = std::move(before.merges);
  for (SKeptRow& one : before.rows) {
    SGridRow& line = m_grid.Row(one.row);
    line.record = one.record;
    line.draft = std::move(one.draft);
    line.cells = std::move(one.cells);
    line.editedInForm = std::move(one.editedInForm);
    line.modified = one.modified;
  }
  for (const int row : PresentRows())  // one that was shown again stays so
    if (const CRecordBase* const record = m_grid.GetItemData(row)) Merges().End(*record);
}

void CRecordTable::AfterWriting() {
  CGridRows::AfterWriting();
  HasNews();  // the page's own
  RefreshPresence();
}

// ---- Files

std::vector<SFileTitle> CRecordTable::FileTitles() const {
  std::vector<SFileTitle> titles;
  for (const CColumn& column : Kinds().At(0).file)
    titles.push_back({TextOf(column.Header()), column.editor == EEditor::Length});
  return titles;
}

void CRecordTable::Export(CCsvWriter& file) const {
  ExportTitles(file);
  constexpr int kSample = 64;  // so many rows tell how long the others will be
  CString text;
  for (const int row : PresentRows()) {
    if (row == kSample) file.MakeRoom(static_cast<std::size_t>(m_grid.GetRowCount() - row));
    const CRecordBase& values = Values(row);
    file.Quoted(Values(m_grid.OwnerRow(row)).RecordName());  // every record begins with the name of its row's owner
    const std::vector<CColumn>& columns = KindOf(row).file;
    for (std::size_t i = 1; i < columns.size(); ++i) {
      if (!columns[i].IsHeldQuoted(values)) {
        file.PlainBy([&](CString& out) { columns[i].AppendFileText(out, values, Page().UserUnits()); });
        continue;
      }
      text.clear();
      columns[i].AppendFileText(text, values, Page().UserUnits());
      file.Quoted(text);
    }
    file.EndRecord();
  }
}

bool CRecordTable::Import(CReportFile& report) { return CRecordImport(*this, report).Run(); }
