#include "model/base/jsontext.h"

void AppendJsonText(CString& out, std::string_view text) {
  out += '"';
  std::size_t kept = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c >= 0x20 && c != '"' && c != '\\') continue;
    out.append(text.substr(kept, i - kept));
    kept = i + 1;
    out += '\\';
    switch (c) {
      case '\n': out += 'n'; break;
      case '\r': out += 'r'; break;
      case '\t': out += 't'; break;
      case '"':
      case '\\': out += static_cast<char>(c); break;
      default: (((out += "u00") += c < 0x10 ? '0' : '1') += "0123456789abcdef"[c % 16]);
    }
  }
  out.append(text.substr(kept));
  out += '"';
}

CString JsonOfVisibleText(std::string_view json) {
  CString out;
  for (std::size_t i = 0; i < json.size(); ++i) {
    const auto c = static_cast<unsigned char>(json[i]);
    const auto next = static_cast<unsigned char>(i + 1 < json.size() ? json[i + 1] : 0);
    const bool isLatinControl = c == 0xC2 && next >= 0x80 && next < 0xA0;
    if (c == 0x7F || isLatinControl) {
      const unsigned char control = isLatinControl ? next : c;
      (((out += "\\u00") += "0123456789abcdef"[control / 16])) += "0123456789abcdef"[control % 16];
      i += isLatinControl ? 1 : 0;
    } else {
      out += json[i];
    }
  }
  return out;
}
