#include "technology/recordpage.h"

#include <algorithm>
#include <numeric>

#include "model/services/application.h"
#include "model/services/registry.h"

CRecordPage::CRecordPage(CDesign& design, const SPageOptions& options, CCollectionBase& home,
                         std::vector<CColumn> columns)
    : CTechDialogPage(design, options.title, options.settings), m_options(options), m_home(home) {
  AddBinder({home.Kind(), std::move(columns)});
  std::vector<SGridColumn> headers;
  bool hasLengths = false;
  for (const CColumn& column : m_binders.front().columns) {
    headers.push_back({column.header, {}, column.align, column.width, column.editor == EEditor::Length});
    hasLengths |= headers.back().hasLengths;
  }
  if (home.Kind().nameField) m_nameColumn = ColumnOf(*home.Kind().nameField);
  m_grid.SetColumns(std::move(headers));
  const auto onRow = [this] { return CurrentRow() > 0; };
  AddCommand("Add", [this] { OnAdd(); }, {}, m_options.styles);
  AddCommand("Edit", [this] { OnEdit(); }, m_options.styles ? std::function<bool()>() : onRow);
  if (m_options.styles) AddCommand("Copy", [this] { OnCopy(); });
  if (m_options.styles) AddCommand("Merge", [this] { OnMerge(); }, [this] { return CanMerge(); });
  AddCommand("Delete", [this] { OnDelete(); });
  if (m_options.ordered) {
    AddCommand("MoveUp", [this] { OnMove(-1); });
    AddCommand("MoveDown", [this] { OnMove(1); });
  }
  AddCommand("Sort", [this] { OnSort(); });
  AddCommand("Import", [this] { OnImport(); });
  AddCommand("Export", [this] { OnExport(); });
  if (hasLengths) AddCommand("Calculator", [this] { OnCalculator(); }, [this] { return IsLengthFocused(); });
}

void CRecordPage::AddBinder(SRowBinder binder) {
  for (std::size_t col = 0; col < binder.columns.size(); ++col) {
    const CColumn& column = binder.columns[col];
    if (!column.field) continue;
    if (binder.cursorColumn < 0) binder.cursorColumn = static_cast<int>(col);
    const EFieldClass fieldClass = column.field->type->fieldClass;
    if (fieldClass == EFieldClass::Reference || (column.shown && fieldClass != EFieldClass::Length))
      binder.shownColumns.push_back(static_cast<int>(col));
  }
  m_binders.push_back(std::move(binder));
}

void CRecordPage::AddOwnedRows(const CKind& kind, std::vector<CColumn> columns) {
  assert(static_cast<int>(columns.size()) == m_grid.GetColumnCount());
  AddBinder({kind, std::move(columns)});
}

const std::vector<CColumn>& CRecordPage::FormColumns(const CKind& kind) const {
  const SRowBinder& binder = BinderOf(kind);
  return binder.formColumns.empty() ? binder.columns : binder.formColumns;
}

int CRecordPage::ColumnOf(const CField& field) const {
  for (const SRowBinder& binder : m_binders)
    for (std::size_t col = 0; col < binder.columns.size(); ++col)
      if (binder.columns[col].field == &field) return static_cast<int>(col);
  return -1;
}

CCollectionBase& CRecordPage::HomeOf(int row) const {
  return m_grid.Row(row).IsOwned() ? *m_grid.GetItemData(m_grid.OwnerRow(row))->Child(0) : m_home;
}

// ---- Filling

void CRecordPage::OnInitDialog() {
  m_grid.DeleteAllRows();
  std::vector<CRecordBase*> records;
  for (CRecordBase* record = m_home.FirstRecord(); record; record = record->Next()) records.push_back(record);
  if (m_options.styles)
    std::stable_sort(records.begin(), records.end(),
                     [](const auto* a, const auto* b) { return a->RecordName() < b->RecordName(); });
  for (CRecordBase* record : records) AppendRows(*record);
  m_seenRevision = m_design.Journal().Revision();
  m_grid.LoadSettings();
  if (m_options.keepsSort) SortAsKept();
  m_grid.SetFocusCell(1, m_nameColumn);
  SelectUsed();
}

