// The Layers page, driven as a person drives it.
#include "technology/layers/layerspage.h"

#include <gtest/gtest.h>

#include "support/pagetest.h"
#include "technology/layers/layertypespage.h"

namespace {
/// Rows: 1 [All layers], 2 Top, 3 Bottom, 4 Glue (used by a text), 5 Notes.
class LayersPageTest : public CPageTest<CPcbDesign> {
 protected:
  LayersPageTest() {
    net = design.AddNet("GND", design.GetDefaults()->GetNetClass());
    CLayerType copper;
    copper.SetName("Copper");
    copper.SetUsage(ELayerUsage::Electrical);
    type = design.AddLayerType(&copper);
    copper.SetName("Legend");
    copper.SetUsage(ELayerUsage::Documentation);
    design.AddLayerType(&copper);
    glue = Add("Glue", ELayerSide::All);
    Add("Notes", ELayerSide::All);
    CFreeText text;
    text.Set(&SFreeTextFields::style, design.GetDefaults()->GetTextStyle());
    text.Set(&SFreeTextFields::layer, glue);
    design.texts.Add(text);
    design.ResetUndoLevels();
  }
  CLayer* Add(const CString& name, int side, int usage = ELayerUsage::Documentation) {
    CLayer layer;
    layer.SetName(name);
    layer.SetSide(side);
    layer.SetUsage(usage);
    return design.AddLayer(&layer);
  }
  void PourOnTop() {
    CArea area;
    area.Set(&SAreaFields::layer, design.FindLayer("Top"));
    CPourTemplate pour;
    pour.Set(&SPourTemplateFields::net, net);
    pour.Set(&SPourTemplateFields::poured, true);
    area.PourTemplates().Add(pour);
    design.areas.Add(area);
  }
  void Run(const Script& script, const std::vector<const char*>& commands) {
    Work<CLayersPage>(script, commands, ChangeLayers);
  }

