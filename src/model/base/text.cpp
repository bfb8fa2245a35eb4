#include "model/base/text.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace {

/// Bytes of the UTF-8 sequence that starts at `at`; 0 when it is malformed.
std::size_t SequenceLength(const unsigned char* at, std::size_t left) {
  const unsigned char lead = at[0];
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length == 0 || length > left) return 0;
  if (length > 1) {  // the second byte also rules out overlong forms, surrogates and what lies beyond U+10FFFF
    const unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (at[1] < low || at[1] > high) return 0;
  }
  for (std::size_t i = 2; i < length; ++i)
    if ((at[i] & 0xC0) != 0x80) return 0;
  return length;
}

}  // namespace

bool IsValidUtf8(std::string_view text) {
  const auto* at = reinterpret_cast<const unsigned char*>(text.data());
  std::size_t left = text.size();
  while (left > 0) {
    for (std::uint64_t word = 0; left >= sizeof word; at += sizeof word, left -= sizeof word) {
      std::memcpy(&word, at, sizeof word);
      if (word & 0x8080808080808080U) break;
    }
    if (left == 0) break;
    const std::size_t length = SequenceLength(at, left);
    if (length == 0) return false;
    at += length;
    left -= length;
  }
  return true;
}

bool HasControlCharacters(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c < 0x20 || c == 0x7F) return true;
    if (c == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0) return true;
  }
  return false;
}

CString VisibleText(std::string_view text, bool onOneLine) {
  CString shown;
  while (!text.empty()) {
    const auto* const at = reinterpret_cast<const unsigned char*>(text.data());
    const std::size_t length = std::max<std::size_t>(SequenceLength(at, text.size()), 1);
    const unsigned char last = at[length - 1];  // of a control character, its number
    const bool isLineEnd = text.starts_with("\r\n");
    if (last == '\n') {
      shown += onOneLine ? "↵" : "\n";
    } else if (!isLineEnd &&
               (last < 0x20 || last == 0x7F || (at[0] == 0xC2 && last < 0xA0) || (length == 1 && last >= 0x80))) {
      constexpr char kDigits[] = "0123456789ABCDEF";
      ((shown += "\\x") += kDigits[last / 16]) += kDigits[last % 16];
    } else if (!isLineEnd) {
      shown += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return shown;
}

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

CString FormatText(std::string_view pattern, std::span<const CString> args) {
  const std::size_t plain = pattern.find('%');
  CString out(pattern.substr(0, plain));  // all of it for most texts
  for (std::size_t i = std::min(plain, pattern.size()); i < pattern.size(); ++i) {
    const char next = pattern[i] == '%' && i + 1 < pattern.size() ? pattern[i + 1] : '\0';
    if (next == '%') {
      out += '%';
      ++i;
    } else if (next >= '1' && next <= '9' && static_cast<std::size_t>(next - '1') < args.size()) {
      out += args[static_cast<std::size_t>(next - '1')];
      ++i;
    } else {
      out += pattern[i];
    }
  }
  return out;
}

void AppendInt(CString& out, std::int64_t value) {
  char digits[20];
  out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

CString IntText(std::int64_t value) {
  CString out;
  AppendInt(out, value);
  return out;
}

bool ParseInt(std::string_view text, std::int64_t& value) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  std::int64_t read = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  value = read;
  return true;
}
