// What holds for every page of records: Cancel, undo and redo bring back whole states, files are read back as they were
// written, and OK with nothing changed changes nothing, on boards that nobody here drew as well.
#include <filesystem>
#include <regex>

#include "interchange/boardimport.h"
#include "model/design/byname.h"
#include "support/pagetest.h"
#include "technology/layers/layerspage.h"
#include "technology/layers/layerspanspage.h"
#include "technology/layers/layertypespage.h"
#include "technology/mergestyles.h"
#include "technology/styles/padstylespage.h"
#include "technology/styles/textstylespage.h"
#include "technology/styles/trackstylespage.h"

namespace {
using PageScript = std::function<void(CShownPanel&, CScriptedUser&)>;

struct SPage {
  const char* why;
  PageShown show;
  PageScript edit;  // adds, changes and deletes rows
  CCollectionBase& (*records)(CDesign& design);
  const char* asked = "";  // by the editing
  const char* told = "";   // by OK
  bool importsToRows = false;
};
void PrintTo(const SPage& page, std::ostream* out) { *out << page.why; }

/// Fills the form that `command` opens and closes it with OK.
template <class Form>
void ByForm(CShownPanel& page, CScriptedUser& ui, const char* command, const char* field, const CString& text) {
  ui.WhenShown<Form>([field, text](CShownDialog& form) {
    form.Fill(field, text);
    form.Press("OK");
  });
  page.Press(command);
}
/// With names that files must quote, odd lengths, and fields that not every shape, font or usage has.
class PageLifeCycle : public CBoardTest, public ::testing::WithParamInterface<SPage> {
 protected:
  PageLifeCycle() {
    Layer("Core").SetBias(ELayerBias::PowerPlane);
    Layer("Core").SetNet(net);
    Layer("Glue").SetType(design.FindLayerType("Silk"));
    design.FindTrackStyle("Signal")->SetName("Odd \xC3\xBC, wide");
    design.FindTrackStyle("Power")->SetWidth(500'001);
    CTextStyle& notes = *design.FindTextStyle("Notes");
    notes.SetWidth(2'000'003);
    notes.SetFont(FindFont("Code 39"));
    notes.Set(&STextStyleFields::parameter2, 250);
    CTextStyle spare = notes;
    spare.SetName("Spare");
    spare.SetIsUnderlined(true);
    spare.SetCharWidthPercent(-3);
    design.AddTextStyle(&spare);
    Pad("Jack").SetName("Jack, \xC2\xB5");
    Pad("Jack, \xC2\xB5").SetDrillCornerRadius(400'017);
    Pad("Jack, \xC2\xB5").SetDrillLength(3'000'013);
    Pad("Header").Exceptions().First()->SetShape(EPadShape::Square);
    CPadStyle& hole = AddPad("Hole", EPadShape::Round, 1'000'007, 0);
    hole.SetDrillWidth(1'000'000);
    hole.SetPlated(false);
    design.ResetUndoLevels();
  }
  void Run(CDesign& on, const PageScript& script, const char* command) {
    ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
      CShownPanel page = GetParam().show(dialog);
      script(page, ui);
      dialog.Press(command);
    });
    ChangeSizes(&on);
  }
};

TEST_P(PageLifeCycle, CancelUndoAndRedoBringBackWholeStates) {
  const CString before = StateOf(design);
  const CString asked = GetParam().asked, closed = "event TechnologyChanged\n";
  Run(design, GetParam().edit, "Cancel");
  EXPECT_EQ(ui.Shown(), asked + closed);
  EXPECT_EQ(StateOf(design), before);
  EXPECT_TRUE(design.Journal().Steps().empty());

  Run(design, GetParam().edit, "OK");
  const CString after = StateOf(design);
  EXPECT_NE(after, before);
  EXPECT_EQ(ui.Shown(), asked + GetParam().told + closed);
  ASSERT_EQ(design.Journal().Steps().size(), 1u);
  design.Undo();
  EXPECT_EQ(StateOf(design), before);
  design.Redo();
  EXPECT_EQ(StateOf(design), after);

  design.Undo();
  design.StartNestedUndoLevel(1);
  Run(design, GetParam().edit, "OK");
  EXPECT_EQ(StateOf(design), after);
  design.UndoNestedLevel(1);
  EXPECT_EQ(StateOf(design), before);
}

TEST_P(PageLifeCycle, AFileReadBackIntoTheSameDesignChangesNothing) {
  const CString before = StateOf(design);
  for (const int unit : {EUnitType::Mil, EUnitType::Millimetre, EUnitType::Inch, EUnitType::Micrometre}) {
    const CUnits kept = *design.GetUnits();
    design.GetUnits()->SetType(unit);
    for (int i = 0; i < 2; ++i) ui.Choose("x.csv");
    Run(design, [](CShownPanel& page, CScriptedUser&) { Do(page, "Export; Import"); }, "OK");
    design.GetUnits()->SetType(kept.GetType());
    EXPECT_EQ(StateOf(design), before) << CUnits::Suffix(unit);
    EXPECT_EQ(ui.Shown(), "file x.csv\nevent TechnologyChanged\n");
  }
}

TEST_P(PageLifeCycle, AFileReadIntoAnotherDesignGivesEqualRecordsInOneStep) {
  for (int i = 0; i < 2; ++i) ui.Choose("x.csv");
  Run(design, [](CShownPanel& page, CScriptedUser&) { page.Press("Export"); }, "Cancel");
  CPcbDesign other;
  CCollectionBase& to = GetParam().records(other);
  const CCollectionBase& from = GetParam().records(design);
  CCarry carry(EMissing::Bring);
  std::vector<const CRecordBase*> needed{net};  // what files refer to
  for (const CCollectionBase* kind :
       {static_cast<const CCollectionBase*>(&design.layerTypes), static_cast<const CCollectionBase*>(&design.layers)}) {
    if (kind == &from) break;
    for (const CRecordBase* one = kind->FirstRecord(); one; one = one->Next()) needed.push_back(one);
  }
  CopyByName(needed, other, carry);
  other.SetDefaultLayerOrder();
  other.ResetUndoLevels();
  const CString before = StateOf(other);
  Run(
      other, [](CShownPanel& page, CScriptedUser&) { page.Press("Import"); },
      GetParam().importsToRows ? "OK" : "Close");
  EXPECT_EQ(ui.Shown().find("report"), CString::npos) << "a record was refused";
  EXPECT_EQ(to.Count(), from.Count());
  for (const CRecordBase* one = from.FirstRecord(); one; one = one->Next()) {
    ASSERT_TRUE(to.FindRecord(one->RecordName())) << one->RecordName();
    EXPECT_TRUE(to.FindRecord(one->RecordName())->EqualValues(*one)) << one->RecordName();
  }
  EXPECT_TRUE(other.Undo());
  EXPECT_EQ(StateOf(other), before);
}

INSTANTIATE_TEST_SUITE_P(
    Pages, PageLifeCycle,
    ::testing::Values(
        SPage{"Layers", &ShowPage<CLayersPage>,
              [](CShownPanel& page, CScriptedUser& ui) {
                ui.Answer(EAnswer::Yes);  // delete Glue with the text on it
                Do(page,
                   "Add; 7|Name|Mask top; 7|Usage|Solder mask; 7|Side|Top; MoveUp; MoveUp; MoveUp; MoveUp; MoveUp");
                Do(page, "MoveUp; Top|Name|Front; Bottom|Colour|#112233; Core|Bias|Any; Glue|Name; Delete");
                EXPECT_EQ(page.Text(6, 0), "U");
              },
              [](CDesign& design) -> CCollectionBase& { return design.layers; },
              "beep -1\nask 7531: Glue, 6,   Text: 1\r\n -> Yes\n",
              "event LayerAdded Mask top\nevent LayerRenamed Front\nerror 7231: Core\nevent DesignColoursChanged\n"
              "event LayerDeleted Glue\nevent DesignColoursChanged\n"},
        SPage{"LayerTypes", &ShowPage<CLayerTypesPage>,
              [](CShownPanel& page, CScriptedUser& ui) {
                Do(page, "Add; 3|Name|Mask; Delete; Add; 4|Name|Paste; Silk|Oversize|-0.5");
                page.Set(4, "Vias", false);
                page.Sort("Oversize");  // the design's order is its own
                page.Go("Copper", "Name");
                ByForm<CEditLayerTypeDialog>(page, ui, "Edit", "Name", "Metal");
              },
              [](CDesign& design) -> CCollectionBase& { return design.layerTypes; }},
        SPage{"LayerSpans", &ShowPage<CLayerSpansPage>,
              [](CShownPanel& page, CScriptedUser&) {
                Do(page, "Blind|Name|Upper; Upper|Colour|#123456; Through|Name; Delete; Add; 3|Name|All");
                Do(page, "3|Top layer|Bottom; 3|Bottom layer|Top; MoveUp");
              },
              [](CDesign& design) -> CCollectionBase& { return design.layerSpans; }},
        SPage{"TrackStyles", &ShowPage<CTrackStylesPage>,
              [](CShownPanel& page, CScriptedUser& ui) {
                // trades names
                Do(page, "Default|Name|Power; Odd \xC3\xBC, wide|Name|Default; Default|Size|0.1; 3|Name; Delete");
                ByForm<CEditTrackStyle>(page, ui, "Add", "Name", "Thin");
              },
              [](CDesign& design) -> CCollectionBase& { return design.trackStyles; }},
        SPage{"TextStyles", &ShowPage<CTextStylesPage>,
              [](CShownPanel& page, CScriptedUser& ui) {
                Do(page, "Notes|Size|3; Notes|Font|Standard; Notes|Line distance %|120; Spare|Name; Delete");
                page.Go("[Drill Table]", "Name");
                ByForm<CEditTextStyle>(page, ui, "Copy", "Name", "Table");
                page.Go("Notes", "Name");
                ByForm<CEditTextStyle>(page, ui, "Edit", "Name", "Remarks");
              },
              [](CDesign& design) -> CCollectionBase& { return design.textStyles; }},
        SPage{"PadStyles", &ShowPage<CPadStylesPage>,
              [](CShownPanel& page, CScriptedUser& ui) {
                Do(page, "Header|Size|2; Core|Thermal|0.3; Core|Shape|Round; Header|Name");
                ByForm<CEditPadStyle>(page, ui, "Copy", "Name", "Header, wide");
                Do(page, "Jack, \xC2\xB5|Name; Delete; Top|Size; DeleteException");
                page.Set("Header, wide", "Plated", false);
                page.Go("Hole", "Name");
                ByForm<CEditPadStyleExceptionDialog>(page, ui, "AddException", "Layer", "Bottom");
              },
              [](CDesign& design) -> CCollectionBase& { return design.padStyles; }, "", "", true}),
    [](const auto& given) { return given.param.why; });

// ---- Boards that nobody here drew

class PagesOverBoards : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    const auto path =
        std::filesystem::path(TECHSHEET_SOURCE_DIR) / ".." / "shared" / "boards" / (CString(GetParam()) + ".kicad_pcb");
    if (!std::filesystem::exists(path)) GTEST_SKIP() << "There is no " << path << " on this machine.";
    CResult<SImportedBoard, SImportError> imported = ImportBoard(path.string());
    ASSERT_TRUE(imported) << imported.Error().Text();
    board = std::move(imported->design);
    board->SetName("");
    board->ResetUndoLevels();
  }
  std::unique_ptr<CPcbDesign> board;
  CScriptedUser ui;
};

