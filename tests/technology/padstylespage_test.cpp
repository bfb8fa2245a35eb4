// The Pad styles page, driven as a person drives it.
#include "technology/styles/padstylespage.h"

#include <gtest/gtest.h>

#include "support/pagetest.h"
#include "technology/layers/layerspage.h"
#include "technology/mergestyles.h"

namespace {
constexpr int kUm = 1000;

/// Pad styles Chip, Default (used by the default class), Header with exceptions for Core and Top, Jack (a slot),
/// [Guide].
class PadStylesPageTest : public CPageTest<CPcbDesign> {
 protected:
  PadStylesPageTest() {
    CLayer core;
    core.SetName("Core");
    core.SetSide(ELayerSide::Inner);
    core.SetUsage(ELayerUsage::Electrical);
    design.AddLayer(&core);
    design.SetDefaultLayerOrder();
    CPadStyle& header = Add("Header", EPadShape::Round, 1700, 0);
    header.SetDrillWidth(1000 * kUm);
    for (const char* layer : {"Core", "Top"}) {
      CPadStyleException exception;
      exception.SetLayer(design.FindLayer(layer));
      exception.SetSize(1900 * kUm);
      header.AddException(&exception);
    }
    CPadStyle& jack = Add("Jack", EPadShape::Oval, 2200, 4200);
    jack.SetDrillShape(EDrillShape::Slot);
    jack.SetDrillWidth(1000 * kUm);
    jack.SetDrillLength(3000 * kUm);
    Add("Chip", EPadShape::RoundedRectangle, 1000, 1450).SetDimension3(250 * kUm);
    Add("[Guide]", EPadShape::Square, 500, 0);
    design.ResetUndoLevels();
  }
  CPadStyle& Add(const char* name, int shape, int size, int length) {
    CPadStyle style;
    style.SetName(name);
    style.SetShape(shape);
    style.SetSize(size * kUm);
    style.SetLength(length * kUm);
    return *design.AddPadStyle(&style);
  }
  CPadStyle& Style(const char* name) { return *design.FindPadStyle(name); }
  void AddVia(const char* style) {
    CVia via;
    via.Set(&SViaFields::style, &Style(style));
    design.Selection().Add(*design.AddNet("N", nullptr)->Vias().Add(via));
  }
  void Run(const Script& script, const std::vector<const char*>& commands) { Work<CPadStylesPage>(script, commands); }
  void Press(CShownPanel& page, const char* row, const char* command) {
    page.Go(row, "Size");
    page.Press(command);
  }
};

TEST_F(PadStylesPageTest, ExceptionsStandUnderTheirStyleThroughEverySort) {
  AddVia("Jack");
  Run(
      [](CShownPanel& page) {
        EXPECT_EQ(page.Focus(), "row 6, Name");
        EXPECT_EQ(page.Rows(),
                  "|Chip|[All layers]|Rounded rectangle|1.000|1.450|0.250|0.000|0.000|Yes|0.000\n"
                  "X|Default|[All layers]|Round|1.000|0.000|0.000|0.000|0.500|Yes|0.000\n"
                  "|Header|[All layers]|Round|1.700|0.000|0.000|0.000|1.000|Yes|0.000\n"
                  "||Core|Round|1.900|0.000|0.000|0.000|||0.000\n"
                  "||Top|Round|1.900|0.000|0.000|0.000|||0.000\n"
                  "X|Jack|[All layers]|Oval|2.200|4.200|0.000|0.000|Slot|Yes|0.000\n"
                  "|[Guide]|[All layers]|Square|0.500|0.000|0.000|0.000|0.000|Yes|0.000\n");
        EXPECT_FALSE(page.IsEnabled("Jack", "Drill"));
        for (const char* column : {"Size", "Name", "Layer", "Drill", "Drill", "Shape"}) {
          page.Sort(column);
          const int style = page.FindRow("Header");
          EXPECT_EQ(page.Text(style + 1, "Layer"), "Core") << column;
          EXPECT_EQ(page.Text(style + 2, "Layer"), "Top") << column;
        }
      },
      {"OK"});
  Run([](CShownPanel& page) { EXPECT_EQ(page.Text(1, "Shape"), "Oval"); }, {"Cancel"});  // sorted as it was left
}

struct SRefusal {
  const char *why, *row, *column, *text;  // what is typed
  const char *shown, *focus;
};
class PadStylesPageRefuses : public PadStylesPageTest, public ::testing::WithParamInterface<SRefusal> {};

TEST_P(PadStylesPageRefuses, AndLeavesTheWholeDesignUntouched) {
  AddVia("Header");
  design.ResetUndoLevels();
  ExpectRefusal<CPadStylesPage>(
      [](CShownPanel& page) {
        page.Type("Chip", "Size", "1.1");  // would be written, if anything were
        page.Type(GetParam().row, GetParam().column, GetParam().text);
      },
      GetParam().shown, GetParam().focus);
}
INSTANTIATE_TEST_SUITE_P(
    Cases, PadStylesPageRefuses,
    ::testing::Values(SRefusal{"NameTwice", "Jack", "Name", "Chip", "error 7076: Chip", "row 6, Name"},
                      SRefusal{"NoNumber", "Core", "Size", "big", "error 20010: big", "row 4, Size"},
                      SRefusal{"NoSize", "Core", "Size", "0", "error 21710: Size, 0", "row 4, Size"},
                      SRefusal{"NoLength", "Header", "Shape", "Oval", "error 21710: Length, 0", "row 3, Length"},
                      SRefusal{"Radius", "Chip", "Dimension 3", "0.551", "error 21714: 0.551, 1.1",
                               "row 1, Dimension 3"},
                      SRefusal{"NoCopper", "Default", "Drill", "1", "error 21712: 1, 1", "row 2, Drill"},
                      SRefusal{"SlotOutside", "Jack", "Length", "2.9", "error 21713: 1, 3, 2.2, 2.9", "row 6, Drill"},
                      SRefusal{"NegativeThermal", "Top", "Thermal", "-1", "error 21711: Thermal, -1", "row 5, Thermal"},
                      SRefusal{"SecondOfALayer", "Top", "Layer", "Core", "error 7187: Header, Core", "row 5, Layer"},
                      SRefusal{"ViaWithoutDrill", "Header", "Drill", "", "error 7263: Header", "row 3, Drill"}),
    [](const auto& given) { return given.param.why; });

TEST_F(PadStylesPageTest, WhatTheShapeLacksGoesWithTheRowsThatAreWrittenAndOthersAreNotRead) {
  Style("[Guide]").SetLength(7);
  Style("Default").SetLength(7);
  Style("Jack").SetSize(0);
  Run(
      [](CShownPanel& page) {
        page.Type("Chip", "Length", "wide");
        page.Type("Chip", "Shape", "Square");
        EXPECT_FALSE(page.IsEnabled("Chip", "Length"));
        EXPECT_EQ(page.Text("Chip", "Length"), "0.000");
        page.Type("[Guide]", "Size", "0.6");
        page.Set("Header", "Plated", false);  // a bare hole needs no copper
        page.Type("Header", "Drill", "1.7");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "event TechnologyChanged\n");
  for (const char* style : {"Chip", "[Guide]", "Default"})
    EXPECT_EQ(Style(style).Values().length.value, style == CString("Default") ? 7 : 0) << style;
  EXPECT_EQ(Style("Chip").Values().dimension3.value, 0);
  EXPECT_EQ(Style("Header").Values().drillWidth.value, 1700 * kUm);
}

TEST_F(PadStylesPageTest, ACopyTakesItsExceptionsAlongAndLosesItsBrackets) {
  Style("Header").SetName("[Header]");
  Run(
      [&](CShownPanel& page) {
        EXPECT_FALSE(page.IsEnabled("[Header]", "Name"));
        page.Go("Core", "Size");
        page.Press("DeleteException");
        ui.WhenShown<CEditPadStyle>([](CShownDialog& form) {
          EXPECT_EQ(form.FieldText("Name"), "Header");
          form.Press("OK");
        });
        Press(page, "[Header]", "Copy");
        EXPECT_EQ(page.Focus(), "row 8, Name");
        Press(page, "[Header]", "Delete");
        Press(page, "Default", "Delete");
        Press(page, "Default", "DeleteException");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 7074: [Header]\nbeep -1\nevent TechnologyChanged\n");
  ASSERT_EQ(Style("Header").Exceptions().Count(), 1u);
  EXPECT_EQ(Style("Header").Exceptions().First()->GetLayer(), design.FindLayer("Top"));
  EXPECT_EQ(Style("[Header]").Exceptions().Count(), 1u);
  EXPECT_TRUE(design.FindPadStyle("Default"));
}

TEST_F(PadStylesPageTest, AnExceptionIsAddedFromItsFormOnceForEachLayer) {
  Run(
      [&](CShownPanel& page) {
        ui.WhenShown<CEditPadStyleExceptionDialog>([](CShownDialog& form) {
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
        Press(page, "Core", "AddException");
        EXPECT_EQ(page.Text(4, "Layer"), "Bottom");
        EXPECT_EQ(page.Focus(), "row 4, Layer");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 21716\nerror 7187: Header, Core\nerror 21710: Length, 0\nevent TechnologyChanged\n");
  const CPadStyleException* const added = Style("Header").GetException(design.FindLayer("Bottom"), false);
  ASSERT_TRUE(added);
  EXPECT_EQ(added->Values().length.value, 2500 * kUm);
}

TEST_F(PadStylesPageTest, TheFormKnowsSlots) {
  Run(
      [&](CShownPanel& page) {
        ui.WhenShown<CEditPadStyle>([](CShownDialog& form) {
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
        Press(page, "Header", "Edit");
        EXPECT_EQ(page.Text("Header", "Drill"), "Slot");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 21713: 1, 1.8, 1.7, 1.7\nerror 21714: 0.6, 1\nevent TechnologyChanged\n");
  EXPECT_EQ(Style("Header").Values().drillLength.value, 1600 * kUm);
  EXPECT_TRUE(Style("Header").Values().drillRotated);
}

TEST_F(PadStylesPageTest, AnExceptionGoesWithItsLayerAndItsStyle) {
  CLayer glue;
  glue.SetName("Glue");
  Style("Header").Exceptions().First()->SetLayer(design.AddLayer(&glue));
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    dialog.Show<CPadStylesPage>().Type("Glue", "Size", "1.8");
    dialog.Press("Apply");
    CShownPanel layers = dialog.Show<CLayersPage>();
    ui.Answer(EAnswer::Yes);
    layers.Go("Glue", "Name");
    layers.Press("Delete");
    dialog.Press("Apply");
    CShownPanel page = dialog.Show<CPadStylesPage>();
    EXPECT_EQ(page.FindRow("Glue"), -1);
    page.Type("Top", "Size", "1.8");
    dialog.Press("Apply");
    EXPECT_EQ(Style("Header").Exceptions().Count(), 1u);
    Press(page, "Header", "Delete");
    EXPECT_EQ(page.FindRow("Top"), -1);
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  EXPECT_FALSE(design.FindPadStyle("Header"));
  EXPECT_FALSE(design.FindLayer("Glue"));
}

TEST_F(PadStylesPageTest, AMergedStyleTakesItsExceptionsAwayAndItsViasNeedTheDrillOfTheOther) {
  AddVia("Header");
  design.ResetUndoLevels();
  const CString before = StateOf(design);
  Run(
      [&](CShownPanel& page) {
        ui.WhenShown<CMergeStyles>([](CShownDialog& merge) { merge.Press("OK"); });
        page.Go("Jack", "Name");
        page.Select({"Header", "Core", "Jack"});
        page.Press("Merge");
        EXPECT_EQ(page.FindRow("Core"), -1);
        ui.WhenShown<CEditPadStyle>([](CShownDialog& form) {
          form.Fill("DrillWidth", "0");
          form.Press("OK");
        });
        page.Press("Edit");
        page.Press("OK");
        page.Type("Jack", "Drill", "0.9");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 7263: Jack\nevent TechnologyChanged\n");
  EXPECT_FALSE(design.FindPadStyle("Header"));
  EXPECT_EQ(design.FindNet("N")->Vias().First()->Values().style.Get(), &Style("Jack"));
  design.Undo();
  EXPECT_EQ(StateOf(design), before);
}

TEST_F(PadStylesPageTest, NoViaLosesItsDrillByMerging) {
  AddVia("Header");
  const CString before = StateOf(design);
  Run(
      [&](CShownPanel& page) {
        ui.WhenShown<CMergeStyles>([](CShownDialog& merge) { merge.Press("OK"); });
        page.Go("Chip", "Name");
        page.Select({"Header", "Chip"});
        page.Press("Merge");
      },
      {"OK", "Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7263: Chip\nevent TechnologyChanged\n");
  EXPECT_EQ(StateOf(design), before);
}

// ---- Files

TEST_F(PadStylesPageTest, AFileHoldsThirteenFields) {
  Style("Jack").SetDrillRotated(true);
  Style("Chip").SetPlated(false);
  ui.Choose("pads.csv");
  Run([](CShownPanel& page) { page.Press("Export"); }, {"Cancel"});
  EXPECT_EQ(file,
            "\"Name\",\"Layer\",\"Shape\",\"Size\",\"Length\",\"Dimension 3\",\"Drill\",\"Plated\",\"Drill shape\","
            "\"Drill width\",\"Drill length\",\"Drill corner radius\",\"Drill rotated\"\n"
            "\"Chip\",,\"Rounded rectangle\",1,1.45,0.25,,,,,,,\n"
            "\"Default\",,\"Round\",1,0,0,0.5,Y,,,,,\n"
            "\"Header\",,\"Round\",1.7,0,0,1,Y,,,,,\n"
            "\"Header\",\"Core\",\"Round\",1.9,0,0,,,,,,,\n"
            "\"Header\",\"Top\",\"Round\",1.9,0,0,,,,,,,\n"
            "\"Jack\",,\"Oval\",2.2,4.2,0,,Y,\"Slot\",1,3,0,Y\n"
            "\"[Guide]\",,\"Square\",0.5,0,0,,,,,,,\n");
}

TEST_F(PadStylesPageTest, AnImportEditsTheRowsAndShowsTheProblemsOfItsRecords) {
  Style("Header").SetThermal(5);
  Style("Chip").SetPlated(false);
  file =
      "Jack,,Oval,2.2,4.2,0,1.1,N,,,,,\n"
      "Header,Bottom,Square,1.8,0,0,,,,,,,\n"
      "Header,Bottom,Square,2,0,0,,,,,,,\n"
      "Header,Core,Round,0,0,0,,,,,,,\n"
      "Header,Nowhere,Round,1,0,0,,,,,,,\n"
      "Missing,Top,Round,1,0,0,,,,,,,\n"
      "Bad,,Round,1,0\n"
      "Bad,,Star,x,0,0,,,,,,,\n"
      "Bad,,Oval,1,2,0,,Y,Slot,1.5,1,0,N\n"
      "New,,Oval,1,2,0,,Y,Slot,0.5,1,0,N\n"
      "New,Core,Round,2,0,0,,,,,,,\n"
      "Header,,Round,1.75,0,0,1,Y,,,,,\n";
  ui.Choose("x.csv");
  const CString before = StateOf(design);
  Run(
      [&](CShownPanel& page) {
        page.Press("Import");
        EXPECT_EQ(StateOf(design), before);
      },
      {"OK"});
  EXPECT_EQ(
      ui.Shown(),
      "report 20050: Record 4 cannot be used: Size: a pad cannot have 0 there. Use a length greater than 0.\n"
      "report 20050: Record 5: there is no layer \"Nowhere\".\n"
      "report 20050: Record 6: there is no pad style \"Missing\" that an exception could belong to.\n"
      "report 20050: Record 7 cannot be used: it has 5 fields instead of 13.\n"
      "report 20050: Record 8 cannot be used: \"Star\" cannot be read as \"Shape\".\n"
      "report 20050: Record 8: \"x\" is not a length. Write one number, such as 0.25.\n"
      "report 20050: Record 9 cannot be used: A slot of 1.5 by 1 reaches beyond its pad of 1 by 2. Use a smaller slot "
      "or a larger pad.\n"
      "event TechnologyChanged\n");
  EXPECT_EQ(Style("Jack").Values().drillShape.value, EDrillShape::Round);
  EXPECT_FALSE(Style("Jack").Values().plated);
  EXPECT_EQ(Style("Header").Exceptions().Count(), 3u);
  EXPECT_EQ(Style("Header").GetException(design.FindLayer("Bottom"), false)->Values().size.value, 2000 * kUm);
  EXPECT_EQ(Style("Header").Values().size.value, 1750 * kUm);
  EXPECT_EQ(Style("Header").GetThermal(), 5);
  EXPECT_EQ(Style("New").Values().drillLength.value, 1000 * kUm);
  EXPECT_EQ(Style("New").Exceptions().Count(), 1u);
  EXPECT_EQ(design.padStyles.Count(), 6u);
}

// ---- Editions and kinds of design

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
