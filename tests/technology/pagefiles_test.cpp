// Delimited files of the pages: what an import takes, what it refuses and why, and what a file holds.
#include "support/pagetest.h"
#include "technology/layers/layerspage.h"
#include "technology/layers/layerspanspage.h"
#include "technology/layers/layertypespage.h"
#include "technology/mergestyles.h"
#include "technology/styles/padstylespage.h"
#include "technology/styles/textstylespage.h"
#include "technology/styles/trackstylespage.h"

namespace {
struct SImport {
  const char* why;
  PageShown show;
  const char *file, *shown;
  const char* rows;  // afterwards
};
void PrintTo(const SImport& import, std::ostream* out) { *out << import.why; }
class Imports : public CBoardTest, public ::testing::WithParamInterface<SImport> {};

/// In whatever order: rows of styles stand by name when a page opens.
std::multiset<CString> Lines(const CString& text) {
  const CStringArray lines = Split(text, "\n");
  return {lines.begin(), lines.end()};
}

TEST_P(Imports, TakeGoodRecordsAndReportTheOthers) {
  file = GetParam().file;
  ui.Choose("x.csv");
  CString rows;
  WorkInSheet(
      [&](CShownDialog& dialog) {
        CShownPanel page = GetParam().show(dialog);
        page.Press("Import");
        rows = page.Rows();
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), CString(GetParam().shown) + "event TechnologyChanged\n");
  EXPECT_EQ(rows, GetParam().rows);
  WorkInSheet([&](CShownDialog& dialog) { EXPECT_EQ(Lines(GetParam().show(dialog).Rows()), Lines(rows)); },
              {"Cancel"});  // is written
}

INSTANTIATE_TEST_SUITE_P(
    Pages, Imports,
    ::testing::Values(
        SImport{
            "AnyFile", &ShowPage<CTrackStylesPage>,
            "\"Name\",\"Size\"\nSignal,10 mil\n\nBus,0.4\nOdd\nLate,1,2\n\xFF\xFE,1\n\"Open\" x\nLast,1\n\"cut",
            "report 7669 [5]: Line 5 cannot be used: it has 1 fields instead of 2.\n"
            "report 7669 [6]: Line 6 cannot be used: it has 3 fields instead of 2.\n"
            "report 7669 [7]: Line 7 cannot be used: line 7: these bytes are no text. Save the file as UTF-8 text.\n"
            "report 7669 [8]: Line 8 cannot be used: line 8: text stands behind a closing quotation mark. Double the "
            "quotation marks inside a field.\n"
            "report 7669 [10]: Line 10 cannot be used: line 10: a quotation mark is never closed.\n",
            "X|Default|0.250\n|Power|0.500\n|Signal|0.254\n|[Guide]|0.010\n|Bus|0.400\n|Last|1.000\n"},
        SImport{"UnitsOfTitlesAndLinesThatAreNotRecords", &ShowPage<CTrackStylesPage>,
                "Name,Size (mil)\nSignal,10\nPower,0.4 mm\n\"No\nname\",1\nOdd,wide\n",
                "report 7669 [4]: Line 4 cannot be used: \"No\nname\" cannot be a name.\n"
                "report 7671 [6|wide]: Line 6 (record 5): \"wide\" is not a length. Write one number, such as 0.25.\n",
                "X|Default|0.250\n|Power|0.400\n|Signal|0.254\n|[Guide]|0.010\n"},
        SImport{
            "Tracks", &ShowPage<CTrackStylesPage>,
            "Odd,wide\nOdd,99999999999\nOdd,-1\n\"[Own\",1\n[Guide],0.02\n\"[Own]\",1\n",
            "report 7671 [1|wide]: Line 1: \"wide\" is not a length. Write one number, such as 0.25.\n"
            "report 7671 [2|99999999999]: Line 2: \"99999999999\" is not a length. Write one number, such as 0.25.\n"
            "report 7669 [3]: Line 3 cannot be used: A width or size of -1 cannot be drawn. Use one greater than 0.\n"
            "report 7669 [4]: Line 4 cannot be used: \"[Own\" cannot be a name.\n",
            "X|Default|0.250\n|Power|0.500\n|Signal|0.100\n|[Guide]|0.020\n|[Own]|1.000\n"},
        SImport{
            "Texts", &ShowPage<CTextStylesPage>,
            "Notes,5,0.2,\"\x01\",N,0,0,0,0,0,0,N,100,100\nNotes,3,0,Standard,N,0,0,0,0,0,0,N,100,100\n"
            "Notes,3,0.2,Standard,Y,0,0,7,0,0,0,N,80,100\n",
            "report 7669 [1]: Line 1 cannot be used: \"\x01\" cannot be the name of a font.\n"
            "report 7669 [2]: Line 2 cannot be used: A width or size of 0 cannot be drawn. Use one greater than 0.\n",
            "X|Default|1.000|0.150|Standard|No|No|100|100\n|Notes|3.000|0.200|Standard|Yes|No|80|100\n"
            "|[Drill Table]|1.000|0.150|Standard|No|No|100|100\n"},
        SImport{
            "LayerTypes", &ShowPage<CLayerTypesPage>,
            "Ink,Electrical,N,Y,Y,Y,N,None,5,N,N,0\nOdd,All layers,N,N,N,N,N,None,0,N,N,0\n"
            "Copper,Documentation,N,N,N,N,N,None,0,N,N,0\n",
            "report 21694 [1|Surface pads (N), Vias (N), Oversize (5)]: Record 1 has been taken, but not what does not "
            "go "
            "with the rest of it: Surface pads (N), Vias (N), Oversize (5).\n"
            "report 7669 [2]: Record 2 cannot be used: \"All layers\" cannot be read as \"Usage\".\n"
            "report 7669 [3]: Record 3 cannot be used: The layer type \"Copper\" is in use, so its usage cannot change "
            "from Electrical to Documentation.\n",
            "X|Copper|Electrical|Yes|Yes|Yes|Yes|Yes|None||No|No|0.000\n"
            "|Silk|Documentation|Yes|Yes|Yes|Yes|No|By amount|0.123|No|No|0.000\n"
            "|Ink|Electrical|Yes|Yes|Yes|Yes|Yes|None||No|No|0.000\n"},
        SImport{
            "Layers", &ShowPage<CLayersPage>,
            "Core 2,,Inner,Electrical,Any,,#00FF00\n"
            "Odd,Nothing,Inner,Electrical,Any,,#00FF00\n"
            "Odd,,Left,Electrical,Any,VCC,green\n"
            "Glue,,All,Electrical,Any,,#00FF00\n"
            "[Own],,Inner,Electrical,Any,,#00FF00\n"
            "Every,,All,All layers,Any,,#00FF00\n"
            "Bias,,All,Documentation,Vertical,,#00FF00\n"
            "[All layers],Silk,Top,Electrical,Any,GND,#00FF00\n"  // nothing of it can be edited
            "Notes,,Top,Documentation,Any,,#00FF00\n"
            "Top,Copper,Top,Documentation,Power plane,GND,#00FF00\n",  // the usage is that of the type
            "event LayerAdded Core 2\nevent DesignColoursChanged\n"
            "report 7688 [2|Nothing]: Record 2: there is no layer type \"Nothing\".\n"
            "report 7689 [3|Left]: Record 3: \"Left\" is no side, usage or bias.\n"
            "report 7690 [3|VCC]: Record 3: there is no net \"VCC\".\n"
            "report 7669 [3]: Record 3 cannot be used: \"green\" cannot be read as \"Colour\".\n"
            "report 7669 [4]: Record 4 cannot be used: The layer \"Glue\" is in use, so its usage cannot change from "
            "Documentation to Electrical.\n"
            "report 7669 [5]: Record 5 cannot be used: \"[Own]\" cannot be a name.\n"
            "report 7689 [6|All layers]: Record 6: \"All layers\" is no side, usage or bias.\n"
            "report 7669 [7]: Record 7 cannot be used: the bias does not suit a layer of usage Documentation (None, "
            "Any). Documentation layers have one of the two, mask layers neither.\n"
            "report 20056 [10|Copper has been poured on this layer. As a power plane the layer no longer needs it. "
            "Continue?]: Record 10 has been taken without asking: Copper has been poured on this layer. As a power "
            "plane the layer no longer needs it. Continue?\n",
            "|[All layers]||All|All layers|Horizontal||#808080\n"
            "X|Top|Copper|Top|Electrical|Power plane|GND|#00FF00\n"
            "|Notes||Top|Documentation|Any||#00FF00\n"  // where its side belongs now
            "X|Core||Inner|Electrical|None||#808080\n"
            "|Core 2||Inner|Electrical|Any||#00FF00\n"
            "X|Bottom||Bottom|Electrical|Any||#4D7FC4\n"
            "X|Glue||All|Documentation|None||#808080\n"},
        SImport{
            "LayerSpans", &ShowPage<CLayerSpansPage>,
            "Deep,Bottom,Top,#040506\n"  // turned round
            "C,Top,9,#000000\nD,Core,Core,#000000\nE,Core,Bottom,#000000\nF,,Bottom,#000000\n"
            "All,[All layers],Core,#000000\n\"[H\",Top,Bottom,#000000\nBlind,Top,Core,#010203\n",
            "report 7693 [9]: Record 2: there is no layer \"9\".\n"
            "report 7669 [3]: Record 3 cannot be used: The layer span \"D\" runs from \"Core\" to \"Core\". Choose two "
            "different layers.\n"
            "report 7669 [4]: Record 4 cannot be used: The layer spans \"E\" and \"Blind\" cross or touch. Spans stand "
            "apart, or one lies within the other.\n"
            "report 7693 []: Record 5: there is no layer \"\".\n"
            "report 7669 [6]: Record 6 cannot be used: \"[All layers]\" cannot be chosen as \"Top layer\". The cells "
            "of "
            "the page offer what can.\n"
            "report 7669 [7]: Record 7 cannot be used: \"[H\" cannot be a name.\n",
            "|Blind|Top|Core|#010203\n|Through|Top|Bottom|#808080\n|Deep|Top|Bottom|#040506\n"},
        SImport{
            "Pads", &ShowPage<CPadStylesPage>,
            "Jack,,Oval,2.2,4.2,0,1.1,N,,,,,\n"  // no slot any more
            "Header,Bottom,Square,1.8,0,0,,,,,,,\nHeader,Bottom,Square,2,0,0,,,,,,,\n"
            "Header,Core,Round,0,0,0,,,,,,,\nHeader,Nowhere,Round,1,0,0,,,,,,,\nMissing,Top,Round,1,0,0,,,,,,,\n"
            "Bad,,Star,x,0,0,,,,,,,\nBad,,Oval,1,2,0,,Y,Slot,1.5,1,0,N\n"
            "Bad,,Oval,1,2,0,0.3,Y,Slot,0.5,1,0,N\nBad,,Oval,1,2,0,,Y,Slot,0,1,0,N\n"
            "New,,Oval,1,2,0,,Y,Slot,0.5,1,0,N\nNew,Core,Round,2,0,0,,,,,,,\nHeader,,Round,1.75,0,0,1,Y,Round,,,,"
            "N\nBad,,Oval,1,2,0,1,Y,,0,0,0,N\n",
            "report 7669 [4]: Record 4 cannot be used: Size: a pad cannot have 0 there. Use a length greater than 0.\n"
            "report 7693 [Nowhere]: Record 5: there is no layer \"Nowhere\".\n"
            "report 21717 [6|Missing]: Record 6: there is no pad style \"Missing\" that an exception could belong to.\n"
            "report 7669 [7]: Record 7 cannot be used: \"Star\" cannot be read as \"Shape\".\n"
            "report 7671 [7|x]: Record 7: \"x\" is not a length. Write one number, such as 0.25.\n"
            "report 7669 [8]: Record 8 cannot be used: A slot of 1.5 by 1 reaches beyond its pad of 1 by 2. Use a "
            "smaller slot or a larger pad.\n"
            "report 7669 [9]: Record 9 cannot be used: a round drill and a slot stand in it. Leave one of the two "
            "empty.\n"
            "report 7669 [10]: Record 10 cannot be used: a slot needs its width and its length.\n"
            "report 7669 [14]: Record 14 cannot be used: a round drill and a slot stand in it. Leave one of the two "
            "empty.\n",
            "|Chip|[All layers]|Rounded rectangle|1.000|1.450|0.250|0.000|0.000|Yes|0.000\n"
            "X|Default|[All layers]|Round|1.000|0.000|0.000|0.000|0.500|Yes|0.000\n"
            "|Header|[All layers]|Round|1.750|0.000|0.000|0.000|1.000|Yes|0.000\n"
            "||Core|Round|1.900|0.000|0.000|0.000|||0.000\n"
            "||Top|Round|1.900|0.000|0.000|0.000|||0.000\n"
            "||Bottom|Square|2.000|0.000|0.000|0.000|||0.000\n"
            "|Jack|[All layers]|Oval|2.200|4.200|0.000|0.000|1.100|No|0.000\n"
            "|[Guide]|[All layers]|Square|0.500|0.000|0.000|0.000|0.000|Yes|0.000\n"
            "|New|[All layers]|Oval|1.000|2.000|0.000|0.000|Slot|Yes|0.000\n"
            "||Core|Round|2.000|0.000|0.000|0.000|||0.000\n"}),
    [](const auto& given) { return given.param.why; });

TEST_F(CBoardTest, AnImportBringsBackWhatThePageHasDeletedOrMerged) {
  const CTrackSegment& drawn = AddSegment("Signal");
  file = "Power,0.7\nSignal,0.2\n";
  ui.Choose("x.csv");
  Work<CTrackStylesPage>(
      [&](CShownPanel& page) {
        page.Type("[Guide]", "Size", "0.02");  // not of the file, so it stays
        Do(page, "Power|Name; Delete; Default|Name");
        page.Select({"Default", "Signal"});
        WorkInForm<CMergeStyles>(page, "Merge", [](CShownDialog& merge) { merge.Press("OK"); });
        page.Press("Import");
        EXPECT_EQ(page.Rows(), "X|Default|0.250\n|Power|0.700\nX|Signal|0.200\n|[Guide]|0.020\n");
      },
      {"OK"});
  EXPECT_EQ(drawn.Values().style.Get(), design.FindTrackStyle("Signal"));
  EXPECT_EQ(design.trackStyles.Count(), 4u);
}

TEST_F(CBoardTest, AnImportSaysWhichCheckOfThePageItBreaks) {
  file = "Second,,Top,Electrical,Any,,#00FF00\n";
  ui.Choose("x.csv");
  Work<CLayersPage>([](CShownPanel& page) { page.Press("Import"); }, {"OK", "Close"});
  const CString why =
      "The layers \"Top\" and \"Second\" of the side Top have the same usage, Electrical. A side holds one layer of "
      "this usage.";
  EXPECT_EQ(ui.Shown(), "event LayerAdded Second\nevent DesignColoursChanged\nreport 21695 [" + why +
                            "]: What was taken keeps the page from being applied: " + why +
                            "\nerror 7283: Top, Second, Top, Electrical\nevent TechnologyChanged\n");
}

TEST_F(CBoardTest, AnImportForgivesTheFaultThatItLeaves) {
  Layer("Notes").SetBias(ELayerBias::Vertical);
  file = "Notes,,All,Documentation,Vertical,,#00FF00\nNotes,,All,Documentation,Horizontal,,#00FF00\n";
  ui.Choose("x.csv");
  Work<CLayersPage>([](CShownPanel& page) { page.Press("Import"); }, {"Close"});
  EXPECT_TRUE(ui.Shown().starts_with("event DesignColoursChanged\nreport 7669 [2]: ")) << ui.Shown();
  EXPECT_EQ(Layer("Notes").GetColour(), CColour{0x00FF00});
  EXPECT_EQ(Layer("Notes").GetBias(), ELayerBias::Vertical);
}

TEST_F(CBoardTest, AnImportStaysAfterCancelAndLeavesWhatWasTyped) {
  file = "Notes,,All,Documentation,Any,,#00FF00\n";
  ui.Choose("x.csv");
  Work<CLayersPage>(
      [](CShownPanel& page) {
        Do(page, "Notes|Name|Mine; Import");
        EXPECT_EQ(page.Text("Mine", "Colour"), "#00FF00");
      },
      {"Close"});
  EXPECT_EQ(Layer("Notes").GetColour(), CColour{0x00FF00});
}

TEST_F(CBoardTest, AnImportKeepsWhatAFormHasSetWithoutACell) {
  file = "\"Notes\",5,0.2,\"Code 39\",N,0,0,7,0,0,0,N,100,100\n";
  ui.Choose("x.csv");
  Work<CTextStylesPage>(
      [&](CShownPanel& page) {
        page.Go("Notes", "Name");
        WorkInForm<CEditTextStyle>(page, "Edit", [](CShownDialog& form) {
          form.Fill("Font", "Code 39");
          form.Fill("Parameter1", "120");
          form.Press("OK");
        });
        page.Press("Import");
      },
      {"OK"});
  const CTextStyle& notes = *design.FindTextStyle("Notes");
  EXPECT_EQ(notes.GetParameter(0), 120);
  EXPECT_EQ(notes.GetParameter(2), 7);
  EXPECT_EQ(notes.GetWidth(), 5'000'000);
}

TEST_F(CBoardTest, FilesHoldQuotedTextsAndExactLengthsBehindTheSeparatorOfTheSettings) {
  design.FindTrackStyle("Power")->SetName("Power, \xC2\xB5;");
  design.FindTrackStyle("Signal")->SetWidth(123'457);
  Pad("Jack").SetDrillRotated(true);
  Pad("Chip").SetPlated(false);
  for (int i = 0; i < 2; ++i) ui.Choose("x.csv");
  Work<CPadStylesPage>([](CShownPanel& page) { page.Press("Export"); }, {"Cancel"});
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
  CAppRegistry("Settings\\CSV").SetValue("Separator", ";");
  CAppRegistry("Settings\\CSV").SetValue("Units", 1);
  Work<CTrackStylesPage>([](CShownPanel& page) { page.Press("Export"); }, {"Cancel"});
  EXPECT_EQ(
      file,
      "\"Name\";\"Size (mm)\"\n\"Default\";0.25\n\"Power, \xC2\xB5;\";0.5\n\"Signal\";0.123457\n\"[Guide]\";0.01\n");
}

/// What a shape has not is not in files, whatever the record holds there; and a typed value that does not parse is not
/// what the record says.
TEST_F(CBoardTest, AFileReadBackIsNoChangeForWhatAShapeDoesNotHave) {
  Pad("Default").SetLength(7);
  Pad("[Guide]").SetDrillShape(EDrillShape::Slot);
  Pad("[Guide]").SetDrillLength(9);
  const CString before = StateOf(design);
  for (int i = 0; i < 2; ++i) ui.Choose("x.csv");
  Work<CPadStylesPage>(
      [](CShownPanel& page) {
        Do(page, "Export; Import");
        EXPECT_FALSE(page.CanPress("Apply"));
      },
      {"OK"});
  EXPECT_EQ(StateOf(design), before);
}
}  // namespace