  CNet* net;
  CLayerType* type;
  CLayer* glue;
};

struct SRefusal {
  const char* why;
  std::function<void(CShownPanel&)> script;
  const char* shown;
  const char* focus;
};
class LayersPageRefuses : public LayersPageTest, public ::testing::WithParamInterface<SRefusal> {};

TEST_P(LayersPageRefuses, AndLeavesTheWholeDesignUntouched) {
  ExpectRefusal<CLayersPage>(
      [](CShownPanel& page) {
        page.Type("Notes", "Name", "Renamed");  // would be written, if anything were
        GetParam().script(page);
      },
      GetParam().shown, GetParam().focus, ChangeLayers);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, LayersPageRefuses,
    ::testing::Values(SRefusal{"EmptyNameOfANewRow", [](auto& page) { page.Press("Add"); }, "error 7061: 6, ",
                               "row 6, Name"},
                      SRefusal{"NameTwice", [](auto& page) { page.Type("Glue", "Name", "Top"); }, "error 7061: 4, Top",
                               "row 4, Name"},
                      SRefusal{"BuiltInName", [](auto& page) { page.Type("Glue", "Name", "[x"); }, "error 7061: 4, [x",
                               "row 4, Name"},
                      SRefusal{"UsageOfAUsedLayer", [](auto& page) { page.Type("Glue", "Usage", "Solder mask"); },
                               "error 7185: Glue, Documentation, Solder mask", "row 4, Usage"},
                      SRefusal{"BiasOfDocumentation", [](auto& page) { page.Type("Glue", "Bias", "Horizontal"); },
                               "error 7285: Documentation, 4, None, Any", "row 4, Bias"},
                      SRefusal{"NetOnDocumentation", [](auto& page) { page.Type("Glue", "Plane net", "GND"); },
                               "error 7284: Documentation, 4", "row 4, Plane net"},
                      SRefusal{"PlaneMask",
                               [](auto& page) {
                                 page.Press("Add");
                                 page.Type(6, "Name", "Mask");
                                 page.Type(6, "Usage", "Solder mask");
                                 page.Type(6, "Bias", "Power plane");
                               },
                               "error 7285: Solder mask, 6, Power plane, Split plane", "row 6, Bias"},
                      SRefusal{"InnerMask",
                               [](auto& page) {
                                 page.Press("Add");
                                 page.Type(6, "Name", "Mask");
                                 page.Type(6, "Usage", "Solder mask");
                                 page.Type(6, "Side", "Inner");
                               },
                               "error 7286: Solder mask, 6", "row 6, Side"},
                      SRefusal{"BottomAboveInner",
                               [](auto& page) {
                                 page.Press("Add");
                                 page.Type(6, "Name", "Core");
                                 page.Type(6, "Side", "Inner");
                               },
                               "error 7132: Bottom, Core", "row 3, Name"},
                      SRefusal{"TwoElectricalLayersOfOneSide",
                               [](auto& page) {
                                 page.Press("Add");
                                 page.Type(6, "Name", "Second");
                                 page.Type(6, "Usage", "Electrical");
                               },
                               "error 7283: Bottom, Second, Bottom, Electrical", "row 6, Name"},
                      SRefusal{"OneTypeTwiceOnASide",
                               [](auto& page) {
                                 page.Press("Add");
                                 page.Type(6, "Name", "First");
                                 page.Type(6, "Type", "Copper");
                                 page.Type("Bottom", "Type", "Copper");
                               },
                               "error 7283: Bottom, First, Bottom, Electrical", "row 6, Name"},
                      SRefusal{"OneDocumentationTypeTwiceOnASide",
                               [](auto& page) {
                                 for (const int row : {6, 7}) {
                                   page.Press("Add");
                                   page.Type(row, "Name", row == 6 ? "First" : "Second");
                                   page.Type(row, "Type", "Legend");
                                 }
                               },
                               "error 7134: First, Second, Bottom, Documentation", "row 7, Name"}),
    [](const auto& given) { return given.param.why; });

TEST_F(LayersPageTest, OneStepHoldsEverythingAndComesBackExactly) {
  const CString before = StateOf(design);
  ui.Answer(EAnswer::Yes);  // delete Glue with the text on it
  Run(
      [](CShownPanel& page) {
        page.Press("Add");
        page.Type(6, "Name", "Mask top");
        page.Type(6, "Usage", "Solder mask");
        page.Type(6, "Side", "Top");
        for (int i = 0; i < 4; ++i) page.Press("MoveUp");
        page.Press("MoveUp");  // the built-in layer stays first
        page.Type("Top", "Name", "Front");
        page.Type("Bottom", "Colour", "#112233");
        page.Go("Glue", "Name");
        page.Press("Delete");
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(),
            "beep -1\n"
            "ask 7531: Glue, 5,   Text: 1\r\n -> Yes\n"
            "event LayerAdded Mask top\n"
            "event LayerRenamed Front\n"
            "event LayerDeleted Glue\n"
            "event DesignColoursChanged\n"
            "event TechnologyChanged\n");
  CString order;
  for (const CLayer& layer : design.layers) order += layer.GetName() + "\n";
  EXPECT_EQ(order, "[All layers]\nMask top\nFront\nBottom\nNotes\n");
  EXPECT_EQ(design.texts.Count(), 0u);
  const CString after = StateOf(design);
  EXPECT_EQ(design.Journal().Steps().size(), 1u);
  EXPECT_TRUE(design.Undo());
  EXPECT_EQ(StateOf(design), before);
  EXPECT_TRUE(design.Redo());
  EXPECT_EQ(StateOf(design), after);
}

TEST_F(LayersPageTest, ElectricalAndBuiltInLayersAreNeverDeletedNewRowsAlways) {
  Run(
      [](CShownPanel& page) {
        for (const char* row : {"[All layers]", "Top"}) {
          page.Go(row, "Name");
          page.Press("Delete");
        }
        page.Press("Add");
        page.Press("Delete");
        EXPECT_FALSE(page.IsEnabled("[All layers]", "Name"));
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 7140: [All layers]\nerror 7140: Top\nevent TechnologyChanged\n");
  EXPECT_TRUE(design.Journal().Steps().empty());
}

TEST_F(LayersPageTest, ALayerThatASpanEndsOnStaysAndApplyGoesOn) {
  design.AddLayerSpan("Through", glue, design.FindLayer("Top"));
  ui.Answer(EAnswer::Yes);
  Run(
      [](CShownPanel& page) {
        page.Go("Glue", "Name");
        page.Press("Delete");
        page.Type("Notes", "Name", "Remarks");
        page.Press("Apply");
        EXPECT_EQ(page.Text("Glue", 0), "X");
      },
      {"Close"});
  EXPECT_EQ(ui.Shown(),
            "ask 7531: Glue, 4,   Layer span \"Through\"\r\n  Text: 1\r\n -> Yes\nevent LayerRenamed Remarks\n"
            "event TechnologyChanged\n");
  EXPECT_TRUE(design.FindLayer("Glue"));
}

TEST_F(LayersPageTest, ALayerThatCannotGoKeepsItsNameFromOthers) {
  design.AddLayerSpan("Through", glue, design.FindLayer("Top"));
  const CString before = StateOf(design);
  for (const char* name : {"Glue", "Spots"}) {  // as it is, and as it was typed before the row was deleted
    ui.Answer(EAnswer::Yes);
    Run(
        [&](CShownPanel& page) {
          page.Type("Glue", "Name", name);
          page.Go(name, "Name");
          page.Press("Delete");
          page.Press("Add");
          page.Type(6, "Name", name);
          page.Press("OK");
          EXPECT_EQ(page.Focus(), "row 4, Name");
        },
        {"Cancel"});
    EXPECT_EQ(ui.Shown(), "ask 7531: Glue, 4,   Layer span \"Through\"\r\n  Text: 1\r\n -> Yes\nerror 7061: 4, " +
                              CString(name) + "\nevent TechnologyChanged\n");
    EXPECT_EQ(StateOf(design), before);
  }
}

TEST_F(LayersPageTest, OnlyARowWithoutFaultIsDeleted) {
  Run(
      [](CShownPanel& page) {
        page.Type("Notes", "Name", "Top");
        page.Go(5, "Name");
        page.Press("Delete");
        EXPECT_EQ(page.Text(5, "Name"), "Top");
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7061: 5, Top\nevent TechnologyChanged\n");
}

TEST_F(LayersPageTest, ATypeRenamedOnItsPageIsShownByItsNewNameHere) {
  design.FindLayer("Top")->SetType(type);
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel layers = dialog.Show<CLayersPage>();
    dialog.Show<CLayerTypesPage>().Type("Copper", "Name", "Metal");
    dialog.Press("Apply");
    dialog.Show<CLayersPage>();
    EXPECT_EQ(layers.Text("Top", "Type"), "Metal");
    EXPECT_NE(layers.Choices("Top", "Colour"), "");
    dialog.Press("Close");
  });
  ChangeLayers(&design);
}

TEST_F(LayersPageTest, AnImportPutsLayersAndTheirRowsWhereTheirSideBelongs) {
  design.layers.SetPlace(*glue, 1);  // a layer of no side may stand above the others
  design.ResetUndoLevels();
  file =
      "Core,,Inner,Electrical,Any,,#00FF00\n"
      "Notes,,Top,Documentation,Any,,#00FF00\n"
      "Odd,,All,All layers,None,,#000000\n";
  ui.Choose("x.csv");
  Run(
      [](CShownPanel& page) {
        page.Press("Import");
        EXPECT_EQ(page.FindRow("Notes"), 4);
        EXPECT_EQ(page.FindRow("Core"), 5);
      },
      {"OK"});
  CString order;
  for (const CLayer& layer : design.layers) order += layer.GetName() + " ";
  EXPECT_EQ(order, "[All layers] Glue Top Notes Core Bottom ");
}

TEST_F(LayersPageTest, PouredCopperIsAskedForOnceAndCancelRefusesInSilence) {
  PourOnTop();
  const CString before = StateOf(design);
  const auto makePlane = [](CShownPanel& page) {
    page.Type("Top", "Bias", "Power plane");
    page.Type("Top", "Plane net", "GND");
  };
  ui.Answer(EAnswer::Cancel);
  Run(makePlane, {"OK", "Cancel"});
  EXPECT_EQ(ui.Shown(), "ask 7260 -> Cancel\nevent TechnologyChanged\n");
  EXPECT_EQ(StateOf(design), before);
  ui.Answer(EAnswer::Ok);
  Run(makePlane, {"OK"});
  EXPECT_EQ(ui.Shown(), "ask 7260 -> OK\nevent TechnologyChanged\n");
  EXPECT_EQ(design.FindLayer("Top")->GetNet(), net);
}

TEST_F(LayersPageTest, APlaneThatBecomesAnotherBiasIsNoLongerVisible) {
  design.FindLayer("Top")->SetBias(ELayerBias::PowerPlane);
  Run([](CShownPanel& page) { page.Type("Top", "Bias", "Any"); }, {"OK"});
  EXPECT_FALSE(design.FindLayer("Top")->GetVisiblePlane());
  Run([](CShownPanel& page) { page.Type("Bottom", "Plane net", "GND"); }, {"OK"});
  EXPECT_EQ(ui.Shown(),
            "event DesignColoursChanged\nevent TechnologyChanged\nerror 7231: Bottom\nevent TechnologyChanged\n");
}

TEST_F(LayersPageTest, AStackWithoutOuterElectricalLayerIsWrittenOnlyWhenConfirmed) {
  for (const char* outer : {"Top", "Bottom"}) design.FindLayer(outer)->SetUsage(ELayerUsage::Documentation);
  const auto rename = [](CShownPanel& page) { page.Type("Notes", "Name", "Remarks"); };
  ui.Answer(EAnswer::Cancel);
  Run(rename, {"OK", "Cancel"});
  EXPECT_TRUE(design.FindLayer("Notes"));
  ui.Answer(EAnswer::Ok);
  Run(rename, {"OK"});
  EXPECT_TRUE(design.FindLayer("Remarks"));
  EXPECT_EQ(ui.Shown(),
            "ask 7230 -> Cancel\nevent TechnologyChanged\nask 7230 -> OK\nevent LayerRenamed Remarks\n"
            "event TechnologyChanged\n");
}

TEST_F(LayersPageTest, ATypeLocksTheUsageItGivesAndLeavesItBehind) {
  Run(
      [](CShownPanel& page) {
        page.Type("Notes", "Type", "Copper");
        EXPECT_EQ(page.Text("Notes", "Usage"), "Electrical");
        EXPECT_TRUE(page.Refuses("Notes", "Usage", "Documentation"));
        page.Type("Notes", "Type", "");
        EXPECT_EQ(page.Text("Notes", "Usage"), "Electrical");
        EXPECT_EQ(page.Choices("Notes", "Usage"), "Electrical\nDocumentation\nSolder mask\nPaste mask\n");
      },
      {"OK"});
  EXPECT_EQ(design.FindLayer("Notes")->GetUsage(), ELayerUsage::Electrical);
}

TEST_F(LayersPageTest, SortFollowsTheStackAndKeepsNewRowsLast) {
  design.SetLayerInOrder(design.FindLayer("Bottom"), 4);
  Run(
      [](CShownPanel& page) {
        page.Press("Add");
        page.Type(6, "Name", "New");
        page.Go("Top", "Name");
        page.Press("MoveDown");
        page.Press("Sort");
        EXPECT_EQ(page.FindRow("Top"), 2);
        EXPECT_EQ(page.FindRow("Bottom"), 3);
        EXPECT_EQ(page.FindRow("New"), 6);
      },
      {"Cancel"});
}

TEST_F(LayersPageTest, TheFormChecksAsTheRowDoesAndTellsOfItsColour) {
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel page = dialog.Show<CLayersPage>();
    ui.WhenShown<CEditLayerDialog>([](CShownDialog& form) {
      form.Fill("Name", "Top");
      form.Press("OK");
      EXPECT_TRUE(form.IsOpen());
      EXPECT_EQ(form.Focus(), "Name");
      form.Fill("Name", "Paste spots");
      form.Fill("Colour", "#010203");
      form.Press("OK");
    });
    page.Go("Glue", "Name");
    page.Press("Edit");
    EXPECT_EQ(page.Text(4, "Name"), "Paste spots");
    dialog.Press("OK");
  });
  ChangeLayers(&design);
  EXPECT_EQ(ui.Shown(),
            "error 7061: 4, Top\nevent ColoursChanged\nevent LayerRenamed Paste spots\nevent DesignColoursChanged\n"
            "event TechnologyChanged\n");
  EXPECT_EQ(glue->GetColour(), CColour{0x010203});
}

TEST_F(LayersPageTest, ExportThenImportChangesNothingWhateverTheNamesHold) {
  glue->SetName("Glue, \xC3\xBC;\tspots");
  design.FindLayer("Top")->SetType(type);
  design.FindLayer("Top")->SetNet(net);
  design.FindLayer("Top")->SetBias(ELayerBias::PowerPlane);
  const CString before = StateOf(design);
  for (int i = 0; i < 2; ++i) ui.Choose("layers.csv");
  Run(
      [](CShownPanel& page) {
        page.Press("Export");
        page.Press("Import");
      },
      {"Cancel"});
  EXPECT_EQ(StateOf(design), before);
  EXPECT_EQ(ui.Shown(), "file layers.csv\nevent TechnologyChanged\n");
}

TEST_F(LayersPageTest, AnImportTakesGoodRecordsShowsAllProblemsAndStaysAfterCancel) {
  file =
      "\"Core\",\"\",\"Inner\",\"Electrical\",\"Any\",\"\",\"#00FF00\"\n"
      "Broken,only,three\n"
      "\n"
      "\"Odd\",\"Nothing\",\"Inner\",\"Electrical\",\"Any\",\"\",\"#00FF00\"\n"
      "\"Odd\",\"\",\"Left\",\"Electrical\",\"Any\",\"VCC\",\"green\"\n"
      "\"Glue\",\"\",\"All\",\"Electrical\",\"Any\",\"\",\"#00FF00\"\n"
      "\"[Own]\",\"\",\"Inner\",\"Electrical\",\"Any\",\"\",\"#00FF00\"\n"
      "\"Notes\",\"\",\"All\",\"Documentation\",\"Any\",\"\",\"#00FF00\"\n"
      "\"Every\",\"\",\"All\",\"All layers\",\"Any\",\"\",\"#00FF00\"\n"
      "\"Bias\",\"\",\"All\",\"Documentation\",\"Vertical\",\"\",\"#00FF00\"\n"
      "\"Open\" x\n"
      "\"Top\",\"\",\"Top\",\"Electrical\",\"Power plane\",\"GND\",\"#00FF00\"\n";
  PourOnTop();
  ui.Choose("x.csv");
  Run(
      [](CShownPanel& page) {
        page.Type("Notes", "Name", "Mine");
        page.Press("Import");
        EXPECT_EQ(page.FindRow("Core"), 3);
        EXPECT_EQ(page.Text("Mine", "Colour"), "#00FF00");  // the typed name stays, the rest is the file's
      },
      {"Close"});
  EXPECT_EQ(
      ui.Shown(),
      "event LayerAdded Core\nevent DesignColoursChanged\n"
      "report 20050: Record 2 cannot be used: it has 3 fields instead of 7.\n"
      "report 20050: Record 4: there is no layer type \"Nothing\".\n"
      "report 20050: Record 5: \"Left\" is no side, usage or bias.\n"
      "report 20050: Record 5: there is no net \"VCC\".\n"
      "report 20050: Record 5 cannot be used: \"green\" cannot be read as \"Colour\".\n"
      "report 20050: Record 6 cannot be used: The layer \"Glue\" is in use, so its usage cannot change from "
      "Documentation to Electrical.\n"
      "report 20050: Record 7 cannot be used: \"[Own]\" cannot be a name.\n"
      "report 20050: Record 9: \"All layers\" is no side, usage or bias.\n"
      "report 20050: Record 10 cannot be used: the bias does not suit a layer of usage Documentation (None, Any). "
      "Documentation layers have one of the two, mask layers neither.\n"
      "report 20050: Record 11 cannot be used: line 11: text stands behind a closing quotation mark. Double the "
      "quotation marks inside a field.\n"
      "report 20050: Record 12 has been taken without asking: Copper has been poured on this layer. As a power plane the "
      "layer no longer needs it. Continue?\n"
      "event TechnologyChanged\n");
  EXPECT_EQ(design.layers.PlaceOf(*design.FindLayer("Core")), 2u);
  EXPECT_EQ(design.FindLayer("Notes")->GetColour(), CColour{0x00FF00});
}

TEST_F(LayersPageTest, FocusSelectionSelectsTheRowsOfTheSelectedItems) {
  design.Selection().Add(*design.texts.First());
  Run(
      [](CShownPanel& page) {
        page.Press("FocusSelection");
        EXPECT_EQ(page.Focus(), "row 4, Name");
      },
      {"Cancel"});
}

TEST_F(LayersPageTest, AReducedEditionLacksThePlaneNetAndKeepsWhatItCannotOffer) {
  Add("Mask", ELayerSide::Top, ELayerUsage::SolderMask);
  design.SetDefaultLayerOrder();
  CApplication::SetEditions({"Corvina"});
  Run(
      [](CShownPanel& page) {
        EXPECT_EQ(page.Text("Mask", "Usage"), "Solder mask");
        EXPECT_EQ(page.Choices("Mask", "Usage"), "Electrical\nDocumentation\n");
        EXPECT_EQ(page.Text("Mask", 6), "#808080");  // the colour follows the bias
        page.Type("Mask", "Name", "Stop");
      },
      {"OK"});
  ui.Shown();
  glue->SetNet(net);
  Run(
      [](CShownPanel& page) {
        page.Press("OK");
        EXPECT_EQ(page.Focus(), "row 5, Name");  // the column at fault is not there
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7284: Documentation, 5\nevent TechnologyChanged\n");
  EXPECT_EQ(design.FindLayer("Stop")->GetUsage(), ELayerUsage::SolderMask);
}
}  // namespace
