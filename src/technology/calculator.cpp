#include "technology/calculator.h"

#include <charconv>
#include <cmath>
#include <limits>

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
