#include "model/base/decimal.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <random>

namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min(), kMax = std::numeric_limits<std::int32_t>::max();

/// What ScaleDecimal should give for [-]digits[.digits], reckoned as on paper: every digit times the scale, the carry
/// along, then one look at the first digit behind the point.
std::optional<std::int32_t> OnPaper(CString text, std::int64_t scale) {
  const bool negative = text[0] == '-';
  if (negative) text.erase(0, 1);
  const std::size_t point = std::min(text.find('.'), text.size()),
                    decimals = text.size() - std::min(point + 1, text.size());
  if (point < text.size()) text.erase(point, 1);
  CString product;  // least digit first
  std::int64_t carry = 0;
  for (std::size_t i = text.size(); i > 0 || carry > 0; carry /= 10) {
    if (i > 0) carry += (text[--i] - '0') * scale;
    product += static_cast<char>('0' + carry % 10);
  }
  product.resize(std::max(product.size(), decimals + 1), '0');
  std::int64_t value = decimals > 0 && product[decimals - 1] >= '5' ? 1 : 0, power = 1;
  for (std::size_t i = decimals; i < product.size(); ++i, power *= 10) {
    if (product[i] == '0' && power > 10'000'000'000) power = 1'000'000'000;  // zeros need no room
    if (power > 10'000'000'000) return std::nullopt;
    value += (product[i] - '0') * power;
  }
  if (negative) value = -value;
  if (value < kMin || value > kMax) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

std::optional<std::int32_t> Scale(std::string_view text, std::int32_t scale) {
  std::int32_t value = 4711;
  if (ScaleDecimal(text, scale, value)) return value;
  EXPECT_EQ(value, 4711) << text;
  return std::nullopt;
}
CString Rounded(std::int32_t value, int unit, int precision) {
  CString out;
  AppendRounded(out, value, kNmPerUnit[static_cast<std::size_t>(unit)], precision);
  return out;
}
CString Exact(std::int32_t value, std::int32_t scale) {
  CString out;
  AppendExact(out, value, scale);
  return out;
}

TEST(DecimalTest, NumbersOfAnyShapeAreScaledExactly) {
  struct SCase {
    std::string_view text;
    int unit;
    std::optional<std::int32_t> nm;
  };
  const SCase cases[] = {
      {"+0.5", kUnitMil, 12700},
      {".5", kUnitMm, 500000},
      {"5.", kUnitMm, 5000000},
      {"-0", kUnitMm, 0},
      {"1.2345e0", kUnitMicrometre, 1235},  // ties go away from zero
      {"0.00050000000000000000000000000", kUnitMicrometre, 1},
      {"00000000000000000000000000000012", kUnitMm, 12000000},
      {"0.00003937007874015748031496062992125984", kUnitMil, 1},
      {"1e-6", kUnitMm, 1},
      {"0.0000001E+7", kUnitMm, 1000000},
      {"25.4e-3", kUnitMm, 25400},
      {"1e-1000000000000000000000000000000", kUnitInch, 0},
      {"0e1000000000000000000000000000000", kUnitInch, 0},
      {"1e1000000000000000000000000000000", kUnitMicrometre, std::nullopt},
      {"2147.483647", kUnitMm, kMax},
      {"2147.4836474", kUnitMm, kMax},
      {"2147.4836475", kUnitMm, std::nullopt},
      {"-2147.483648", kUnitMm, kMin},
      {"-2147.48364849999999999999", kUnitMm, kMin},
      {"-2147.4836485", kUnitMm, std::nullopt},
      {"-2147.48364850000000000000", kUnitMm, std::nullopt},
      {"84.6", kUnitInch, std::nullopt},
      {"18446744073709551617", kUnitMicrometre, std::nullopt},  // 1, if a 64-bit integer wrapped
  };
  for (const SCase& c : cases)
    EXPECT_EQ(Scale(c.text, kNmPerUnit[static_cast<std::size_t>(c.unit)]), c.nm) << c.text << " in unit " << c.unit;
}

TEST(DecimalTest, WhatIsNoNumberIsRefused) {
  const CString separated = CString("1\xE2\x80\x89") + "000";  // by a thin blank
  for (const std::string_view text : {"",         ".",
                                      "+",        "-.",
                                      "e5",       ".e5",
                                      "1e",       "1e+",
                                      "1e5.",     "1e5e5",
                                      "1.2.3",    "--1",
                                      "+-1",      "1-",
                                      " 1",       "1 ",
                                      "1,5",      "0x10",
                                      "0x1p3",    "inf",
                                      "nan",      "1f",
                                      "\xD9\xA1", separated.c_str(),
                                      "1'000",    "12345678901234567890x"}) {
    EXPECT_FALSE(IsDecimal(text)) << text;
    EXPECT_EQ(Scale(text, 1), std::nullopt) << text;
  }
  EXPECT_EQ(Scale(std::string_view("1\0", 2), 1), std::nullopt);
}

TEST(DecimalTest, MillionsOfDigitsAreReadInOnePass) {
  const CString zeros(4'000'000, '0');
  EXPECT_EQ(Scale(zeros + "1." + zeros, 25400), 25400);
  EXPECT_EQ(Scale("0." + zeros + "9", 25400), 0);
  EXPECT_EQ(Scale("1" + zeros, 1), std::nullopt);
  EXPECT_EQ(Scale("1" + zeros + "e-4000000", 25400), 25400);
  EXPECT_EQ(Scale("0." + zeros + "1e4000001", 25400), 25400);
  EXPECT_EQ(Scale("0.5" + zeros, 1), 1);
  EXPECT_EQ(Scale("0.4" + CString(4'000'000, '9'), 1), 0);
}

/// Random digits, many of them near a tie: the halves between two lengths, cut or changed after some digits.
TEST(DecimalTest, EveryNumberIsScaledAsOnPaper) {
  std::mt19937 random(20210507);
  const auto below = [&](unsigned limit) { return static_cast<std::uint32_t>(random() % limit); };
  for (int i = 0; i < 200'000; ++i) {
    const std::int32_t scale =
        i % 5 < 4 ? kNmPerUnit[static_cast<std::size_t>(i % 5)] : static_cast<std::int32_t>(1 + below(kMaxScale));
    CString text = below(3) == 0 ? "-" : "";
    if (below(2) == 0) {  // (n + 1/2) / scale to many digits
      std::uint64_t rest = 2 * std::uint64_t{below(1'000'000)} + 1, divisor = 2 * static_cast<std::uint64_t>(scale);
      text += IntText(static_cast<std::int64_t>(rest / divisor)) + ".";
      for (unsigned digit = 0, count = below(40); digit < count; ++digit) {
        rest = rest % divisor * 10;
        text += static_cast<char>('0' + rest / divisor);
      }
      if (below(2) == 0) text.back() = text.back() == '.' ? '.' : static_cast<char>('0' + below(10));
    } else {
      for (unsigned digit = 0, count = 1 + below(7); digit < count; ++digit) text += static_cast<char>('0' + below(10));
      if (below(4) > 0) text += '.';
      if (text.back() == '.')
        for (unsigned digit = 0, count = below(25); digit < count; ++digit) text += static_cast<char>('0' + below(10));
    }
    ASSERT_EQ(Scale(text, scale), OnPaper(text, scale)) << text << " times " << scale;
    ASSERT_EQ(Scale(text + "e0", scale), OnPaper(text, scale)) << text << " times " << scale << ", the long way";
  }
}

TEST(DecimalTest, RoundedTextIsTheNearestAndZeroHasNoSign) {
  EXPECT_EQ(Rounded(254000, kUnitMil, 2), "10.00");
  EXPECT_EQ(Rounded(-12345678, kUnitMm, 3), "-12.346");
  EXPECT_EQ(Rounded(500, kUnitMm, 3), "0.001");
  EXPECT_EQ(Rounded(-500, kUnitMm, 3), "-0.001");
  EXPECT_EQ(Rounded(-499, kUnitMm, 3), "0.000");
  EXPECT_EQ(Rounded(-1, kUnitInch, 0), "0");
  EXPECT_EQ(Rounded(999'999'999, kUnitMm, 2), "1000.00");
  EXPECT_EQ(Rounded(kMin, kUnitMicrometre, 9), "-2147483.648000000");
  EXPECT_EQ(Rounded(kMax, kUnitInch, 9), "84.546600276");
}

/// The text reads back, and no text with fewer decimals does.
TEST(DecimalTest, ExactTextIsTheShortestThatReadsBack) {
  EXPECT_EQ(Exact(1, 25400), "0.00004");
  EXPECT_EQ(Exact(-254000, 25400), "-10");
  EXPECT_EQ(Exact(0, 25400), "0");
  EXPECT_EQ(Exact(1230000, 1000000), "1.23");
  std::mt19937 random(31337);
  for (int i = 0; i < 200'000; ++i) {
    const auto value = i < 8 ? (i % 2 ? kMax - i / 2 : kMin + i / 2)
                             : static_cast<std::int32_t>(static_cast<std::int32_t>(random()) >> random() % 31);
    const std::int32_t scale =
        random() % 5 < 4 ? kNmPerUnit[random() % 4] : 1 + static_cast<std::int32_t>(random() % kMaxScale);
    const CString text = Exact(value, scale);
    ASSERT_EQ(Scale(text, scale), value) << text;
    const std::size_t point = text.find('.');
    if (point == CString::npos) continue;
    const int fewer = static_cast<int>(text.size() - point) - 2;
    CString shorter;
    AppendRounded(shorter, value, scale, fewer);
    ASSERT_NE(Scale(shorter, scale), value) << shorter << " would do for " << text << " at " << scale;
  }
}

TEST(DecimalTest, AreasAreRoundedLikeLengths) {
  struct SCase {
    std::int64_t square;
    int unit, precision;
    std::string_view text;
  };
  constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
  const SCase cases[] = {
      {6'451'600'000'000, kUnitMil, 2, "10000.00"}, {500'000'000'000, kUnitMm, 0, "1"},
      {-499'999'999'999, kUnitMm, 0, "0"},          {-5'000'000'000, kUnitMm, 2, "-0.01"},
      {999'999'999'999, kUnitMm, 3, "1.000"},       {kLeast, kUnitMicrometre, 6, "-9223372036854.775808"},
      {kLeast, kUnitInch, 9, "-14296.255249635"},  // 9223372036854775808 / 645160000000000
  };
  for (const SCase& c : cases) {
    CString text;
    AppendRoundedArea(text, c.square, kNmPerUnit[static_cast<std::size_t>(c.unit)], c.precision);
    EXPECT_EQ(text, c.text);
  }
}

TEST(DecimalTest, OneUnitMayStandBehindANumber) {
  struct SCase {
    std::string_view text, number;
    int unit;
  };
  const SCase good[] = {
      {"10", "10", -1},
      {" -.5 \t", "-.5", -1},
      {"10 MILS ", "10", kUnitMil},
      {"1e3 Thou", "1e3", kUnitMil},
      {"0.25mm", "0.25", kUnitMm},
      {"2inches", "2", kUnitInch},
      {"2 \"", "2", kUnitInch},
      {"35 \u00B5M", "35", kUnitMicrometre},
      {"35\u03BCm", "35", kUnitMicrometre},
      {"35 microns", "35", kUnitMicrometre},
  };
  for (const SCase& c : good) {
    std::string_view number;
    int unit = 99;
    EXPECT_TRUE(SplitUnit(c.text, number, unit)) << c.text;
    EXPECT_EQ(number, c.number) << c.text;
    EXPECT_EQ(unit, c.unit) << c.text;
  }
  for (const std::string_view text : {"10 mm mm", "10 m", "10 mm 5", "1 0", "10 cm", "x", "10 \xC2m", "10''", "- 5"}) {
    std::string_view number = "kept";
    int unit = 99;
    EXPECT_FALSE(SplitUnit(text, number, unit)) << text;
    EXPECT_EQ(number, "kept");
    EXPECT_EQ(unit, 99);
  }
}

}  // namespace
