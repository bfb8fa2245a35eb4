// The one catalogue of texts. Code names an identifier and hands over the values; every text that people read stands in
// texts.def. An identifier without a text does not compile where it is a constant.
#pragma once
#include <algorithm>
#include <span>

#include "model/base/text.h"

struct STextEntry {
  unsigned id;
  std::string_view text;  // with %1 to %9 for the values
};
inline constexpr STextEntry kTexts[] = {
#define TECHSHEET_TEXT(id, text) {id, text},
#include "model/base/texts.def"
#undef TECHSHEET_TEXT
};
static_assert(std::is_sorted(std::begin(kTexts), std::end(kTexts),
                             [](const STextEntry& a, const STextEntry& b) { return a.id <= b.id; }),
              "texts.def is sorted by identifier, each once");

/// The place of an identifier's text in the catalogue, its size for one without a text. No pointer: g++ 12 takes none
/// into the array for a constant while sanitizers are on.
constexpr std::size_t FindText(unsigned id) {
  const auto before = [](const STextEntry& entry, unsigned wanted) { return entry.id < wanted; };
  const auto place =
      static_cast<std::size_t>(std::lower_bound(std::begin(kTexts), std::end(kTexts), id, before) - std::begin(kTexts));
  return place < std::size(kTexts) && kTexts[place].id == id ? place : std::size(kTexts);
}

/// An identifier that has a text, checked when the program is compiled.
class CTextId {
 public:
  consteval CTextId(unsigned id) : m_id(id) {  // NOLINT(google-explicit-constructor): stands for the number
    if (id != 0 && FindText(id) == std::size(kTexts)) throw "there is no text of this identifier in texts.def";
  }
  constexpr operator unsigned() const { return m_id; }  // NOLINT(google-explicit-constructor)

 private:
  unsigned m_id;
};

/// The text of an identifier with its values inserted; "#" and the number for one without a text, empty for 0.
CString TextOf(unsigned id, std::span<const CString> args = {});
