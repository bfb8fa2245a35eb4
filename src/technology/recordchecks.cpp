// What the checks of a table find: names, texts that do not parse, and what the rules say.
#include <algorithm>
#include <bit>

#include "technology/recordtable.h"
#include "technology/techpage.h"

bool CRecordTable::HasNewNames() const {
  for (int row = 1; NameColumn() >= 0 && row < m_grid.GetRowCount(); ++row)
    if (m_grid.GetRowModified(row) && m_grid.GetCellModified(row, NameColumn())) return true;
  return false;
}

std::set<std::string_view> CRecordTable::SharedNames() const {
  std::set<std::string_view> shared;
  if (NameColumn() < 0) return shared;
  struct SSlot {
    std::size_t hash;
    const CString* name;  // null: free
  };
  std::vector<SSlot> slots(std::bit_ceil(2 * static_cast<std::size_t>(m_grid.GetRowCount())));
  const std::size_t last = slots.size() - 1;
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!m_grid.IsPresent(row) || m_grid.Row(row).IsOwned()) continue;
    const CString& name = m_grid.GetItemText(row, NameColumn());
    const std::size_t hash = std::hash<std::string_view>()(name);
    std::size_t at = hash & last;
    while (slots[at].name && (slots[at].hash != hash || *slots[at].name != name)) at = (at + 1) & last;
    if (slots[at].name) shared.insert(name);
    slots[at] = {hash, &name};
  }
  return shared;
}

bool CRecordTable::IsNewName(const CString& name) const {
  const SPageOptions& options = Options();
  if (options.validName(name)) return true;
  return options.styles && name.size() > 2 && name.starts_with('[') && name.ends_with(']') &&
         options.validName(name.substr(1, name.size() - 2));
}

/// Where another row has the name, that one is at fault as much.
void CRecordTable::AddNameError(const SCheckedRow& row, const CString& name, CFindings& findings) const {
  const bool hasRow = Options().nameErrorHasRow;
  const CTextId id = Options().nameError;
  SFinding finding{.rows = this,
                   .row = row.row,
                   .field = row.Kind().nameField,
                   .id = id,
                   .args = {hasRow ? row.Number() : name},
                   .text = TextOf(id, hasRow ? CStringArray{row.Number(), name} : CStringArray{name})};
  const bool isShared = !m_isJudging || m_shared.contains(name);
  for (int other = 1; isShared && other < m_grid.GetRowCount(); ++other) {
    if (!m_grid.IsPresent(other) || other == row.row || m_grid.Row(other).IsOwned() ||
        m_grid.GetItemText(other, NameColumn()) != name)
      continue;
    finding.alsoRows = {other};
    finding.text += ' ' + TextOf(Text::AlsoNameOfRow, CStringArray{RowText(other)});
    break;
  }
  findings.Append(std::move(finding));
}

void CRecordTable::JudgeName(const SCheckedRow& row, CFindings& findings, EJudged judged) const {
  if (NameColumn() < 0 || !row.Kind().nameField) return;
  const CString& name = m_grid.GetItemText(row.row, NameColumn());
  const bool counts =
      judged == EJudged::Everything ? !row.values.IsBuiltIn() : m_grid.GetCellModified(row.row, NameColumn());
  if (!counts) return;
  const bool isValid = row.record ? Options().validName(name) : IsNewName(name);  // an import may have brought it
  if (!isValid || m_shared.contains(name)) AddNameError(row, name, findings);
}

void CRecordTable::JudgeCells(const SCheckedRow& row, CFindings& findings) const {
  const SGridRow& line = m_grid.Row(row.row);
  if (!line.modified) return;
  for (std::size_t col = 0; col < line.cells.size() && !findings.IsDecided(); ++col) {
    const SCell& cell = line.cells[col];
    if (line.record && !cell.modified && !cell.wrong) continue;
    int dsu = 0;
    if (cell.wrong && !Page().ParseLength(cell.text, dsu)) {
      findings.AddLastErrorOfCell(*this, row.row, static_cast<int>(col));
      findings.GoOn();
      continue;
    }
    const CColumn& column = KindOf(row.row).grid[col];
    const auto* const target = column.IsReference() ? reinterpret_cast<const CRecordBase*>(cell.value) : nullptr;
    if (target && m_grid.GetCellModified(row.row, static_cast<int>(col)) && !target->IsIn())
      findings.Append(EFinding::Refusal, row, column.field, Text::TargetDeleted, {row.Number(), cell.text});
  }
}

void CRecordTable::JudgeOne(const SCheckedRow& row, CFindings& findings, EJudged judged) const {
  const bool isUntouched = judged == EJudged::Edits && !m_grid.GetRowModified(row.row);  // nor is any of its cells
  findings.GoOn();
  if (!isUntouched) JudgeName(row, findings, judged);
  findings.GoOn();
  if (!isUntouched && !findings.IsDecided()) JudgeCells(row, findings);
  findings.GoOn();
  if (findings.IsDecided() || (isUntouched && Options().checksEditedRows)) return;
  judged == EJudged::Edits ? Rules().Check(row, findings) : Rules().CheckAlone(row, findings);
}

void CRecordTable::Judge(CFindings& findings, EJudged judged) {
  m_isJudging = true;
  m_othersKnown = false;
  if (judged == EJudged::Everything || HasNewNames()) m_shared = SharedNames();
  for (int row = 1; row < m_grid.GetRowCount() && !findings.IsDecided(); ++row) {
    if (!m_grid.IsPresent(row)) continue;
    SettleRow(row);
    JudgeOne(Checked(row), findings, judged);
    findings.GoOn();
  }
  if (judged == EJudged::Everything) Rules().CheckTogether(findings);
  m_shared.clear();
  m_isJudging = false;  // from here on drafts may go
}

CFindings CRecordTable::JudgeRow(int row) const {
  CFindings findings(CFindings::EWants::UpToRefusal);
  m_shared = SharedNames();
  JudgeOne(Checked(row), findings, EJudged::Edits);
  m_shared.clear();
  return findings;
}

CFindings CRecordTable::JudgeDraft(const SCheckedRow& draft) const {
  CFindings findings(CFindings::EWants::UpToRefusal);
  if (draft.Kind().nameField && !IsNameOfForm(draft)) AddNameError(draft, draft.values.RecordName(), findings);
  if (!findings.IsDecided()) Rules().CheckValues(draft, findings);
  return findings;
}

/// A name that is left as it was need not be one that could be typed; styles must still be told apart by it.
bool CRecordTable::IsNameOfForm(const SCheckedRow& draft) const {
  const CString& name = draft.values.RecordName();
  const CRecordBase* const before = draft.record ? draft.record : draft.row > 0 ? &Values(draft.row) : nullptr;
  const bool isKept = before && before->RecordName() == name;
  const bool isUnique = m_grid.IsStringUniqueInColumn(draft.row, NameColumn(), name);
  if (isKept && (draft.record || IsNewName(name))) return isUnique || !Options().styles;
  return Options().validName(name) && isUnique;
}

CFindings CRecordTable::JudgeTexts(int row) const {
  CFindings findings(CFindings::EWants::UpToRefusal);
  const std::vector<SCell>& cells = m_grid.Row(row).cells;
  for (std::size_t col = 0; col < cells.size() && !findings.IsDecided(); ++col) {
    int dsu = 0;
    if (cells[col].wrong && !Page().ParseLength(cells[col].text, dsu))
      findings.AddLastErrorOfCell(*this, row, static_cast<int>(col));
  }
  return findings;
}