void CRecordPage::SelectUsed() {
  bool isFirst = true;
  for (const CDesignItem* item : m_design.Selection().Items()) {
    const CRecordBase* const used = UsedBy(*item);
    for (int row = 1; used && row < m_grid.GetRowCount(); ++row) {
      if (m_grid.GetItemData(row) != used) continue;
      if (std::exchange(isFirst, false)) m_grid.SetFocusCell(row, m_nameColumn);
      m_grid.SetRowSel(row);
      break;
    }
  }
}

void CRecordPage::OnSetActive() {
  CTechDialogPage::OnSetActive();
  DropLostRows();
  RefreshMarks();
  RefreshShown();
}

int CRecordPage::AppendRow(CRecordBase* record, std::unique_ptr<CRecordBase> draft, int before) {
  const int row = m_grid.InsertRow(before);
  m_grid.SetItemData(row, record);
  for (std::size_t i = 0; CCollectionBase* owned = draft ? draft->Child(i) : nullptr; ++i)
    while (owned->FirstRecord()) owned->Remove(*owned->FirstRecord());  // they have rows of their own, or none
  SGridRow& line = m_grid.Row(row);
  line.draft = std::move(draft);
  line.binder = &ValuesOf(line).Kind() == &m_home.Kind() ? 0 : 1;
  FillRow(row);
  return row;
}

void CRecordPage::AppendRows(CRecordBase& record) {
  AppendRow(&record);
  if (m_binders.size() == 1) return;
  for (CRecordBase* owned = record.Child(0)->FirstRecord(); owned; owned = owned->Next()) AppendRow(owned);
}

/// Records that another page has taken out of the design, with what they refer to, have no rows any more.
void CRecordPage::DropLostRows() {
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    const CRecordBase* const record = m_grid.GetItemData(row);
    if (!record || record->IsIn()) continue;
    m_grid.SetRowHeight(row, 0);
    m_grid.SetItemData(row, nullptr);
  }
}

void CRecordPage::FillRow(int row) {
  for (int col = 0; col < m_grid.GetColumnCount(); ++col) FillCell(row, col, false);
}

void CRecordPage::FillCell(int row, int col, bool refill) {
  const CColumn& column = ColumnAt(row, col);
  SCell& cell = m_grid.Cell(row, col);
  if (!column.field) {
    cell.text = column.isMark ? UsedMarkOf(row) : column.always.text;
    cell.value = column.always.value;
    return;
  }
  const CRecordBase& values = ValuesOf(row);
  const bool isEmpty = column.empty && column.empty(values);
  const CColumn::Test& test = refill ? column.enabledOnChange : column.enabledAtFill;
  const bool isOff = isEmpty || (test && !test(values));
  if (!refill || !cell.wrong || isOff) column.Fill(cell, values, UserUnits());  // a text that does not parse stays
  const CRecordBase* const record = m_grid.GetItemData(row);
  if (column.readOnly && column.readOnly(record ? *record : values)) {
    cell.enabled = false;
    return;
  }
  if (test) cell.enabled = !isOff;
  if (isEmpty) {
    cell.enabled = false;
  } else if (column.empty && !test) {
    cell.enabled = true;
  }
}

CString CRecordPage::UsedMarkOf(int row) const {
  const CRecordBase* const record = m_grid.GetItemData(row);
  return record && IsInUse(*record) ? "X" : "";
}

void CRecordPage::RefreshMarks() {
  for (int col = 0; col < m_grid.GetColumnCount(); ++col) {
    if (!m_binders.front().columns[static_cast<std::size_t>(col)].isMark) continue;
    for (int row = 1; row < m_grid.GetRowCount(); ++row)
      if (!m_grid.Row(row).IsOwned()) m_grid.SetItemText(row, col, UsedMarkOf(row));
  }
}

