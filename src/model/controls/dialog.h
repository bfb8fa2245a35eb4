// Dialogs. A dialog is a model of fields, commands and checks; the installed user interface shows it until it closes.
#pragma once
#include "model/controls/panel.h"
#include "model/services/userinterface.h"

class CDialog : public CPanel {
  TECHSHEET_CLASS(CDialog, CPanel)
  static constexpr int kOk = 1;
  static constexpr int kCancel = 2;

  /// `caption` is the text identifier of the title. The commands OK and Cancel exist from the start.
  explicit CDialog(CTextId caption);

  CTextId GetCaption() const { return m_caption; }
  CString GetTitle() const override { return TextOf(m_caption); }

  /// Shows the dialog until it closes: kOk, or kCancel.
  int DoModal();
  bool IsOpen() const { return m_open; }

  /// Presses a command of this dialog (of a sheet's active page too). "Close" is another name of "Cancel". False, and
  /// nothing done, with the reason in `why`, when there is none of that name, or it is hidden or disabled.
  virtual bool Press(std::string_view command, CString& why);
  /// The panel that a person works in: the active page of a sheet, otherwise the dialog itself.
  virtual CPanel& ActivePanel() { return *this; }
  /// Whether the last OK or Apply could not be carried out, so that the dialog is as open as before.
  virtual bool IsRefused() const { return m_open; }
  /// The help context that is pushed, -1 for none.
  int GetHelpContext() const { return m_help; }

 protected:
  virtual void OnInitDialog() {}
  virtual void OnDestroy() {}
  virtual void OnOk() { EndDialog(kOk); }
  virtual void OnCancel() { EndDialog(kCancel); }
  /// Runs a command of this dialog.
  virtual void OnCommand(const SCommand& command) { command.run(); }
  void EndDialog(int result);
  void PushHelpContext(int context) { m_help = context; }
  bool PressIn(CPanel& panel, std::string_view command, CString& why, bool& found);

 private:
  CTextId m_caption;
  int m_result = kCancel;
  int m_help = -1;
  bool m_open = false;
};
