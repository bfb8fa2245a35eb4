// A small sheet with one of everything that automation can reach.
#pragma once
#include "model/controls/sheet.h"
#include "model/services/application.h"
#include "model/services/evt.h"
#include "model/services/report.h"

/// A plain dialog that notes how it ended.
class CSampleForm : public CDialog {
  TECHSHEET_CLASS(CSampleForm, CDialog)
  explicit CSampleForm(CString& log) : CDialog(7030), m_log(log) {
    AddField(name);
    AddField(fixed);
    AddField(style);
    AddField(plated);
    style.SetItems({{0, ""}, {16, "Signal"}, {32, "Power"}});
    style.SetValue(32);
    fixed.Enable(false);
    AddCommand("Edit", [this] { CSampleForm(m_log).DoModal(); });
  }
  CEdit name{"Name", 7205};
  CEdit fixed{"Fixed", 7205};
  CComboBox style{"Style", 7205, EEditor::Object};
  CCheckBox plated{"Plated", 7205};

 protected:
  void OnOk() override {
    (m_log += "OK ") += name.GetText() + ';';
    CDialog::OnOk();
  }
  void OnCancel() override {
    (m_log += "Cancel ") += name.GetText() + ';';
    CDialog::OnCancel();
  }

 private:
  CString& m_log;
};

class CSamplePage : public CPropertyPagePlus, private CGridOwner {
  TECHSHEET_CLASS(CSamplePage, CPropertyPagePlus)
  explicit CSamplePage(CString& log) : CPropertyPagePlus(7030), m_log(log) {
    AddGrid("grid", m_grid);
    AddList(m_list);
    m_grid.SetOwner(this);
    m_list.selectionChanged = [this] { m_list.description = "chosen"; };
    AddCommand("Edit", [this] { CSampleForm(m_log).DoModal(); });
    AddCommand("Merge", [] { ShowMessage(7260, {"a"}, EButtons::YesNo); });
    AddCommand("Directory",
               [] { UserInterface().ChooseFile({SFileChooser::EKind::Save, "tracks", "csv", "Text (*.csv)"}); });
    AddCommand("ContextMenu", [] { UserInterface().ShowMenu({"Copy", "Delete"}); });
    AddCommand("Export", [this] {
      CNoise::Beep(-1);
      CEvt::Send("First", 3, 4);
      UserInterface().OpenFile("tracks.csv");
      CReportFile report(nullptr, 7357);
      report.WriteLine("a line");
      report.View();
      const CBox box{1, 2, 3, 4};
      UserInterface().Redraw(*this, &box);
      UserInterface().Redraw(*this, nullptr);
    });
    AddCommand("Sort", [] {}, [] { return false; });
    AddCommand("Swap", [] {});
    ShowCommand("Swap", false);
  }
  void OnInitDialog() override {
    m_grid.SetColumns({{7205, {}}, {0, {}}, {0, {}}});
    for (int row = 1; row <= 3; ++row) {
      m_grid.InsertRow();
      m_grid.Cell(row, 0).editor = EEditor::Text;
      m_grid.Cell(row, 1).editor = EEditor::Choice;
      m_grid.SetItemText(row, 0, "Row " + IntText(row));
    }
    m_grid.Cell(2, 0).enabled = false;
    m_grid.SetRowHeight(3, 0);
  }
  bool SortByColumn(CEditGrid&, int col) override { return col == 0; }
  bool OnApply() override { return refusals-- <= 0; }

  int refusals = 0;  // of the next OKs and Applies

 private:
  CComboItems CellItems(int, int) const override { return {{7, "Seven"}, {8, "Eight"}}; }
  bool CellEntered(int row, int col, const SInput& input, const SComboItem* item, CString&) override {
    SCell& cell = m_grid.Cell(row, col);
    cell.text = item ? item->text : *std::get_if<CString>(&input.value);
    if (item) cell.value = item->value;
    return true;
  }
  void CellChanged(int, int) override { SetModified(); }

  CString& m_log;
  CEditGrid m_grid;
  SListBox m_list{"target", {{"One"}, {"Two"}}, {}, {}};
};

class CSampleSheet : public CPropertySheetPlus {
  TECHSHEET_CLASS(CSampleSheet, CPropertySheetPlus)
  explicit CSampleSheet(CString& log) : CPropertySheetPlus(7357), page(log) { AddPage(&page); }
  CSamplePage page;
};
