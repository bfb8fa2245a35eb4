#include "model/base/decimal.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace {

constexpr auto kPowersOfTen = [] {
  std::array<std::uint64_t, 19> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}();
constexpr std::uint64_t PowerOfTen(int exponent) { return kPowersOfTen[static_cast<std::size_t>(exponent)]; }

constexpr std::uint64_t Magnitude(std::int64_t value) {
  return value < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
}
constexpr std::uint64_t DivideRounded(std::uint64_t dividend, std::uint64_t divisor) {
  const std::uint64_t rest = dividend % divisor;
  return dividend / divisor + (rest >= divisor - rest);
}
/// The same by a scale. Those of the units are divided by as constants, which is a multiplication.
std::uint64_t UnscaleRounded(std::uint64_t dividend, std::int32_t scale) {
  switch (scale) {
    case kNmPerUnit[kUnitMil]: return DivideRounded(dividend, kNmPerUnit[kUnitMil]);
    case kNmPerUnit[kUnitMm]: return DivideRounded(dividend, kNmPerUnit[kUnitMm]);
    case kNmPerUnit[kUnitInch]: return DivideRounded(dividend, kNmPerUnit[kUnitInch]);
    case kNmPerUnit[kUnitMicrometre]: return DivideRounded(dividend, kNmPerUnit[kUnitMicrometre]);
    default: return DivideRounded(dividend, static_cast<std::uint64_t>(scale));
  }
}

/// False, with `value` untouched, when `magnitude` with that sign is not a 32-bit integer.
bool Fit(std::uint64_t magnitude, bool negative, std::int32_t& value) {
  if (magnitude > 0x7FFFFFFFU + std::uint64_t{negative}) return false;
  const auto result = static_cast<std::int64_t>(magnitude);
  value = static_cast<std::int32_t>(negative ? -result : result);
  return true;
}

/// The parts of a number's text. `digits` holds the point still, if there is one.
struct SDecimalText {
  std::string_view digits;
  std::size_t point = 0;      // digits before it
  std::int64_t exponent = 0;  // limited far outside of what can matter
  bool negative = false;
};

bool ReadDecimalText(std::string_view text, SDecimalText& out) {
  std::size_t at = 0;
  out.negative = !text.empty() && text[0] == '-';
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) ++at;
  const auto skipDigits = [&] {
    const std::size_t from = at;
    while (at < text.size() && IsDigit(text[at])) ++at;
    return at - from;
  };
  const std::size_t start = at;
  out.point = skipDigits();
  std::size_t count = out.point;
  if (at < text.size() && text[at] == '.') {
    ++at;
    count += skipDigits();
  }
  out.digits = text.substr(start, at - start);
  out.exponent = 0;
  if (count == 0) return false;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    ++at;
    const bool down = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    const std::size_t from = at;
    if (skipDigits() == 0) return false;
    constexpr std::int64_t kLimit = std::int64_t{1} << 50;  // more than any text has digits
    for (const char c : text.substr(from, at - from))
      if (out.exponent < kLimit) out.exponent = out.exponent * 10 + (c - '0');
    if (down) out.exponent = -out.exponent;
  }
  return at == text.size();
}

/// Hands out the digits of a number one by one, beginning at a decimal place of the caller's choice, zeros before the
/// first and behind the last.
class CDigits {
 public:
  explicit CDigits(const SDecimalText& text)
      : m_digits(text.digits), m_place(static_cast<std::int64_t>(text.point) + text.exponent) {
    while (!m_digits.empty() && (m_digits[0] == '0' || m_digits[0] == '.')) {
      if (m_digits[0] == '0') --m_place;
      m_digits.remove_prefix(1);
    }
  }
  /// The value is below 10 to the power of this, and not below a tenth of that unless it is 0.
  std::int64_t Place() const { return m_place; }
  bool AtEnd() const { return m_digits.empty(); }
  /// The digit that counts 10 to the power of `place`, which must go down by one from call to call.
  unsigned Take(std::int64_t place) {
    if (place >= m_place || AtEnd()) return 0;
    const auto digit = static_cast<unsigned>(m_digits[0] - '0');
    m_digits.remove_prefix(m_digits.size() > 1 && m_digits[1] == '.' ? 2 : 1);
    return digit;
  }

 private:
  std::string_view m_digits;
  std::int64_t m_place;
};

