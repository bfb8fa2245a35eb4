// The Layer types page, and the lengths, units and forms that all pages of records share.
#include "technology/layers/layertypespage.h"

#include "support/pagetest.h"
#include "technology/calculator.h"
#include "technology/layers/layerspage.h"

namespace {
class LayerTypesPageTest : public CBoardTest {
 protected:
  void SwitchUnits() {
    design.SwitchUnits();
    CEvt::Send("UnitsChanged", &design);
  }
  const SLayerTypeFields& Values(const char* name) { return design.FindLayerType(name)->Values(); }
};

TEST_F(LayerTypesPageTest, UsageAndOversizeTypeDecideWhatElseCanBeEdited) {
  Work<CLayerTypesPage>(
      [](CShownPanel& page) {
        page.Type("Silk", "Usage", "Electrical");
        EXPECT_EQ(page.Text("Silk", "Vias"), "Yes");
        EXPECT_FALSE(page.IsEnabled("Silk", "Vias"));
        EXPECT_TRUE(page.IsEnabled("Silk", "Break shapes"));  // until the row is filled again
        page.Type("Silk", "Usage", "Solder mask");
        EXPECT_TRUE(page.IsEnabled("Silk", "Vias"));
        EXPECT_FALSE(page.IsEnabled("Copper", "Break shapes"));
        EXPECT_EQ(page.Text("Silk", "Oversize"), "0.123");
        page.Type("Silk", "Oversize type", "None");
        EXPECT_EQ(page.Text("Silk", "Oversize"), "");
        EXPECT_FALSE(page.IsEnabled("Silk", "Oversize"));
        page.Type("Silk", "Oversize type", "To amount");
        EXPECT_EQ(page.Text("Silk", "Oversize"), "");  // until it is typed
        page.Type("Silk", "Oversize", "-0.5");
      },
      {"OK"});
  EXPECT_TRUE(Values("Silk").vias);
  EXPECT_EQ(Values("Silk").usage.value, ELayerUsage::SolderMask);
  EXPECT_EQ(Values("Silk").oversize.value, -500'000);
}

TEST_F(LayerTypesPageTest, RowsAboveARefusedOneStayWritten) {
  Work<CLayerTypesPage>([](CShownPanel& page) { Do(page, "Copper|Name|Metal; Silk|Name|"); }, {"OK", "Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7067: 2\nevent TechnologyChanged\n");
  EXPECT_TRUE(design.FindLayerType("Metal"));
  EXPECT_TRUE(design.FindLayerType("Silk"));
}

TEST_F(LayerTypesPageTest, PagesSeeWhatOthersHaveWritten) {
  WorkInSheet(
      [&](CShownDialog& dialog) {
        CShownPanel types = dialog.Show<CLayerTypesPage>();
        EXPECT_EQ(types.Text("Silk", 0) + types.Text("Copper", 0), "X");
        types.Type("Copper", "Name", "Metal");
        CShownPanel layers = dialog.Show<CLayersPage>();
        layers.Type("Notes", "Type", "Silk");
        dialog.Press("Apply");
        EXPECT_EQ(dialog.Show<CLayerTypesPage>().Text("Silk", 0), "X");
        dialog.Show<CLayersPage>();
        EXPECT_EQ(layers.Text("Top", "Type"), "Metal");
        // What one page deletes and another one has just chosen stays, and keeps its name.
        layers.Type("Notes", "Type", "");
        dialog.Press("Apply");
        dialog.Show<CLayerTypesPage>();
        Do(types, "Silk|Name; Delete; Metal|Name|Silk");
        dialog.Show<CLayersPage>();
        layers.Type("Notes", "Type", "Silk");
        dialog.Press("OK");
        EXPECT_EQ(dialog.ActivePage(), "CLayerTypesPage");
        EXPECT_EQ(types.Text(2, 0), "X");  // shown again
        dialog.Press("OK");
        types.Type(1, "Name", "Metal");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 7140: Silk\nerror 7067: 1\nevent TechnologyChanged\n");
  EXPECT_EQ(Layer("Notes").GetType(), design.FindLayerType("Silk"));
}

// ---- Lengths and units

TEST_F(LayerTypesPageTest, ATextThatIsNoLengthStaysUntilTheUnitsChangeAndAnEmptiedOneBeyond) {
  WorkInSheet(
      [&](CShownDialog& dialog) {
        CShownPanel types = dialog.Show<CLayerTypesPage>();
        Do(types, "Silk|Oversize|abc; Silk|Name|Legend; Legend|Break gap|");
        dialog.Show<CLayersPage>();
        CEvt::Send("UnitsChanged", &design);  // to the same ones
        dialog.Press("OK");
        EXPECT_EQ(dialog.ActivePage(), "CLayerTypesPage");
        EXPECT_EQ(types.Focus(), "row 2, Oversize");
        EXPECT_EQ(types.Text("Legend", "Oversize"), "abc");
        for (int i = 0; i < 10; ++i) {
          SwitchUnits();
          EXPECT_EQ(types.Text("Legend", "Oversize"), i % 2 ? "0.123" : "4.86");
          EXPECT_EQ(types.Text("Legend", "Break gap"), "");
        }
      },
      {"OK"});
  EXPECT_EQ(Values("Legend").oversize.value, 123'457);
}

TEST_F(LayerTypesPageTest, AFormKeepsATextThatIsNoLengthAsLongAsItsFieldIsThere) {
  Work<CLayerTypesPage>(
      [&](CShownPanel& page) {
        page.Go("Silk", "Name");
        WorkInForm<CEditLayerTypeDialog>(page, "Edit", [](CShownDialog& form) {
          form.Fill("Oversize", "wide");
          form.Check("Vias", true);
          EXPECT_EQ(form.FieldText("Oversize"), "wide");
          form.Press("OK");
          EXPECT_EQ(form.Focus(), "Oversize");
          form.Fill("OversizeType", "None");
          form.Press("OK");
        });
        page.Press("Add");
        EXPECT_TRUE(page.IsEnabled(3, "Break shapes"));
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), "error 20010: wide\nevent TechnologyChanged\n");
}

TEST_F(LayerTypesPageTest, AReducedEditionTakesAnyUnit) {
  CApplication::SetEditions({"KTComponents"});
  Work<CLayerTypesPage>([](CShownPanel& page) { page.Type("Silk", "Oversize", "10 mil"); }, {"OK"});
  EXPECT_EQ(Values("Silk").oversize.value, 254'000);
}

TEST_F(LayerTypesPageTest, TheCalculatorWorksInTheUnitsShown) {
  Work<CLayerTypesPage>(
      [&](CShownPanel& page) {
        page.Go("Silk", "Name");
        EXPECT_FALSE(page.CanPress("Calculator"));
        page.Go("Silk", "Oversize");
        WorkInForm<CCalcDialog>(page, "Calculator", [](CShownDialog& calculator) {
          EXPECT_EQ(calculator.FieldText("Expression"), "0.123457");
          for (const char* expression : {"1/0", "99999999*9", "-(0.5 + 1) * 2"}) {
            calculator.Fill("Expression", expression);
            calculator.Press("OK");
          }
        });
      },
      {"OK"});
  EXPECT_EQ(Values("Silk").oversize.value, -3'000'000);
  EXPECT_EQ(ui.Shown(), "error 20042: 1/0\nerror 20010: 99999999*9\nevent TechnologyChanged\n");
}

TEST_F(LayerTypesPageTest, ASurveyNamesWhatIsWrongAsItStands) {
  design.FindLayerType("Silk")->SetName("Copper");
  CLayerTypesPage page(design);
  EXPECT_EQ(page.Survey().All().size(), 2u);  // both of the two equal names
}
}  // namespace