/// Cells that show something of another record, which another page may have changed.
void CRecordPage::RefreshShown() {
  for (int row = 1; row < m_grid.GetRowCount(); ++row)
    for (const int col : BinderOf(row).shownColumns)
      if (m_grid.IsPresent(row) && !m_grid.Cell(row, col).modified) FillCell(row, col, true);
}

// ---- Typing

CRecordBase& CRecordPage::Draft(int row) {
  SGridRow& line = m_grid.Row(row);
  if (!line.draft) line.draft = line.record->Clone();
  return *line.draft;
}

CComboItems CRecordPage::CellItems(int row, int col) const {
  return ColumnAt(row, col).Offered(m_design, m_grid.GetValue(row, col));
}

CRecordPage::SEntry CRecordPage::ReadEntry(const CColumn& column, const SInput& input, const SComboItem* item) const {
  const auto* const text = std::get_if<CString>(&input.value);
  const auto* const number = std::get_if<std::int64_t>(&input.value);
  const auto* const checked = std::get_if<bool>(&input.value);
  SEntry entry;
  switch (column.editor) {
    case EEditor::Text: entry.isUnderstood = text != nullptr; break;
    case EEditor::Length:
    case EEditor::Integer:
      if (number) {
        entry.isUnderstood = *number == static_cast<int>(*number);
        entry.value = *number;
      } else if (text && column.editor == EEditor::Integer) {
        entry.isUnderstood = true;
        const std::size_t digits = Trim(*text).find_first_not_of("0123456789", Trim(*text).starts_with('-') ? 1 : 0);
        if (!ParseInt(Trim(*text).substr(0, digits), entry.value) || entry.value != static_cast<int>(entry.value))
          entry.value = 0;
      } else if (text) {
        int dsu = 0;
        entry.isUnderstood = true;
        entry.isEmptied = Trim(*text).empty();
        entry.isWrong = !entry.isEmptied && !ParseLength(*text, dsu);
        entry.value = dsu;
      }
      break;
    case EEditor::Boolean:
      entry.isUnderstood = checked != nullptr;
      entry.value = checked && *checked;
      break;
    case EEditor::Choice:
    case EEditor::Object:
      entry.isUnderstood = item != nullptr;
      if (item) entry.value = item->value;
      break;
    case EEditor::Colour: {
      CColour colour;
      entry.isUnderstood = text && ColourFromText(*text, colour);
      entry.value = colour.rgb;
      break;
    }
    default: break;
  }
  return entry;
}

bool CRecordPage::CellFits(int row, int col, const SInput& input, const SComboItem* item) const {
  const SEntry entry = ReadEntry(ColumnAt(row, col), input, item);
  if (entry.isWrong) CAppError::SetLastError(0);
  return entry.isUnderstood && !entry.isWrong;
}

bool CRecordPage::CellEntered(int row, int col, const SInput& input, const SComboItem* item, CString& why) {
  const CColumn& column = ColumnAt(row, col);
  SCell& cell = m_grid.Cell(row, col);
  const auto* const text = std::get_if<CString>(&input.value);
  const SEntry entry = ReadEntry(column, input, item);
  if (!entry.isUnderstood) {
    why = TextOf(Text::CellValueInvalid, CStringArray{RowText(row), m_grid.Column(col).title});
    return false;
  }
  if (entry.isWrong) {  // stays visible; Apply refuses the row here
    CAppError::SetLastError(0);
    cell.text = *text;
    cell.wrong = true;
    return true;
  }
  CRecordBase& draft = Draft(row);
  m_before = draft.Clone();
  column.Store(draft, entry.value, item ? item->text : text ? *text : CString());
  column.Fill(cell, draft, UserUnits());
  if (entry.isEmptied) {
    cell.text.clear();
    m_grid.DeleteCellData(row, col, "cell_size_value");
  }
  return true;
}