/// Any number of digits: the whole part and nine decimals are multiplied out; the digits behind them matter only
/// where they decide about rounding, and are compared there with the digits of the quotient that would be a tie.
bool ScaleLong(const SDecimalText& text, std::uint64_t scale, std::int32_t& value) {
  constexpr int kHead = 9;
  CDigits digits(text);
  if (digits.AtEnd() || digits.Place() < -kHead) return Fit(0, false, value);  // nearer to 0 than half a unit
  if (digits.Place() > 10) return false;
  const std::uint64_t unit = PowerOfTen(kHead);
  std::int64_t place = 10;
  std::uint64_t whole = 0, head = 0;
  while (place > 0) whole = whole * 10 + digits.Take(--place);
  while (place > -kHead) head = head * 10 + digits.Take(--place);
  if (whole > (std::uint64_t{1} << 31) / scale) return false;
  const std::uint64_t product = head * scale, half = unit / 2, over = product % unit;
  bool up = over >= half;
  if (!up && half - over < scale) {
    std::uint64_t rest = half - over;  // the digits still to come must reach rest / scale
    for (up = true; rest != 0; rest = rest * 10 % scale) {
      const auto wanted = static_cast<unsigned>(rest * 10 / scale);
      const bool ended = digits.AtEnd();
      const unsigned digit = digits.Take(--place);
      if (!ended && digit == wanted) continue;
      up = !ended && digit > wanted;
      break;
    }
  }
  return Fit(whole * scale + product / unit + up, text.negative, value);
}

/// "00" to "99": two digits at a time take half the divisions.
constexpr auto kPairs = [] {
  std::array<char, 200> digits{};
  for (std::size_t i = 0; i < digits.size(); ++i)
    digits[i] = static_cast<char>('0' + (i % 2 == 0 ? i / 20 : i / 2 % 10));
  return digits;
}();
char* PutPair(char* end, std::uint64_t& value) {
  std::memcpy(end - 2, &kPairs[value % 100 * 2], 2);
  value /= 100;
  return end - 2;
}
char* PutDigit(char* end, std::uint64_t& value) {
  *--end = static_cast<char>('0' + value % 10);
  value /= 10;
  return end;
}

/// Takes the last `count` digits off `value` and writes them so that they end at `end`.
char* TakeDigits(char* end, std::uint64_t& value, int count) {
  if (count % 2 != 0) end = PutDigit(end, value);
  for (; count > 1; count -= 2) end = PutPair(end, value);
  return end;
}
/// Writes the digits of `value`, at least one, so that they end at `end`.
char* PutDigits(char* end, std::uint64_t value) {
  while (value >= 100) end = PutPair(end, value);
  return value >= 10 ? PutPair(end, value) : PutDigit(end, value);
}

/// Appends `digits` / 10^`decimals`.
void AppendFixed(CString& out, bool negative, std::uint64_t digits, int decimals) {
  char buffer[32];
  char* const end = buffer + sizeof buffer;
  char* at = end;
  const bool sign = negative && digits != 0;
  if (decimals > 0) {
    at = TakeDigits(at, digits, decimals);
    *--at = '.';
  }
  at = PutDigits(at, digits);
  if (sign) *--at = '-';
  out.append(at, end);
}

constexpr bool MayBeInNumber(char c) { return IsDigit(c) || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E'; }

struct SUnitName {
  std::string_view text;
  int type;
};
constexpr SUnitName kUnitNames[] = {
    {"mm", kUnitMm},
    {"mil", kUnitMil},
    {"mils", kUnitMil},
    {"thou", kUnitMil},
    {"th", kUnitMil},
    {"in", kUnitInch},
    {"inch", kUnitInch},
    {"inches", kUnitInch},
    {"\"", kUnitInch},
    {"um", kUnitMicrometre},
    {"\u00B5m", kUnitMicrometre},
    {"\u03BCm", kUnitMicrometre},
    {"micron", kUnitMicrometre},
    {"microns", kUnitMicrometre},
};

}  // namespace

bool IsDecimal(std::string_view text) {
  SDecimalText parts;
  return ReadDecimalText(text, parts);
}

