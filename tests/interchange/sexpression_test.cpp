#include "interchange/sexpression.h"

#include <gtest/gtest.h>

#include "interchange/json.h"

namespace {

/// A tree as text: words in bars, so that blanks and empty words show.
CString Picture(CSNode node) {
  if (node.IsWord()) return '|' + CString(node.Text()) + '|';
  CString text = '(' + CString(node.Tag());
  for (const CSNode value : node) text += ' ' + Picture(value);
  return text + ')';
}

/// What reading a text comes to: the picture, or the place and the reason.
template <class Read>
CString Outcome(const CString& text, const Read& read) {
  try {
    return read(text);
  } catch (const STextFault& fault) {
    const STextPlace place = PlaceIn(text, fault.at);
    return IntText(static_cast<std::int64_t>(place.line)) + ':' + IntText(static_cast<std::int64_t>(place.column)) +
           ' ' + fault.reason;
  }
}
CString List(const CString& text) {
  return Outcome(text, [](const CString& whole) {
    const CSList list(whole);
    return Picture(list.Root());
  });
}
CString Json(const CString& text) {
  return Outcome(text,
                 [](const CString& whole) { return IntText(static_cast<std::int64_t>(ReadJson(whole).items.size())); });
}

struct SReading {
  const char* why;
  CString text;
  CString outcome;
};

TEST(SExpressionTest, ListsAreReadWholeOrNotAtAll) {
  using namespace std::string_literals;
  const SReading cases[] = {
      {"words and lists", "(at 1 -2.5 (layer F.Cu))", "(at |1| |-2.5| (layer |F.Cu|))"},
      {"all white space and line ends", "\xEF\xBB\xBF (a\r\n\tb\r(c))\n", "(a |b| (c))"},
      {"brackets and blanks in a quoted word", R"((a "b (c) d" ""))", "(a |b (c) d| ||)"},
      {"escapes", R"((a "\"\\\n\x41\101"))", "(a |\"\\\nAA|)"},
      {"a backslash that escapes nothing", R"((a "C:\lib\q"))", R"((a |C:\lib\q|))"},
      {"a comment takes its line alone", "#1 (\n(a #b\n #c )\n)", "(a |#b|)"},
      {"nothing", " \n", "2:1 the file is empty"},
      {"cut in a list", "(a\n (b", "2:4 the file ends before the list that begins at line 2, column 2"},
      {"cut in a word", "(a \"b\n)", "1:4 this quotation mark has no counterpart on its line"},
      {"cut behind a backslash", R"((a "b\)", "1:4 this quotation mark has no counterpart on its line"},
      {"a second list", "(a)\n(b)", "2:1 nothing may stand behind the list that is the board"},
      {"a bracket too many", "(a))", "1:4 nothing may stand behind the list that is the board"},
      {"no list", "a", "1:1 a board begins with an opening bracket"},
      {"no tag", "(a ())", "1:5 a list must begin with a word without quotation marks"},
      {"a quoted tag", "(\"a\")", "1:2 a list must begin with a word without quotation marks"},
      {"quotation marks within a word", "(a 0.96\" b\"c\")", "(a |0.96\"| |b\"c\"|)"},
      {"glued behind", "(a \"\xC3\xA4\"c)", "1:7 a blank is missing behind this quotation mark"},
      {"binary", "(a \0)"s, "1:4 this is a control character, so no text file"},
      {"another encoding", "(a\nb\xE4)", "2:1 this line is not encoded in UTF-8"},
      {"escapes that make no text", R"((a "\xFF"))", "1:4 what the backslashes stand for is no UTF-8"},
  };
  for (const SReading& one : cases) EXPECT_EQ(List(one.text), one.outcome) << one.why;
}

TEST(SExpressionTest, DepthIsBounded) {
  const auto nested = [](std::size_t depth) {
    CString text;
    for (std::size_t i = 0; i < depth; ++i) text += "(a";
    return text + CString(depth, ')');
  };
  EXPECT_EQ(List(nested(CSList::kMaxDepth))[0], '(');
  EXPECT_EQ(List(nested(CSList::kMaxDepth + 1)), "1:129 lists stand in lists more than 64 deep");
  EXPECT_EQ(List(nested(100'000)), "1:129 lists stand in lists more than 64 deep");
}

TEST(SExpressionTest, ValuesAreFoundBehindTheListsBetween) {
  const CString text = "(a (b (c 1)) x (c 2) (c 3))";
  const CSList list(text);
  EXPECT_EQ(Picture(list.Root().Find("c")), "(c |2|)");
  EXPECT_EQ(list.Root().Value(1).Text(), "x");
  EXPECT_EQ(text.substr(list.Root().Value(3).At()), "(c 3))");
  EXPECT_FALSE(list.Root().Value(4));
  EXPECT_FALSE(list.Root().Value(1).Value(0));
}

TEST(JsonTest, ObjectsAreReadWholeOrNotAtAll) {
  const CString whole = "a project file is one complete JSON object in braces";
  const SReading cases[] = {
      {"nested", R"({"a": [1, {"b": null}], "c": "\u00e4"})", "2"},
      {"more digits than a number can hold", R"({"a": 0.1000000000000000055511151231257827})", "1"},
      {"nothing", "", "1:1 this is no JSON"},
      {"no object", "[1]", "1:1 " + whole},
      {"cut", "{\"a\": 1,", "1:1 " + whole},
      {"twice", "{\"a\": 1,\n \"a\": 2}", "2:7 \"a\" stands in this object twice"},
      {"half a word", "{\"a\": nul}", "1:7 this is no JSON value"},
      {"no number", "{\"a\": 01}", "1:7 this is no JSON: Problem while parsing a number"},
  };
  for (const SReading& one : cases) EXPECT_EQ(Json(one.text), one.outcome) << one.why;
  CString deep = "1";
  for (int i = 0; i < 70; ++i) deep = "{\"a\":" + deep + '}';
  EXPECT_EQ(Json(deep), "1:326 values stand in values more than 64 deep");
}

}  // namespace
