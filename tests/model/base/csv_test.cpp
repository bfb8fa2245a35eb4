#include "model/base/csv.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

/// All of a text as one line per record: number, line, fields in brackets; or the error.
CString Picture(std::string_view text, char separator = ',') {
  CString out;
  CCsvReader reader(text, separator);
  for (CCsvReader::EStep step; (step = reader.Next()) != CCsvReader::EStep::End;) {
    if (step == CCsvReader::EStep::Broken) {
      out += "! " + reader.Error() + "\n";
      EXPECT_TRUE(reader.Fields().empty());
      continue;
    }
    out +=
        IntText(static_cast<std::int64_t>(reader.Record())) + "@" + IntText(static_cast<std::int64_t>(reader.Line()));
    for (const std::string_view field : reader.Fields()) (out += " [").append(field) += ']';
    out += '\n';
  }
  return out;
}

TEST(CsvTest, RecordsAreReadWithTheirLines) {
  EXPECT_EQ(Picture(""), "");
  EXPECT_EQ(Picture("\xEF\xBB\xBF"
                    "a,b"),
            "1@1 [a] [b]\n");
  EXPECT_EQ(Picture("a,b\n\nc\r\n,\rd"), "1@1 [a] [b]\n2@2\n3@3 [c]\n4@4 [] []\n5@5 [d]\n");
  EXPECT_EQ(Picture("a;b,c\n", ';'), "1@1 [a] [b,c]\n");
  EXPECT_EQ(Picture("\"a\nb\r\nc\rd\",\"\"\ne"), "1@1 [a\nb\r\nc\rd] []\n2@5 [e]\n");
  EXPECT_EQ(Picture("\"say \"\"a\"\"\",\"\"\"\",\"b\"\"\"\n\"\""), "1@1 [say \"a\"] [\"] [b\"]\n2@2 []\n");
}

TEST(CsvTest, ABrokenRecordIsReportedAndThoseBehindItAreRead) {
  EXPECT_EQ(Picture("a\nb\"c,d\ne\n"),
            "1@1 [a]\n"
            "! line 2: a quotation mark stands inside a field. Put the whole field between quotation marks "
            "and double those inside.\n"
            "3@3 [e]\n");
  EXPECT_EQ(Picture("\"a\nb\"c\r\nd"),
            "! line 2: text stands behind a closing quotation mark. Double the quotation marks inside a "
            "field.\n2@3 [d]\n");
  EXPECT_EQ(Picture("a\n\"b\n\nc,d\n"), "1@1 [a]\n! line 2: a quotation mark is never closed.\n");
  EXPECT_EQ(Picture("a\n\"\xFF\"\nb"),
            "1@1 [a]\n! line 2: these bytes are no text. Save the file as UTF-8 text.\n3@3 [b]\n");
  EXPECT_EQ(Picture(std::string_view("a\0b\nc", 5)),
            "! line 1: these bytes are no text. Save the file as UTF-8 text.\n2@2 [c]\n");
  EXPECT_EQ(Picture(CString(CCsvReader::kMaxFields, ',') + "\nb"),
            "! line 1: there are more than 1000 fields.\n2@2 [b]\n");
}

/// Fields made of what could break a record, quoted or plain as it comes.
RC_GTEST_PROP(CsvTest, WhatIsWrittenReadsBackUnchanged, ()) {
  const char separator = *rc::gen::element(',', ';', '\t', '.');
  const auto piece = rc::gen::element<CString>("", "a", "\"", ",", ";", "\t", ".", "\n", "\r", "\r\n", " ", "\xC3\xA9");
  const auto field = rc::gen::map(rc::gen::container<CStringArray>(piece), [](const CStringArray& pieces) {
    CString text;
    for (const CString& part : pieces) text += part;
    return text;
  });
  const auto records = *rc::gen::container<std::vector<CStringArray>>(rc::gen::container<CStringArray>(field));
  CCsvWriter writer(separator);
  for (const CStringArray& record : records) {
    for (const CString& text : record) *rc::gen::arbitrary<bool>() ? writer.Quoted(text) : writer.Plain(text);
    writer.EndRecord();
  }
  CCsvReader reader(writer.Text(), separator);
  for (const CStringArray& record : records) {
    RC_ASSERT(reader.Next() == CCsvReader::EStep::Record);
    RC_ASSERT(CStringArray(reader.Fields().begin(), reader.Fields().end()) == record);
  }
  RC_ASSERT(reader.Next() == CCsvReader::EStep::End);
}

TEST(CsvTest, PlainFieldsAreQuotedOnlyWhereTheyMustBe) {
  CCsvWriter writer('.');
  writer.Quoted("a\"b");
  writer.Plain("025");
  writer.PlainBy([](CString& out) { out += "0.25"; });
  writer.EndRecord();
  writer.Plain("");
  writer.EndRecord();
  writer.EndRecord();
  EXPECT_EQ(writer.Text(), "\"a\"\"b\".025.\"0.25\"\n\"\"\n\n");
}

}  // namespace
