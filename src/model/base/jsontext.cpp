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
