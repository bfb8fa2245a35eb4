#include "technology/recordrows.h"

#include <algorithm>
#include <numeric>

#include "model/design/fieldtext.h"
#include "model/services/registry.h"
#include "technology/techpage.h"

namespace {
constexpr const char* kSortBy = "SortBy";
constexpr const char* kSortDown = "SortDown";
}  // namespace

CRecordRows::CRecordRows(CTechDialogPage& page, CRecordRules& rules, CCollectionBase& home, const SPageOptions& options,
                         const char* name)
    : CGridRows(page, name, options.settings), m_rules(rules), m_options(options), m_home(home) {}

void CRecordRows::MakeColumns() {
  std::vector<SGridColumn> headers;
  for (const CColumn& column : m_kinds.At(0).grid)
    headers.push_back({column.Header(), {}, column.align, column.width, column.editor == EEditor::Length});
  m_grid.SetColumns(std::move(headers));
  const auto mark = std::ranges::find(m_kinds.At(0).grid, true, &CColumn::isMark);
  m_markColumn = mark == m_kinds.At(0).grid.end() ? -1 : static_cast<int>(mark - m_kinds.At(0).grid.begin());
  if (m_home.Kind().nameField) m_nameColumn = m_kinds.ColumnOf(*m_home.Kind().nameField);
}

// ---- Filling

void CRecordRows::Fill() {
  m_grid.DeleteAllRows();
  std::vector<CRecordBase*> records;
  for (CRecordBase* record = m_home.FirstRecord(); record; record = record->Next()) records.push_back(record);
  if (m_options.styles) std::ranges::stable_sort(records, {}, [](const auto* one) { return one->RecordName(); });
  for (CRecordBase* record : records) {
    Append(record);
    CRecordBase* owned = m_kinds.Count() > 1 ? record->Child(0)->FirstRecord() : nullptr;
    for (; owned; owned = owned->Next()) Append(owned);
  }
  HasNews();
  m_seenPresence = {Page().Design().PresenceRevision(), m_merges.Revision()};
  m_grid.LoadSettings();
  if (m_options.keepsSort) {
    int col = 0, down = 0;  // without a column rows stand by name
    CAppRegistry(m_options.settings).GetValue(kSortBy, col);
    CAppRegistry(m_options.settings).GetValue(kSortDown, down);
    m_sortedBy = -1;
    for (int turn = 0; col > 0 && turn <= (down != 0); ++turn) SortByColumn(col);
  }
  m_grid.SetFocusCell(1, std::max(m_nameColumn, 0));
  std::vector<const CRecordBase*> used;
  for (const CDesignItem* item : Page().Design().Selection().Items()) used.push_back(m_rules.UsedBy(*item));
  SelectRecords(used);
}

void CRecordRows::SaveLayout() const {
  CGridRows::SaveLayout();
  if (!m_options.keepsSort || m_sortedBy < 0) return;
  CAppRegistry settings(m_options.settings);
  settings.SetValue(kSortBy, m_sortedBy);
  settings.SetValue(kSortDown, m_sortedUp ? 0 : 1);
}

int CRecordRows::Append(CRecordBase* record, std::unique_ptr<CRecordBase> draft, int before) {
  const int row = m_grid.InsertRow(before);
  for (std::size_t i = 0; CCollectionBase* owned = draft ? draft->Child(i) : nullptr; ++i)
    while (owned->FirstRecord()) owned->Remove(*owned->FirstRecord());  // they have rows of their own, or none
  SGridRow& line = m_grid.Row(row);
  line.record = record;
  line.modified = draft != nullptr;
  line.draft = std::move(draft);
  line.kind = m_kinds.IndexOf(Values(line).Kind());
  for (int col = 0; col < m_grid.GetColumnCount(); ++col) FillCell(row, col, false);
  return row;
}

std::unique_ptr<CRecordBase> CRecordRows::MakeNew() const {
  std::unique_ptr<CRecordBase> draft = m_home.Kind().make();
  m_rules.InitNew(*draft);
  return draft;
}

