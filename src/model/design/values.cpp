#include "model/design/values.h"

CString ColourText(CColour colour) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  CString text = "#000000";
  for (std::size_t i = 6; i > 0; --i, colour.rgb >>= 4) text[i] = kDigits[colour.rgb & 15];
  return text;
}

bool ColourFromText(std::string_view text, CColour& out) {
  if (text.size() != 7 || text[0] != '#') return false;
  std::uint32_t rgb = 0;
  for (const char c : text.substr(1)) {
    const std::string_view digits = "0123456789ABCDEFabcdef";
    const std::size_t digit = digits.find(c);
    if (digit == std::string_view::npos) return false;
    rgb = rgb << 4 | static_cast<std::uint32_t>(digit < 16 ? digit : digit - 6);
  }
  out.rgb = rgb;
  return true;
}
