// Text.
//
// All text of the program is UTF-8 in a CString, of any length and free of the C locale and the user's locale. Nothing
// here throws save for want of memory, and nothing here changes its result because of where or by whom it is run.
#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

using CString = std::string;
using CStringArray = std::vector<CString>;

/// Well-formed UTF-8: no overlong form, no surrogate, nothing above U+10FFFF, nothing cut off. A NUL byte is valid.
bool IsValidUtf8(std::string_view text);

/// Any of U+0000 to U+001F and U+007F to U+009F. `text` must be valid UTF-8.
bool HasControlCharacters(std::string_view text);

/// `text` as a terminal may show it: control characters and bytes that are no UTF-8 appear as "\x1B". A line feed
/// stays, or appears as an arrow when `onOneLine`; the carriage return before one goes.
CString VisibleText(std::string_view text, bool onOneLine = false);

/// Blank, tab, line feed, vertical tab, form feed or carriage return.
constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

/// The part of `text` without blanks (ASCII only) at either end.
std::string_view Trim(std::string_view text);

/// Equal but for the case of ASCII letters; other letters are compared as they are.
bool EqualNoCase(std::string_view a, std::string_view b);

/// `pattern` with %1 to %9 replaced by the first to ninth of `args` and %% by one percent sign. Arguments are inserted
/// as they are, percent signs included. A number without an argument stays visible, and so does a lone percent sign.
CString FormatText(std::string_view pattern, std::span<const CString> args);

void AppendInt(CString& out, std::int64_t value);
CString IntText(std::int64_t value);

/// Reads a whole text as a decimal integer: a sign ("+" or "-") or none, then digits only. False, with `value`
/// untouched, for anything else, blanks included, and for what does not fit.
bool ParseInt(std::string_view text, std::int64_t& value);
