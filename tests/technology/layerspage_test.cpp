// The Layers page, driven as a person drives it.
#include "technology/layers/layerspage.h"

#include "support/pagetest.h"

namespace {
using LayersPageTest = CBoardTest;

TEST_F(LayersPageTest, ALayerThatASpanEndsOnStaysAndKeepsItsNameFromOthers) {
  design.AddLayerSpan("Odd", &Layer("Glue"), &Layer("Top"));
  const auto asked = [](const CString& name) {
    return "ask 7531: " + name + ", 5,   Layer span \"Odd\"\r\n  Text: 1\r\n -> Yes\n";
  };
  const CString stays = "error 21708: Glue, Layer span \"Odd\"\n";
  for (const char* name : {"Glue", "Spots"}) {  // as it is, and as it was typed before the row was deleted
    ui.Answer(EAnswer::Yes);
    Work<CLayersPage>(
        [&](CShownPanel& page) {
          page.Type("Glue", "Name", name);
          page.Go(name, "Name");
          Do(page, "Delete; Add");
          page.Type(7, "Name", name);
          page.Press("OK");
          EXPECT_EQ(page.Focus(), "row 5, Name");
        },
        {"Cancel"});
    EXPECT_EQ(ui.Shown(), asked(name) + stays + "error 7061: 5\nevent TechnologyChanged\n");
  }
  ui.Answer(EAnswer::Yes);
  Work<CLayersPage>(
      [](CShownPanel& page) {
        Do(page, "Glue|Name; Delete");
        EXPECT_EQ(page.Text(5, 0), "U");
        page.Type("Notes", "Name", "Remarks");
        page.Press("Apply");  // goes on without it
        EXPECT_EQ(page.Text("Glue", 0), "X");
      },
      {"Close"});
  EXPECT_EQ(ui.Shown(), asked("Glue") + stays + "event LayerRenamed Remarks\nevent TechnologyChanged\n");
  EXPECT_TRUE(design.FindLayer("Glue"));
}

TEST_F(LayersPageTest, PouredCopperIsAskedForOnceAndThePlaneIsNoLongerShownAsOne) {
  Work<CLayersPage>(
      [&](CShownPanel& page) {
        Do(page, "Top|Bias|Power plane; Top|Plane net|GND; Notes|Name|");
        for (int i = 0; i < 2; ++i) page.Press("OK");
        EXPECT_EQ(page.Focus(), "row 6, Name");
        Do(page, "6|Name|Notes; Apply; Top|Bias|Any");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(),
            "ask 7260 -> OK\nerror 7061: 6\nerror 7061: 6\nerror 7231: Top\nevent DesignColoursChanged\n"
            "event TechnologyChanged\n");
  EXPECT_FALSE(Layer("Top").GetVisiblePlane());
}

TEST_F(LayersPageTest, EveryLayerThatSharesAUsageIsMarked) {
  Work<CLayersPage>(
      [](CShownPanel& page) {
        Do(page, "Core|Side|Top; Bottom|Side|Top; Apply");
        CString marked;
        for (const CString& line : Split(page.Problems(), "\n")) marked += line.substr(0, line.find(':')) + "; ";
        EXPECT_EQ(marked, "row 2, Name; row 3, Name; row 4, Name; ; ");
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7283: Top, Core, Top, Electrical\nevent TechnologyChanged\n");
}

TEST_F(LayersPageTest, ANetWithoutEffectIsToldOfRightBeforeItsRowIsWritten) {
  Layer("Core").SetNet(net);  // a row that nobody touches
  Work<CLayersPage>(
      [](CShownPanel& page) { Do(page, "Top|Name|Front; Bottom|Plane net|GND; Bottom|Name|Back; Notes|Name|Remarks"); },
      {"OK"});
  EXPECT_EQ(ui.Shown(),
            "event LayerRenamed Front\nerror 7231: Core\nerror 7231: Back\nevent LayerRenamed Back\n"
            "event LayerRenamed Remarks\nevent TechnologyChanged\n");
}

TEST_F(LayersPageTest, ATypeLocksTheUsageItGivesAndLeavesItBehind) {
  Work<CLayersPage>(
      [](CShownPanel& page) {
        EXPECT_FALSE(page.IsEnabled("[All layers]", "Name"));
        page.Type("Notes", "Type", "Copper");
        EXPECT_EQ(page.Text("Notes", "Usage"), "Electrical");
        EXPECT_TRUE(page.Refuses("Notes", "Usage", "Documentation"));
        page.Type("Notes", "Type", "");
        EXPECT_EQ(page.Text("Notes", "Usage"), "Electrical");
        EXPECT_EQ(page.Choices("Notes", "Usage"), "Electrical\nDocumentation\nSolder mask\nPaste mask\n");
      },
      {"OK"});
  EXPECT_EQ(Layer("Notes").GetUsage(), ELayerUsage::Electrical);
}

TEST_F(LayersPageTest, SortFollowsTheStackAndKeepsNewRowsLast) {
  design.SetLayerInOrder(&Layer("Bottom"), 5);
  Work<CLayersPage>(
      [](CShownPanel& page) {
        Do(page, "Add; 7|Name|New; Top|Name; MoveDown; Sort");
        for (const auto& [layer, row] : {std::pair{"Top", 2}, {"Core", 3}, {"Bottom", 4}, {"New", 7}})
          EXPECT_EQ(page.FindRow(layer), row) << layer;
      },
      {"Cancel"});
}

TEST_F(LayersPageTest, TheFormChecksTheNameAndTellsOfItsColour) {
  Work<CLayersPage>(
      [&](CShownPanel& page) {
        page.Go("Glue", "Name");
        WorkInForm<CEditLayerDialog>(page, "Edit", [](CShownDialog& form) {
          form.Fill("Name", "Top");
          form.Press("OK");
          EXPECT_EQ(form.Focus(), "Name");
          form.Fill("Name", "Paste spots");
          form.Fill("Colour", "#010203");
          form.Press("OK");
        });
        EXPECT_EQ(page.Text(5, "Name"), "Paste spots");
        Do(page, "Notes|Name|Top; 6|Name");
        page.Press("Delete");  // a row with a fault is not deleted
        EXPECT_EQ(page.Text(6, "Name"), "Top");
        page.Type(6, "Name", "Notes");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(),
            "error 7061: 5\nevent ColoursChanged\nerror 7061: 6\nevent LayerRenamed Paste spots\n"
            "event DesignColoursChanged\nevent TechnologyChanged\n");
  EXPECT_EQ(Layer("Paste spots").GetColour(), CColour{0x010203});
}

TEST_F(LayersPageTest, FocusSelectionSelectsTheRowsOfTheSelectedItems) {
  design.Selection().Add(*design.texts.First());
  Work<CLayersPage>(
      [](CShownPanel& page) {
        page.Press("FocusSelection");
        EXPECT_EQ(page.Focus(), "row 5, Name");
      },
      {"Cancel"});
}

TEST_F(LayersPageTest, AReducedEditionLacksThePlaneNetAndKeepsWhatItCannotOffer) {
  AddLayer("Mask", ELayerSide::Top, ELayerUsage::SolderMask);
  design.SetDefaultLayerOrder();
  CApplication::SetEditions({"Corvina"});
  Work<CLayersPage>(
      [](CShownPanel& page) {
        EXPECT_EQ(page.Text("Mask", "Usage"), "Solder mask");
        EXPECT_EQ(page.Choices("Mask", "Usage"), "Electrical\nDocumentation\n");
        EXPECT_EQ(page.Text("Mask", 6), "#808080");  // the colour follows the bias
        page.Type("Mask", "Name", "Stop");
      },
      {"OK"});
  ui.Shown();
  Layer("Glue").SetNet(net);
  Work<CLayersPage>(
      [](CShownPanel& page) {
        page.Press("OK");
        EXPECT_EQ(page.Focus(), "row 6, Name");  // the column at fault is not there
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7284: Documentation, 6\nevent TechnologyChanged\n");
  EXPECT_EQ(Layer("Stop").GetUsage(), ELayerUsage::SolderMask);
}
}  // namespace