bool ScaleDecimal(std::string_view number, std::int32_t scale, std::int32_t& value) {
  assert(scale >= 1 && scale <= kMaxScale);
  const auto factor = static_cast<std::uint64_t>(scale);
  if (number.size() <= 19) {  // nearly every number: one pass, and all products fit into 64 bits
    const char* at = number.data();
    const char* const end = at + number.size();
    const bool negative = at != end && *at == '-';
    if (at != end && (*at == '-' || *at == '+')) ++at;
    std::uint64_t mantissa = 0;
    const char* point = nullptr;
    const char* const start = at;
    for (; at != end; ++at) {
      const unsigned digit = static_cast<unsigned char>(*at) - unsigned{'0'};
      if (digit <= 9) {
        mantissa = mantissa * 10 + digit;
      } else if (*at == '.' && point == nullptr) {
        point = at;
      } else {
        break;
      }
    }
    constexpr std::uint64_t kFits = 100'000'000'000;
    if (at == end && mantissa < kFits && end - start > (point != nullptr)) {
      const std::uint64_t product = mantissa * factor;
      if (point == nullptr || point + 1 == end) return Fit(product, negative, value);
      return Fit(DivideRounded(product, PowerOfTen(static_cast<int>(end - point) - 1)), negative, value);
    }
  }
  SDecimalText parts;
  return ReadDecimalText(number, parts) && ScaleLong(parts, factor, value);
}

void AppendRounded(CString& out, std::int32_t value, std::int32_t scale, int precision) {
  assert(scale >= 1 && scale <= kMaxScale && precision >= 0 && precision <= kMaxDecimals);
  AppendFixed(out, value < 0, UnscaleRounded(Magnitude(value) * PowerOfTen(precision), scale), precision);
}

void AppendExact(CString& out, std::int32_t value, std::int32_t scale) {
  assert(scale >= 1 && scale <= kMaxScale);
  const std::uint64_t magnitude = Magnitude(value), divisor = static_cast<std::uint64_t>(scale);
  int decimals = 0;  // so many that neighbouring numbers are no more than one unit apart
  while (PowerOfTen(decimals) < divisor) ++decimals;
  // All numbers from `low` to `high` / 10^decimals read back as the value. Ten of them are one with a decimal less.
  std::uint64_t low = magnitude, high = magnitude;
  if (const std::uint64_t power = PowerOfTen(decimals); power != divisor && magnitude != 0) {
    low = ((2 * magnitude - 1) * power + 2 * divisor - 1) / (2 * divisor);
    high = ((2 * magnitude + 1) * power - 1) / (2 * divisor);
  }
  while (decimals > 0 && high / 10 * 10 >= low) {
    high /= 10;
    low = (low + 9) / 10;
    --decimals;
  }
  if (low != high) high = DivideRounded(magnitude * PowerOfTen(decimals), divisor);
  AppendFixed(out, value < 0, high, decimals);
}

void AppendRoundedArea(CString& out, std::int64_t square, std::int32_t scale, int precision) {
  assert(scale >= 1 && scale <= kMaxScale && precision >= 0 && precision <= kMaxDecimals);
  const std::uint64_t divisor = static_cast<std::uint64_t>(scale) * static_cast<std::uint64_t>(scale);
  std::uint64_t whole = Magnitude(square) / divisor, rest = Magnitude(square) % divisor, decimals = 0;
  for (int i = 0; i < precision; ++i, rest = rest * 10 % divisor) decimals = decimals * 10 + rest * 10 / divisor;
  if (rest >= divisor - rest && ++decimals == PowerOfTen(precision)) {
    decimals = 0;
    ++whole;
  }
  char buffer[48];
  char* const end = buffer + sizeof buffer;
  const bool isZero = (whole | decimals) == 0;
  char* at = TakeDigits(end, decimals, precision);
  if (precision > 0) *--at = '.';
  at = PutDigits(at, whole);
  if (square < 0 && !isZero) *--at = '-';
  out.append(at, end);
}

bool SplitUnit(std::string_view text, std::string_view& number, int& unitType) {
  text = Trim(text);
  std::size_t end = 0;
  while (end < text.size() && MayBeInNumber(text[end])) ++end;
  int type = -1;
  if (end != text.size()) {
    const std::string_view unit = Trim(text.substr(end));
    const auto* known = std::find_if(std::begin(kUnitNames), std::end(kUnitNames),
                                     [&](const SUnitName& name) { return EqualNoCase(name.text, unit); });
    if (known == std::end(kUnitNames)) return false;
    type = known->type;
  }
  number = text.substr(0, end);
  unitType = type;
  return true;
}
