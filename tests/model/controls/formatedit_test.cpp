#include "model/controls/formatedit.h"

#include <gtest/gtest.h>

#include "model/design/design.h"

namespace {

bool Type(CFormField& field, const CString& text) {
  CString why;
  return field.Enter(SInput::Text(text), why);
}

TEST(FormatEditTest, ATextIsReadAsWhatItIsAndLeavesTheVariableOtherwise) {
  struct SCase {
    const char* typed;
    const char* read;  // as a whole number, with four decimals, in thousandths of a degree
  };
  constexpr SCase kCases[] = {{" 12 ", "12 12.0000 12000"},   {"-0.0005", "77 -0.0005 -1"},
                              {"+1e2", "77 100.0000 100000"}, {"2147483648", "77 2147483648.0000 77"},
                              {"1 mm", "77 77.0000 77"},      {"inf", "77 77.0000 77"},
                              {"", "77 77.0000 77"}};
  for (const SCase& c : kCases) {
    CFormatEdit edit("Edit", Text::Name), shown("Shown", Text::Name);
    ASSERT_TRUE(Type(edit, c.typed));
    int whole = 77;
    double number = 77;
    CAngle angle(77);
    bool wholeRead = false, numberRead = false, angleRead = false;
    edit.GetValue(whole, &wholeRead);
    edit.GetValue(number, &numberRead);
    edit.GetValue(angle, &angleRead);
    shown.SetValue(number, 4);
    EXPECT_EQ(IntText(whole) + " " + shown.GetText() + " " + IntText(angle.GetMilliDegrees()), c.read) << c.typed;
    EXPECT_TRUE(wholeRead == (whole != 77) && numberRead == (number != 77)) << c.typed;
    EXPECT_EQ(angleRead, angle.GetMilliDegrees() != 77) << c.typed;
  }
  CFormatEdit edit("Edit", Text::Name);
  const CAngle angle(-90'500);
  edit.SetValue(&angle);
  EXPECT_EQ(edit.GetText(), "-90.5");
}

TEST(FormatEditTest, ALengthStaysExactAndATextThatIsNoneGivesWayToIt) {
  CPcbDesign design;
  CFormatEdit edit("Edit", Text::Name);
  const auto length = [&edit] {
    int dsu = 77;
    bool ok = false;
    edit.GetValue(dsu, &ok);
    return ok == (dsu != 77) ? dsu : -1;
  };
  edit.SetValue(&design, 1'234'567);
  EXPECT_EQ(edit.GetText() + edit.GetUnit(), "1.235mm");
  EXPECT_EQ(length(), 1'234'567);
  EXPECT_TRUE(Type(edit, "10 mil"));
  EXPECT_TRUE(Type(edit, "wide"));
  EXPECT_EQ(length(), 77);
  EXPECT_EQ(CAppError::GetLastError(), 20010u);
  design.SwitchUnits();
  edit.OnUnitChange();
  EXPECT_EQ(edit.GetText(), "10.00");
  CString why;
  EXPECT_FALSE(edit.Enter(SInput::Value(std::int64_t{5'000'000'000}), why));
  EXPECT_EQ(length(), 254'000);
  EXPECT_TRUE(Type(edit, ""));
  EXPECT_EQ(length(), 0);
}

TEST(CoordEditTest, ACoordinateKeepsItsPlaceInOtherUnits) {
  CCoordEdit edit("X", Text::Name);
  edit.Init(false, 3);
  edit.SetValue(25'401);
  EXPECT_EQ(edit.GetText(), "0.025");
  edit.SetImperial(true);
  EXPECT_EQ(edit.GetText(), "1.000");
  long dsu = 0;
  EXPECT_TRUE(edit.GetValue(dsu));
  EXPECT_EQ(dsu, 25'401);
  EXPECT_TRUE(Type(edit, "1 mm"));
  edit.SetImperial(false);
  EXPECT_FALSE(edit.GetValue(dsu));
  EXPECT_EQ(edit.GetText() + " " + IntText(dsu), "1 mm 25401");
}

}  // namespace
