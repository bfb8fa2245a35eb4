// The Layer types page, and what all pages of records share.
#include "technology/layers/layertypespage.h"

#include <gtest/gtest.h>

#include "support/pagetest.h"
#include "technology/calculator.h"
#include "technology/layers/layerspage.h"

namespace {
/// Rows: 1 Copper (in use), 2 Silk.
class LayerTypesPageTest : public CPageTest<CPcbDesign> {
 protected:
  LayerTypesPageTest() {
    CLayerType layerType;
    layerType.SetName("Copper");
    layerType.SetUsage(ELayerUsage::Electrical);
    design.FindLayer("Top")->SetType(design.AddLayerType(&layerType));
    layerType.SetName("Silk");
    layerType.SetUsage(ELayerUsage::Documentation);
    layerType.SetViasEnabled(false);
    layerType.SetOversizeType(EOversizeType::ByAmount);
    layerType.SetOversize(123'457);
    design.AddLayerType(&layerType);
    design.ResetUndoLevels();
  }
  void Run(const Script& script, const std::vector<const char*>& commands) { Work<CLayerTypesPage>(script, commands); }
  const SLayerTypeFields& Values(const char* name) { return design.FindLayerType(name)->Values(); }
};

TEST_F(LayerTypesPageTest, AnElectricalUsageChecksAndLocksThePermissions) {
  Run(
      [](CShownPanel& page) {
        page.Type("Silk", "Usage", "Electrical");
        EXPECT_EQ(page.Text("Silk", "Vias"), "Yes");
        EXPECT_FALSE(page.IsEnabled("Silk", "Vias"));
        EXPECT_TRUE(page.IsEnabled("Silk", "Break shapes"));  // until the row is filled again
        page.Type("Silk", "Usage", "Solder mask");
        EXPECT_TRUE(page.IsEnabled("Silk", "Vias"));
        EXPECT_EQ(page.Text("Silk", "Vias"), "Yes");
        EXPECT_FALSE(page.IsEnabled("Copper", "Break shapes"));
      },
      {"OK"});
  EXPECT_TRUE(Values("Silk").vias);
  EXPECT_EQ(Values("Silk").usage.value, ELayerUsage::SolderMask);
}

TEST_F(LayerTypesPageTest, WithoutOversizeTypeThereIsNoOversize) {
  Run(
      [](CShownPanel& page) {
        EXPECT_EQ(page.Text("Silk", "Oversize"), "0.123");
        page.Type("Silk", "Oversize type", "None");
        EXPECT_EQ(page.Text("Silk", "Oversize"), "");
        EXPECT_FALSE(page.IsEnabled("Silk", "Oversize"));
        page.Type("Silk", "Oversize type", "To amount");
        page.Type("Silk", "Oversize", "-0.5");
      },
      {"OK"});
  EXPECT_EQ(Values("Silk").oversize.value, -500'000);
}

TEST_F(LayerTypesPageTest, RowsAboveARefusedOneStayWritten) {
  Run(
      [](CShownPanel& page) {
        page.Type("Copper", "Name", "Metal");
        page.Type("Silk", "Name", "");
        page.Press("OK");
        EXPECT_EQ(page.Focus(), "row 2, Name");
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7067: 2, \nevent TechnologyChanged\n");
  EXPECT_TRUE(design.FindLayerType("Metal"));
  EXPECT_TRUE(design.FindLayerType("Silk"));
}

TEST_F(LayerTypesPageTest, ATextThatIsNoLengthStaysUntilTheUnitsChange) {
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel types = dialog.Show<CLayerTypesPage>();
    types.Type("Silk", "Oversize", "abc");
    types.Type("Silk", "Name", "Legend");
    dialog.Show<CLayersPage>();
    CEvt::Send("UnitsChanged", &design);  // to the same ones
    dialog.Press("OK");
    EXPECT_EQ(dialog.ActivePage(), "CLayerTypesPage");
    EXPECT_EQ(types.Focus(), "row 2, Oversize");
    EXPECT_EQ(types.Text("Legend", "Oversize"), "abc");
    design.SwitchUnits();
    CEvt::Send("UnitsChanged", &design);
    EXPECT_EQ(types.Text("Legend", "Oversize"), "4.86");
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  EXPECT_EQ(Values("Legend").oversize.value, 123'457);
}

TEST_F(LayerTypesPageTest, TheFormForgetsATextThatIsNoLengthWithItsField) {
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel page = dialog.Show<CLayerTypesPage>();
    ui.WhenShown<CEditLayerTypeDialog>([](CShownDialog& form) {
      form.Fill("Oversize", "wide");
      form.Press("OK");
      EXPECT_EQ(form.Focus(), "Oversize");
      form.Fill("OversizeType", "None");
      form.Press("OK");
    });
    page.Go("Silk", "Name");
    page.Press("Edit");
    page.Press("Add");
    EXPECT_TRUE(page.IsEnabled(3, "Break shapes"));
    dialog.Press("Cancel");
  });
  ChangeSizes(&design);
  EXPECT_EQ(ui.Shown(), "error 20010: wide\nevent TechnologyChanged\n");
}

TEST_F(LayerTypesPageTest, AnImportKeepsWhatAUsageAlwaysGives) {
  InstallFiles({[](const CString&, std::size_t) {
                  return CString(
                      "Ink,Electrical,N,N,N,N,N,None,5,N,N,0\n"
                      "Odd,All layers,N,N,N,N,N,None,0,N,N,0\n");
                },
                {}});
  ui.Choose("x.csv");
  Run([](CShownPanel& page) { page.Press("Import"); }, {"Close"});
  EXPECT_TRUE(Values("Ink").vias);
  EXPECT_EQ(Values("Ink").oversize.value, 0);
  EXPECT_FALSE(design.FindLayerType("Odd"));
}

TEST_F(LayerTypesPageTest, ATypeInUseKeepsItsUsageAndItsPlace) {
  Run(
      [](CShownPanel& page) {
        page.Go("Copper", "Name");
        page.Press("Delete");
        page.Type("Copper", "Usage", "Documentation");
        page.Press("OK");
        page.Type("Copper", "Usage", "Electrical");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 7140: Copper\nerror 7201: Copper, Electrical, Documentation\nevent TechnologyChanged\n");
}

TEST_F(LayerTypesPageTest, OnePageCannotDeleteWhatAnotherHasJustChosen) {
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel types = dialog.Show<CLayerTypesPage>();
    types.Go("Silk", "Name");
    types.Press("Delete");
    types.Type("Copper", "Name", "Silk");  // must not be written beside the one that stays
    CShownPanel layers = dialog.Show<CLayersPage>();
    layers.Press("Add");
    layers.Type(4, "Name", "Legend");
    layers.Type(4, "Type", "Silk");
    dialog.Press("OK");
    EXPECT_EQ(dialog.ActivePage(), "CLayerTypesPage");
    EXPECT_EQ(types.Text(2, 0), "X");  // shown again
    dialog.Press("OK");
    types.Type(1, "Name", "Metal");
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  EXPECT_EQ(design.FindLayer("Legend")->GetType(), design.FindLayerType("Silk"));
  EXPECT_EQ(ui.Shown(),
            "event LayerAdded Legend\nevent DesignColoursChanged\nerror 7140: Silk\nerror 7067: 1, Silk\nevent "
            "TechnologyChanged\n");
}

struct STyped {
  const char* why;
  const char* edition;
  const char* text;
  int dsu;  // as long as it is not refused
  bool refused;
};
class LengthsTyped : public LayerTypesPageTest, public ::testing::WithParamInterface<STyped> {};

TEST_P(LengthsTyped, AreReadExactlyOrRefusedWhereTheyStand) {
  const STyped& typed = GetParam();
  CApplication::SetEditions({typed.edition});
  Run(
      [&](CShownPanel& page) {
        page.Type("Silk", "Oversize", typed.text);
        page.Press("OK");
        if (!typed.refused) return;
        EXPECT_EQ(page.Text("Silk", "Oversize"), typed.text);
        EXPECT_EQ(page.Focus(), "row 2, Oversize");
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(),
            (typed.refused ? "error 20010: " + CString(typed.text) + "\n" : CString()) + "event TechnologyChanged\n");
  EXPECT_EQ(Values("Silk").oversize.value, typed.refused ? 123'457 : typed.dsu);
}
INSTANTIATE_TEST_SUITE_P(Cases, LengthsTyped,
                         ::testing::Values(STyped{"Plain", "Pellam", "0.0000015", 2, false},
                                           STyped{"UnitRefused", "Pellam", "10 mil", 0, true},
                                           STyped{"UnitTaken", "KTComponents", "10 mil", 254'000, false},
                                           STyped{"TwoUnits", "KTComponents", "10 mil mm", 0, true},
                                           STyped{"Overflow", "Pellam", "2147.483648", 0, true},
                                           STyped{"Hexadecimal", "Pellam", "0x10", 0, true},
                                           STyped{"Emptied", "Pellam", "", 0, false}),
                         [](const auto& given) { return given.param.why; });

TEST_F(LayerTypesPageTest, UnitsChangeUnderTheOpenPageWithoutDrift) {
  Run(
      [&](CShownPanel& page) {
        for (int i = 0; i < 10; ++i) {
          design.SwitchUnits();
          CEvt::Send("UnitsChanged", &design);
          EXPECT_EQ(page.Text("Silk", "Oversize"), i % 2 ? "0.123" : "4.86");
        }
        page.Type("Silk", "Name", "Legend");
      },
      {"OK"});
  EXPECT_EQ(Values("Legend").oversize.value, 123'457);
}

TEST_F(LayerTypesPageTest, TheCalculatorWorksInTheUnitsShown) {
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel page = dialog.Show<CLayerTypesPage>();
    page.Go("Silk", "Name");
    EXPECT_FALSE(page.CanPress("Calculator"));
    page.Go("Silk", "Oversize");
    ui.WhenShown<CCalcDialog>([](CShownDialog& calculator) {
      EXPECT_EQ(calculator.FieldText("Expression"), "0.123457");
      calculator.Fill("Expression", "1/0");
      calculator.Press("OK");
      calculator.Fill("Expression", "99999999*9");
      calculator.Press("OK");
      calculator.Fill("Expression", "-(0.5 + 1) * 2");
      calculator.Press("OK");
    });
    page.Press("Calculator");
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  EXPECT_EQ(Values("Silk").oversize.value, -3'000'000);
  EXPECT_EQ(ui.Shown(), "error 20042: 1/0\nerror 20010: 99999999*9\nevent TechnologyChanged\n");
}

TEST_F(LayerTypesPageTest, HeaderClicksSortUpThenDownAndApplyStillWritesTheRightRows) {
  Run(
      [](CShownPanel& page) {
        page.Sort("Oversize");
        page.Sort("Oversize");
        EXPECT_EQ(page.FindRow("Silk"), 1);
        page.Type("Silk", "Name", "Legend");
      },
      {"OK"});
  EXPECT_EQ(design.layerTypes.First()->GetName(), "Copper");  // the design's order is its own
  EXPECT_EQ(Values("Legend").oversize.value, 123'457);
}

TEST_F(LayerTypesPageTest, AnImportIntoAnEmptyDesignGivesEqualTypes) {
  for (int i = 0; i < 2; ++i) ui.Choose("types.csv");
  Run([](CShownPanel& page) { page.Press("Export"); }, {"Cancel"});
  CPcbDesign other;
  ui.WhenShown<CSizesDialog>([](CShownDialog& dialog) {
    dialog.Show<CLayerTypesPage>().Press("Import");
    dialog.Press("Close");
  });
  ChangeSizes(&other);
  for (const CLayerType& one : design.layerTypes) {
    ASSERT_TRUE(other.FindLayerType(one.GetName()));
    EXPECT_TRUE(other.FindLayerType(one.GetName())->EqualValues(one)) << one.GetName();
  }
  EXPECT_TRUE(other.Undo());
  EXPECT_EQ(other.layerTypes.Count(), 0u);
}

TEST_F(LayerTypesPageTest, ASurveyNamesWhatIsWrongAsItStands) {
  design.FindLayerType("Silk")->SetName("Copper");
  CLayerTypesPage page(design);
  EXPECT_EQ(page.Survey().All().size(), 2u);  // both of the two equal names
}
}  // namespace
