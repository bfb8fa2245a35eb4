#include "model/controls/value.h"

#include <algorithm>

const char* EditorName(EEditor editor) {
  static constexpr const char* kNames[] = {"", "text", "length", "integer", "check", "combo", "combo", "colour"};
  return kNames[static_cast<std::size_t>(editor)];
}

const SComboItem* FindItem(const CComboItems& items, EEditor editor, const SInput& input) {
  const auto found = std::find_if(items.begin(), items.end(), [&](const SComboItem& item) {
    if (const auto* const text = std::get_if<CString>(&input.value)) return item.text == *text;
    if (std::holds_alternative<std::monostate>(input.value)) return editor == EEditor::Object && item.value == 0;
    const auto* const number = std::get_if<std::int64_t>(&input.value);
    return editor == EEditor::Choice && number && *number == item.value;
  });
  return found == items.end() ? nullptr : &*found;
}

CValue OuterItemValue(const SComboItem& item, EEditor editor) {
  if (editor == EEditor::Choice) return item.value;
  return editor == EEditor::Object && item.value == 0 ? CValue() : CValue(item.text);
}
