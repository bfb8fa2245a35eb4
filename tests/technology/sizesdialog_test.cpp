// Which pages the technology dialog has, which one it shows, and what it tells others.
#include "technology/sheet/sizesdialog.h"

#include <gtest/gtest.h>

#include "commands/commands.h"
#include "model/services/application.h"
#include "model/services/registry.h"
#include "support/scripteduser.h"
#include "technology/layers/layerspage.h"

namespace {
struct SPages {
  const char* why;
  const char* edition;
  const char* design;
  bool forLayers;
  const char* pages;  // class names without "C" and "Page"
};
class PagesOfTheSheet : public ::testing::TestWithParam<SPages> {
 protected:
  ~PagesOfTheSheet() override { CApplication::SetEditions({"Pellam"}); }
};

TEST_P(PagesOfTheSheet, AreTheseInThisOrder) {
  CApplication::SetEditions({GetParam().edition});
  const auto design = MakeTechnology(GetParam().design, EContent::DefaultTechnology);
  const CSizesDialog dialog(static_cast<CDesign*>(design.get()), kTechnologyLevel,
                            GetParam().forLayers ? CLayersPage::GetThisClass() : nullptr);
  CString pages;
  for (const CPropertyPagePlus* page : dialog.Pages()) {
    const CString name = page->GetRuntimeClass()->name;
    pages += (pages.empty() ? "" : " ") + name.substr(1, name.size() - 5);
  }
  EXPECT_EQ(pages, GetParam().pages);
}
INSTANTIATE_TEST_SUITE_P(
    Cases, PagesOfTheSheet,
    ::testing::Values(
        SPages{"FullPcb", "Pellam", "CPcbDesign", true,
               "PadStyles TextStyles LineStyles HatchStyles TrackStyles Layers LayerTypes LayerSpans Nets NetClasses "
               "AttributeNames Spacings Rules CompRules CompColours Variants WireLengths"},
        SPages{"FullSchematic", "", "CScmDesign", false,
               "PadStyles TextStyles LineStyles HatchStyles TrackStyles Nets NetClasses AttributeNames CompColours "
               "Variants"},
        SPages{"FullProject", "CorvinaPro", "CProject", false, "Nets NetClasses AttributeNames Variants"},
        SPages{"FullFootprint", "Pellam", "CPcbSymDesign", false,
               "PadStyles TextStyles LineStyles HatchStyles Layers LayerTypes AttributeNames Spacings Rules"},
        SPages{"FullSchematicSymbol", "Pellam", "CScmSymDesign", false,
               "PadStyles TextStyles LineStyles HatchStyles AttributeNames"},
        SPages{"CorvinaPcb", "Corvina", "CPcbDesign", false,
               "PadStyles TextStyles LineStyles TrackStyles Layers LayerTypes Nets NetClasses Spacings Rules"},
        SPages{"TarvikPcb", "Tarvik", "CPcbDesign", false,
               "PadStyles TextStyles LineStyles TrackStyles Nets NetClasses Spacings Rules"},
        SPages{"TarvikProject", "Tarvik", "CProject", false, "PadStyles TextStyles LineStyles"},
        SPages{"CorvinaForLayers", "Corvina", "CPcbDesign", true, "Layers LayerTypes"},
        SPages{"TarvikForLayers", "Tarvik", "CPcbDesign", true, "Layers LayerTypes LayerSpans"},
        SPages{"TarvikSchematicForLayers", "Tarvik", "CScmDesign", true, "Layers LayerTypes"},
        SPages{"TarvikFootprintForLayers", "Tarvik", "CPcbSymDesign", true, "Layers LayerTypes"}),
    [](const auto& given) { return given.param.why; });

class SheetTest : public ::testing::Test {
 protected:
  SheetTest() { InstallSettingsStore(nullptr); }
  ~SheetTest() override {
    CApplication::SetEditions({"Pellam"});
    InstallSettingsStore(nullptr);
  }
  /// The page that a command shows first.
  template <class Command>
  CString FirstPage(Command command) {
    CString page;
    ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
      page = dialog.ActivePage();
      dialog.Press("Cancel");
    });
    command(&design);
    return page;
  }
  CPcbDesign design;
  CScriptedUser ui;
};

TEST_F(SheetTest, OpensWhereTheCommandSaysOrWhereOneLeft) {
  EXPECT_EQ(FirstPage(ChangeSizes), "CPadStylesPage");
  EXPECT_EQ(FirstPage(ChangeLayerTypes), "CLayersPage");
  EXPECT_EQ(FirstPage(ChangeSizes), "CLayersPage");
  EXPECT_EQ(FirstPage(ChangeNets), "CNetsPage");
  CAppRegistry("Settings\\Styles").SetValue("ActivePage", "CNoSuchPage");
  EXPECT_EQ(FirstPage(ChangeSizes), "CPadStylesPage");
  CApplication::SetEditions({"Tarvik"});
  CAppRegistry("Settings\\LastBrenloStyle").SetValue("ActivePage", "CLineStylesPage");
  EXPECT_EQ(FirstPage(ChangeSizes), "CLineStylesPage");
  EXPECT_EQ(FirstPage(ChangeNetClasses), "CNetClassesPage");  // not among the first four, so not kept for this edition
  EXPECT_EQ(FirstPage(ChangeSizes), "CLineStylesPage");
}

TEST_F(SheetTest, ACancelledSheetTellsOthersOnceAndCostsNobodyTheirRedo) {
  design.StartNestedUndoLevel(1);
  design.SetName("Changed");
  design.EndNestedUndoLevel(1);
  design.Undo();
  FirstPage(ChangeLayers);
  EXPECT_EQ(ui.Shown(), "event TechnologyChanged\n");
  EXPECT_TRUE(design.Redo());
  EXPECT_EQ(design.GetName(), "Changed");
}

TEST_F(SheetTest, NetsWithoutADefaultClassAreRefusedBeforeALevelOpens) {
  design.GetDefaults()->Set(&SDefaultsFields::netClass, nullptr);
  design.ResetUndoLevels();
  ChangeNets(&design);
  EXPECT_EQ(ui.Shown(), "error 7184\n");
  EXPECT_TRUE(design.Journal().Steps().empty());
}
}  // namespace
