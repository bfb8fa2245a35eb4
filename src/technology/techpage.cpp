#include "technology/techpage.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "model/services/application.h"

namespace {
/// One pass over the text; every function reads what it stands for, or reports failure and leaves the rest.
class CCalculation {
 public:
  explicit CCalculation(std::string_view text) : m_text(text) {}
  bool Whole(double& result) { return Sum(result, 0) && Next() == '\0'; }

 private:
  static constexpr int kMaxDepth = 64;  // parentheses within parentheses

  char Next() {
    while (!m_text.empty() && IsBlank(m_text.front())) m_text.remove_prefix(1);
    return m_text.empty() ? '\0' : m_text.front();
  }
  bool Take(char wanted) {
    if (Next() != wanted) return false;
    m_text.remove_prefix(1);
    return true;
  }
  bool Sum(double& result, int depth) {
    if (!Product(result, depth)) return false;
    for (double other = 0; Next() == '+' || Next() == '-';) {
      const bool plus = Take('+');
      if (!plus) Take('-');
      if (!Product(other, depth)) return false;
      result += plus ? other : -other;
    }
    return true;
  }
  bool Product(double& result, int depth) {
    if (!Factor(result, depth)) return false;
    for (double other = 0; Next() == '*' || Next() == '/';) {
      const bool times = Take('*');
      if (!times) Take('/');
      if (!Factor(other, depth)) return false;
      result = times ? result * other : result / other;
    }
    return true;
  }
  bool Factor(double& result, int depth) {
    bool negative = false;
    while (Next() == '-' || Next() == '+') {
      if (Take('-')) negative = !negative;
      Take('+');
    }
    if (Take('(')) {
      if (depth == kMaxDepth || !Sum(result, depth + 1) || !Take(')')) return false;
    } else {
      if (!IsDigit(Next()) && Next() != '.') return false;
      const auto read = std::from_chars(m_text.data(), m_text.data() + m_text.size(), result);
      if (read.ec != std::errc()) return false;
      m_text.remove_prefix(static_cast<std::size_t>(read.ptr - m_text.data()));
    }
    if (negative) result = -result;
    return true;
  }

  std::string_view m_text;
};
}  // namespace

bool Calculate(std::string_view expression, double& result) {
  double value = 0;
  if (expression.find('\0') != std::string_view::npos || !CCalculation(expression).Whole(value)) return false;
  if (!std::isfinite(value)) return false;
  result = value;
  return true;
}

CCalcDialog::CCalcDialog(CDesign* design, bool keepsUnits, double start)
    : CDialog(Text::Calculator), m_design(keepsUnits ? design : nullptr) {
  char buffer[64];
  constexpr int kDigits = 12;
  const auto end = std::to_chars(std::begin(buffer), std::end(buffer), start, std::chars_format::general, kDigits);
  m_expression.SetText(CString(std::begin(buffer), end.ptr));
  AddField(m_expression);
}

void CCalcDialog::OnOk() {
  double result = 0;
  if (!Calculate(m_expression.GetText(), result)) {
    CAppError::ReportError(m_expression, Text::CalculationInvalid, m_expression.GetText());
  } else if (m_design &&
             std::abs(result) * DsuPerUnit(m_design->GetUnits()->GetType()) > std::numeric_limits<int>::max()) {
    CAppError::ReportError(m_expression, Text::LengthInvalid, m_expression.GetText());
  } else {
    m_result = result;
    EndDialog(kOk);
  }
}

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
