// The program's port to a person at a screen: dialogs are shown by generic views, questions and messages as boxes,
// files are chosen in the toolkit's chooser.
#pragma once
#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "model/controls/dialog.h"

class QProgressDialog;
class QWidget;

class CQtUserInterface : public CUserInterface {
 public:
  /// `mainWindow` is what windows stand on; null for none.
  explicit CQtUserInterface(QWidget* mainWindow = nullptr);
  ~CQtUserInterface() override;
  void SetMainWindow(QWidget* mainWindow) { m_mainWindow = mainWindow; }

  /// The area (null: all) of a design must be drawn again.
  std::function<void(const CObject& design, const CBox* area)> onRedraw;
  /// Hears of long work, beside the bar that is shown when it takes a while.
  std::function<void(const CString& what, std::uint64_t done, std::uint64_t total)> onProgress;
  /// A dialog that stays open may have written to its design.
  std::function<void(const CDialog& dialog)> onApplied;
  /// A person wants help about the dialog.
  std::function<void(const CDialog& dialog)> onHelp;

  /// What a new window stands on: the dialog in front, or the main window.
  QWidget* Parent() const;
  /// The text of the last message, not question, that was shown since ForgetReason.
  const QString& Reason() const { return m_reason; }
  void ForgetReason() { m_reason.clear(); }

  int DoModal(CDialog& dialog) override;
  EAnswer ShowMessage(const SMessage& message) override;
  void Beep(int sound) override;
  void OpenFile(const CString& path) override;
  void ViewReport(const CReportFile& report) override;
  std::optional<CString> ChooseFile(const SFileChooser& chooser) override;
  int ShowMenu(const CStringArray& entries) override;
  void Redraw(const CObject& design, const CBox* area) override;
  CStringArray TrueTypeFonts() override;
  void Progress(const CString& what, std::uint64_t done, std::uint64_t total) override;

 private:
  QWidget* m_mainWindow;
  std::unique_ptr<QProgressDialog> m_progress;
  QString m_reason;
};
