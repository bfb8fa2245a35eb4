// The port through which the program meets a person. Dialogs are models; whoever is installed here shows them, and may
// do to them only what a person can. Without an installed user interface every dialog is cancelled and every question
// takes its default answer.
#pragma once
#include <optional>

#include "model/base/catalogue.h"
#include "model/base/geometry.h"
#include "model/base/object.h"

class CDialog;
class CReportFile;

enum class EButtons { Ok, OkCancel, YesNo };
enum class EAnswer { Ok, Cancel, Yes, No };

struct SMessage {
  CTextId id;  // of the text; 0 for a ready text
  CStringArray args;
  CString text;
  EButtons buttons = EButtons::Ok;
  /// What is taken when nobody answers: OK for OK and Cancel, No for every Yes and No.
  EAnswer Default() const { return buttons == EButtons::YesNo ? EAnswer::No : EAnswer::Ok; }
};

struct SFileChooser {
  enum class EKind { Open, Save, Folder };
  EKind kind = EKind::Open;
  CString proposed;   // name or path
  CString extension;  // added by the chooser to a name without one; no dot
  CString filter;     // "Text (*.csv)"
};

class CUserInterface {
 public:
  virtual ~CUserInterface() = default;

  /// Runs the dialog until it closes; what it returns is the dialog's result (CDialog::kOk and so on).
  virtual int DoModal(CDialog& dialog) = 0;
  virtual EAnswer ShowMessage(const SMessage& message) = 0;
  virtual void Beep(int sound) = 0;
  /// Opens a file with the system's program for it.
  virtual void OpenFile(const CString& path) = 0;
  virtual void ViewReport(const CReportFile& report) = 0;
  /// The chosen path, or nothing when the person cancelled. Overwriting is confirmed by then.
  virtual std::optional<CString> ChooseFile(const SFileChooser& chooser) = 0;
  /// Index of the chosen entry, -1 for none.
  virtual int ShowMenu(const CStringArray& entries) = 0;
  /// The area of the design must be drawn again; null for all of it.
  virtual void Redraw(const CObject& design, const CBox* area) = 0;
  /// Names of the TrueType fonts that exist.
  virtual CStringArray TrueTypeFonts() = 0;
  /// Long work goes on: `done` of `total` steps; ends with done equal to total.
  virtual void Progress(const CString& what, std::uint64_t done, std::uint64_t total) = 0;
};

/// The installed user interface; never null.
CUserInterface& UserInterface();

/// Installs a user interface for as long as this object lives; the one before comes back afterwards.
class CUserInterfaceScope {
 public:
  explicit CUserInterfaceScope(CUserInterface& userInterface);
  ~CUserInterfaceScope();
  CUserInterfaceScope(const CUserInterfaceScope&) = delete;
  CUserInterfaceScope& operator=(const CUserInterfaceScope&) = delete;

 private:
  CUserInterface* m_before;
};

/// Shows a text of the catalogue and returns the answer.
EAnswer ShowMessage(CTextId id, CStringArray args = {}, EButtons buttons = EButtons::Ok);

/// The user interface of a program without one: cancels, takes defaults, shows nothing. A base for others.
class CNoUserInterface : public CUserInterface {
 public:
  int DoModal(CDialog& dialog) override;
  EAnswer ShowMessage(const SMessage& message) override { return message.Default(); }
  void Beep(int) override {}
  void OpenFile(const CString&) override {}
  void ViewReport(const CReportFile&) override {}
  std::optional<CString> ChooseFile(const SFileChooser&) override { return {}; }
  int ShowMenu(const CStringArray&) override { return -1; }
  void Redraw(const CObject&, const CBox*) override {}
  CStringArray TrueTypeFonts() override { return {}; }
  void Progress(const CString&, std::uint64_t, std::uint64_t) override {}
};
