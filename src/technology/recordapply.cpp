// Apply of the pages of records: checking, writing, and a survey of a design as it stands.
#include <bit>

#include "model/design/drawing.h"
#include "technology/recordpage.h"

void CRecordPage::RefreshDrafts() {
  const std::uint64_t revision = m_design.Journal().Revision();
  if (revision == m_seenRevision) return;  // nothing was written since the drafts were made
  m_seenRevision = revision;
  DropLostRows();
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    SGridRow& line = m_grid.Row(row);
    if (!line.record || !line.draft || !m_grid.IsPresent(row)) continue;
    for (const CField& field : line.draft->Kind().fields) {
      const int col = ColumnOf(field);
      const bool isEdited =
          col < 0 ? line.editedInForm.contains(&field) : line.cells[static_cast<std::size_t>(col)].modified;
      if (!isEdited) field.set(*line.draft, field.at(line.record->FieldsAddress()));
    }
  }
}

bool CRecordPage::HasNewNames() const {
  for (int row = 1; m_nameColumn >= 0 && row < m_grid.GetRowCount(); ++row)
    if (m_grid.GetRowModified(row) && m_grid.GetCellModified(row, m_nameColumn)) return true;
  return false;
}

void CRecordPage::FindDuplicates() {
  m_duplicates.clear();
  if (m_nameColumn < 0) return;
  struct SSlot {
    std::size_t hash;
    const CString* name;  // null: free
  };
  std::vector<SSlot> slots(std::bit_ceil(2 * static_cast<std::size_t>(m_grid.GetRowCount())));
  const std::size_t last = slots.size() - 1;
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!m_grid.IsPresent(row) || m_grid.Row(row).IsOwned()) continue;
    const CString& name = m_grid.GetItemText(row, m_nameColumn);
    const std::size_t hash = std::hash<std::string_view>()(name);
    std::size_t at = hash & last;
    while (slots[at].name && (slots[at].hash != hash || *slots[at].name != name)) at = (at + 1) & last;
    if (slots[at].name) m_duplicates.insert(name);
    slots[at] = {hash, &name};
  }
}

bool CRecordPage::CheckName(const SRowCheck& check, const CString& name, bool isUnique) {
  const bool isNew = !check.record && check.pass == EPass::Check;  // an import may have brought it
  if (isUnique && (isNew ? IsNewName(name) : m_options.validName(name))) return true;
  m_failed = {check.row, m_nameColumn};
  m_failedField = m_home.Kind().nameField;
  CAppError::Set(m_options.nameError,
                 m_options.nameErrorHasRow ? CStringArray{RowText(check), name} : CStringArray{name});
  return Refused();
}

bool CRecordPage::CheckCells(int row) {
  const SGridRow& line = m_grid.Row(row);
  if (!line.modified) return true;
  for (std::size_t col = 0; col < line.cells.size(); ++col) {
    const SCell& cell = line.cells[col];
    const CField* const field = ColumnAt(row, static_cast<int>(col)).field;
    const bool isReference = field && field->type->fieldClass == EFieldClass::Reference;
    if (!cell.wrong && !isReference) continue;
    m_failed = {row, static_cast<int>(col)};
    int dsu = 0;
    if (cell.wrong && !ParseLength(cell.text, dsu)) return false;
    const auto* const target = reinterpret_cast<const CRecordBase*>(cell.value);
    if (isReference && target && m_grid.GetCellModified(row, m_failed.col) && !target->IsIn())
      return RefusePage(Text::TargetDeleted, RowText(row), cell.text);
  }
  return true;
}

bool CRecordPage::RunChecks(int row, EPass pass) {
  const SRowCheck check{row, m_grid.GetItemData(row), ValuesOf(row), pass};
  if (m_nameColumn >= 0 && check.kind.nameField &&
      !(pass == EPass::Write && m_options.twoPasses)) {  // whose first pass has seen the names
    const CString& name = m_grid.GetItemText(row, m_nameColumn);
    const bool counts = pass == EPass::Survey ? !name.starts_with('[') : m_grid.GetCellModified(row, m_nameColumn);
    if (counts && !CheckName(check, name, !m_duplicates.contains(name))) return false;
  }
  if (!CheckCells(row)) return false;
  FailAt(row);
  return CheckRow(check);
}

bool CRecordPage::CheckPresentRow(int row) {
  FindDuplicates();
  const bool passed = RunChecks(row, EPass::Check);
  m_duplicates.clear();
  return passed;
}

bool CRecordPage::CheckDraft(int row, const CRecordBase& values) {
  const SRowCheck check{row, m_grid.GetItemData(row), values, EPass::Form};
  const CString& name = values.RecordName();
  const bool renamed = values.Kind().nameField && (!check.record || name != check.record->RecordName());
  return (!renamed || CheckName(check, name, m_grid.IsStringUniqueInColumn(row, m_nameColumn, name))) &&
         CheckRow(check);
}

bool CRecordPage::OnApply() {
  m_grid.ShowFocus(false);
  const std::uint64_t revision = m_seenRevision;
  RefreshDrafts();
  if (HasNewNames()) FindDuplicates();
  bool passed = true;
  for (int row = 1; m_options.twoPasses && passed && row < m_grid.GetRowCount(); ++row)
    if (m_grid.IsPresent(row)) passed = RunChecks(row, EPass::Check);
  if (passed && m_options.twoPasses) {
    m_failed = {};
    passed = CheckPage();
  }
  if (passed && m_options.layout == ELayout::BeforeWriting) SaveLayout();
  if (passed) {
    CAppError::SetLastError(0);
    passed = WriteInLevel();
  }
  m_duplicates.clear();
  m_seenRevision = m_design.Journal().Revision();
  m_grid.ShowFocus(true);
  if (!passed) {
    CAppError::ReportLastError();
    m_grid.SetFocusCell(m_failed.row, m_failed.col);
    RefreshMarks();
    Changed();
    return false;
  }
  m_grid.ClearModified();
  if (m_options.layout == ELayout::AfterWriting) SaveLayout();
  FinishWriting();
  if (m_seenRevision != revision) RefreshMarks();  // nothing has come into use or out of it otherwise
  CancelToClose();
  SetModified(false);
  return true;
}