TEST_P(PagesOverBoards, OkWithNothingChangedChangesNothing) {
  const CString before = StateOf(*board);
  for (const auto show : {&ShowPage<CPadStylesPage>, &ShowPage<CTrackStylesPage>, &ShowPage<CTextStylesPage>,
                          &ShowPage<CLayersPage>, &ShowPage<CLayerTypesPage>, &ShowPage<CLayerSpansPage>}) {
    ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
      show(dialog);
      dialog.Press("OK");
    });
    ChangeSizes(board.get());
    EXPECT_EQ(ui.Shown(), "event TechnologyChanged\n");
    EXPECT_EQ(StateOf(*board), before);
    EXPECT_TRUE(board->Journal().Steps().empty());
  }
}

TEST_P(PagesOverBoards, StylesAreRenamedResizedMergedAndTakenBack) {
  const CString before = StateOf(*board);
  std::set<CString> viaStyles;
  board->ForEachReference([&](CRecordBase& owner, const CField&, CRecordBase& target) {
    if (owner.IsKindOf(CVia::GetThisClass()) && target.IsKindOf(CPadStyle::GetThisClass()))
      viaStyles.insert(target.RecordName());
  });
  ui.WhenShown<CSizesDialog>([&](CShownDialog& dialog) {
    CShownPanel tracks = dialog.Show<CTrackStylesPage>();
    const auto rows = static_cast<int>(board->trackStyles.Count());
    for (int row = 1; row <= rows; ++row) tracks.Type(row, "Name", "Renamed " + IntText(row));
    tracks.Type(1, "Size", "0.321");
    dialog.Show<CTextStylesPage>().Type(1, "Size", "1.234");
    CShownPanel pads = dialog.Show<CPadStylesPage>();
    if (viaStyles.size() > 1) {
      pads.Go(*viaStyles.begin(), "Name");
      pads.Select({*viaStyles.begin(), *viaStyles.rbegin()});
      ui.WhenShown<CMergeStyles>([](CShownDialog& merge) { merge.Press("OK"); });
      pads.Press("Merge");
    }
    if (!viaStyles.empty()) pads.Type(*viaStyles.begin(), "Size", "5");
    if (!viaStyles.empty()) pads.Type(*viaStyles.begin(), "Name", "The via");
    dialog.Press("OK");
  });
  ChangeSizes(board.get());
  EXPECT_EQ(ui.Shown(), "event TechnologyChanged\n");
  EXPECT_EQ(board->FindTrackStyle("Renamed 1")->GetWidth(), 321'000);
  if (!viaStyles.empty()) {
    EXPECT_EQ(board->FindPadStyle("The via")->Values().size.value, 5'000'000);
    EXPECT_EQ(board->FindPadStyle(*viaStyles.rbegin()), nullptr);
  }
  board->Undo();
  EXPECT_EQ(StateOf(*board), before);
}

INSTANTIATE_TEST_SUITE_P(Boards, PagesOverBoards,
                         ::testing::Values("conn", "red", "schoko", "stackup-16", "stackup-32"), [](const auto& board) {
                           return std::regex_replace(CString(board.param), std::regex("-"), "_");
                         });
}  // namespace
