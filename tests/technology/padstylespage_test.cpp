// The Pad styles page, driven as a person drives it.
#include "technology/styles/padstylespage.h"

#include "support/pagetest.h"
#include "technology/layers/layerspage.h"
#include "technology/mergestyles.h"

namespace {
class PadStylesPageTest : public CBoardTest {
 protected:
  static void Press(CShownPanel& page, const char* row, const char* command) {
    page.Go(row, "Size");
    page.Press(command);
  }
};

TEST_F(PadStylesPageTest, ExceptionsStandUnderTheirStyleThroughEverySort) {
  design.Selection().Add(AddVia("Jack"));
  Work<CPadStylesPage>(
      [](CShownPanel& page) {
        EXPECT_EQ(page.Focus(), "row 6, Name");
        EXPECT_FALSE(page.IsEnabled("Jack", "Drill"));
        for (const char* column : {"Size", "Name", "Layer", "Drill", "Drill", "Shape"}) {
          page.Sort(column);
          const int style = page.FindRow("Header");
          EXPECT_EQ(page.Text(style + 1, "Layer"), "Core") << column;
          EXPECT_EQ(page.Text(style + 2, "Layer"), "Top") << column;
        }
      },
      {"OK"});
  Work<CPadStylesPage>([](CShownPanel& page) { EXPECT_EQ(page.Text(1, "Shape"), "Oval"); },
                       {"Cancel"});  // still sorted
}

TEST_F(PadStylesPageTest, WhatTheShapeLacksGoesWithTheRowsThatAreWrittenAndOthersAreNotRead) {
  CPadStyleException& core = *Pad("Header").Exceptions().First();
  core.SetShape(EPadShape::RoundedRectangle);
  core.SetLength(2'000'000);
  core.SetDimension3(300'000);
  Pad("[Guide]").SetLength(7);
  Pad("Default").SetLength(7);
  Pad("Jack").SetSize(0);
  Work<CPadStylesPage>(
      [](CShownPanel& page) {
        Do(page, "Chip|Length|wide; Chip|Shape|Square");
        EXPECT_FALSE(page.IsEnabled("Chip", "Length"));
        EXPECT_EQ(page.Text("Chip", "Length"), "0.000");
        Do(page, "[Guide]|Size|0.6; Core|Shape|Oval");
        page.Set("Header", "Plated", false);  // a bare hole needs no copper
        page.Type("Header", "Drill", "1.7");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "event TechnologyChanged\n");
  for (const char* style : {"Chip", "[Guide]", "Default"})
    EXPECT_EQ(Pad(style).Values().length.value, style == CString("Default") ? 7 : 0) << style;
  EXPECT_EQ(Pad("Chip").Values().dimension3.value, 0);
  EXPECT_EQ(core.Values().length.value, 2'000'000);
  EXPECT_EQ(core.Values().dimension3.value, 0);
  EXPECT_EQ(Pad("Header").Values().drillWidth.value, 1'700'000);
}

TEST_F(PadStylesPageTest, ACopyTakesItsExceptionsAlongAndLosesItsBrackets) {
  Pad("Header").SetName("[Header]");
  Work<CPadStylesPage>(
      [&](CShownPanel& page) {
        EXPECT_FALSE(page.IsEnabled("[Header]", "Name"));
        Press(page, "Core", "DeleteException");
        page.Go("[Header]", "Size");
        WorkInForm<CEditPadStyle>(page, "Copy", [](CShownDialog& form) {
          EXPECT_EQ(form.FieldText("Name"), "Header");
          form.Press("OK");
        });
        EXPECT_EQ(page.Focus(), "row 8, Name");
        Press(page, "Default", "DeleteException");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "beep -1\nevent TechnologyChanged\n");
  ASSERT_EQ(Pad("Header").Exceptions().Count(), 1u);
  EXPECT_EQ(Pad("Header").Exceptions().First()->GetLayer(), &Layer("Top"));
  EXPECT_EQ(Pad("[Header]").Exceptions().Count(), 1u);
}

TEST_F(PadStylesPageTest, ABuiltInStyleOfAFileKeepsItsNameAndStays) {
  file = "[Ring],,Round,1,0,0,,,,,,,\n";
  ui.Choose("x.csv");
  Work<CPadStylesPage>(
      [&](CShownPanel& page) {
        Do(page, "Import; [Ring]|Size");
        WorkInForm<CEditPadStyle>(page, "Edit", [](CShownDialog& form) {
          form.Fill("Size", "2");
          form.Press("OK");
        });
        page.Press("Delete");
        page.Type("Chip", "Name", "Header");
        page.Go("Header", "Size");
        WorkInForm<CEditPadStyle>(page, "Edit", [](CShownDialog& form) {
          form.Press("OK");  // unchanged, but twice
          form.Press("Cancel");
        });
        page.Type("Header", "Name", "Chip");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 7074: [Ring]\nerror 7076: Header\nevent TechnologyChanged\n");
  EXPECT_EQ(Pad("[Ring]").Values().size.value, 2'000'000);
}

TEST_F(PadStylesPageTest, AFormDoesNotOpenOverATextThatDoesNotParse) {
  Work<CPadStylesPage>(
      [](CShownPanel& page) {
        page.Type("Core", "Size", "wide");
        Do(page, "Header|Name; Copy");
        EXPECT_EQ(page.Focus(), "row 4, Size");
        page.Press("Edit");
        EXPECT_EQ(page.Text(4, "Size"), "wide");
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), "error 20010: wide\nerror 20010: wide\nevent TechnologyChanged\n");
}

TEST_F(PadStylesPageTest, EveryCellThatIsRefusedIsMarkedUntilItIsTypedAgain) {
  Work<CPadStylesPage>(
      [this](CShownPanel& page) {
        Do(page, "Chip|Name|Header; Jack|Size|0; Apply");
        const CString name =
            "\"Header\" cannot be the name. Use 1 to 255 characters that no other style has as its name, "
            "without quotation marks, control characters, blanks at the ends or a \"[\" at the start.";
        const CString size = "row 6, Size: Size: a pad cannot have 0 there. Use a length greater than 0.\n";
        EXPECT_EQ(page.Problems(), "row 1, Name: " + name + " Row 3 has it, too.\nrow 3, Name: " + name +
                                       " Row 3 has it, too.\n" + size);
        page.Type(1, "Name", "Chip");  // which mends the other row, too
        EXPECT_EQ(page.Problems(), size);
        page.Go("Jack", "Size");
        WorkInForm<CEditPadStyle>(page, "Edit", [](CShownDialog& form) {
          form.Fill("Size", "3");
          form.Press("OK");
        });
        EXPECT_EQ(page.Problems(), "");
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7076: Header\nevent TechnologyChanged\n");
}

TEST_F(PadStylesPageTest, TheFormsKnowSlotsAndOneExceptionForEachLayer) {
  Work<CPadStylesPage>(
      [&](CShownPanel& page) {
        page.Go("Core", "Size");
        WorkInForm<CEditPadStyleExceptionDialog>(page, "AddException", [](CShownDialog& form) {
          EXPECT_EQ(form.FieldText("Size"), "1.700");
          form.Press("OK");
          form.Fill("Layer", "Core");
          form.Fill("Shape", "Oval");
          form.Press("OK");
          EXPECT_EQ(form.Focus(), "Layer");
          form.Fill("Layer", "Bottom");
          form.Press("OK");
          EXPECT_EQ(form.Focus(), "Length");
          form.Fill("Length", "2.5");
          form.Press("OK");
        });
        EXPECT_EQ(page.Text(4, "Layer"), "Bottom");
        EXPECT_EQ(page.Focus(), "row 4, Layer");
        page.Go("Header", "Name");
        WorkInForm<CEditPadStyle>(page, "Edit", [](CShownDialog& form) {
          form.Fill("DrillShape", "Slot");
          form.Fill("DrillLength", "1.8");
          form.Press("OK");
          EXPECT_EQ(form.Focus(), "DrillLength");
          form.Fill("DrillLength", "1.6");
          form.Fill("DrillCornerRadius", "0.6");
          form.Press("OK");
          EXPECT_EQ(form.Focus(), "DrillCornerRadius");
          form.Fill("DrillCornerRadius", "0.5");
          form.Check("DrillRotated", true);
          form.Press("OK");
        });
        EXPECT_EQ(page.Text("Header", "Drill"), "Slot");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(),
            "error 21716\nerror 7187: Header, Core\nerror 21710: Length, 0\nerror 21713: 1, 1.8, 1.7, 1.7\n"
            "error 21714: 0.6, 1\nevent TechnologyChanged\n");
  EXPECT_EQ(Pad("Header").Values().drillLength.value, 1'600'000);
  EXPECT_TRUE(Pad("Header").Values().drillRotated);
  const CPadStyleException* const added = Pad("Header").GetException(&Layer("Bottom"), false);
  ASSERT_TRUE(added);
  EXPECT_EQ(added->Values().length.value, 2'500'000);
}

TEST_F(PadStylesPageTest, AnExceptionGoesWithItsLayerAndItsStyle) {
  Pad("Header").Exceptions().First()->SetLayer(&Layer("Glue"));
  WorkInSheet(
      [&](CShownDialog& dialog) {
        dialog.Show<CPadStylesPage>().Type("Glue", "Size", "1.8");
        dialog.Press("Apply");
        CShownPanel layers = dialog.Show<CLayersPage>();
        ui.Answer(EAnswer::Yes);
        Do(layers, "Glue|Name; Delete");
        dialog.Press("Apply");
        CShownPanel page = dialog.Show<CPadStylesPage>();
        EXPECT_EQ(page.FindRow("Glue"), -1);
        page.Type("Top", "Size", "1.8");
        dialog.Press("Apply");
        EXPECT_EQ(Pad("Header").Exceptions().Count(), 1u);
        Press(page, "Header", "Delete");
        EXPECT_EQ(page.FindRow("Top"), -1);
      },
      {"OK"});
  EXPECT_FALSE(design.FindPadStyle("Header"));
}

TEST_F(PadStylesPageTest, AStyleThatCannotGoIsShownAgainWithTheExceptionsThatWentWithIt) {
  Work<CPadStylesPage>(
      [&](CShownPanel& page) {
        Press(page, "Core", "DeleteException");
        Press(page, "Header", "Delete");
        EXPECT_EQ(page.FindRow("Top"), -1);
        AddVia("Header");  // by another part of the program
        page.Press("OK");
        EXPECT_EQ(page.Focus(), "row 3, Name");
        EXPECT_EQ(page.Text("Header", 0), "X");
        EXPECT_EQ(page.FindRow("Top"), 5);
        EXPECT_EQ(page.FindRow("Core"), -1);  // was deleted by itself
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 7072: Header\nevent TechnologyChanged\n");
  EXPECT_EQ(Pad("Header").Exceptions().Count(), 1u);
}

TEST_F(PadStylesPageTest, AMergedStyleTakesItsExceptionsAwayAndItsViasNeedTheDrillOfTheOther) {
  CVia& via = AddVia("Header");
  design.ResetUndoLevels();
  const CString before = StateOf(design);
  const auto mergeInto = [&](CShownPanel& page, const char* style) {
    page.Go(style, "Name");
    page.Select({"Header", "Core", style});
    WorkInForm<CMergeStyles>(page, "Merge", [](CShownDialog& merge) { merge.Press("OK"); });
  };
  Work<CPadStylesPage>([&](CShownPanel& page) { mergeInto(page, "Chip"); }, {"OK", "Cancel"});
  EXPECT_EQ(StateOf(design), before);
  Work<CPadStylesPage>(
      [&](CShownPanel& page) {
        mergeInto(page, "Jack");
        EXPECT_EQ(page.FindRow("Core"), -1);
        WorkInForm<CEditPadStyle>(page, "Edit", [](CShownDialog& form) {
          form.Fill("DrillWidth", "0");
          form.Press("OK");
        });
        Do(page, "OK; Jack|Drill|0.9");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 7263: Chip\nevent TechnologyChanged\nerror 7263: Jack\nevent TechnologyChanged\n");
  EXPECT_FALSE(design.FindPadStyle("Header"));
  EXPECT_EQ(via.Values().style.Get(), &Pad("Jack"));
  design.Undo();
  EXPECT_EQ(StateOf(design), before);
}

// ---- Editions and kinds of design

int ColumnTitled(const CEditGrid& grid, const CString& title) {
  int col = 0;
  while (col < grid.GetColumnCount() && grid.Column(col).title != title) ++col;
  return col;
}

TEST(PadStylesPageColumns, FollowEditionAndKind) {
  struct SCase {
    const char* edition;
    bool isBoard;
    const char* headers;
    bool copies;
  };
  const CString dimensions = "Shape|Size|Length|Dimension 3|Dimension 4|Drill|Plated|";
  for (const auto& [edition, isBoard, headers, copies] :
       {SCase{"Pellam", true, "Name|Layer|", true}, SCase{"Tarvik", true, "Name|", false},
        SCase{"Pellam", false, "Name|Shape|Size|", true},
        SCase{"CorvinaPro", false, "Name|Shape|Size|Thermal|", true}}) {
    SCOPED_TRACE(headers);
    CApplication::SetEditions({edition});
    CPcbDesign board;
    CScmDesign schematic;
    const CPadStylesPage page(isBoard ? static_cast<CDesign&>(board) : schematic);
    CString titles;
    for (int col = 1; col < page.Grid().GetColumnCount(); ++col) (titles += page.Grid().Column(col).title) += '|';
    EXPECT_EQ(titles, isBoard ? headers + dimensions + (copies ? "Thermal|" : "") : headers);
    const auto alignOf = [&](const char* title) { return page.Grid().Column(ColumnTitled(page.Grid(), title)).align; };
    EXPECT_TRUE(alignOf("Name") == EAlign::Left && alignOf("Size") == EAlign::Right);
    const std::vector<CColumn>& form = page.Rows().Kinds().At(0).form;
    const bool offersSlots = std::ranges::any_of(
        form, [](const CColumn& column) { return CString(column.field->name) == "drillShape" && !column.formTest; });
    EXPECT_EQ(offersSlots, isBoard && copies);
    for (const char* command : {"Copy", "Import", "Export"})
      EXPECT_EQ(page.FindCommand(command)->IsEnabled(), copies) << command;
    EXPECT_EQ(page.FindCommand("AddException")->visible, isBoard && copies);
  }
  CApplication::SetEditions({"Pellam"});
}

TEST(PadStyleSlots, LieWithinTheirPadEitherWay) {
  const CPcbDesign design;
  for (const bool rotated : {false, true}) {
    auto field = CPadStyle::EField::None;
    EXPECT_EQ(ValidateSlot(EPadShape::Oval, 1000, 3000, 0, 0, 0, 800, 2800, 0, rotated, field, &design, false),
              !rotated);
    EXPECT_EQ(ValidateSlot(EPadShape::Oval, 3000, 1000, 0, 0, 0, 800, 2800, 0, rotated, field, &design, false),
              rotated);
    EXPECT_EQ(field, CPadStyle::EField::DrillLength);
    EXPECT_TRUE(ValidateSlot(EPadShape::Round, 1, 0, 0, 0, 0, 800, 2800, 0, rotated, field, &design, false, false));
  }
}
}  // namespace
