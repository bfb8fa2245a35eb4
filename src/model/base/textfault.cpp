#include "model/base/textfault.h"

#include <algorithm>

STextPlace PlaceIn(std::string_view text, std::size_t at) {
  STextPlace place;
  for (std::size_t i = 0; i < std::min(at, text.size()); ++i) {
    const bool lineEnds = text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'));
    if (lineEnds) {
      ++place.line;
      place.column = 1;
    } else if ((text[i] & 0xC0) != 0x80) {  // bytes that continue a character are no columns
      ++place.column;
    }
  }
  return place;
}

void RequireText(std::string_view text) {
  const auto binary = std::find_if(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\r' && c != '\t';
  });
  if (binary != text.end())
    throw STextFault{static_cast<std::size_t>(binary - text.begin()), "this is a control character, so no text file"};
  if (IsValidUtf8(text)) return;
  std::size_t from = 0;  // a line feed is never part of another character, so one line at fault can be named
  for (std::size_t to; (to = text.find('\n', from)) != text.npos; from = to + 1)
    if (!IsValidUtf8(text.substr(from, to - from))) break;
  throw STextFault{from, "this line is not encoded in UTF-8"};
}

CString FaultText(const CString& file, STextPlace place, const CString& reason) {
  const CString args[] = {file, IntText(static_cast<std::int64_t>(place.line)),
                          IntText(static_cast<std::int64_t>(place.column)), reason};
  return FormatText("%1:%2:%3: %4.", args);
}

CString Quoted(std::string_view text) {
  constexpr std::size_t kMost = 60;
  if (text.size() <= kMost) return '"' + CString(text) + '"';
  std::size_t length = kMost;
  while ((text[length] & 0xC0) == 0x80) --length;  // never in the middle of a character
  return '"' + CString(text.substr(0, length)) + "...\"";
}
