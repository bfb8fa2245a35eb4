#include "technology/techpage.h"

#include "model/services/application.h"
#include "technology/calculator.h"

CTechDialogPage::CTechDialogPage(CDesign& design, CTextId title, const CString& settings)
    : CPropertyPagePlus(title),
      m_design(design),
      m_units(*design.GetUnits()),
      m_units2(*design.GetUnits2()),
      m_subscription([this](const SEvent& event) {
        if (event.name == "UnitsChanged" && event.subject == &m_design) OnUnitsChanged();
      }) {
  m_grid.SetOwner(this);
  m_grid.SetRegistryKey(settings);
  AddGrid("grid", m_grid);
  ResizeControl("grid", true, true);
}

void CTechDialogPage::OnSetActive() { OnUnitsChanged(); }

bool CTechDialogPage::ParseLength(const CString& text, int& dsu) const {
  bool ok = false;
  int value = 0;
  if (CApplication::IsExtended()) {
    value = CFormatEdit::PlainStringToDsu(text, m_units.GetType(), ok);
  } else {
    value = CFormatEdit::StringToDsu(text, &m_design, ok);
  }
  if (ok) dsu = value;
  return ok;
}

CString CTechDialogPage::CellCopy(const SCell& cell) const {
  const bool isExact = cell.editor == EEditor::Length && cell.hasValue && !cell.wrong;
  return isExact ? LengthText(static_cast<int>(cell.value), m_units, true) : cell.text;
}

CString CTechDialogPage::CellHint(const SCell& cell) const {
  if (cell.editor != EEditor::Length || !cell.hasValue || cell.wrong) return {};
  return LengthText(static_cast<int>(cell.value), m_units2, false) + " " + CUnits::Suffix(m_units2.GetType());
}

bool CTechDialogPage::EditCell(int row, int col, const SInput& input) {
  CString why;
  return m_grid.Enter(row, col, input, why);
}

bool CTechDialogPage::IsLengthFocused() const {
  const SGridPlace focus = m_grid.GetFocusCell();
  return m_grid.IsValid(focus.row, focus.col) && m_grid.IsPresent(focus.row) &&
         m_grid.GetCellEditClass(focus.row, focus.col) == EEditor::Length && m_grid.IsCellEnabled(focus.row, focus.col);
}

void CTechDialogPage::OnCalculator() {
  const SGridPlace focus = m_grid.GetFocusCell();
  int dsu = 0;
  m_grid.GetCellData(focus.row, focus.col, "cell_size_value", dsu);
  CCalcDialog calculator(&m_design, true, m_design.DsuToUserUnits(dsu));
  if (calculator.DoModal() != CDialog::kOk) return;
  const int result = CDesign::DsuFromUserUnits(calculator.GetResult(), m_units);
  EditCell(focus.row, focus.col, SInput::Value(std::int64_t{result}));
}

void CTechDialogPage::OnUnitsChanged() {
  // While they are the same, a text that does not parse must not give way, unseen, to the old value.
  const bool isSame = m_units.EqualValues(*m_design.GetUnits());
  m_units = *m_design.GetUnits();
  m_units2 = *m_design.GetUnits2();
  std::vector<SCell*> lengths;  // found before any is written, which keeps many fetches from memory under way
  for (int col = 0; col < m_grid.GetColumnCount(); ++col) {
    if (!m_grid.Column(col).hasLengths) continue;
    m_grid.Column(col).unit = CUnits::Suffix(m_units.GetType());
    for (int row = 1; !isSame && row < m_grid.GetRowCount(); ++row)
      if (SCell& cell = m_grid.Cell(row, col); cell.editor == EEditor::Length) lengths.push_back(&cell);
  }
  for (SCell* const cell : lengths) {
    if (!cell->hasValue && !cell->wrong) continue;  // emptied, or a word in the place of a length
    cell->wrong = false;
    cell->text.clear();
    if (cell->hasValue) AppendLength(cell->text, static_cast<int>(cell->value), m_units, false);
  }
  Changed();
}
