// The one catalogue of texts. Code names an identifier (Text::SpansCross) and hands over the values. The numbers stand
// in textids.def, the texts in texts.def, which catalogue.cpp alone reads: another wording compiles one file again.
#pragma once
#include <span>

#include "model/base/text.h"

/// The identifier of a text, 0 for none. Other numbers written in code do not compile. One from outside, such as that
/// of an undo level, becomes an identifier explicitly and need not have a text.
class CTextId {
 public:
  constexpr CTextId() = default;
  consteval CTextId(int none) {  // NOLINT(google-explicit-constructor): 0, as in SetLastError(0)
    if (none != 0) throw "a text is called by its name, Text::...";
  }
  constexpr explicit CTextId(unsigned number) : m_number(number) {}
  constexpr operator unsigned() const { return m_number; }  // NOLINT(google-explicit-constructor): an undo level, a key

 private:
  unsigned m_number = 0;
};

namespace Text {
#define TECHSHEET_TEXT(Name, number) inline constexpr CTextId Name{number##U};
#include "model/base/textids.def"
#undef TECHSHEET_TEXT
}  // namespace Text

/// The text of an identifier with its values inserted; "#" and the number for one without a text, empty for 0.
CString TextOf(CTextId id, std::span<const CString> args = {});
