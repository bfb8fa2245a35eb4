// The Units dialog, and what a change of units does to the pages that are open.
#include "technology/styles/unitsdialog.h"

#include <gtest/gtest.h>

#include <random>

#include "commands/commands.h"
#include "support/scripteduser.h"
#include "support/statetext.h"
#include "technology/sheet/sizesdialog.h"
#include "technology/styles/textstylespage.h"
#include "technology/styles/trackstylespage.h"

namespace {
class UnitsDialogTest : public ::testing::Test {
 protected:
  void Run(const CScriptedUser::CScript& script) {
    ui.WhenShown<CUnitsDialog>(script);
    ChangeUnits(&design);
  }
  CString Units() const {
    const CUnits& first = *design.GetUnits();
    const CUnits& second = *design.GetUnits2();
    return CUnits::Suffix(first.GetType()) + (" " + IntText(first.GetPrecision())) + ", " +
           CUnits::Suffix(second.GetType()) + (" " + IntText(second.GetPrecision()));
  }
  CPcbDesign design;
  CScriptedUser ui;
};

TEST(DefaultPrecision, AddsOneDecimalForEachFactorOfTenUpToFour) {
  for (const auto& [dsuPerUnit, precision] : std::initializer_list<std::pair<int, int>>{
           {1, 0}, {1000, 0}, {1001, 1}, {10'009, 1}, {10'010, 2}, {1'000'000, 3}, {10'010'000, 4}, {2'147'483'647, 4}})
    EXPECT_EQ(CUnitsDialog::DefaultPrecision(dsuPerUnit), precision) << dsuPerUnit;
}

TEST_F(UnitsDialogTest, AChosenUnitBringsItsDecimalsAndOkTellsEveryone) {
  Run([](CShownDialog& dialog) {
    dialog.Fill("PrimaryUnits", "inch");
    EXPECT_EQ(dialog.FieldText("PrimaryPrecision"), "4");
    dialog.Fill("PrimaryUnits", "µm");
    EXPECT_EQ(dialog.FieldText("PrimaryPrecision"), "0");
    dialog.Fill("PrimaryPrecision", "9");
    EXPECT_EQ(dialog.FieldText("PrimaryPrecision"), "4");
    dialog.Fill("PrimaryPrecision", "1");
    dialog.Fill("PrimaryUnits", "µm");  // the same one again
    EXPECT_EQ(dialog.FieldText("PrimaryPrecision"), "1");
    EXPECT_EQ(dialog.FieldText("SecondaryPrecision"), "2");
    dialog.Press("OK");
  });
  EXPECT_EQ(Units(), "µm 1, mil 2");
  EXPECT_EQ(ui.Shown(), "event UnitsChanged\n");
  ASSERT_EQ(design.Journal().Steps().size(), 1u);
  EXPECT_EQ(design.Journal().Steps()[0].id, 7030u);
  EXPECT_TRUE(design.Undo());
  EXPECT_EQ(Units(), "mm 3, mil 2");
}

TEST_F(UnitsDialogTest, OkWithNothingChangedStillTellsAndCancelWritesNothing) {
  Run([](CShownDialog& dialog) { dialog.Press("OK"); });
  EXPECT_EQ(ui.Shown(), "event UnitsChanged\n");
  Run([](CShownDialog& dialog) {
    dialog.Press("Swap");
    dialog.Press("Cancel");
  });
  EXPECT_EQ(ui.Shown(), "");
  EXPECT_EQ(Units(), "mm 3, mil 2");
  EXPECT_TRUE(design.Journal().Steps().empty());
}

TEST_F(UnitsDialogTest, SwapTradesPlacesAndTwiceIsNothing) {
  Run([](CShownDialog& dialog) {
    dialog.Fill("PrimaryPrecision", "1");
    dialog.Press("Swap");
    EXPECT_EQ(dialog.FieldText("PrimaryUnits") + dialog.FieldText("SecondaryUnits"), "milmm");
    dialog.Press("Swap");
    EXPECT_EQ(dialog.FieldText("PrimaryUnits") + dialog.FieldText("PrimaryPrecision"), "mm1");
    dialog.Press("Swap");
    dialog.Fill("PrimaryUnits", "mil");  // chosen already
    dialog.Press("OK");
  });
  EXPECT_EQ(Units(), "mil 2, mm 1");
}

TEST_F(UnitsDialogTest, AHundredChangesUnderOpenPagesLeaveEveryLength) {
  std::mt19937 random(1);
  std::vector<int> widths;
  for (int i = 0; i < 20; ++i) {
    widths.push_back(static_cast<int>(random() % 2'000'000'000) + 1);
    design.AddTrackStyle("Track " + IntText(i), widths.back());
  }
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    dialog.Show<CTextStylesPage>();
    CShownPanel tracks = dialog.Show<CTrackStylesPage>();
    const CString shown = tracks.Rows();
    const auto change = [&](const char* unit, const CString& decimals, bool swaps) {
      ui.WhenShown<CUnitsDialog>([&](CShownDialog& units) {
        units.Fill("PrimaryUnits", unit);
        units.Fill("PrimaryPrecision", decimals);
        if (swaps) units.Press("Swap");
        units.Press("OK");
      });
      ChangeUnits(&design);
    };
    static constexpr const char* kUnits[] = {"mil", "mm", "inch", "µm"};
    for (int i = 0; i < 100; ++i) change(kUnits[random() % 4], IntText(random() % 5), random() % 4 == 0);
    change("mil", "2", false);
    EXPECT_EQ(tracks.Text("Default", "Size"), "9.84");
    change("mm", "3", false);
    EXPECT_EQ(tracks.Rows(), shown);
    for (int i = 0; i < 20; ++i) tracks.Type("Track " + IntText(i), "Name", "T" + IntText(i));  // writes the rows
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  for (int i = 0; i < 20; ++i)
    EXPECT_EQ(design.FindTrackStyle("T" + IntText(i))->GetWidth(), widths[static_cast<std::size_t>(i)]);
  EXPECT_EQ(design.FindTrackStyle("Default")->GetWidth(), 250'000);
}
}  // namespace
