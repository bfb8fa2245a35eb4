// A person for tests: does to each dialog what the test wrote down for it, and notes all that was shown.
//
// Dialogs are met in the order in which the test expects them. One that nobody expects, one of another class, one left
// open, and an answer or a dialog that was waited for in vain fail the test.
#pragma once
#include <deque>
#include <functional>

#include "model/controls/sheet.h"
#include "model/services/evt.h"

/// A row by its number or by a text in it, a column by its number or by its header.
struct SGridName {
  SGridName(int at) : number(at) {}                   // NOLINT(google-explicit-constructor)
  SGridName(const char* text) : name(text) {}         // NOLINT(google-explicit-constructor)
  SGridName(CString text) : name(std::move(text)) {}  // NOLINT(google-explicit-constructor)
  int number = -1;
  CString name;
};

/// A page, or a dialog without pages, as a person sees it. What is not there, or refuses, fails the test.
class CShownPanel {
 public:
  CShownPanel(CDialog& dialog, CPanel& panel, const char* grid) : m_dialog(dialog), m_panel(panel), m_gridName(grid) {}

  /// The first present row with that text in its leftmost such column; -1 without one, which is no fault by itself.
  int FindRow(const CString& text) const;
  /// Types a text into a cell, or chooses it in a combo.
  void Type(const SGridName& row, const SGridName& column, const CString& text);
  /// Gives a cell a value: a check mark, an enumerated number.
  void Set(const SGridName& row, const SGridName& column, const CValue& value);
  /// Whether a cell does not take that text.
  bool Refuses(const SGridName& row, const SGridName& column, const CString& text);
  CString Text(const SGridName& row, const SGridName& column) const;
  bool IsEnabled(const SGridName& row, const SGridName& column) const;
  /// The texts that the combo of a cell offers, one a line.
  CString Choices(const SGridName& row, const SGridName& column) const;
  /// All present rows, one a line, cells between bars.
  CString Rows() const;
  /// What is wrong in the cells, one a line: "row 1, Name: why".
  CString Problems() const;

  void Go(const SGridName& row, const SGridName& column);
  void Select(const std::vector<SGridName>& rows);
  void Sort(const SGridName& column);
  /// Where the focus is: "row 1, Name", or the name of a field.
  CString Focus() const;

  void Fill(const char* field, const CString& text);
  void Check(const char* field, bool checked);
  CString FieldText(const char* field) const;
  bool IsVisible(const char* field) const;
  /// What the only list shows, one entry a line.
  CString ListText() const;

  void Press(const char* command);
  bool CanPress(const char* command) const;

 private:
  CEditGrid& Grid() const;
  int RowOf(const SGridName& row) const;
  int ColumnOf(const SGridName& column) const;
  void Enter(const SGridName& row, const SGridName& column, const SInput& input);
  void Enter(const char* field, const SInput& input);

  CDialog& m_dialog;
  CPanel& m_panel;
  const char* m_gridName;
};

class CShownDialog : public CShownPanel {
 public:
  explicit CShownDialog(CDialog& dialog) : CShownPanel(dialog, dialog, "grid"), m_dialog(dialog) {}

  /// The page of that class, made active; with the name of its grid, where it has several.
  template <class Page>
  CShownPanel Show(const char* grid = "grid") {
    return Show(Page::GetThisClass(), grid);
  }
  CString Caption() const { return m_dialog.GetTitle(); }
  CString ActivePage() const { return m_dialog.ActivePanel().GetRuntimeClass()->name; }
  /// The classes of all pages, one a line.
  CString Pages() const;
  bool IsOpen() const { return m_dialog.IsOpen(); }

 private:
  CShownPanel Show(const CRuntimeClass* page, const char* grid);
  CDialog& m_dialog;
};

/// Installed for as long as it lives.
class CScriptedUser final : public CNoUserInterface {
 public:
  using CScript = std::function<void(CShownDialog& dialog)>;
  CScriptedUser();
  ~CScriptedUser() override;

  /// What to do when the next dialog is shown. Dialogs within dialogs come in the order in which they open.
  template <class Dialog>
  void WhenShown(CScript script) {
    m_scripts.push_back({Dialog::GetThisClass(), std::move(script)});
  }
  /// Answers for the next questions, paths for the next choosers; then defaults are taken.
  void Answer(EAnswer answer) { m_answers.push_back(answer); }
  void Choose(const CString& path) { m_files.push_back(path); }
  CStringArray fonts;

  /// Everything shown since the last call, one a line, in order: "error 7076: Signal", "ask 7531: Top -> Yes",
  /// "beep -1", "event LayerAdded Glue", "file tracks.csv", "report 7378: a line".
  CString Shown();
  /// How often something was drawn again since the last call.
  int Redrawn();

  int DoModal(CDialog& dialog) override;
  EAnswer ShowMessage(const SMessage& message) override;
  void Beep(int sound) override;
  void OpenFile(const CString& path) override;
  void ViewReport(const CReportFile& report) override;
  std::optional<CString> ChooseFile(const SFileChooser& chooser) override;
  void Redraw(const CObject& design, const CBox* area) override;
  CStringArray TrueTypeFonts() override { return fonts; }

 private:
  struct SExpected {
    const CRuntimeClass* dialog;
    CScript script;
  };
  void Note(const CString& line) { (m_shown += line) += '\n'; }

  std::deque<SExpected> m_scripts;
  std::deque<EAnswer> m_answers;
  std::deque<CString> m_files;
  CString m_shown;
  int m_redrawn = 0;
  CEvt::CSubscription m_events;
  CUserInterfaceScope m_installed;
};