bool CRecordRows::IsReadOnly(const CColumn& column, const CRecordBase& values) const {
  const bool isLocked = m_options.builtIn == EBuiltIn::RowLocked ||
                        (m_options.builtIn == EBuiltIn::NameLocked && column.field == values.Kind().nameField);
  return (isLocked && values.IsBuiltIn()) || (column.readOnly && column.readOnly(values));
}

void CRecordRows::FillCell(int row, int col, bool refill) {
  const CColumn& column = ColumnAt(row, col);
  SGridRow& line = m_grid.Row(row);
  SCell& cell = line.cells[static_cast<std::size_t>(col)];
  if (!column.field) {
    cell.text = column.isMark ? MarkOf(row) : column.always.text;
    cell.value = column.always.value;
    return;
  }
  const CRecordBase& values = Values(line);
  const bool isEmpty = column.empty && column.empty(values);
  const CColumn::Test& test = refill ? column.enabledOnChange : column.enabledAtFill;
  const bool isOff = isEmpty || (test && !test(values));
  const bool wasCleared = cell.editor == EEditor::Length && !cell.hasValue && cell.text.empty();
  const bool staysCleared = refill && column.empty && !isOff && wasCleared;  // until something is typed
  if (!staysCleared && (!refill || !cell.wrong || isOff))
    column.Fill(cell, values, Page().UserUnits());  // a text that does not parse stays
  if (IsReadOnly(column, line.record ? *line.record : values)) {
    cell.enabled = false;
  } else if (test || column.empty) {
    cell.enabled = !isOff;
  }
}

CString CRecordRows::MarkOf(int row) const {
  const SGridRow& line = m_grid.Row(row);
  if (line.deletionConfirmed) return "U";
  return line.record && !line.IsOwned() && m_merges.UsesOf(*line.record) > 0 ? "X" : "";
}

void CRecordRows::RefreshPresence() {
  const std::pair now{Page().Design().PresenceRevision(), m_merges.Revision()};
  if (std::exchange(m_seenPresence, now) == now) return;
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    FetchAhead(row);
    SGridRow& line = m_grid.Row(row);
    if (line.record && !line.record->IsIn()) {  // another page has taken it out, with what it refers to
      line.height = 0;
      line.record = nullptr;
    }
    if (m_markColumn >= 0 && !line.IsOwned()) m_grid.SetItemText(row, m_markColumn, MarkOf(row));
  }
}

void CRecordRows::Refill(int row, const std::vector<int>& columns) {
  SGridRow& line = m_grid.Row(row);
  if (line.draft) RefreshDraft(line);
  for (const int col : columns)
    if (!line.cells[static_cast<std::size_t>(col)].modified) FillCell(row, col, false);
}

void CRecordRows::Refresh() {
  RefreshPresence();
  if (!m_kinds.ShowOtherRecords()) return;
  for (const int row : PresentRows())
    for (const int col : KindOf(row).shownColumns)
      if (!m_grid.Cell(row, col).modified) FillCell(row, col, true);
}

bool CRecordRows::HasNews() {
  const std::size_t now = Page().Design().Journal().Revision();
  return std::exchange(m_seen, now) != now;
}

void CRecordRows::RefreshDrafts() {
  if (!HasNews()) return;
  RefreshPresence();
  for (const int row : PresentRows())
    if (SGridRow& line = m_grid.Row(row); line.record && line.draft) RefreshDraft(line);
}

void CRecordRows::RefreshDraft(SGridRow& line) const {
  for (const CField& field : line.draft->Kind().fields) {
    const int col = m_kinds.HasCell(field) ? m_kinds.ColumnOf(field) : -1;
    const bool isEdited =
        col < 0 ? line.editedInForm.contains(&field) : line.cells[static_cast<std::size_t>(col)].modified;
    if (!isEdited) field.set(*line.draft, field.at(line.record->FieldsAddress()));
  }
}

// ---- What the rows are