void CRecordPage::CellChanged(int row, int col) {
  const CColumn& changed = ColumnAt(row, col);
  if (!m_grid.Cell(row, col).wrong) {
    CRecordBase& draft = Draft(row);
    Derive(*changed.field, *m_before, draft);
    for (int other = 0; other < m_grid.GetColumnCount(); ++other) {
      const CColumn& column = ColumnAt(row, other);
      if (other == col || !column.field) continue;
      const bool derived = !column.IsEqual(*m_before, draft);
      if (derived) m_grid.SetCellModified(row, other, true);
      if (derived || column.enabledOnChange || column.empty || column.shown) FillCell(row, other, true);
    }
  }
  SetModified();
}

void CRecordPage::TakeDraft(int row, std::unique_ptr<CRecordBase> draft) {
  const CRecordBase& before = ValuesOf(row);
  std::vector<int> changed;
  for (int col = 0; col < m_grid.GetColumnCount(); ++col) {
    const CColumn& column = ColumnAt(row, col);
    if (column.field && !column.IsEqual(before, *draft)) changed.push_back(col);
  }
  SGridRow& line = m_grid.Row(row);
  for (const CField& field : draft->Kind().fields) {
    const bool differs =
        !field.type->equal(field.at(const_cast<void*>(before.FieldsAddress())), field.at(draft->FieldsAddress()));
    if (differs && ColumnOf(field) < 0) line.editedInForm.insert(&field);
  }
  if (!line.editedInForm.empty()) line.modified = true;
  line.draft = std::move(draft);
  FillRow(row);
  for (const int col : changed) m_grid.SetCellModified(row, col, true);
  SetModified();
}

// ---- Commands

int CRecordPage::CurrentRow() const {
  const SGridPlace focus = m_grid.GetFocusCell();
  return m_grid.IsValid(focus.row, 0) && m_grid.IsPresent(focus.row) ? focus.row : 0;
}

std::unique_ptr<CRecordBase> CRecordPage::MakeNew() {
  std::unique_ptr<CRecordBase> draft = m_home.Kind().make();
  InitNew(*draft);
  return draft;
}

void CRecordPage::OnAdd() {
  std::unique_ptr<CRecordBase> draft = MakeNew();
  if (!m_options.styles || EditDraft(0, *draft)) AddDraft(std::move(draft));
}

void CRecordPage::OnCopy() {
  if (CurrentRow() == 0) {
    CNoise::Beep(-1);
    return;
  }
  const int source = m_grid.OwnerRow(CurrentRow());
  std::unique_ptr<CRecordBase> draft = ValuesOf(source).Clone();
  CName name{draft->RecordName()};
  if (name.text.starts_with('[')) {  // a copy is not built in
    std::erase_if(name.text, [](char c) { return c == '[' || c == ']'; });
    m_home.Kind().nameField->set(*draft, &name);
  }
  if (!EditDraft(0, *draft)) return;
  AddDraft(std::move(draft));
  for (int owned = source + 1; owned < m_grid.OwnedEnd(source); ++owned)
    if (m_grid.IsPresent(owned)) m_grid.SetRowModified(AppendRow(nullptr, ValuesOf(owned).Clone()));
}

void CRecordPage::AddDraft(std::unique_ptr<CRecordBase> draft, int before) {
  const int row = AppendRow(nullptr, std::move(draft), before);
  m_grid.SetRowModified(row);
  m_grid.SetFocusCell(row, BinderOf(row).cursorColumn);
  SetModified();
}

void CRecordPage::OnEdit() {
  const int row = CurrentRow();
  if (row == 0) {
    CNoise::Beep(-1);
    return;
  }
  std::unique_ptr<CRecordBase> draft = ValuesOf(row).Clone();
  if (EditDraft(row, *draft)) TakeDraft(row, std::move(draft));
}

bool CRecordPage::MayDelete(int row) {
  if (!IsInUse(*m_grid.GetItemData(row))) return true;
  CAppError::Report(m_options.inUse, {RowName(row)});
  return false;
}

void CRecordPage::OnDelete() {
  const int row = CurrentRow();
  if (row == 0) {
    CNoise::Beep(-1);
    return;
  }
  if (!m_grid.GetItemData(row) || MayDelete(row)) DeleteRow(row);
}

