// Pages that exist here alone: one of two grids whose rows stand for no records, and one of net classes.
#include "support/pagetest.h"
#include "technology/mergestyles.h"
#include "technology/recordpage.h"

namespace {
// ---- Two grids: the distances between net classes, and one value a class

/// A column for each net class of the design, and a row; the length in a cell is the spacing of the two.
class CMatrixRows final : public CGridRows {
 public:
  explicit CMatrixRows(CTechDialogPage& page) : CGridRows(page, "matrix", "Test\\Matrix") {}
  void Fill() override {
    std::vector<SGridColumn> columns{{Text::NetClass, {}}};
    CDesign& design = m_page.Design();
    columns.resize(1 + design.netClasses.Count(), {Text::NetClass, {}, EAlign::Right, 70, true});
    m_grid.SetColumns(std::move(columns));
    m_grid.DeleteAllRows();
    int col = 0;
    for (const CNetClass& one : design.netClasses) m_grid.Column(++col).title = one.GetName();
    for (const CNetClass& first : design.netClasses) {
      const int row = m_grid.InsertRow();
      m_grid.SetItemText(row, 0, first.GetName());
      col = 0;
      for (const CNetClass& second : design.netClasses) {
        const CSpacing* const spacing = Find(first, second);
        SCell& cell = m_grid.Cell(row, ++col);
        cell.editor = EEditor::Length;
        cell.hasValue = spacing != nullptr;
        cell.value = spacing ? spacing->Values().value.value : 0;
        if (spacing) cell.text = LengthText(static_cast<int>(cell.value), m_page.UserUnits(), false);
      }
    }
    m_grid.LoadSettings();
  }
  std::optional<SFinding> Write(const CFindings&, int before) override {
    CDesign& design = m_page.Design();
    for (int row = 1; row < std::min(before, m_grid.GetRowCount()); ++row)
      for (int col = 1; col < m_grid.GetColumnCount(); ++col) {
        if (!m_grid.Cell(row, col).modified) continue;
        CNetClass &first = *design.FindNetClass(m_grid.GetItemText(row, 0)),
                  &second = *design.FindNetClass(m_grid.Column(col).title);
        CSpacing* spacing = Find(first, second);
        if (!spacing) spacing = design.spacings.Add(CSpacing());
        spacing->Set(&SSpacingFields::first, &first);
        spacing->Set(&SSpacingFields::second, &second);
        spacing->Set(&SSpacingFields::value, Dsu{static_cast<int>(m_grid.GetValue(row, col))});
        m_grid.Cell(row, col).modified = false;
      }
    return {};
  }

