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

constexpr const STextEntry* FindText(unsigned id) {
  const STextEntry* const at =
      std::lower_bound(std::begin(kTexts), std::end(kTexts), id,
                       [](const STextEntry& entry, unsigned wanted) { return entry.id < wanted; });
  return at != std::end(kTexts) && at->id == id ? at : nullptr;
}

/// An identifier that has a text, checked when the program is compiled.
class CTextId {
 public:
  consteval CTextId(unsigned id) : m_id(id) {  // NOLINT(google-explicit-constructor): stands for the number
    if (id != 0 && !FindText(id)) throw "there is no text of this identifier in texts.def";
  }
  constexpr operator unsigned() const { return m_id; }  // NOLINT(google-explicit-constructor)

 private:
  unsigned m_id;
};

/// The text of an identifier with its values inserted; "#" and the number for one without a text, empty for 0.
CString TextOf(unsigned id, std::span<const CString> args = {});
