// The headless user interface: answers requests, one JSON object a line, and drives dialogs as they ask
// (docs/automation.md).
//
// A request is answered when the next one is wanted: by then it has opened, closed or left what it will. The loop that
// reads requests nests with the dialogs. Every request gets exactly one response, and a refused one changes nothing.
#pragma once
#include <deque>
#include <iosfwd>

#include "automation/designs.h"
#include "automation/request.h"
#include "model/controls/sheet.h"
#include "model/services/evt.h"
#include "storage/jsonwriter.h"

/// Installed for as long as it lives.
class CAutomation final : public CNoUserInterface {
 public:
  /// Responses are flushed one by one. When `out` takes no more, the input counts as ended.
  CAutomation(std::istream& in, std::ostream& out);

  /// Answers requests to the end of the input, where open dialogs are cancelled, innermost first. Whether every
  /// response was ok.
  bool Run();
  /// What the script left undone, for people: dialogs that were open at its end, or a last OK or Apply that was
  /// refused; empty when nothing was.
  const CString& Unfinished() const { return m_unfinished; }

  int DoModal(CDialog& dialog) override;
  EAnswer ShowMessage(const SMessage& message) override;
  void Beep(int sound) override;
  void OpenFile(const CString& path) override;
  void ViewReport(const CReportFile& report) override;
  std::optional<CString> ChooseFile(const SFileChooser& chooser) override;
  int ShowMenu(const CStringArray& entries) override;
  void Redraw(const CObject& design, const CBox* area) override;
  CStringArray TrueTypeFonts() override { return m_fonts; }

 private:
  struct SResponse {
    CString error;                // empty: ok
    std::optional<bool> applied;  // of OK and Apply: whether it was not refused
    CString value, returned;      // JSON; empty: absent
  };

  // ---- The loop
  void Loop(CDialog* dialog);
  bool NextLine(CString& line);
  void Do(const CString& line);
  void Respond();
  void Fail(const CString& why);
  template <class F>
  void Note(std::vector<CString>& where, F&& write);
  template <class F>
  void Answer(F&& write);
  static std::span<const SOperation> Operations();
  static std::optional<EAnswer> AnswerOf(const CString& name);

  // ---- Operations outside dialogs and in them: empty, or why nothing was done
  CString New(const CRequest& request);
  CString Open(const CRequest& request);
  CString Save(const CRequest& request);
  CString Close(const CRequest& request);
  CString Design(const CRequest& request);
  CString Call(const CRequest& request);
  CString Step(const CRequest& request, bool (CUndoJournal::*step)());
  CString Undo(const CRequest& request);
  CString Redo(const CRequest& request);
  CString History(const CRequest& request);
  CString Setting(const CRequest& request);
  CString Editions(const CRequest& request);
  CString Select(const CRequest& request);
  CString QueueAnswers(const CRequest& request);
  CString QueueFiles(const CRequest& request);
  CString QueueEntries(const CRequest& request);
  CString Fonts(const CRequest& request);

  // ---- Operations of the top dialog
  CString State(const CRequest& request);
  CString Page(const CRequest& request);
  CString Cell(const CRequest& request);
  CString Items(const CRequest& request);
  CString Field(const CRequest& request);
  CString Focus(const CRequest& request);
  CString SelectRows(const CRequest& request);
  CString Sort(const CRequest& request);
  CString Press(const CRequest& request);

  CDialog& Top() { return *m_dialogs.back(); }
  CResult<CEditGrid*> FindGrid(const CRequest& request);

  std::istream& m_in;
  std::ostream& m_out;
  CDesigns m_designs;
  std::vector<CDialog*> m_dialogs;  // open, outermost first
  std::optional<SResponse> m_pending;
  bool m_allOk = true;
  CString m_unfinished;
  bool m_lastRefused = false;                            // OK or Apply
  std::int64_t m_count = 0;                              // of messages and events
  std::vector<CString> m_messages, m_events, m_redrawn;  // since the last response, as JSON
  std::deque<EAnswer> m_answers;
  std::deque<CString> m_files, m_entries;
  CStringArray m_fonts;
  CEvt::CSubscription m_subscription;
  CUserInterfaceScope m_installed;
};