 private:
  CSpacing* Find(const CNetClass& first, const CNetClass& second) const {
    for (CSpacing& one : m_page.Design().spacings)
      if (one.Values().first.Get() == &first && one.Values().second.Get() == &second) return &one;
    return nullptr;
  }
};

/// The clearance of each net class and whether it is drawn in its own colour. The design takes no clearance beyond 10
/// mm.
class CListRows final : public CGridRows {
 public:
  explicit CListRows(CTechDialogPage& page) : CGridRows(page, "list", "Test\\List") {
    m_grid.SetColumns(
        {{Text::Name, {}}, {Text::Clearance, {}, EAlign::Right, 100, true}, {Text::UseOwnColour, {}, EAlign::Centre}});
  }
  void Fill() override {
    m_grid.DeleteAllRows();
    for (CNetClass& one : m_page.Design().netClasses) {
      const int row = m_grid.InsertRow();
      m_grid.SetItemText(row, 0, one.GetName());
      SCell &length = m_grid.Cell(row, 1), &mark = m_grid.Cell(row, 2);
      length.editor = EEditor::Length;
      length.hasValue = true;
      length.value = one.Values().clearance.value;
      length.text = LengthText(one.Values().clearance.value, m_page.UserUnits(), false);
      mark.editor = EEditor::Boolean;
      mark.value = one.Values().useOwnColour;
      mark.text = TextOf(one.Values().useOwnColour ? Text::Yes : Text::No);
    }
    m_grid.LoadSettings();
  }
  std::optional<SFinding> Write(const CFindings&, int before) override {
    for (int row = 1; row < std::min(before, m_grid.GetRowCount()); ++row) {
      const int clearance = static_cast<int>(m_grid.GetValue(row, 1));
      if (clearance > 10'000'000) return SFinding{.rows = this, .row = row, .col = 1, .id = Text::LengthInvalid};
      CNetClass& one = *m_page.Design().FindNetClass(m_grid.GetItemText(row, 0));
      one.Set(&SNetClassFields::clearance, Dsu{clearance});
      one.Set(&SNetClassFields::useOwnColour, m_grid.GetValue(row, 2) != 0);
      for (SCell& cell : m_grid.Row(row).cells) cell.modified = false;
    }
    return {};
  }
};

class CTwoGridsPage : public CTechDialogPage {
  TECHSHEET_CLASS(CTwoGridsPage, CTechDialogPage)
  explicit CTwoGridsPage(CDesign& design)
      : CTechDialogPage(design, {.title = Text::Spacings, .writeLevel = Text::Spacings}) {
    AddRows(m_matrix);
    AddRows(m_list);
    AddCommand("Export", [this] { OnExport(m_list, Text::LayersFile); });
    AddCommand("Import", [this] { OnImport(m_list); });
  }

