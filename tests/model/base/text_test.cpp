#include "model/base/text.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(TextTest, Utf8IsAcceptedWholeAndRefusedWhereverItIsBroken) {
  // Every sequence is tried at each place of a long ASCII text, since whole words of ASCII are skipped at once.
  const auto everywhere = [](std::string_view bytes, bool valid) {
    for (std::size_t at = 0; at <= 20; ++at) {
      CString text(20, 'a');
      text.insert(at, bytes);
      EXPECT_EQ(IsValidUtf8(text), valid) << ::testing::PrintToString(bytes) << " at " << at;
    }
    EXPECT_EQ(IsValidUtf8(bytes), valid);
  };
  for (const std::string_view bytes :
       {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
    everywhere(bytes, true);
  everywhere({"\xC3\xA9\0", 3}, true);
  for (const std::string_view bytes :
       {"\x80", "\xC0\xAF", "\xC1\xBF", "\xC3", "\xC3\x28", "\xE0\x9F\xBF", "\xE2\x82", "\xE2\x82\x41", "\xED\xA0\x80",
        "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF0\x9F\x98\x41", "\xF5\x80\x80\x80", "\xFF"})
    everywhere(bytes, false);
}

TEST(TextTest, ControlCharactersAreFoundInBothRangesAndNowhereElse) {
  for (const std::string_view text : {"\x1F", "a\tb", "a\nb", "\x7F", "a\xC2\x80", "\xC2\x9F", "caf\xC3\xA9\r"})
    EXPECT_TRUE(HasControlCharacters(text)) << ::testing::PrintToString(text);
  EXPECT_TRUE(HasControlCharacters(std::string_view("\0", 1)));
  for (const std::string_view text : {"", " ~", "\xC2\xA0", "\xC3\x80", "\xE2\x80\x9F"})
    EXPECT_FALSE(HasControlCharacters(text)) << ::testing::PrintToString(text);
}

TEST(TextTest, ArgumentsAreInsertedOnceAndAsTheyAre) {
  const CStringArray args{"%2", "100 %"};
  EXPECT_EQ(FormatText("%1 is %2, not %1", args), "%2 is 100 %, not %2");
  EXPECT_EQ(FormatText("%% %%1 %3 %0 %x %", args), "% %1 %3 %0 %x %");
  EXPECT_EQ(FormatText("%12", args), "%22");
  EXPECT_EQ(FormatText("", {}), "");
}

TEST(TextTest, IntegersAreReadWholeOrNotAtAll) {
  constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min(),
                         kMax = std::numeric_limits<std::int64_t>::max();
  for (const std::int64_t value : {kMin, kMin + 1, std::int64_t{-10}, std::int64_t{0}, std::int64_t{99}, kMax}) {
    std::int64_t read = 1;
    EXPECT_TRUE(ParseInt(IntText(value), read));
    EXPECT_EQ(read, value);
  }
  std::int64_t read = 0;
  EXPECT_TRUE(ParseInt("+007", read));
  EXPECT_EQ(read, 7);
  for (const std::string_view text : {"", "+", "-", "+-1", "--1", " 1", "1 ", "1.0", "1e3", "0x1",
                                      "9223372036854775808", "-9223372036854775809", "1\xC2\xA0"})
    EXPECT_FALSE(ParseInt(text, read)) << text;
  EXPECT_FALSE(ParseInt(std::string_view("1\0", 2), read));
  EXPECT_EQ(read, 7);
}

TEST(TextTest, BlanksAndCaseAreAsciiOnly) {
  EXPECT_EQ(Trim(" \t\r\n\v\f a b \n"), "a b");
  EXPECT_EQ(Trim(" \t "), "");
  EXPECT_EQ(Trim("\xC2\xA0x"), "\xC2\xA0x");
  EXPECT_TRUE(EqualNoCase("TOP [z@", "top [Z@"));
  EXPECT_FALSE(EqualNoCase("@", "`"));
  EXPECT_FALSE(EqualNoCase("top", "tops"));
  EXPECT_FALSE(EqualNoCase("\xC3\x84", "\xC3\xA4"));
}

}  // namespace
