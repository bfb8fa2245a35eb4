#include "model/controls/fields.h"

#include <algorithm>

const CFormField*& CFormField::Focused() {
  static const CFormField* field = nullptr;
  return field;
}

bool CFormField::Enter(const SInput& input, CString& why) {
  if (!m_enabled || !m_visible) {
    why = TextOf(Text::FieldNotEditable, CStringArray{m_name});
    return false;
  }
  if (!Take(input, why)) {
    if (why.empty()) why = TextOf(Text::FieldValueInvalid, CStringArray{m_name});
    return false;
  }
  m_modified = true;
  if (m_changed) m_changed();
  return true;
}

bool CEdit::Take(const SInput& input, CString&) {
  const auto* const text = std::get_if<CString>(&input.value);
  if (text) m_text = *text;
  return text != nullptr;
}

void CIntegerEdit::SetValue(int value) { m_value = std::clamp(value, m_least, m_most); }

bool CIntegerEdit::Take(const SInput& input, CString&) {
  std::int64_t number = 0;
  if (const auto* const text = std::get_if<CString>(&input.value)) {
    if (!ParseInt(Trim(*text), number)) return false;
  } else if (const auto* const value = std::get_if<std::int64_t>(&input.value)) {
    number = *value;
  } else {
    return false;
  }
  m_value = static_cast<int>(std::clamp(number, std::int64_t{m_least}, std::int64_t{m_most}));
  return true;
}

bool CCheckBox::Take(const SInput& input, CString&) {
  const auto* const checked = std::get_if<bool>(&input.value);
  if (checked) m_checked = *checked;
  return checked != nullptr;
}

CValue CComboBox::GetOuterValue() const {
  if (m_editor == EEditor::Choice) return m_value;
  return m_value ? CValue(m_text) : CValue();
}

void CComboBox::SetValue(std::int64_t value, const CString& text) {
  m_value = value;
  m_text = text;
  if (!text.empty()) return;
  const auto at =
      std::find_if(m_items.begin(), m_items.end(), [&](const SComboItem& item) { return item.value == value; });
  if (at != m_items.end()) m_text = at->text;
}

bool CComboBox::Take(const SInput& input, CString&) {
  const SComboItem* const item = FindItem(m_items, m_editor, input);
  if (!item) return false;
  m_value = item->value;
  m_text = item->text;
  return true;
}

bool CColourComboBox::Take(const SInput& input, CString&) {
  const auto* const text = std::get_if<CString>(&input.value);
  return text && ColourFromText(*text, m_colour);
}

CComboItems CColourComboBox::GetItems() const { return PaletteItems(); }

CComboItems PaletteItems() {
  static constexpr std::uint32_t kPalette[] = {0xC83434, 0x4D7FC4, 0x7FC87F, 0xCE7D2C, 0x9A4FC4, 0xE8B2A7, 0x02FFEE,
                                               0xF2EDA1, 0xD864FF, 0x848484, 0xFFFFFF, 0x000000, 0x00A000, 0xD0D000};
  CComboItems items;
  for (const std::uint32_t rgb : kPalette) items.push_back({rgb, ColourText(CColour{rgb})});
  return items;
}
