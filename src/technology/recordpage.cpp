#include "technology/recordpage.h"

#include <algorithm>

#include "model/services/application.h"
#include "technology/mergestyles.h"

namespace {
STechPageOptions PageOptions(const SPageOptions& options) {
  return {.title = options.title,
          .layout = options.layoutBeforeWriting ? ELayout::BeforeWriting : ELayout::AfterWriting,
          .rowByRow = options.rowByRow,
          .redraws = options.redraws,
          .writeLevel = options.writeLevel};
}
}  // namespace

CRecordPage::CRecordPage(CDesign& design, CCollectionBase& home, SPageOptions options)
    : CTechDialogPage(design, PageOptions(options)),
      m_options(std::move(options)),
      m_rows(*this, *this, home, m_options) {
  AddRows(m_rows);
  const auto onRow = [this] { return m_rows.CurrentRow() > 0; };
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
  AddCommand("Import", [this] { OnImport(m_rows); });
  AddCommand("Export", [this] { OnExport(m_rows, m_options.exportName); });
}

void CRecordPage::Columns(std::vector<CColumn> columns) {
  m_rows.Kinds().Add(m_rows.Home().Kind(), std::move(columns));
  m_rows.MakeColumns();
  const std::vector<CColumn>& grid = m_rows.Kinds().At(0).grid;
  if (std::ranges::any_of(grid, [](const CColumn& column) { return column.editor == EEditor::Length; }))
    AddCommand("Calculator", [this] { OnCalculator(m_rows); }, [this] { return IsLengthFocused(m_rows); });
}

void CRecordPage::CheckDeletion(const SCheckedRow& row, CFindings& findings) const {
  const CRecordBase& known = row.record ? *row.record : row.values;
  if (m_options.builtInStays && known.IsBuiltIn()) {
    findings.Refuse(row, m_options.builtInStays, known.RecordName());
  } else if (row.record && IsInUse(*row.record)) {
    m_options.silentInUse ? findings.RefuseInSilence(row)
                          : findings.Refuse(row, m_options.inUse, row.values.RecordName());
  }
}

bool CRecordPage::SortByColumn(CEditGrid&, int col) {
  if (!m_rows.SortByColumn(col)) return false;
  Changed();
  return true;
}

// ---- Commands

int CRecordPage::RowOrBeep() const {
  const int row = m_rows.CurrentRow();
  if (row == 0) CNoise::Beep(-1);
  return row;
}

bool CRecordPage::EditInForm(int row, std::unique_ptr<CRecordBase> draft, int ownerRow, int before) {
  const SRecordForm& entry = m_forms[static_cast<std::size_t>(m_rows.Kinds().IndexOf(draft->Kind()))];
  const std::unique_ptr<CRecordForm> form = entry.make(entry, {m_rows, row, ownerRow, *draft});
  if (form->DoModal() != CDialog::kOk) return false;
  if (row > 0) {
    m_rows.TakeDraft(row, std::move(draft));
  } else {
    row = AddDraft(std::move(draft), before);
  }
  m_rows.Grid().Row(row).answers = form->Answers();
  return true;
}

void CRecordPage::OnAdd() {
  std::unique_ptr<CRecordBase> draft = m_rows.MakeNew();
  m_options.styles ? void(EditInForm(0, std::move(draft))) : void(AddDraft(std::move(draft)));
}

/// A form, or a copy, would lose a text that does not parse: the cell is shown instead.
bool CRecordPage::HasWrongText(int first, int end) {
  for (int row = first; row < end; ++row) {
    const CFindings findings = m_rows.JudgeTexts(row);
    if (const SFinding* const refused = findings.FirstRefusal(); refused && m_rows.Grid().IsPresent(row))
      return !Refuse(*refused);
  }
  return false;
}

void CRecordPage::OnCopy() {
  if (RowOrBeep() == 0) return;
  const CEditGrid& grid = m_rows.Grid();
  const int source = grid.OwnerRow(m_rows.CurrentRow());
  if (HasWrongText(source, grid.OwnedEnd(source))) return;
  std::unique_ptr<CRecordBase> draft = m_rows.Values(source).Clone();
  if (draft->IsBuiltIn()) {  // a copy is not
    CName name{draft->RecordName()};
    std::erase_if(name.text, [](char c) { return c == '[' || c == ']'; });
    draft->Kind().nameField->set(*draft, &name);
  }
  if (!EditInForm(0, std::move(draft))) return;
  for (int owned = source + 1; owned < grid.OwnedEnd(source); ++owned)
    if (grid.IsPresent(owned)) m_rows.Append(nullptr, m_rows.Values(owned).Clone());
}

