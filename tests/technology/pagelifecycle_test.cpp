// What holds for every page of records: Cancel, undo and redo bring back whole states, files are read back as they were
// written, and OK with nothing changed changes nothing, on boards that nobody here drew as well.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "interchange/boardimport.h"
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

template <class Page>
CShownPanel Show(CShownDialog& dialog) {
  return dialog.Show<Page>();
}

struct SPage {
  const char* why;
  CShownPanel (*show)(CShownDialog& dialog);
  PageScript edit;  // adds, changes and deletes rows
  CCollectionBase& (*records)(CDesign& design);
  bool importsToRows = false;
};

/// Fills the form that `command` opens and closes it with OK.
template <class Form>
void ByForm(CShownPanel& page, CScriptedUser& ui, const char* command, const CString& name) {
  ui.WhenShown<Form>([name](CShownDialog& form) {
    form.Fill("Name", name);
    form.Press("OK");
  });
  page.Press(command);
}
void DeleteRow(CShownPanel& page, const char* name) {
  page.Go(name, "Name");
  page.Press("Delete");
}

class PageLifeCycle : public CPageTest<CPcbDesign>, public ::testing::WithParamInterface<SPage> {
 protected:
  PageLifeCycle() {
    AddLayers(design);
    design.AddLayerSpan("Blind", design.FindLayer("Top"), design.FindLayer("Core"));
    design.AddLayerSpan("Through", design.FindLayer("Top"), design.FindLayer("Bottom"));
    design.AddTrackStyle("Odd \xC3\xBC, wide", 123'457);
    design.AddTrackStyle("Power", 500'001);
    CTextStyle notes;
    notes.SetName("Notes");
    notes.SetWidth(2'000'003);
    notes.SetFont(FindFont("Code 39"));
    notes.Set(&STextStyleFields::parameter2, 250);
    design.AddTextStyle(&notes);
    notes.SetName("Spare");
    notes.SetIsUnderlined(true);
    notes.SetCharWidthPercent(-3);
    design.AddTextStyle(&notes);
    AddPads();
    design.ResetUndoLevels();
  }

  /// A pad with exceptions, a slot of odd sizes, one without a drill, and a hole.
  void AddPads() {
    CPadStyle pad;
    pad.SetName("Header");
    pad.SetSize(1'700'001);
    pad.SetDrillWidth(1'000'003);
    for (const char* layer : {"Core", "Top"}) {
      CPadStyleException exception;
      exception.SetLayer(design.FindLayer(layer));
      exception.SetShape(EPadShape::Square);
      exception.SetSize(1'900'007);
      pad.AddException(&exception);
    }
    design.AddPadStyle(&pad);
    pad.SetName("Jack, \xC2\xB5");
    pad.SetShape(EPadShape::Oval);
    pad.SetLength(4'200'011);
    pad.SetDrillShape(EDrillShape::Slot);
    pad.SetDrillLength(3'000'013);
    pad.SetDrillCornerRadius(400'017);
    design.AddPadStyle(&pad);
    CPadStyle hole;
    hole.SetName("Hole");
    hole.SetDrillWidth(1'000'000);
    hole.SetPlated(false);
    design.AddPadStyle(&hole);
    hole.SetName("Mark");
    hole.SetPlated(true);
    hole.SetDrillWidth(0);
    design.AddPadStyle(&hole);
  }
  static void AddLayers(CDesign& to) {
    CLayer core;
    core.SetName("Core");
    core.SetSide(ELayerSide::Inner);
    core.SetUsage(ELayerUsage::Electrical);
    to.AddLayer(&core);
    to.SetDefaultLayerOrder();
    to.ResetUndoLevels();
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
  Run(design, GetParam().edit, "Cancel");
  EXPECT_EQ(StateOf(design), before);
  EXPECT_TRUE(design.Journal().Steps().empty());

  Run(design, GetParam().edit, "OK");
  const CString after = StateOf(design);
  EXPECT_NE(after, before);
  EXPECT_EQ(ui.Shown(), "event TechnologyChanged\nevent TechnologyChanged\n");
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
    Run(
        design,
        [](CShownPanel& page, CScriptedUser&) {
          page.Press("Export");
          page.Press("Import");
        },
        "OK");
    design.GetUnits()->SetType(kept.GetType());
    EXPECT_EQ(StateOf(design), before) << CUnits::Suffix(unit);
  }
}

TEST_P(PageLifeCycle, AFileReadIntoAnotherDesignGivesEqualRecords) {
  for (int i = 0; i < 2; ++i) ui.Choose("x.csv");
  Run(design, [](CShownPanel& page, CScriptedUser&) { page.Press("Export"); }, "Cancel");
  CPcbDesign other;
  AddLayers(other);
  Run(
      other, [](CShownPanel& page, CScriptedUser&) { page.Press("Import"); },
      GetParam().importsToRows ? "OK" : "Close");
  EXPECT_EQ(ui.Shown(), "file x.csv\nevent TechnologyChanged\nevent TechnologyChanged\n");
  const CCollectionBase& to = GetParam().records(other);
  const CCollectionBase& from = GetParam().records(design);
  EXPECT_EQ(to.Count(), from.Count());
  for (const CRecordBase* one = from.FirstRecord(); one; one = one->Next()) {
    ASSERT_TRUE(to.FindRecord(one->RecordName())) << one->RecordName();
    EXPECT_TRUE(to.FindRecord(one->RecordName())->EqualValues(*one)) << one->RecordName();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Pages, PageLifeCycle,
    ::testing::Values(SPage{"LayerSpans", &Show<CLayerSpansPage>,
                            [](CShownPanel& page, CScriptedUser&) {
                              page.Type("Blind", "Name", "Upper");
                              page.Type("Upper", "Colour", "#123456");
                              DeleteRow(page, "Through");
                              page.Press("Add");
                              page.Type(3, "Name", "All");
                              page.Type(3, "Top layer", "Bottom");
                              page.Type(3, "Bottom layer", "Top");
                              page.Press("MoveUp");
                            },
                            [](CDesign& design) -> CCollectionBase& { return design.layerSpans; }},
                      SPage{"TrackStyles", &Show<CTrackStylesPage>,
                            [](CShownPanel& page, CScriptedUser& ui) {
                              page.Type("Default", "Name", "Power");  // trades names
                              page.Type("Odd \xC3\xBC, wide", "Name", "Default");
                              page.Type("Default", "Size", "0.1");
                              page.Go(3, "Name");
                              page.Press("Delete");
                              ByForm<CEditTrackStyle>(page, ui, "Add", "Thin");
                            },
                            [](CDesign& design) -> CCollectionBase& { return design.trackStyles; }},
                      SPage{"TextStyles", &Show<CTextStylesPage>,
                            [](CShownPanel& page, CScriptedUser& ui) {
                              page.Type("Notes", "Size", "3");
                              page.Type("Notes", "Font", "Standard");
                              page.Type("Notes", "Line distance %", "120");
                              DeleteRow(page, "Spare");
                              page.Go("[Drill Table]", "Name");
                              ByForm<CEditTextStyle>(page, ui, "Copy", "Table");
                              page.Go("Notes", "Name");
                              ByForm<CEditTextStyle>(page, ui, "Edit", "Remarks");
                            },
                            [](CDesign& design) -> CCollectionBase& { return design.textStyles; }},
                      SPage{"PadStyles", &Show<CPadStylesPage>,
                            [](CShownPanel& page, CScriptedUser& ui) {
                              page.Type("Header", "Size", "2");
                              page.Type("Core", "Thermal", "0.3");
                              page.Type("Core", "Shape", "Round");
                              page.Go("Header", "Name");
                              ByForm<CEditPadStyle>(page, ui, "Copy", "Header, wide");
                              DeleteRow(page, "Jack, \xC2\xB5");
                              page.Go("Top", "Size");
                              page.Press("DeleteException");
                              page.Set("Header, wide", "Plated", false);
                              ui.WhenShown<CEditPadStyleExceptionDialog>([](CShownDialog& form) {
                                form.Fill("Layer", "Bottom");
                                form.Press("OK");
                              });
                              page.Go("Hole", "Name");
                              page.Press("AddException");
                            },
                            [](CDesign& design) -> CCollectionBase& { return design.padStyles; }, true}),
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
  for (const auto show : {&Show<CPadStylesPage>, &Show<CTrackStylesPage>, &Show<CTextStylesPage>,
                          &Show<CLayerTypesPage>, &Show<CLayerSpansPage>}) {
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
