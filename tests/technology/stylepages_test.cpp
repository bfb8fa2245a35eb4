// The Track styles and Text styles pages, driven as a person drives them.
#include "support/pagetest.h"
#include "technology/mergestyles.h"
#include "technology/styles/textstylespage.h"
#include "technology/styles/trackstylespage.h"

namespace {
/// Track styles Default (used by the default class), Power, Signal, [Guide]; text styles Default, Notes, [Drill Table].
template <class Design>
class StylePages : public CPageTest<Design> {
 protected:
  StylePages() {
    design.AddTrackStyle("Signal", 100'000);
    design.AddTrackStyle("Power", 500'000);
    design.AddTrackStyle("[Guide]", 10'000);
    CTextStyle notes;
    notes.SetName("Notes");
    notes.SetWidth(2'000'000);
    design.AddTextStyle(&notes);
    ui.fonts = {"Sans", "Mono"};
    design.ResetUndoLevels();
  }
  CTextStyle& Text(const char* name) { return *design.FindTextStyle(name); }

  using CPageTest<Design>::design;
  using CPageTest<Design>::ui;
};
using TrackStylesPageTest = StylePages<CPcbDesign>;
using TextStylesPageTest = StylePages<CPcbDesign>;
using SchematicStylesTest = StylePages<CScmDesign>;

// ---- Track styles

TEST_F(TrackStylesPageTest, ListsByNameAndSelectsTheStyleOfTheSelectedItem) {
  CNet* const net = design.AddNet("N", design.GetDefaults()->GetNetClass());
  CTrack* const track = net->Tracks().Add(CTrack());
  CTrackSegment segment;
  segment.SetStyle(design.FindTrackStyle("Signal"));
  design.Selection().Add(*track->Segments().Add(segment));
  Work<CTrackStylesPage>(
      [](CShownPanel& page) {
        EXPECT_EQ(page.Rows(), "X|Default|0.250\n|Power|0.500\nX|Signal|0.100\n|[Guide]|0.010\n");
        EXPECT_EQ(page.Focus(), "row 3, Name");
      },
      {"Cancel"});
  design.Selection().Clear();
  design.Selection().Add(*net->Connections().Add(CConnection()));
  net->GetNetClass()->SetTrackStyles(design.FindTrackStyle("Signal"), design.FindTrackStyle("Power"));
  Work<CTrackStylesPage>([](CShownPanel& page) { EXPECT_EQ(page.Focus(), "row 2, Name"); }, {"Cancel"});
}

struct SRefusal {
  const char* why;
  std::function<void(CShownPanel&)> script;
  const char* shown;
  const char* focus;
};
class TrackStylesPageRefuses : public TrackStylesPageTest, public ::testing::WithParamInterface<SRefusal> {};

TEST_P(TrackStylesPageRefuses, AndLeavesTheWholeDesignUntouched) {
  ExpectRefusal<CTrackStylesPage>(
      [](CShownPanel& page) {
        page.Type("Power", "Size", "0.6");  // would be written, if anything were
        GetParam().script(page);
      },
      GetParam().shown, GetParam().focus);
}
INSTANTIATE_TEST_SUITE_P(
    Cases, TrackStylesPageRefuses,
    ::testing::Values(
        SRefusal{"NameTwice", [](auto& page) { page.Type("Signal", "Name", "Power"); }, "error 7076: Power",
                 "row 3, Name"},
        SRefusal{"NoName", [](auto& page) { page.Type("Signal", "Name", ""); }, "error 7076", "row 3, Name"},
        SRefusal{"NoNumber", [](auto& page) { page.Type("Signal", "Size", "wide"); }, "error 20010: wide",
                 "row 3, Size"},
        SRefusal{"TooWide", [](auto& page) { page.Type("Signal", "Size", "2147.5"); }, "error 20010: 2147.5",
                 "row 3, Size"},
        SRefusal{"Negative", [](auto& page) { page.Type("Signal", "Size", "-1"); }, "error 21700: -1", "row 3, Size"},
        SRefusal{"Emptied", [](auto& page) { page.Type("[Guide]", "Size", ""); }, "error 21700: 0", "row 4, Size"}),
    [](const auto& given) { return given.param.why; });

TEST_F(TrackStylesPageTest, UnchangedRowsAreCheckedToo) {
  design.FindTrackStyle("Power")->SetWidth(0);
  Work<CTrackStylesPage>([](CShownPanel& page) { page.Type("Default", "Size", "0.3"); }, {"OK", "Cancel"});
  EXPECT_EQ(ui.Shown(), "error 21700: 0\nevent TechnologyChanged\n");
  EXPECT_EQ(design.FindTrackStyle("Default")->GetWidth(), 250'000);
}

TEST_F(TrackStylesPageTest, AddedAndCopiedStylesComeFromTheForm) {
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel page = dialog.Show<CTrackStylesPage>();
    ui.WhenShown<CEditTrackStyle>([](CShownDialog& form) {
      EXPECT_EQ(form.FieldText("Name"), "");
      EXPECT_EQ(form.FieldText("Width"), "0.250");
      form.Fill("Name", "Power");
      form.Press("OK");
      EXPECT_EQ(form.Focus(), "Name");
      form.Fill("Name", "Bus");
      form.Fill("Width", "0");
      form.Press("OK");
      EXPECT_EQ(form.Focus(), "Width");
      form.Fill("Width", "0.4");
      form.Press("OK");
    });
    page.Press("Add");
    EXPECT_EQ(page.Focus(), "row 5, Name");
    page.Go("[Guide]", "Name");
    EXPECT_FALSE(page.IsEnabled("[Guide]", "Name"));
    for (const char* button : {"OK", "Cancel"}) {
      ui.WhenShown<CEditTrackStyle>([=](CShownDialog& form) {
        EXPECT_EQ(form.FieldText("Name"), "Guide");
        form.Press(button);
      });
      page.Go("[Guide]", "Name");
      page.Press("Copy");
    }
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  EXPECT_EQ(ui.Shown(), "error 7076: Power\nerror 21700: 0\nevent TechnologyChanged\n");
  ASSERT_TRUE(design.FindTrackStyle("Bus"));
  EXPECT_EQ(design.FindTrackStyle("Bus")->GetWidth(), 400'000);
  EXPECT_EQ(design.FindTrackStyle("Guide")->GetWidth(), 10'000);
  EXPECT_EQ(design.trackStyles.Count(), 6u);
}

TEST_F(TrackStylesPageTest, BuiltInStylesStayAndStylesInUseAreLeftInSilence) {
  const CString before = StateOf(design);
  Work<CTrackStylesPage>(
      [](CShownPanel& page) {
        for (const char* style : {"[Guide]", "Default"}) {
          page.Go(style, "Name");
          page.Press("Delete");
          EXPECT_NE(page.FindRow(style), -1);
        }
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 7074: [Guide]\nevent TechnologyChanged\n");
  EXPECT_EQ(StateOf(design), before);
}

TEST_F(TrackStylesPageTest, TheLayoutIsSavedBeforeTheWritingPassThatFails) {
  CString saved;
  Work<CTrackStylesPage>(
      [&](CShownPanel& page) {
        page.Go("Power", "Name");
        page.Press("Delete");
        design.GetDefaults()->GetNetClass()->SetTrackStyles(design.FindTrackStyle("Power"), nullptr);
        page.Press("OK");
        CAppRegistry("Settings\\Styles\\Tracks").GetValue("Columns", saved);
        EXPECT_NE(page.FindRow("Power"), -1);
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7072: Power\nevent TechnologyChanged\n");
  EXPECT_EQ(saved, "20,160,100");
}

TEST_F(TrackStylesPageTest, ApplyDrawsTheWholeDesignAgainForEachShownPage) {
  ui.Redrawn();
  Work<CTrackStylesPage>([](CShownPanel& page) { page.Type("Power", "Size", "0.6"); }, {"Apply", "Close"});
  EXPECT_EQ(ui.Redrawn(), 2);  // by the page that the sheet opened with, and by this one
}

TEST_F(TrackStylesPageTest, MergedStylesMoveTheirReferencesWhenThePageIsWritten) {
  CNet* const net = design.AddNet("N", design.GetDefaults()->GetNetClass());
  CTrack* const track = net->Tracks().Add(CTrack());
  CTrackSegment segment;
  segment.SetStyle(design.FindTrackStyle("Signal"));
  CTrackSegment* const drawn = track->Segments().Add(segment);
  design.ResetUndoLevels();
  const CString before = StateOf(design);
  for (const char* end : {"Cancel", "OK"}) {
    ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
      CShownPanel page = dialog.Show<CTrackStylesPage>();
      page.Go("Signal", "Name");
      page.Select({"Signal"});
      EXPECT_FALSE(page.CanPress("Merge"));
      ui.WhenShown<CMergeStyles>([](CShownDialog& merge) {
        EXPECT_EQ(merge.FieldText("Survivor"), "Signal");
        EXPECT_EQ(merge.ListText(), "\"Power\" goes; nothing uses it.\n\"[Guide]\" stays, because it is built in.\n");
        merge.Fill("Survivor", "Power");
        EXPECT_EQ(merge.ListText(),
                  "\"Signal\" goes; its uses (1) move to \"Power\".\n\"[Guide]\" stays, because it is built in.\n");
        merge.Press("OK");
      });
      page.Select({"Power", "Signal", "[Guide]"});
      page.Press("Merge");
      EXPECT_EQ(page.Rows(), "X|Default|0.250\nX|Power|0.500\n|[Guide]|0.010\n");
      page.Go("Power", "Name");
      page.Press("Delete");  // what moves to it is a use
      EXPECT_NE(page.FindRow("Power"), -1);
      ui.WhenShown<CMergeStyles>([](CShownDialog& merge) { merge.Press("OK"); });
      page.Go("Default", "Name");
      page.Select({"Default", "Power"});
      page.Press("Merge");  // takes along what has been merged into Power
      dialog.Press(end);
    });
    EXPECT_EQ(StateOf(design), before);
    ChangeSizes(&design);
  }
  EXPECT_EQ(drawn->Values().style.Get(), design.FindTrackStyle("Default"));
  EXPECT_EQ(design.trackStyles.Count(), 2u);
  ASSERT_EQ(design.Journal().Steps().size(), 1u);
  design.Undo();
  EXPECT_EQ(StateOf(design), before);
}

TEST_F(TrackStylesPageTest, FilesHoldQuotedNamesAndExactWidths) {
  design.FindTrackStyle("Power")->SetName("Power, \xC2\xB5;");
  design.FindTrackStyle("Signal")->SetWidth(123'457);
  CAppRegistry("Settings\\CSV").SetValue("Separator", ";");
  ui.Choose("tracks.csv");
  Work<CTrackStylesPage>(
      [](CShownPanel& page) {
        page.Go("[Guide]", "Size");
        page.Press("Export");
      },
      {"Cancel"});
  EXPECT_EQ(file,
            "\"Name\";\"Size\"\n\"Default\";0.25\n\"Power, \xC2\xB5;\";0.5\n\"Signal\";0.123457\n\"[Guide]\";0.01\n");
}

TEST_F(TrackStylesPageTest, AnImportTakesGoodLinesAndShowsTheProblemsOfTheOthers) {
  file =
      "\"Name\",\"Size\"\n"
      "Signal,10 mil\n"
      "\n"
      "Bus,0.4\n"
      "Odd\n"
      "Odd,wide\n"
      "Odd,99999999999\n"
      "Odd,-1\n"
      "\"[Own\",1\n"
      "[Guide],0.02\n"
      "Late,1,2\n"
      "\xFF\xFE,1\n"
      "Last,1\n";
  ui.Choose("x.csv");
  Work<CTrackStylesPage>(
      [](CShownPanel& page) {
        page.Type("Power", "Size", "0.7");
        page.Press("Import");
        EXPECT_EQ(page.Rows(),
                  "X|Default|0.250\n|Power|0.700\n|Signal|0.254\n|[Guide]|0.020\n|Bus|0.400\n|Last|1.000\n");
      },
      {"Close"});
  EXPECT_EQ(ui.Shown(),
            "report 20050: Record 5 cannot be used: it has 1 fields instead of 2.\n"
            "report 20050: Record 6: \"wide\" is not a length. Write one number, such as 0.25.\n"
            "report 20050: Record 7: \"99999999999\" is not a length. Write one number, such as 0.25.\n"
            "report 20050: Record 8 cannot be used: A width or size of -1 cannot be drawn. Use one greater than 0.\n"
            "report 20050: Record 9 cannot be used: \"[Own\" cannot be a name.\n"
            "report 20050: Record 11 cannot be used: it has 3 fields instead of 2.\n"
            "report 20050: Record 12 cannot be used: line 12: these bytes are no text. Save the file as "
            "UTF-8 text.\n"
            "event TechnologyChanged\n");
  EXPECT_EQ(design.FindTrackStyle("Signal")->GetWidth(), 254'000);
  EXPECT_EQ(design.FindTrackStyle("Power")->GetWidth(), 500'000);  // typed, and cancelled
}

TEST_F(TrackStylesPageTest, AnImportBringsBackWhatThePageHasDeletedOrMerged) {
  file = "Power,0.7\nSignal,0.2\n\"[Own]\",1\n";
  ui.Choose("x.csv");
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel page = dialog.Show<CTrackStylesPage>();
    page.Go("Power", "Name");
    page.Press("Delete");
    ui.WhenShown<CMergeStyles>([](CShownDialog& merge) { merge.Press("OK"); });
    page.Go("Default", "Name");
    page.Select({"Default", "Signal"});
    page.Press("Merge");
    page.Press("Import");
    EXPECT_EQ(page.Rows(), "X|Default|0.250\n|Power|0.700\n|Signal|0.200\n|[Guide]|0.010\n|[Own]|1.000\n");
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  EXPECT_EQ(design.FindTrackStyle("Power")->GetWidth(), 700'000);
  EXPECT_EQ(design.trackStyles.Count(), 5u);
}

TEST_F(SchematicStylesTest, ASchematicCallsThemLineStyles) {
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel page = dialog.Show<CTrackStylesPage>();
    ui.WhenShown<CEditTrackStyle>([](CShownDialog& form) {
      EXPECT_EQ(form.Caption(), "Line style");
      form.Press("Cancel");
    });
    page.Press("Add");
    dialog.Press("Cancel");
  });
  ChangeSizes(&design);
  EXPECT_EQ(CTrackStylesPage(design).GetTitle(), "Line styles");
  EXPECT_EQ(design.trackStyles.Count(), 4u);
}

// ---- Text styles

TEST_F(TextStylesPageTest, ATrueTypeFontLocksProportionAndPercentages) {
  Work<CTextStylesPage>(
      [](CShownPanel& page) {
        EXPECT_EQ(page.Choices("Notes", "Font"),
                  "Standard\nNarrow\nCode 39\nCode 128\nInterleaved 2 of 5\nMono\nSans\n");
        page.Type("Notes", "Character width %", "80");
        page.Type("Notes", "Font", "Sans");
        for (const char* column : {"Proportional", "Character width %", "Line distance %"})
          EXPECT_FALSE(page.IsEnabled("Notes", column)) << column;
        page.Type("Notes", "Font", "Code 39");
        EXPECT_TRUE(page.IsEnabled("Notes", "Character width %"));
        EXPECT_EQ(page.Text("Notes", "Font"), "Code 39");
        page.Type("Default", "Font", "Mono");
        page.Type("Notes", "Line distance %", "tall");
        page.Set("Notes", "Underlined", true);
        EXPECT_TRUE(page.Refuses("Notes", "Font", "Serif"));
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "event TechnologyChanged\n");
  EXPECT_TRUE(Text("Notes").IsBarcodeFont());
  EXPECT_EQ(Text("Notes").GetCharWidthPercent(), 80);
  EXPECT_EQ(Text("Notes").GetInterlineHeightPercent(), 0);
  EXPECT_TRUE(Text("Notes").Values().underlined);
  EXPECT_TRUE(Text("Default").GetFont()->IsKindOf(CTrueTypeFont::GetThisClass()));
}

TEST_F(TextStylesPageTest, AFontThatTheMachineLacksStaysWithItsStyle) {
  Text("Notes").Set(&STextStyleFields::font, CString("Elsewhere"));
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel page = dialog.Show<CTextStylesPage>();
    ui.WhenShown<CEditTextStyle>([](CShownDialog& form) {
      EXPECT_EQ(form.FieldText("Font"), "Elsewhere");
      form.Fill("Size", "3");
      form.Press("OK");
    });
    page.Go("Notes", "Name");
    page.Press("Edit");
    EXPECT_TRUE(page.IsEnabled("Notes", "Proportional"));
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  EXPECT_EQ(Text("Notes").Values().font, "Elsewhere");
  EXPECT_EQ(Text("Notes").GetWidth(), 3'000'000);
}

TEST_F(TextStylesPageTest, BarcodeParametersAreInTheFormAndOutliveAChangeOfFont) {
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel page = dialog.Show<CTextStylesPage>();
    ui.WhenShown<CEditTextStyle>([](CShownDialog& form) {
      form.Fill("Font", "Code 39");
      form.Fill("Parameter2", "250");
      form.Fill("Parameter6", "1");
      form.Press("OK");
    });
    page.Go("Notes", "Name");
    page.Press("Edit");
    page.Type("Notes", "Font", "Code 128");  // carries the parameters over
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  EXPECT_EQ(Text("Notes").Values().font, "Code 128");
  EXPECT_EQ(Text("Notes").GetParameter(1), 250);
  EXPECT_EQ(Text("Notes").GetParameter(5), 1);
}

TEST_F(TextStylesPageTest, AFormsFieldWithoutACellSurvivesAnImport) {
  file = "\"Notes\",5,0.2,\"Code 39\",N,0,0,7,0,0,0,N,100,100\n";
  ui.Choose("x.csv");
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel page = dialog.Show<CTextStylesPage>();
    ui.WhenShown<CEditTextStyle>([](CShownDialog& form) {
      form.Fill("Font", "Code 39");
      form.Fill("Parameter1", "120");
      form.Press("OK");
    });
    page.Go("Notes", "Name");
    page.Press("Edit");
    page.Press("Import");
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  EXPECT_EQ(ui.Shown(), "event TechnologyChanged\n");
  EXPECT_EQ(Text("Notes").GetParameter(0), 120);
  EXPECT_EQ(Text("Notes").GetParameter(2), 7);
  EXPECT_EQ(Text("Notes").GetWidth(), 5'000'000);
}

struct SDeletion {
  const char* why;
  CStringArray editions;
  bool deleted;
};
class DrillTableStyle : public TextStylesPageTest, public ::testing::WithParamInterface<SDeletion> {};

TEST_P(DrillTableStyle, CanBeDeletedWhereTheEditionDoesNotKeepIt) {
  CApplication::SetEditions(GetParam().editions);
  Work<CTextStylesPage>(
      [](CShownPanel& page) {
        for (const char* style : {"[Drill Table]", "Default"}) {
          page.Go(style, "Name");
          page.Press("Delete");
        }
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), (GetParam().deleted ? CString() : CString("error 7074: [Drill Table]\n")) +
                            "error 7072: Default\nevent TechnologyChanged\n");
  EXPECT_EQ(design.FindTextStyle("[Drill Table]") == nullptr, GetParam().deleted);
}
INSTANTIATE_TEST_SUITE_P(Cases, DrillTableStyle,
                         ::testing::Values(SDeletion{"Extended", {"Pellam"}, false},
                                           SDeletion{"Pro", {"CorvinaPro"}, false},
                                           SDeletion{"Kestrel", {"Pellam", "Kestrel"}, true},
                                           SDeletion{"Plain", {"KTComponents"}, true}),
                         [](const auto& given) { return given.param.why; });

TEST_F(TextStylesPageTest, AReducedEditionLacksColumnsButNotTheirFieldsInFiles) {
  Text("Notes").SetCharWidthPercent(80);
  Text("Notes").Set(&STextStyleFields::parameter3, 9);
  CApplication::SetEditions({"KTComponents"});
  ui.Choose("texts.csv");
  Work<CTextStylesPage>(
      [](CShownPanel& page) {
        EXPECT_EQ(page.Rows(),
                  "X|Default|1.000|0.150|Standard|No\n|Notes|2.000|0.150|Standard|No\n"
                  "|[Drill Table]|1.000|0.150|Standard|No\n");
        page.Press("Export");
      },
      {"Cancel"});
  EXPECT_EQ(
      file.substr(0, file.find('\n')),
      "\"Name\",\"Size\",\"Line width\",\"Font\",\"Underlined\",\"Narrow bar %\",\"Wide bar %\",\"Gap %\","
      "\"Quiet zone\",\"Bar height %\",\"Text below\",\"Proportional\",\"Character width %\",\"Line distance %\"");
  EXPECT_NE(file.find("\"Notes\",2,0.15,\"Standard\",N,0,0,9,0,0,0,N,80,100\n"), CString::npos);
}

TEST_F(TextStylesPageTest, ASelectedTextSelectsTheRowOfItsStyle) {
  CFreeText text;
  text.Set(&SFreeTextFields::style, &Text("Notes"));
  design.Selection().Add(*design.texts.Add(text));
  Work<CTextStylesPage>([](CShownPanel& page) { EXPECT_EQ(page.Focus(), "row 2, Name"); }, {"Cancel"});
}
}  // namespace