void CRecordPage::HideRow(int row) {
  const int end = m_grid.Row(row).IsOwned() ? row + 1 : m_grid.OwnedEnd(row);
  for (int hidden = row; hidden < end; ++hidden) {
    m_grid.Row(hidden).wentWithOwner = hidden != row && m_grid.IsPresent(hidden);
    m_grid.SetRowHeight(hidden, 0);
  }
  m_grid.SetRowModified(row);
}

/// Shows a row again whose record stays, with those that went with it.
void CRecordPage::ShowRow(int row) {
  const int end = m_grid.Row(row).IsOwned() ? row + 1 : m_grid.OwnedEnd(row);
  for (int shown = row; shown < end; ++shown)
    if (shown == row || m_grid.Row(shown).wentWithOwner) m_grid.SetRowHeight(shown, 1);
}

void CRecordPage::DeleteRow(int row) {
  HideRow(row);
  const int below = m_grid.NeighbourRow(row, 1);
  const int next = below ? below : m_grid.NeighbourRow(row, -1);
  if (next) m_grid.SetFocusCell(next, m_grid.GetFocusCell().col);
  SetModified();
}

void CRecordPage::OnMove(int step) {
  const int row = CurrentRow();
  const int neighbour = row == 0 ? 0 : m_grid.NeighbourRow(row, step);
  if (neighbour == 0 || IsPinned(row) || IsPinned(neighbour)) {
    CNoise::Beep(-1);
    return;
  }
  m_grid.SwapRows(row, neighbour);
  m_grid.SetRowModified(neighbour);
  SetModified();
}

bool CRecordPage::SortsBefore(const SGridRow& a, const SGridRow& b) const {
  const auto col = static_cast<std::size_t>(std::max(m_sortedBy, 0));
  if (m_binders.front().columns[col].IsNumeric()) return a.cells[col].value < b.cells[col].value;
  return a.cells[col].text < b.cells[col].text;
}

void CRecordPage::OnSort() {
  if (!m_options.ordered) {
    const int col = m_grid.GetFocusCell().col;
    SortByColumn(m_grid, col < 0 ? m_nameColumn : col);
    return;
  }
  std::vector<int> order(static_cast<std::size_t>(m_grid.GetRowCount() - 1));
  std::iota(order.begin(), order.end(), 1);
  std::stable_sort(order.begin(), order.end(),
                   [this](int a, int b) { return SortsBefore(m_grid.Row(a), m_grid.Row(b)); });
  if (std::is_sorted(order.begin(), order.end())) return;
  m_grid.Reorder(order);
  SetModified();
}

bool CRecordPage::SortByColumn(CEditGrid& grid, int col) {
  if (m_options.ordered || col < 0 || col >= grid.GetColumnCount()) return false;
  m_sortedUp = m_sortedBy != col || !m_sortedUp;
  m_sortedBy = col;
  grid.SortItems(col, m_sortedUp,
                 m_binders.front().columns[static_cast<std::size_t>(col)].IsNumeric() ? CGridCtrl::CellNumericCompare
                                                                                      : CGridCtrl::CellTextCompare);
  Changed();
  return true;
}

namespace {
constexpr const char* kSortBy = "SortBy";
constexpr const char* kSortDown = "SortDown";
}  // namespace

void CRecordPage::SortAsKept() {
  int col = 0;  // rows stand by name
  CAppRegistry(m_options.settings).GetValue(kSortBy, col);
  m_sortedBy = -1;
  int down = 0;
  CAppRegistry(m_options.settings).GetValue(kSortDown, down);
  if (col <= 0) return;
  SortByColumn(m_grid, col);
  if (down) SortByColumn(m_grid, col);
}

void CRecordPage::SaveLayout() const {
  m_grid.SaveSettings();
  if (!m_options.keepsSort || m_sortedBy < 0) return;
  CAppRegistry settings(m_options.settings);
  settings.SetValue(kSortBy, m_sortedBy);
  settings.SetValue(kSortDown, m_sortedUp ? 0 : 1);
}
