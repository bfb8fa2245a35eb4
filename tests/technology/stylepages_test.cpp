// The Track styles and Text styles pages, driven as a person drives them.
#include "support/pagetest.h"
#include "technology/mergestyles.h"
#include "technology/styles/textstylespage.h"
#include "technology/styles/trackstylespage.h"

namespace {
using TrackStylesPageTest = CBoardTest;
class TextStylesPageTest : public CBoardTest {
 protected:
  TextStylesPageTest() { ui.fonts = {"Sans", "Mono"}; }
  CTextStyle& Text(const char* name) { return *design.FindTextStyle(name); }
};

// ---- Track styles

TEST_F(TrackStylesPageTest, ListsByNameAndSelectsTheStyleOfTheSelectedItem) {
  design.Selection().Add(AddSegment("Signal"));
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

TEST_F(TrackStylesPageTest, UnchangedRowsAreCheckedToo) {
  design.FindTrackStyle("Power")->SetWidth(0);
  Work<CTrackStylesPage>([](CShownPanel& page) { page.Type("Default", "Size", "0.3"); }, {"OK", "Cancel"});
  EXPECT_EQ(ui.Shown(), "error 21700: 0\nevent TechnologyChanged\n");
  EXPECT_EQ(design.FindTrackStyle("Default")->GetWidth(), 250'000);
}

TEST_F(TrackStylesPageTest, AddedAndCopiedStylesComeFromTheForm) {
  Work<CTrackStylesPage>(
      [&](CShownPanel& page) {
        WorkInForm<CEditTrackStyle>(page, "Add", [](CShownDialog& form) {
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
        EXPECT_EQ(page.Focus(), "row 5, Name");
        EXPECT_FALSE(page.IsEnabled("[Guide]", "Name"));
        for (const char* button : {"OK", "Cancel"}) {
          page.Go("[Guide]", "Name");
          WorkInForm<CEditTrackStyle>(page, "Copy", [=](CShownDialog& form) {
            EXPECT_EQ(form.FieldText("Name"), "Guide");
            form.Press(button);
          });
        }
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "error 7076: Power\nerror 21700: 0\nevent TechnologyChanged\n");
  ASSERT_TRUE(design.FindTrackStyle("Bus"));
  EXPECT_EQ(design.FindTrackStyle("Bus")->GetWidth(), 400'000);
  EXPECT_EQ(design.FindTrackStyle("Guide")->GetWidth(), 10'000);
  EXPECT_EQ(design.trackStyles.Count(), 6u);
}

TEST_F(TrackStylesPageTest, ApplyDrawsTheDesignOnceForEachShownPageAndKeepsTheLayoutBeforeWriting) {
  CString saved;
  ui.Redrawn();
  Work<CTrackStylesPage>(
      [&](CShownPanel& page) {
        Do(page, "Signal|Size|0.6; Apply");
        EXPECT_EQ(ui.Redrawn(), 2);  // by the page that the sheet opened with, and by this one
        Do(page, "Power|Name; Delete");
        design.GetDefaults()->GetNetClass()->SetTrackStyles(design.FindTrackStyle("Power"), nullptr);
        InstallSettingsStore(nullptr);
        page.Press("OK");
        CAppRegistry("Settings\\Styles\\Tracks").GetValue("Columns", saved);
        EXPECT_NE(page.FindRow("Power"), -1);
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7072: Power\nevent TechnologyChanged\n");
  EXPECT_EQ(saved, "20,160,100");
}

TEST_F(TrackStylesPageTest, MergedStylesMoveTheirReferencesWhenThePageIsWritten) {
  const CTrackSegment& drawn = AddSegment("Signal");
  design.ResetUndoLevels();
  const CString before = StateOf(design);
  for (const char* end : {"Cancel", "OK"}) {
    EXPECT_EQ(StateOf(design), before);
    Work<CTrackStylesPage>(
        [&](CShownPanel& page) {
          page.Go("Signal", "Name");
          page.Select({"Signal"});
          EXPECT_FALSE(page.CanPress("Merge"));
          page.Select({"Power", "Signal", "[Guide]"});
          WorkInForm<CMergeStyles>(page, "Merge", [](CShownDialog& merge) {
            EXPECT_EQ(merge.FieldText("Survivor"), "Signal");
            EXPECT_EQ(merge.ListText(),
                      "\"Power\" goes; nothing uses it.\n\"[Guide]\" stays, because it is built in.\n");
            merge.Fill("Survivor", "Power");
            EXPECT_EQ(merge.ListText(),
                      "\"Signal\" goes; its uses (1) move to \"Power\".\n\"[Guide]\" stays, because it is built in.\n");
            merge.Press("OK");
          });
          EXPECT_EQ(page.Rows(), "X|Default|0.250\nX|Power|0.500\n|[Guide]|0.010\n");
          page.Go("Power", "Name");
          page.Press("Delete");  // what moves to it is a use
          EXPECT_NE(page.FindRow("Power"), -1);
          page.Go("Default", "Name");
          page.Select({"Default", "Power"});  // takes along what has been merged into Power
          WorkInForm<CMergeStyles>(page, "Merge", [](CShownDialog& merge) { merge.Press("OK"); });
        },
        {end});
  }
  EXPECT_EQ(drawn.Values().style.Get(), design.FindTrackStyle("Default"));
  EXPECT_EQ(design.trackStyles.Count(), 2u);
  ASSERT_EQ(design.Journal().Steps().size(), 1u);
  design.Undo();
  EXPECT_EQ(StateOf(design), before);
}

TEST(WireStylesOfASchematic, AreTrackStylesByAnotherName) {
  CScmDesign design;
  CScriptedUser ui;
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    ui.WhenShown<CEditTrackStyle>([](CShownDialog& form) {
      EXPECT_EQ(form.Caption(), "Wire style");
      form.Press("Cancel");
    });
    dialog.Show<CTrackStylesPage>().Press("Add");
    dialog.Press("OK");
  });
  ChangeSizes(&design);
  EXPECT_EQ(CTrackStylesPage(design).GetTitle(), "Wire styles");
  EXPECT_EQ(design.trackStyles.Count(), 1u);
}

// ---- Text styles

TEST_F(TextStylesPageTest, ATrueTypeFontLocksProportionAndPercentages) {
  Work<CTextStylesPage>(
      [](CShownPanel& page) {
        EXPECT_EQ(page.Choices("Notes", "Font"),
                  "Standard\nNarrow\nCode 39\nCode 128\nInterleaved 2 of 5\nMono\nSans\n");
        Do(page, "Notes|Character width %|+80; Notes|Font|Sans");
        for (const char* column : {"Proportional", "Character width %", "Line distance %"})
          EXPECT_FALSE(page.IsEnabled("Notes", column)) << column;
        page.Type("Notes", "Font", "Code 39");
        EXPECT_TRUE(page.IsEnabled("Notes", "Character width %"));
        EXPECT_EQ(page.Text("Notes", "Font"), "Code 39");
        Do(page, "Default|Font|Mono; Notes|Line distance %|tall");
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

TEST_F(TextStylesPageTest, TheFormKeepsAFontThatTheMachineLacksAndHasTheFieldsOfBarCodes) {
  CFreeText text;
  text.Set(&SFreeTextFields::style, &Text("Notes"));
  design.Selection().Add(*design.texts.Add(text));
  Text("Notes").Set(&STextStyleFields::font, CString("Elsewhere"));
  Work<CTextStylesPage>(
      [&](CShownPanel& page) {
        EXPECT_EQ(page.Focus(), "row 2, Name");  // the style of the selected text
        WorkInForm<CEditTextStyle>(page, "Edit", [](CShownDialog& form) {
          EXPECT_EQ(form.FieldText("Font"), "Elsewhere");
          EXPECT_FALSE(form.IsVisible("Parameter1"));
          form.Fill("Size", "3");
          form.Press("OK");
        });
        EXPECT_TRUE(page.IsEnabled("Notes", "Proportional"));
        page.Press("Apply");
        EXPECT_EQ(Text("Notes").Values().font, "Elsewhere");
        WorkInForm<CEditTextStyle>(page, "Edit", [](CShownDialog& form) {
          form.Fill("Font", "Code 39");
          EXPECT_TRUE(form.IsVisible("Parameter1"));
          form.Fill("Parameter2", "250");
          form.Fill("Parameter6", "1");
          form.Press("OK");
        });
        page.Type("Notes", "Font", "Code 128");  // carries the parameters over
      },
      {"OK"});
  EXPECT_EQ(Text("Notes").GetWidth(), 3'000'000);
  EXPECT_EQ(Text("Notes").Values().font, "Code 128");
  EXPECT_EQ(Text("Notes").GetParameter(1), 250);
  EXPECT_EQ(Text("Notes").GetParameter(5), 1);
}

TEST_F(TextStylesPageTest, TheDrillTableStyleCanBeDeletedWhereTheEditionDoesNotKeepIt) {
  for (const CStringArray& editions : {CStringArray{"CorvinaPro"}, {"Pellam", "Kestrel"}, {"KTComponents"}}) {
    CApplication::SetEditions(editions);
    Work<CTextStylesPage>([](CShownPanel& page) { Do(page, "[Drill Table]|Name; Delete"); }, {"OK"});
    const bool isKept = editions.front() == "CorvinaPro";
    EXPECT_EQ(ui.Shown(), CString(isKept ? "error 7074: [Drill Table]\n" : "") + "event TechnologyChanged\n");
    EXPECT_EQ(design.FindTextStyle("[Drill Table]") != nullptr, isKept);
    if (!isKept) design.Undo();
  }
}

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
}  // namespace