int CRecordPage::AddDraft(std::unique_ptr<CRecordBase> draft, int before) {
  const int row = m_rows.Append(nullptr, std::move(draft), before);
  m_rows.Grid().SetFocusCell(row, m_rows.KindOf(row).cursorColumn);
  SetModified();
  return row;
}

void CRecordPage::OnEdit() {
  const int row = RowOrBeep();
  if (row == 0 || HasWrongText(row, row + 1)) return;
  const int owner = m_rows.Grid().OwnerRow(row);
  std::unique_ptr<CRecordBase> draft = m_rows.Values(row).Clone();
  EditInForm(row, std::move(draft), owner == row ? 0 : owner);
}

void CRecordPage::OnDelete() {
  const int row = RowOrBeep();
  if (row == 0) return;
  CFindings findings(CFindings::EWants::UpToRefusal);
  const bool isBuiltIn = m_options.builtInStays && m_rows.Values(row).IsBuiltIn();  // a file may have brought it
  if (m_rows.Grid().GetItemData(row) || isBuiltIn) CheckDeletion(m_rows.Checked(row), findings);
  const SFinding* const refused = Accept(findings, [this](const SFinding& one) { return AnswersOfRow(one); });
  if (refused) return Report(*refused);
  const auto confirms = [](const SFinding& finding) { return finding.buttons == EButtons::YesNo; };
  m_rows.Grid().Row(row).deletionConfirmed = std::ranges::any_of(findings.All(), confirms);
  HideRow(row);
}

void CRecordPage::HideRow(int row) {
  m_rows.Hide(row);
  CEditGrid& grid = m_rows.Grid();
  const int below = grid.NeighbourRow(row, 1);
  const int next = below ? below : grid.NeighbourRow(row, -1);
  if (next) grid.SetFocusCell(next, grid.GetFocusCell().col);
  SetModified();
}

void CRecordPage::OnMove(int step) {
  CEditGrid& grid = m_rows.Grid();
  const int row = m_rows.CurrentRow();
  const int neighbour = row == 0 ? 0 : grid.NeighbourRow(row, step);
  const auto isPinned = [&](int at) {
    return m_options.builtIn == EBuiltIn::RowLocked && m_rows.Values(at).IsBuiltIn();
  };
  if (neighbour == 0 || isPinned(row) || isPinned(neighbour)) return CNoise::Beep(-1);
  grid.SwapRows(row, neighbour);
  grid.SetRowModified(neighbour);
  SetModified();
}

void CRecordPage::OnSort() {
  if (m_options.ordered) {
    if (m_rows.SortInOrder()) SetModified();
    return;
  }
  const int col = m_rows.Grid().GetFocusCell().col;
  SortByColumn(m_rows.Grid(), col < 0 ? m_rows.NameColumn() : col);
}

// ---- Merging: the rows of merged styles are hidden; their references move when the page is written

std::vector<int> CRecordPage::RowsToMerge() const {
  std::vector<int> rows = m_rows.Grid().SelectedRows();
  std::erase_if(rows, [this](int row) { return m_rows.Grid().Row(row).IsOwned(); });
  return rows;
}

bool CRecordPage::CanMerge() const {
  const std::vector<int> rows = RowsToMerge();
  return rows.size() > 1 && std::ranges::any_of(rows, [this](int row) { return m_rows.Grid().GetItemData(row); });
}

void CRecordPage::OnMerge() {
  CEditGrid& grid = m_rows.Grid();
  const std::vector<int> rows = RowsToMerge();
  std::vector<CMergeStyles::SStyle> styles;
  for (const int row : rows) {
    CRecordBase* const record = grid.GetItemData(row);
    styles.push_back({m_rows.Values(row).RecordName(), record, record ? m_rows.Merges().UsesOf(*record) : 0,
                      record && record->IsBuiltIn()});
  }
  const int current = m_rows.CurrentRow();
  CMergeStyles dialog(styles, current ? grid.GetItemData(current) : nullptr);
  if (dialog.DoModal() != CDialog::kOk) return;
  CRecordBase* const survivor = &dialog.Survivor();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (grid.GetItemData(rows[i]) == survivor) grid.SetFocusCell(rows[i], m_rows.NameColumn());
    if (!dialog.Goes(styles[i])) continue;
    m_rows.Hide(rows[i]);
    if (styles[i].record) m_rows.Merges().Add(*styles[i].record, *survivor);
  }
  grid.ClearSelection();
  m_rows.Refresh();
  SetModified();
}
