// The main window: the open designs as tabs, the menus, the history, and where the cursor is.
#pragma once
#include <QMainWindow>

#include "model/services/userinterface.h"
#include "ui/qt/documents.h"
#include "ui/qt/theme.h"
#include "ui/qt/userinterface.h"

class CHistoryList;
class CRecentFilesMenu;
class CSettingsMenu;
class QLabel;
class QProgressBar;
class QStackedWidget;

/// While it lives, it is the program's user interface.
class CMainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit CMainWindow(SDesktopFiles files);
  ~CMainWindow() override;

  /// Opens designs and imports boards, as far as they can be.
  void Open(const CStringArray& paths);
  CDocuments& Documents() { return *m_documents; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QAction* Add(QMenu& menu, CTextId text, const char* name, const QKeySequence& key, std::function<void()> run);
  void AddFileMenu();
  void AddEditMenu();
  void AddViewMenu();
  void AddHelpMenu();
  void AddStatusBar();
  void AddDock(CTextId title, const char* name, QWidget& content);
  /// Goes one step back or on.
  void Step(bool (CUndoJournal::*step)());
  /// Another design came to the front, or none.
  void DocumentChanged();
  /// The design in front was changed.
  void DesignChanged();
  /// Shows the menus, titles and steps as the current design is now.
  void Refresh();
  void ShowProgress(const CString& what, std::uint64_t done, std::uint64_t total);
  void ShowCursor(CPoint place);
  /// Says what is selected in the design in front.
  void ShowSelection();
  void ShowManual();
  void SaveLayout();
  void RestoreLayout();

  CQtUserInterface m_userInterface{this};
  CUserInterfaceScope m_installed{m_userInterface};
  CString m_manual;
  QStackedWidget* m_pages;  // a hint while no design is open, and the designs
  CDocuments* m_documents;
  CRecentFilesMenu* m_recent;
  CSettingsMenu* m_settings;
  QStackedWidget* m_layers;  // an empty page, and the lists of the designs
  CHistoryList* m_history;
  QAction* m_undo;
  QAction* m_redo;
  QAction* m_fit;
  std::vector<QAction*> m_needDesign;  // what makes sense with a design alone
  QLabel* m_selection;
  QLabel* m_cursor;
  QProgressBar* m_progress;
};
