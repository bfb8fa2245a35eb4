#include "model/base/catalogue.h"

CString TextOf(unsigned id, std::span<const CString> args) {
  if (id == 0) return {};
  const std::size_t place = FindText(id);
  return place < std::size(kTexts) ? FormatText(kTexts[place].text, args) : "#" + IntText(id);
}
