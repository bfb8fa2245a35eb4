// The rules of the pages: what each refuses, in which words, and where it sends the person.
#include "support/pagetest.h"
#include "technology/layers/layerspage.h"
#include "technology/layers/layerspanspage.h"
#include "technology/layers/layertypespage.h"
#include "technology/styles/padstylespage.h"
#include "technology/styles/textstylespage.h"
#include "technology/styles/trackstylespage.h"

namespace {
/// A page, and what would be written there if anything were.
struct SPageOf {
  const char* name;
  PageShown show;
  const char* first;
};
const SPageOf kLayers{"Layers", &ShowPage<CLayersPage>, "Notes|Name|Renamed"};
const SPageOf kTypes{"Types", &ShowPage<CLayerTypesPage>, "Copper|Name"};  // writes row by row
const SPageOf kSpans{"Spans", &ShowPage<CLayerSpansPage>, "Blind|Colour|#123456"};
const SPageOf kPads{"Pads", &ShowPage<CPadStylesPage>, "Chip|Size|1.1"};
const SPageOf kTracks{"Tracks", &ShowPage<CTrackStylesPage>, "Power|Size|0.6"};
const SPageOf kTexts{"Texts", &ShowPage<CTextStylesPage>, "Default|Size|1.1"};

struct SRefusal {
  const char* why;
  const SPageOf& page;
  const char *done, *shown, *focus;
};
void PrintTo(const SRefusal& refusal, std::ostream* out) { *out << refusal.why; }

class PageRefuses : public CBoardTest, public ::testing::WithParamInterface<SRefusal> {};

TEST_P(PageRefuses, AndNothingIsWritten) {
  AddVia("Header");
  design.ResetUndoLevels();
  const CString before = StateOf(design);
  if (CString(GetParam().shown).ends_with("Cancel")) ui.Answer(EAnswer::Cancel);
  CString focus;
  WorkInSheet(
      [&](CShownDialog& dialog) {
        CShownPanel page = GetParam().page.show(dialog);
        Do(page, GetParam().page.first);
        Do(page, GetParam().done);
        page.Press("OK");
        focus = page.Focus();
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), CString(GetParam().shown) + "\nevent TechnologyChanged\n");
  EXPECT_EQ(focus, GetParam().focus);
  EXPECT_EQ(StateOf(design), before);
  EXPECT_TRUE(design.Journal().Steps().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Rules, PageRefuses,
    ::testing::Values(
        // ---- Names
        SRefusal{"NoNameInANewRow", kLayers, "Add", "error 7061: 7", "row 7, Name"},
        SRefusal{"NameTwice", kLayers, "Glue|Name|Top", "error 7061: 5", "row 5, Name"},
        SRefusal{"NameAsIfBuiltIn", kLayers, "Glue|Name|[x", "error 7061: 5", "row 5, Name"},
        SRefusal{"NoName", kTypes, "Silk|Name|", "error 7067: 2", "row 2, Name"},
        SRefusal{"NameTwice", kSpans, "Through|Name|Blind", "error 7067: 2", "row 2, Name"},
        SRefusal{"ChamferTooLarge", kPads, "Chip|Shape|Chamfered rectangle; Chip|Dimension 3|0.6",
                 "error 21720: 0.6, 1.1", "row 1, Dimension 3"},
        SRefusal{"RadiusBesideChamferTooLarge", kPads,
                 "Chip|Shape|Chamfered rectangle; Chip|Dimension 3|0.3; Chip|Dimension 4|0.3",
                 "error 21721: 0.3, 0.25, 0.3", "row 1, Dimension 4"},
        SRefusal{"NameTwice", kPads, "Jack|Name|Chip", "error 7076: Chip", "row 6, Name"},
        SRefusal{"NameTwice", kTracks, "Signal|Name|Power", "error 7076: Power", "row 3, Name"},
        SRefusal{"NoName", kTracks, "Signal|Name|", "error 7076", "row 3, Name"},
        SRefusal{"NoName", kTexts, "Notes|Name|", "error 7076", "row 2, Name"},
        // ---- Layers
        SRefusal{"UsageOfAUsedLayer", kLayers, "Glue|Usage|Solder mask", "error 7185: Glue, Documentation, Solder mask",
                 "row 5, Usage"},
        SRefusal{"BiasOfDocumentation", kLayers, "Glue|Bias|Horizontal", "error 7285: Documentation, 5, None, Any",
                 "row 5, Bias"},
        SRefusal{"PowerPlaneOnAMask", kLayers, "Add; 7|Name|New; 7|Usage|Solder mask; 7|Bias|Power plane",
                 "error 7285: Solder mask, 7, Power plane, Split plane", "row 7, Bias"},
        SRefusal{"SplitPlaneOnAMask", kLayers, "Add; 7|Name|New; 7|Usage|Paste mask; 7|Bias|Split plane",
                 "error 7285: Paste mask, 7, Power plane, Split plane", "row 7, Bias"},
        SRefusal{"InnerMask", kLayers, "Add; 7|Name|New; 7|Usage|Solder mask; 7|Side|Inner",
                 "error 7286: Solder mask, 7", "row 7, Side"},
        SRefusal{"NetOnDocumentation", kLayers, "Glue|Plane net|GND", "error 7284: Documentation, 5",
                 "row 5, Plane net"},
        SRefusal{"NetOnAMask", kLayers, "Add; 7|Name|New; 7|Usage|Paste mask; 7|Plane net|GND",
                 "error 7284: Paste mask, 7", "row 7, Plane net"},
        SRefusal{"PouredCopper", kLayers, "Top|Bias|Power plane; Top|Plane net|GND", "ask 7260 -> Cancel",
                 "row 2, Bias"},
        SRefusal{"NumbersLeaveOutDeletedRows", kLayers,
                 "Add; 7|Name|a; Add; 8|Name|b; 7|Name; Delete; 8|Side|Top; 8|Usage|Paste mask; 8|Plane net|GND",
                 "error 7284: Paste mask, 7", "row 8, Plane net"},
        SRefusal{"InnerAboveTop", kLayers, "Core|Name; MoveUp", "error 7132: Core, Top", "row 2, Name"},
        SRefusal{"BottomAboveInner", kLayers, "Core|Name; MoveDown", "error 7132: Bottom, Core", "row 3, Name"},
        SRefusal{"BottomAboveTopWithoutInner", kLayers, "Core|Side|Top; Bottom|Name; MoveUp",
                 "error 7132: Bottom, Core", "row 3, Name"},
        SRefusal{"TwoElectricalLayersOfTheTop", kLayers, "Core|Side|Top", "error 7283: Top, Core, Top, Electrical",
                 "row 3, Name"},
        SRefusal{"TwoElectricalLayersOfTheBottom", kLayers, "Add; 7|Name|New; 7|Usage|Electrical",
                 "error 7283: Bottom, New, Bottom, Electrical", "row 7, Name"},
        SRefusal{"OneTypeTwiceOnASide", kLayers,
                 "Renamed|Side|Bottom; Renamed|Type|Silk; Glue|Side|Bottom; Glue|Type|Silk",
                 "error 7134: Glue, Renamed, Bottom, Documentation", "row 6, Name"},
        SRefusal{"NoOuterElectricalLayer", kLayers, "Top|Side|Inner; Bottom|Side|Inner", "ask 7230 -> Cancel",
                 "row 1, Name"},
        // ---- Layer types and spans
        SRefusal{"UsageOfAUsedType", kTypes, "Copper|Usage|Documentation",
                 "error 7201: Copper, Electrical, Documentation", "row 1, Usage"},
        SRefusal{"NoLength", kTypes, "Silk|Oversize|big", "error 20010: big", "row 2, Oversize"},
        SRefusal{"AnotherUnit", kTypes, "Silk|Oversize|10 mil", "error 20010: 10 mil", "row 2, Oversize"},
        SRefusal{"NoLayers", kSpans, "Add; 3|Name|New", "error 7325", "row 3, Top layer"},
        SRefusal{"OneLayer", kSpans, "Add; 3|Name|New; 3|Top layer|Top", "error 7325", "row 3, Bottom layer"},
        SRefusal{"OneLayerTwice", kSpans, "Through|Top layer|Bottom", "error 7326: Through, Bottom, Bottom",
                 "row 2, Bottom layer"},
        SRefusal{"SpansTouch", kSpans, "Through|Top layer|Core; Through|Bottom layer|Bottom",
                 "error 7328: Blind, Through", "row 1, Top layer"},
        // ---- Pad styles
        SRefusal{"NoNumber", kPads, "Core|Size|big", "error 20010: big", "row 4, Size"},
        SRefusal{"NoNumberBesideWhatTheShapeLost", kPads, "Chip|Size|big; Chip|Shape|Square", "error 20010: big",
                 "row 1, Size"},
        SRefusal{"NoSize", kPads, "Core|Size|0", "error 21710: Size, 0", "row 4, Size"},
        SRefusal{"NoLength", kPads, "Header|Shape|Oval", "error 21710: Length, 0", "row 3, Length"},
        SRefusal{"Radius", kPads, "Chip|Dimension 3|0.551", "error 21714: 0.551, 1.1", "row 1, Dimension 3"},
        SRefusal{"NoCopper", kPads, "Default|Drill|1", "error 21712: 1, 1", "row 2, Drill"},
        SRefusal{"SlotOutside", kPads, "Jack|Length|2.9", "error 21713: 1, 3, 2.2, 2.9", "row 6, Drill"},
        SRefusal{"NegativeThermal", kPads, "Top|Thermal|-1", "error 21711: Thermal, -1", "row 5, Thermal"},
        SRefusal{"SecondExceptionOfALayer", kPads, "Top|Layer|Core", "error 7187: Header, Core", "row 5, Layer"},
        SRefusal{"ViaWithoutDrill", kPads, "Header|Drill|", "error 7263: Header", "row 3, Drill"},
        // ---- Track and text styles
        SRefusal{"NoNumber", kTracks, "Signal|Size|wide", "error 20010: wide", "row 3, Size"},
        SRefusal{"TooWide", kTracks, "Signal|Size|2147.5", "error 20010: 2147.5", "row 3, Size"},
        SRefusal{"Negative", kTracks, "Signal|Size|-1", "error 21700: -1", "row 3, Size"},
        SRefusal{"Emptied", kTracks, "[Guide]|Size|", "error 21700: 0", "row 4, Size"},
        SRefusal{"NoSize", kTexts, "Notes|Size|0", "error 21700: 0", "row 2, Size"},
        SRefusal{"NoLineWidth", kTexts, "Notes|Line width|0", "error 21700: 0", "row 2, Line width"}),
    [](const auto& given) { return CString(given.param.page.name) + given.param.why; });

// ---- Deletions

struct SDeletion {
  const SPageOf& page;
  const char *row, *shown;
};
void PrintTo(const SDeletion& deletion, std::ostream* out) { *out << deletion.page.name << deletion.row; }
class PageKeeps : public CBoardTest, public ::testing::WithParamInterface<SDeletion> {};

TEST_P(PageKeeps, TheRow) {
  Pad("Header").SetName("[Header]");
  AddVia("Jack");
  AddVia("Chip").Set(&SViaFields::span, design.FindLayerSpan("Blind"));
  WorkInSheet(
      [&](CShownDialog& dialog) {
        CShownPanel page = GetParam().page.show(dialog);
        const CString rows = page.Rows();
        page.Go(GetParam().row, "Name");
        page.Press("Delete");
        EXPECT_EQ(page.Rows(), rows);
      },
      {"Cancel"});
  EXPECT_EQ(ui.Shown(), CString(GetParam().shown) + "event TechnologyChanged\n");
}
INSTANTIATE_TEST_SUITE_P(Rules, PageKeeps,
                         ::testing::Values(SDeletion{kLayers, "[All layers]", "error 7140: [All layers]\n"},
                                           SDeletion{kLayers, "Top", "error 7140: Top\n"},
                                           SDeletion{kLayers, "Glue", "ask 7531: Glue, 5,   Text: 1\r\n -> No\n"},
                                           SDeletion{kTypes, "Copper", "error 7140: Copper\n"},
                                           SDeletion{kSpans, "Blind", "error 7322: Blind\n"},
                                           SDeletion{kPads, "[Header]", "error 7074: [Header]\n"},
                                           SDeletion{kPads, "Jack", ""},
                                           SDeletion{kTracks, "[Guide]", "error 7074: [Guide]\n"},
                                           SDeletion{kTracks, "Default", ""},
                                           SDeletion{kTexts, "[Drill Table]", "error 7074: [Drill Table]\n"},
                                           SDeletion{kTexts, "Default", "error 7072: Default\n"}));

// ---- What one page deletes and another has chosen

TEST_F(CBoardTest, ARowThatRefersToWhatHasLeftTheDesignIsRefused) {
  AddLayer("Spare", ELayerSide::Inner, ELayerUsage::Electrical);
  design.SetDefaultLayerOrder();
  struct SChoice {
    const SPageOf& page;
    const char* choose;
    std::function<void()> leave;
    const char *shown, *focus;
  };
  const SChoice choices[] = {{kLayers, "Notes|Type|Silk", [&] { design.DeleteLayerType(design.FindLayerType("Silk")); },
                              "error 20030: 7, Silk\n", "row 7, Type"},
                             {kSpans, "Blind|Bottom layer|Spare", [&] { design.DeleteUsedLayer(&Layer("Spare")); },
                              "error 20030: 1, Spare\n", "row 1, Bottom layer"},
                             {kPads, "Top|Layer|Notes", [&] { design.DeleteUsedLayer(&Layer("Notes")); },
                              "error 20030: 5, Notes\n", "row 5, Layer"},
                             {kLayers, "Bottom|Plane net|VCC", [&] { design.DeleteNet(design.FindNet("VCC")); },
                              "error 20030: 4, VCC\n", "row 4, Plane net"}};
  design.AddNet("VCC", nullptr);
  for (const SChoice& choice : choices) {
    SCOPED_TRACE(choice.shown);
    WorkInSheet(
        [&](CShownDialog& dialog) {
          CShownPanel page = choice.page.show(dialog);
          Do(page, choice.choose);
          choice.leave();
          page.Press("OK");
          EXPECT_EQ(page.Focus(), choice.focus);
        },
        {"Cancel"});
    EXPECT_EQ(ui.Shown(), choice.shown + CString("event TechnologyChanged\n"));
  }
}
}  // namespace