int CRecordRows::FindRow(const CRecordBase* record) const {
  for (int row = 1; record && row < m_grid.GetRowCount(); ++row)
    if (m_grid.GetItemData(row) == record) return row;
  return 0;
}

CString CRecordRows::NameOfRow(int row) const {
  const int owner = m_grid.OwnerRow(row);
  const CString& name = Values(owner).RecordName();
  if (owner == row) return name;
  CString detail;  // the field behind the name in files says which it is
  KindOf(row).file[1].AppendFileText(detail, Values(row), Page().UserUnits());
  return TextOf(Text::WithDetail, CStringArray{name, detail});
}

int CRecordRows::CurrentRow() const {
  const SGridPlace focus = m_grid.GetFocusCell();
  return m_grid.IsValid(focus.row, 0) && m_grid.IsPresent(focus.row) ? focus.row : 0;
}

int CRecordRows::ColumnFor(const SFinding& finding) const {
  if (finding.row == 0 || finding.col >= 0) return CGridRows::ColumnFor(finding);
  const int col = finding.field ? m_kinds.ColumnOf(*finding.field) : -1;
  return col >= 0 ? col : KindOf(finding.row).cursorColumn;
}

void CRecordRows::SelectRecords(const std::vector<const CRecordBase*>& records, bool cursorToLast) {
  bool isFirst = true;
  for (const CRecordBase* record : records) {
    const int row = FindRow(record);
    if (row == 0 || !m_grid.IsPresent(row)) continue;
    if (std::exchange(isFirst, false) || cursorToLast) m_grid.SetFocusCell(row, m_nameColumn);
    m_grid.SetRowSel(row);
  }
}

// ---- Typing

CComboItems CRecordRows::CellItems(int row, int col) const {
  return ColumnAt(row, col).Offered(Page().Design(), m_grid.GetValue(row, col));
}

bool CRecordRows::CellEntered(int row, int col, const SInput& input, const SComboItem* item, CString& why) {
  const CColumn& column = ColumnAt(row, col);
  const SEntry entry = ReadEntry(column.editor, input, item);
  if (!entry.isUnderstood || entry.isWrong) return CGridRows::CellEntered(row, col, input, item, why);
  SGridRow& line = m_grid.Row(row);
  if (!line.draft) line.draft = line.record->Clone();
  m_before = line.draft->Clone();
  if (column.alsoSets) column.alsoSets(*line.draft);
  StoreField(*column.field, *line.draft, entry.value, entry.text);
  SCell& cell = line.cells[static_cast<std::size_t>(col)];
  column.Fill(cell, *line.draft, Page().UserUnits());
  if (entry.isEmptied) {
    cell.text.clear();
    cell.hasValue = false;
  }
  return true;
}

void CRecordRows::CellChanged(int row, int col) {
  SGridRow& line = m_grid.Row(row);
  const CColumn& changed = ColumnAt(row, col);
  if (!line.cells[static_cast<std::size_t>(col)].wrong) {
    m_rules.Follow(*changed.field, *m_before, *line.draft);
    ShowChanged(row, *m_before, col);
  }
  CGridRows::CellChanged(row, col);
}

/// What differs from `before` counts as edited, and is shown with what depends on it, save in one column.
void CRecordRows::ShowChanged(int row, const CRecordBase& before, int except) {
  NoteEdited(row, before);
  for (int col = 0; col < m_grid.GetColumnCount(); ++col) {
    const CColumn& column = ColumnAt(row, col);
    if (col == except || !column.field) continue;
    const bool isChanged = !column.IsEqual(before, *m_grid.Row(row).draft);
    if (isChanged) EraseProblem(row, col);
    if (isChanged) m_grid.SetCellModified(row, col, true);
    if (isChanged || column.enabledOnChange || column.empty || column.shown) FillCell(row, col, true);
  }
}