void CRecordPage::FinishWriting() {
  Written();
  if (m_options.redraws) InvalidateDesignRect(&m_design);
}

bool CRecordPage::WriteInLevel() {
  if (m_options.writeLevel == 0) return WriteRows();
  struct SBefore {
    int row;
    CRecordBase* record;
    std::unique_ptr<CRecordBase> draft;
    std::vector<SCell> cells;
    std::set<const CField*> editedInForm;
    bool modified;
  };
  std::vector<SBefore> before;
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    const SGridRow& line = m_grid.Row(row);
    if (!line.draft && m_grid.IsPresent(row)) continue;  // writing does not touch it
    before.push_back(
        {row, line.record, line.draft ? line.draft->Clone() : nullptr, line.cells, line.editedInForm, line.modified});
  }
  m_design.StartNestedUndoLevel(m_options.writeLevel);
  if (WriteRows()) {
    m_design.EndNestedUndoLevel(m_options.writeLevel);
    return true;
  }
  m_design.UndoNestedLevel(m_options.writeLevel);
  for (SBefore& one : before) {
    SGridRow& line = m_grid.Row(one.row);
    line.record = one.record;
    line.draft = std::move(one.draft);
    line.cells = std::move(one.cells);
    line.editedInForm = std::move(one.editedInForm);
    line.modified = one.modified;
  }
  return false;
}

bool CRecordPage::WriteRows() {
  MoveMerged();
  // In one pass a row may be written above a record that cannot go, and may have taken its name: such a record refuses
  // before the first row is written.
  for (int row = 1; !m_options.twoPasses && row < m_grid.GetRowCount(); ++row) {
    const CRecordBase* const record = m_grid.IsPresent(row) ? nullptr : m_grid.GetItemData(row);
    if (!record || !CTechnology::IsUsed(*record)) continue;
    m_failed = {row, m_nameColumn};
    return Delete(row);
  }
  // Where the checks have passed already, and places mean nothing, rows without an edit are done.
  const bool skips = m_options.twoPasses && !m_options.ordered;
  const auto isDone = [skips](const SGridRow& line) { return skips && line.record && !line.modified; };
  std::size_t place = 0;
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!m_grid.IsPresent(row)) {
      if (!m_grid.GetItemData(row)) continue;
      if (!m_grid.IsPresent(m_grid.OwnerRow(row)) && m_grid.Row(row).IsOwned()) {
        m_grid.SetItemData(row, nullptr);  // it went with its owner
        continue;
      }
      FailAt(row);
      if (!Delete(row)) return false;
      if (!m_grid.IsPresent(row)) continue;
    } else if (isDone(m_grid.Row(row))) {
      continue;
    } else if (!RunChecks(row, EPass::Write)) {
      return false;
    }
    if (!WriteRow(row, place++)) return false;
  }
  return true;
}

bool CRecordPage::WriteRow(int row, std::size_t place) {
  SGridRow& line = m_grid.Row(row);
  if (!line.record) {
    line.record = &HomeOf(row).Append(line.draft->Clone());
    Added(*line.record);
    for (SCell& cell : line.cells) cell.modified = false;
  } else if (line.draft && line.modified) {
    for (std::size_t col = 0; col < line.cells.size(); ++col) {
      if (!line.cells[col].modified) continue;
      const CField* const field = ColumnAt(row, static_cast<int>(col)).field;
      if (field) WriteField(*line.record, *field, *line.draft);
      line.cells[col].modified = false;
    }
    for (const CField* field : line.editedInForm) WriteField(*line.record, *field, *line.draft);
  }
  line.editedInForm.clear();
  line.draft.reset();
  line.modified = false;
  if (m_options.ordered) m_home.SetPlace(*line.record, place);
  return true;
}

void CRecordPage::WriteField(CRecordBase& record, const CField& field, const CRecordBase& values) {
  field.set(record, field.at(const_cast<void*>(values.FieldsAddress())));
}

bool CRecordPage::Delete(int row) {
  CRecordBase& record = *m_grid.GetItemData(row);
  if (m_design.DeleteRecord(record)) {
    m_grid.SetItemData(row, nullptr);
    return true;
  }
  ShowRow(row);  // something uses it by now
  CAppError::Set(m_options.inUse, {record.RecordName()});
  return false;
}

bool CRecordPage::Refused() {
  if (!m_problems) return false;
  m_problems->push_back(CAppError::GetLastErrorString());
  CAppError::SetLastError(0);
  return true;
}

CStringArray CRecordPage::Survey() {
  OnInitDialog();
  FindDuplicates();
  CStringArray problems;
  m_problems = &problems;
  CAppError::SetLastError(0);
  for (int row = 1; row < m_grid.GetRowCount(); ++row)
    if (!RunChecks(row, EPass::Survey) && CAppError::HasLastError()) Refused();
  if (!CheckPage() && CAppError::HasLastError()) Refused();
  m_problems = nullptr;
  m_duplicates.clear();
  return problems;
}
