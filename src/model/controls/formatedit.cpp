#include "model/controls/formatedit.h"

#include <charconv>

#include "model/base/decimal.h"

namespace {
constexpr int kMilliDegreesPerDegree = 1000;

int FailedLength(const CString& text, bool& ok) {
  ok = false;
  CAppError::SetLastError(Text::LengthInvalid, text);
  return 0;
}
}  // namespace

int CFormatEdit::StringToDsu(const CString& text, const CTechnology* design, bool& ok) {
  return StringToDsu(text, design->GetUnits()->GetType(), design->GetUnits()->GetPrecision(), ok);
}

int CFormatEdit::StringToDsu(const CString& text, int unitType, int, bool& ok) {
  int dsu = 0;
  ok = ReadLength(text, unitType, dsu);
  return ok ? dsu : FailedLength(text, ok);
}

int CFormatEdit::PlainStringToDsu(const CString& text, int unitType, bool& ok) {
  int dsu = 0;
  ok = ReadPlainLength(text, unitType, dsu);
  return ok ? dsu : FailedLength(text, ok);
}

bool CFormatEdit::IsRealNumber(const CString& text, bool allowNegative) {
  std::string_view number;
  int unitType = -1;
  return SplitUnit(Trim(text), number, unitType) && IsDecimal(number) && (allowNegative || !number.starts_with('-'));
}

void CFormatEdit::SetValue(const CTechnology* design, int dsu) {
  m_design = design;
  m_kind = EKind::Length;
  m_value = dsu;
  m_parsed = true;
  m_isTyped = false;
  m_text = design->DsuToString(dsu, false);
}

void CFormatEdit::SetValue(int number) { SetValue(IntText(number)); }

void CFormatEdit::SetValue(double number, int precision) {
  char buffer[512];
  const auto end = std::to_chars(std::begin(buffer), std::end(buffer), number, std::chars_format::fixed, precision);
  SetValue(end.ec == std::errc() ? CString(std::begin(buffer), end.ptr) : CString());
  m_kind = EKind::Number;
}

void CFormatEdit::SetValue(const CString& text) {
  m_kind = EKind::Text;
  m_isTyped = false;
  m_text = text;
}

void CFormatEdit::SetValue(const CAngle* angle) {
  m_kind = EKind::Angle;
  m_isTyped = false;
  m_text.clear();
  AppendExact(m_text, angle->GetMilliDegrees(), kMilliDegreesPerDegree);
}

CValue CFormatEdit::GetOuterValue() const {
  if (m_kind == EKind::Length) return m_parsed ? CValue(std::int64_t{m_value}) : CValue();
  return m_text;
}

CString CFormatEdit::GetUnit() const {
  return m_kind == EKind::Length ? CUnits::Suffix(m_design->GetUnits()->GetType()) : CString();
}

void CFormatEdit::GetValue(int& value, bool* ok) const {
  bool read = false;
  if (m_kind == EKind::Length) {
    read = m_parsed;
    if (!read) CAppError::SetLastError(Text::LengthInvalid, m_text);
    if (read) value = m_value;
  } else {
    std::int64_t number = 0;
    read = ParseInt(Trim(m_text), number) && number == static_cast<int>(number);
    if (read) value = static_cast<int>(number);
  }
  if (ok) *ok = read;
}

void CFormatEdit::GetValue(double& value, bool* ok) const {
  std::string_view text = Trim(m_text);
  const bool isDecimal = IsDecimal(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  double number = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool read = isDecimal && end.ec == std::errc();
  if (read) value = number;
  if (ok) *ok = read;
}

void CFormatEdit::GetValue(CAngle& value, bool* ok) const {
  int milliDegrees = 0;
  const bool read = ScaleDecimal(Trim(m_text), kMilliDegreesPerDegree, milliDegrees);
  if (read) value = CAngle(milliDegrees);
  if (ok) *ok = read;
}

void CFormatEdit::GetValue(CString& value, bool* ok) const {
  value = m_text;
  if (ok) *ok = true;
}

void CFormatEdit::OnUnitChange() {
  if (m_kind == EKind::Length) SetValue(m_design, m_value);
}

bool CFormatEdit::Take(const SInput& input, CString& why) {
  if (const auto* const value = std::get_if<std::int64_t>(&input.value); value && m_kind == EKind::Length) {
    if (*value != static_cast<int>(*value)) return false;
    SetValue(m_design, static_cast<int>(*value));
    return true;
  }
  const auto* const text = std::get_if<CString>(&input.value);
  if (!text) return false;
  why.clear();
  m_isTyped = true;
  m_text = *text;
  if (m_kind == EKind::Length) {
    int dsu = 0;
    m_parsed = Trim(*text).empty() || ReadLength(*text, m_design->GetUnits()->GetType(), dsu);
    if (m_parsed) m_value = dsu;  // an emptied field counts 0
  }
  return true;
}

void CCoordEdit::Init(bool imperial, int precision) {
  m_units.SetPrecision(precision);
  SetImperial(imperial);
}

void CCoordEdit::SetImperial(bool imperial) {
  long dsu = 0;
  const bool had = GetValue(dsu);
  m_units.SetType(imperial ? EUnitType::Mil : EUnitType::Millimetre);
  if (had) SetValue(dsu);
}

void CCoordEdit::SetValue(long dsu) {
  if (dsu != static_cast<int>(dsu)) return;
  m_value = static_cast<int>(dsu);
  m_text = LengthText(*m_value, m_units, false);
}

bool CCoordEdit::GetValue(long& dsu) const {
  int value = m_value.value_or(0);
  if (!m_value && !ReadPlainLength(m_text, m_units.GetType(), value)) return false;
  dsu = value;
  return true;
}

bool CCoordEdit::Take(const SInput& input, CString&) {
  const auto* const text = std::get_if<CString>(&input.value);
  if (!text) return false;
  m_text = *text;
  m_value.reset();
  return true;
}