/// Fields without a cell count as edited by themselves; an answer holds until its field changes.
void CRecordRows::NoteEdited(int row, const CRecordBase& before) {
  SGridRow& line = m_grid.Row(row);
  for (const CField& field : before.Kind().fields) {
    if (field.HasEqual(before, *line.draft)) continue;
    if (!m_kinds.HasCell(field)) {
      line.editedInForm.insert(&field);
      line.modified = true;
    }
    std::erase_if(line.answers, [&](const SAnswer& answer) { return answer.field == &field; });
  }
}

void CRecordRows::TakeDraft(int row, std::unique_ptr<CRecordBase> draft) {
  SGridRow& line = m_grid.Row(row);
  const std::unique_ptr<CRecordBase> kept = std::exchange(line.draft, std::move(draft));
  const CRecordBase& before = kept ? *kept : *line.record;
  NoteEdited(row, before);
  std::vector<int> changed;
  for (int col = 0; col < m_grid.GetColumnCount(); ++col) {
    const CColumn& column = ColumnAt(row, col);
    if (column.field && !column.IsEqual(before, *line.draft)) changed.push_back(col);
  }
  for (int col = 0; col < m_grid.GetColumnCount(); ++col) FillCell(row, col, false);
  for (const int col : changed) {
    m_grid.SetCellModified(row, col, true);
    EraseProblem(row, col);
  }
  Page().EditedRows();
}

void CRecordRows::TakeSettled(int row, std::unique_ptr<CRecordBase> draft) {
  SGridRow& line = m_grid.Row(row);
  const std::unique_ptr<CRecordBase> kept = std::exchange(line.draft, std::move(draft));
  ShowChanged(row, kept ? *kept : *line.record);
  Page().EditedRows();
}

// ---- Presence and order

void CRecordRows::Hide(int row) {
  const int end = m_grid.Row(row).IsOwned() ? row + 1 : m_grid.OwnedEnd(row);
  for (int hidden = row; hidden < end; ++hidden) {
    m_grid.Row(hidden).wentWithOwner = hidden != row && m_grid.IsPresent(hidden);
    m_grid.SetRowHeight(hidden, 0);
  }
  m_grid.SetRowModified(row);
  if (m_markColumn >= 0 && m_grid.Row(row).deletionConfirmed) m_grid.SetItemText(row, m_markColumn, MarkOf(row));
}

void CRecordRows::Show(int row) {
  const int end = m_grid.Row(row).IsOwned() ? row + 1 : m_grid.OwnedEnd(row);
  for (int shown = row; shown < end; ++shown)
    if (shown == row || m_grid.Row(shown).wentWithOwner) m_grid.SetRowHeight(shown, 1);
  m_grid.Row(row).deletionConfirmed = false;
  if (const CRecordBase* const record = m_grid.GetItemData(row)) m_merges.End(*record);
  if (m_markColumn >= 0 && !m_grid.Row(row).IsOwned()) m_grid.SetItemText(row, m_markColumn, MarkOf(row));
}

bool CRecordRows::SortByColumn(int col) {
  if (m_options.ordered || col < 0 || col >= m_grid.GetColumnCount()) return false;
  m_sortedUp = m_sortedBy != col || !m_sortedUp;
  m_sortedBy = col;
  const bool isNumeric = m_kinds.At(0).grid[static_cast<std::size_t>(col)].IsNumeric();
  m_grid.SortItems(col, m_sortedUp, isNumeric ? CGridCtrl::CellNumericCompare : CGridCtrl::CellTextCompare);
  return true;
}

bool CRecordRows::SortInOrder() {
  std::vector<int> order(static_cast<std::size_t>(m_grid.GetRowCount() - 1));
  std::iota(order.begin(), order.end(), 1);
  std::ranges::stable_sort(order, [this](int a, int b) {
    const SGridRow &first = m_grid.Row(a), &second = m_grid.Row(b);
    return first.record && second.record ? m_rules.StandsBefore(first, second) : first.record && !second.record;
  });
  if (std::ranges::is_sorted(order)) return false;
  m_grid.Reorder(order);
  return true;
}
