// The commands that open no dialog.
#include "commands/commands.h"

#include <gtest/gtest.h>

#include "model/services/application.h"
#include "model/services/hostsettings.h"
#include "model/services/registry.h"
#include "support/scripteduser.h"

namespace {
class CommandsTest : public ::testing::Test {
 protected:
  ~CommandsTest() override {
    CApplication::SetEditions({"Pellam"});
    CNoise::SetEnabled(true);
    InstallSettingsStore(nullptr);
  }
  CPcbDesign design;
  CDesignDrawing drawing{&design};
  CScriptedUser ui;
};

TEST_F(CommandsTest, AnUnknownCursorStyleStartsAgain) {
  CDesignDrawing::SetCursor(77);
  ChangeCursor();
  EXPECT_EQ(CDesignDrawing::GetCursor(), 0);
}

TEST_F(CommandsTest, AGridIsChosenByItsPlaceAndOnlyAChangeIsToldOf) {
  for (const char* name : {"Coarse", "Fine"}) {
    CGrid grid;
    grid.Set(&SGridFields::name, CName{name});
    design.AddGrid(&grid);
  }
  for (const int index : {1, 1, 2, -1}) ChooseGrid(index, &drawing);
  EXPECT_EQ(ui.Shown(), "event DesignColoursChanged\n");
  EXPECT_EQ(design.GetWorkingGrid(), design.FindGrid("Fine"));
  EXPECT_EQ(design.Journal().Steps().back().command, "ChooseGrid");
}

TEST_F(CommandsTest, ShowingAllLeavesTheBuiltInLayerAlone) {
  SetAllDisplayed(false, &drawing);
  SetAllTrueWidth(false, &drawing);
  EXPECT_TRUE(design.layers.First()->GetDisplayed());
  EXPECT_TRUE(design.layers.First()->GetTrueWidth());
  EXPECT_FALSE(design.FindLayer("Top")->GetDisplayed());
  EXPECT_FALSE(design.FindLayer("Top")->GetTrueWidth());
  ToggleGridsVisible(&design);
  EXPECT_FALSE(design.Colours().GetVisible(CDesignColours::kGridItem));
  EXPECT_FALSE(design.GetChanged());  // matters of view
}

TEST_F(CommandsTest, UnitsAndColoursDoNotMarkADesignAsChanged) {
  Set_RegisterIgnoreDesignChange();
  design.Journal().MarkSaved();
  for (const unsigned level : {7030u, 7190u}) {
    design.StartNestedUndoLevel(level);
    design.SwitchUnits();
    design.EndNestedUndoLevel(level);
  }
  EXPECT_FALSE(design.GetChanged());
  CDesign::SetIgnoreUndo(nullptr);
}

TEST_F(CommandsTest, PropertiesAreOfferedForASelectionThatHasThem) {
  InitSetOpInterface();
  const auto enabled = CSetOp::Functions().propertiesEnabled;
  CScmSymDesign symbol;
  EXPECT_TRUE(enabled(&design));
  EXPECT_FALSE(enabled(&symbol));
  design.StartNestedUndoLevel(1);
  EXPECT_FALSE(enabled(&design));
  design.EndNestedUndoLevel(1);

  CDimension dimension;
  dimension.Shapes().Add(CShapeItem());
  dimension.Texts().Add(CFreeText());
  CDimension& linear = *design.dimensions.Add(dimension);
  dimension.Set(&SPlacedItemFields::type, 1);
  CDimension& angular = *design.dimensions.Add(dimension);
  CFreePad& pad = *design.freePads.Add(CFreePad());
  CArea& area = *design.areas.Add(CArea());
  CDesignItem& line = *linear.Shapes().First();
  CDesignItem& text = *linear.Texts().First();
  struct SCase {
    const char* why;
    std::vector<CDesignItem*> selected;
    bool enabled;
  };
  for (const SCase& one : {SCase{"one kind", {&pad}, true}, SCase{"a kind without properties", {&area}, false},
                           SCase{"mixed, first without owner", {&pad, &line}, false},
                           SCase{"two parts of a dimension", {&line, &text}, true},
                           SCase{"parts of two kinds of dimension", {&line, angular.Texts().First()}, false},
                           SCase{"a part and something else", {&line, &pad}, false}}) {
    design.Selection().Clear();
    for (CDesignItem* item : one.selected) design.Selection().Add(*item);
    EXPECT_EQ(enabled(&design), one.enabled) << one.why;
  }
}

TEST_F(CommandsTest, HardwiredPreferencesAreForcedExceptInOneEdition) {
  CApplication::SetEditions({"CorvinaPro"});
  SetBrenloHardwiredPrefs();
  EXPECT_TRUE(CNoise::GetEnabled());
  CApplication::SetEditions({"Brenlo"});
  SetBrenloHardwiredPrefs();
  EXPECT_FALSE(CNoise::GetEnabled());
  EXPECT_TRUE(COnlineDRC::GetEnabled());  // another edition's
  EXPECT_EQ(HostSettings().copySettings, (std::array{1, 0, 1, 0}));
  EXPECT_EQ(HostSettings().placementPushAside, 15329);
  EXPECT_EQ(CProject::GetAllSheets(), 3);
  CApplication::SetEditions({"Brenlo", "Tarvik"});
  SetBrenloHardwiredPrefs();
  EXPECT_FALSE(COnlineDRC::GetEnabled());
}
}  // namespace
