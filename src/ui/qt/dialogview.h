// A dialog on the screen: what the panel holds, and the buttons that end it. The view does to the dialog what the
// person does, and nothing else; it closes when the dialog has closed.
#pragma once
#include <QDialog>
#include <QTimer>
#include <memory>

#include "model/controls/dialog.h"
#include "ui/qt/panelview.h"

class CQtUserInterface;
class QBoxLayout;

class CDialogView : public QDialog, protected CPanelObserver {
 public:
  /// A view that suits the dialog, which is open.
  static std::unique_ptr<CDialogView> Make(CQtUserInterface& ui, CDialog& dialog, QWidget* parent);
  ~CDialogView() override;

  CDialog& Dialog() const { return m_dialog; }
  /// Presses a command, once all that is being edited has been taken over. What was refused is shown where it stands.
  void Press(const char* command);
  /// Escape, and the window's own close: the same as Cancel.
  void reject() override;
  /// Whose message it is that is shown now: empty where that can be seen.
  virtual CString Speaker() const { return {}; }

 protected:
  CDialogView(CQtUserInterface& ui, CDialog& dialog, QWidget* parent);
  /// Makes what stands above the buttons.
  virtual void MakeBody(QBoxLayout& column);
  /// The panel that a person works in.
  virtual CPanelView& ActiveView() { return *m_view; }
  /// Shows everything as it is now.
  virtual void Refresh();
  virtual QString CancelText() const { return CommandText("Cancel"); }
  /// Whether the person agrees to close by `command`.
  virtual bool MayClose(const char* /*command*/) { return true; }
  /// What takes the keyboard above the buttons, as Tab goes through it.
  virtual std::vector<QWidget*> InTabOrder() { return m_view->InTabOrder(); }
  /// Leads Tab through what stands there now, then through the buttons.
  void OrderTabs();
  /// Whether the command has just been refused by a check.
  virtual bool IsRefused(std::string_view command) const { return command == "OK"; }
  virtual QSize UsualSize() { return sizeHint(); }
  virtual CString SizeKey() const { return {}; }

  CPanelView* MakePanelView(CPanel& panel, QWidget* parent);
  void PanelChanged(CPanel& panel) override;
  void setVisible(bool visible) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  CQtUserInterface& m_ui;
  CMnemonics m_letters;

 private:
  void Build();
  void MakeButtons(QBoxLayout& column);
  void Place();
  void KeepPlace() const;
  CDialog& m_dialog;
  CPanelView* m_view = nullptr;
  std::vector<std::pair<const char*, QPushButton*>> m_buttons;
  QTimer m_refresh;
  bool m_pressing = false;
};

/// `wanted` moved, and where need be made smaller, so that all of it lies within `screen`.
QRect FitWithin(QRect wanted, const QRect& screen);