 private:
  CMatrixRows m_matrix{*this};
  CListRows m_list{*this};
};

/// Net classes 1 Default, 2 Fast, 3 Power.
template <class Page>
class COwnPageTest : public CPageTest<CPcbDesign> {
 protected:
  COwnPageTest() {
    for (const char* name : {"Fast", "Power"}) Add(name);
    design.ResetUndoLevels();
  }
  void Add(const char* name) {
    CNetClass added;
    added.SetName(name);
    design.AddNetClass(&added);
  }
  CNetClass& Class(const char* name) { return *design.FindNetClass(name); }
  void Run(const std::function<void(CShownDialog&)>& script, const char* end) {
    Page page(design);
    CPropertySheetPlus sheet(Text::Technology);
    sheet.AddPage(&page);
    ui.WhenShown<CPropertySheetPlus>([&](CShownDialog& dialog) {
      script(dialog);
      if (dialog.IsOpen()) dialog.Press(end);
    });
    sheet.DoModal();
  }
};
using TwoGrids = COwnPageTest<CTwoGridsPage>;

TEST_F(TwoGrids, AreWrittenTogetherOrNotAtAll) {
  const CString before = StateOf(design);
  Run(
      [&](CShownDialog& dialog) {
        CShownPanel matrix = dialog.Show<CTwoGridsPage>("matrix"), list = dialog.Show<CTwoGridsPage>("list");
        EXPECT_EQ(matrix.Rows(), "Default|||\nFast|||\nPower|||\n");
        Do(matrix, "Fast|Power|0.5; Default|Fast");
        list.Type("Power", "Clearance", "wide");
        dialog.Press("OK");
        EXPECT_EQ(list.Focus(), "row 3, Clearance");
        EXPECT_EQ(matrix.Focus(), "row 1, Fast");
        EXPECT_EQ(StateOf(design), before);
        list.Type("Fast", "Clearance", "0.2");
        list.Type("Power", "Clearance", "11");  // the design will not have it
        dialog.Press("OK");
        EXPECT_EQ(StateOf(design), before);
        EXPECT_TRUE(design.Journal().Steps().empty());
        list.Type("Power", "Clearance", "10");
        dialog.Press("OK");
      },
      "Cancel");
  EXPECT_EQ(ui.Shown(), "error 20010: wide\nerror 20010\n");
  ASSERT_EQ(design.spacings.Count(), 1u);
  EXPECT_EQ(design.spacings.First()->Values().value.value, 500'000);
  EXPECT_EQ(Class("Fast").Values().clearance.value, 200'000);
  EXPECT_EQ(design.Journal().Steps().size(), 1u);
  CString widths;
  for (const auto& [key, kept] : {std::pair{"Test\\Matrix", "100,70,70,70"}, {"Test\\List", "100,100,100"}}) {
    CAppRegistry(key).GetValue("Columns", widths);
    EXPECT_EQ(widths, kept);
  }
  Add("Slow");  // has a column the next time
  Run(
      [](CShownDialog& dialog) {
        EXPECT_EQ(dialog.Show<CTwoGridsPage>("matrix").Rows(), "Default||||\nFast|||0.500|\nPower||||\nSlow||||\n");
      },
      "Cancel");
}

TEST_F(TwoGrids, ShowOtherUnitsAndKeepWhatWasEmptied) {
  Class("Fast").Set(&SNetClassFields::clearance, Dsu{123'457});
  Run(
      [&](CShownDialog& dialog) {
        CShownPanel matrix = dialog.Show<CTwoGridsPage>("matrix"), list = dialog.Show<CTwoGridsPage>("list");
        matrix.Type(1, "Fast", "0.5");
        list.Type("Power", "Clearance", "");
        list.Type("Default", "Clearance", "wide");  // shows the old value again
        design.SwitchUnits();
        CEvt::Send("UnitsChanged", &design);
        EXPECT_EQ(matrix.Rows(), "Default||19.69|\nFast|||\nPower|||\n");
        EXPECT_EQ(list.Rows(), "Default|0.00|No\nFast|4.86|No\nPower||No\n");
      },
      "OK");
  EXPECT_EQ(ui.Shown(), "event UnitsChanged\n");
  EXPECT_EQ(Class("Fast").Values().clearance.value, 123'457);
}

TEST_F(TwoGrids, WriteAFileThatReadsBack) {
  Class("Fast").Set(&SNetClassFields::clearance, Dsu{123'457});
  for (int i = 0; i < 3; ++i) ui.Choose("classes.csv");
  Run(
      [&](CShownDialog& dialog) {
        CShownPanel list = dialog.Show<CTwoGridsPage>("list");
        dialog.Press("Export");
        EXPECT_EQ(file,
                  "\"Name\",\"Clearance\",\"Use own colour\"\n\"Default\",0,\"No\"\n"
                  "\"Fast\",0.123457,\"No\"\n\"Power\",0,\"No\"\n");
        const CString before = list.Rows();
        dialog.Press("Import");
        EXPECT_EQ(list.Rows(), before);
        file = "\"Name\",\"Clearance\",\"Use own colour\"\nPower,0.3,Yes\nNone,1,No\nFast,x,perhaps\nFast\n\"Fast";
        dialog.Press("Import");
        EXPECT_EQ(list.Rows(), "Default|0.000|No\nFast|0.123|No\nPower|0.300|Yes\n");
      },
      "OK");
  EXPECT_EQ(ui.Shown(),
            "file classes.csv\n"
            "report 7669 [3]: Record 3 cannot be used: \"None\" cannot be a name.\n"
            "report 7669 [4]: Record 4 cannot be used: \"x\" cannot be read as \"Clearance\".\n"
            "report 7669 [4]: Record 4 cannot be used: \"perhaps\" cannot be read as \"Use own colour\".\n"
            "report 7669 [5]: Record 5 cannot be used: it has 1 fields instead of 3.\n"
            "report 7669 [6]: Record 6 cannot be used: line 6: a quotation mark is never closed.\n");
  EXPECT_TRUE(Class("Power").Values().useOwnColour);
}

// ---- Net classes: columns in groups, a rule, a question, merging in a level

using F = SNetClassFields;
TECHSHEET_RECORD_FORM(CClassForm);
class CClassesPage : public CRecordPage {
  TECHSHEET_CLASS(CClassesPage, CRecordPage)
  explicit CClassesPage(CDesign& design)
      : CRecordPage(design, design.netClasses,
                    {.title = Text::NetClasses,
                     .settings = "Test\\Classes",
                     .nameError = Text::RowNameInvalid,
                     .inUse = Text::InUse,
                     .validName = &ValidNetClassName,
                     .styles = true,
                     .writeLevel = Text::NetClasses}) {
    const bool rules = CApplication::IsExtended();
    Columns({
        UsedMark(),
        Column(&F::name),
        Column(&F::type),
        Column(&F::minimumStyle),
        Column(&F::nominalStyle),
        Column(&F::viaStyle),
        Group(rules).Of({Column(&F::trackLengthDiffEnabled),
                         Column(&F::trackLengthDiff).EnabledBy(&F::trackLengthDiffEnabled),
                         Column(&F::trackMinMaxEnabled), Column(&F::minTrackLength).EnabledBy(&F::trackMinMaxEnabled),
                         Column(&F::maxTrackLength).EnabledBy(&F::trackMinMaxEnabled)}),
        Group(CApplication::IsCorvina())
            .NotInFile()
            .Of({Column(&F::useOwnColour), Column(&F::ownColour).EnabledBy(&F::useOwnColour)}),
        Group(rules).NotInFile().Of({Column(&F::tentedVias).Order({1, 0, 2})}),
    });
    AddForm(RecordForm<CClassForm>(Text::NetClass));
  }

 protected:
  void CheckValues(const SCheckedRow& row, CFindings& findings) const override {
    const F& values = row.As<CNetClass>().Values();
    if (values.trackMinMaxEnabled && values.minTrackLength.value == 0 && values.maxTrackLength.value == 0)
      findings.Add(row, &F::minTrackLength, Text::ViasNeedDrill, values.name);
    if (values.trackLengthDiffEnabled && values.trackLengthDiff.value == 0)
      findings.Ask(row, &F::trackLengthDiff, Text::NoOuterElectricalLayer);
  }
};
using NetClasses = COwnPageTest<CClassesPage>;

TEST_F(NetClasses, ColumnsFollowTheEdition) {
  const auto titles = [&](const CStringArray& editions) {
    CApplication::SetEditions(editions);
    const CClassesPage page(design);
    CString text;
    for (int col = 5; col < page.Grid().GetColumnCount(); ++col) (text += '|') += page.Grid().Column(col).title;
    for (const SFileTitle& title : page.Rows().FileTitles()) (text += title.text == "Name" ? '\n' : '|') += title.text;
    return text;
  };
  const CString limits =
      "|Track length difference limited|Track length difference|Track length limited|Least track length|"
      "Greatest track length";
  const CString always = "\nName|Type|Minimum track style|Nominal track style|Via style";
  EXPECT_EQ(titles({"Pellam"}), "|Via style" + limits + "|Tented vias" + always + limits);
  EXPECT_EQ(titles({"KTComponents"}), "|Via style" + always);
  EXPECT_EQ(titles({"Corvina"}), "|Via style|Use own colour|Own colour" + always);
}

TEST_F(NetClasses, AMarkEnablesItsLengthsAndTheRuleKnowsTheField) {
  Run(
      [&](CShownDialog& dialog) {
        CShownPanel page = dialog.Show<CClassesPage>();
        EXPECT_EQ(page.Choices("Fast", "Tented vias"), "Tented\nNot tented\nAs the pad style\n");
        EXPECT_FALSE(page.IsEnabled("Fast", "Greatest track length"));
        page.Set("Fast", "Track length limited", true);
        dialog.Press("OK");
        EXPECT_EQ(page.Focus(), "row 2, Least track length");
        page.Type("Fast", "Greatest track length", "50");
      },
      "OK");
  EXPECT_EQ(ui.Shown(), "error 7263: Fast\n");
  EXPECT_EQ(Class("Fast").Values().maxTrackLength.value, 50'000'000);
}

TEST_F(NetClasses, AnAnswerStaysWithItsRowUntilItsFieldChanges) {
  Run(
      [&](CShownDialog& dialog) {
        CShownPanel page = dialog.Show<CClassesPage>();
        page.Set("Fast", "Track length difference limited", true);
        page.Type("Power", "Name", "");
        for (int i = 0; i < 2; ++i) dialog.Press("Apply");  // asked once, and refused twice for the name
        page.Type(3, "Name", "Power");
        for (const char* type : {"Power", "Signal"}) {
          page.Type("Fast", "Type", type);
          dialog.Press("Apply");  // written, and known still
        }
        Do(page, "Fast|Track length difference|1; Fast|Track length difference|0");
        ui.Answer(EAnswer::Cancel);
        dialog.Press("Apply");
        EXPECT_EQ(page.Focus(), "row 2, Track length difference");
        page.Type("Fast", "Track length difference", "1");
        EXPECT_EQ(ui.Shown(), "ask 7230 -> OK\nerror 7067: 3\nerror 7067: 3\nask 7230 -> Cancel\n");

        page.Go("Power", "Name");
        WorkInForm<CClassForm>(page, "Edit", [&](CShownDialog& form) {
          form.Check("TrackLengthDiffEnabled", true);
          form.Fill("Name", "Fast");
          form.Press("OK");  // refused for the name
          form.Fill("Name", "Power");
          ui.Answer(EAnswer::Cancel);
          form.Press("OK");
          EXPECT_EQ(form.Focus(), "TrackLengthDiff");
          form.Press("OK");
        });
        WorkInForm<CClassForm>(page, "Add", [](CShownDialog& form) {
          form.Fill("Name", "Slow");
          form.Check("TrackLengthDiffEnabled", true);
          form.Press("OK");
        });
        EXPECT_EQ(ui.Shown(), "error 7067: 3\nask 7230 -> Cancel\nask 7230 -> OK\nask 7230 -> OK\n");
        dialog.Press("Apply");
        EXPECT_EQ(ui.Shown(), "");
        page.Go("Slow", "Name");
        WorkInForm<CClassForm>(page, "Edit", [](CShownDialog& form) {
          form.Fill("TrackLengthDiff", "1");
          form.Fill("TrackLengthDiff", "0");
          form.Press("OK");
        });
        EXPECT_EQ(ui.Shown(), "ask 7230 -> OK\n");
      },
      "Close");
}

TEST_F(NetClasses, AWriteThatFailsTakesBackRowsAndMerges) {
  Add("Last");
  CNet& net = *design.AddNet("N", &Class("Fast"));
  design.ResetUndoLevels();
  Run(
      [&](CShownDialog& dialog) {
        CShownPanel page = dialog.Show<CClassesPage>();
        WorkInForm<CClassForm>(page, "Add", [](CShownDialog& form) {
          form.Fill("Name", "New");
          form.Press("OK");
        });
        Do(page, "Default|Type|Power; Power|Name");
        page.Select({"Fast", "Power"});
        WorkInForm<CMergeStyles>(page, "Merge", [](CShownDialog& merge) { merge.Press("OK"); });
        Do(page, "Last|Name; Delete");
        design.GetDefaults()->Set(&SDefaultsFields::netClass, &Class("Last"));  // by another part of the program
        const CString before = StateOf(design);
        dialog.Press("OK");
        EXPECT_EQ(StateOf(design), before);
        EXPECT_EQ(net.GetNetClass(), &Class("Fast"));
        EXPECT_EQ(page.FindRow("Fast"), -1);
        EXPECT_EQ(page.FindRow("Last"), 3);
        EXPECT_EQ(page.Text("Last", 0), "X");
      },
      "OK");
  EXPECT_EQ(ui.Shown(), "error 7072: Last\n");
  EXPECT_EQ(net.GetNetClass(), &Class("Power"));
  EXPECT_FALSE(design.FindNetClass("Fast"));
  EXPECT_EQ(Class("Default").Values().type.value, ENetClassType::Power);
  EXPECT_TRUE(design.FindNetClass("New"));
}
}  // namespace
