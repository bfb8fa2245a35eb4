// Values as people and scripts hand them to cells and fields, and read them back.
//
// None is the monostate; a check box holds a bool; an enumeration its number and a length its exact design units as an
// integer; an object is named by its text; a colour reads "#RRGGBB".
#pragma once
#include <cstdint>
#include <variant>
#include <vector>

#include "model/base/text.h"

using CValue = std::variant<std::monostate, bool, std::int64_t, CString>;

/// What a person does to a cell or field: types a text, or gives a value as it is.
struct SInput {
  bool isText = false;
  CValue value{};  // a CString when it is a text

  static SInput Text(CString text) { return {true, std::move(text)}; }
  static SInput Value(CValue value) { return {false, std::move(value)}; }
};

/// One entry of a combo: what is stored, and what is shown.
struct SComboItem {
  std::int64_t value;  // an enumerated number, or the address of a record
  CString text;
};
using CComboItems = std::vector<SComboItem>;

/// How a cell or a field is edited.
enum class EEditor : std::uint8_t {
  None,     // cannot be edited
  Text,     // CGridEdit
  Length,   // CGridEdit over "cell_size_value"
  Integer,  // CGridEdit
  Boolean,  // CGridBoolean
  Choice,   // a combo of enumerated numbers
  Object,   // a combo of records, or none
  Colour
};
/// The name of an editor as scripts read it: "text", "length", "integer", "check", "combo", "colour".
const char* EditorName(EEditor editor);

/// The item that the input names, or null. A text is compared with the items' texts, an empty one names none; a value
/// with the items' numbers (enumerations) or texts (objects).
const SComboItem* FindItem(const CComboItems& items, EEditor editor, const SInput& input);
/// The value of an entry as people and scripts read it: the number of an enumeration, otherwise its text; none of a
/// combo of objects has no value.
CValue OuterItemValue(const SComboItem& item, EEditor editor);
