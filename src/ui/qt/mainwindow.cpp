#include "ui/qt/mainwindow.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>

#include "model/design/itemtext.h"
#include "model/services/apperror.h"
#include "model/services/application.h"
#include "ui/qt/commandtext.h"
#include "ui/qt/designview.h"
#include "ui/qt/historylist.h"
#include "ui/qt/layoutstore.h"
#include "ui/qt/manualview.h"
#include "ui/qt/recentfiles.h"
#include "ui/qt/settingsmenu.h"
#include "ui/qt/text.h"

namespace {
constexpr QSize kFirstSize(1200, 760);
constexpr int kMessageTime = 5000;  // milliseconds
}  // namespace

CMainWindow::CMainWindow(SDesktopFiles files)
    : m_manual(files.manual),
      m_pages(new QStackedWidget(this)),
      m_documents(new CDocuments(std::move(files), m_pages)),
      m_recent(new CRecentFilesMenu(this)),
      m_settings(new CSettingsMenu(this)),
      m_layers(new QStackedWidget(this)),
      m_history(new CHistoryList(this)) {
  setObjectName("MainWindow");
  setAcceptDrops(true);
  auto* const hint = new QLabel(QtText(Text::OpenHint), m_pages);
  hint->setAlignment(Qt::AlignCenter);
  m_pages->addWidget(hint);
  m_pages->addWidget(m_documents);
  setCentralWidget(m_pages);
  m_layers->addWidget(new QWidget(m_layers));
  AddDock(Text::Layers, "Layers", *m_layers);
  AddDock(Text::History, "History", *m_history);

  AddFileMenu();
  AddEditMenu();
  AddViewMenu();
  menuBar()->addMenu(m_settings);
  AddHelpMenu();
  AddStatusBar();

  connect(m_documents, &CDocuments::CurrentChanged, this, &CMainWindow::DocumentChanged);
  connect(m_documents, &CDocuments::FileUsed, this, [this](const CString& path) { m_recent->Note(path); });
  connect(m_documents, &CDocuments::Saved, this, [this](const CString& path) {
    Refresh();
    statusBar()->showMessage(QtText(Text::Saved, {path}), kMessageTime);
  });
  m_recent->onOpen = [this](const CString& path) { m_documents->Open(path); };
  m_history->onJumped = m_settings->onDone = [this] { DesignChanged(); };
  m_userInterface.onRedraw = [this](const CObject& design, const CBox* area) {
    if (CDocumentView* const view = m_documents->ViewOf(design)) view->Invalidate(area);
  };
  m_userInterface.onProgress = [this](const CString& what, std::uint64_t done, std::uint64_t total) {
    ShowProgress(what, done, total);
  };
  m_userInterface.onApplied = [this](const CDialog&) { DesignChanged(); };
  m_userInterface.onHelp = [this](const CDialog&) { ShowManual(); };
  RestoreLayout();
  DocumentChanged();
}

/// The views go while what they show is still there, and while this is the program's user interface.
CMainWindow::~CMainWindow() {
  m_documents->disconnect(this);
  delete m_pages;
}

void CMainWindow::Open(const CStringArray& paths) {
  for (const CString& path : paths) m_documents->Open(path);
}

// ---- Menus

QAction* CMainWindow::Add(QMenu& menu, CTextId text, const char* name, const QKeySequence& key,
                          std::function<void()> run) {
  QAction* const action = menu.addAction(QtText(text), this, std::move(run));
  action->setObjectName(name);
  action->setShortcut(key);
  return action;
}

void CMainWindow::AddFileMenu() {
  QMenu& file = *menuBar()->addMenu(QtText(Text::MenuFile));
  QMenu& fresh = *file.addMenu(QtText(Text::MenuNew));
  for (const CString& kind : TechnologyClassNames()) {
    QAction* const action = fresh.addAction(KindText(kind), this, [this, kind] { m_documents->New(kind); });
    action->setObjectName(ToQt("New" + kind));
    if (kind == CPcbDesign::GetThisClass()->name) action->setShortcut(QKeySequence::New);
  }
  Add(file, Text::MenuOpen, "Open", QKeySequence::Open, [this] { m_documents->ChooseAndOpen(); });
  file.addMenu(m_recent);
  Add(file, Text::MenuImportBoard, "ImportBoard", QKeySequence("Ctrl+I"), [this] { m_documents->ChooseAndImport(); });
  file.addSeparator();
  m_needDesign = {
      Add(file, Text::MenuSave, "Save", QKeySequence::Save, [this] { m_documents->Save(*m_documents->Current()); }),
      Add(file, Text::MenuSaveAs, "SaveAs", QKeySequence("Ctrl+Shift+S"),
          [this] { m_documents->SaveAs(*m_documents->Current()); }),
      Add(file, Text::MenuClose, "Close", QKeySequence("Ctrl+W"),
          [this] { m_documents->Close(*m_documents->Current()); })};
  file.addSeparator();
  Add(file, Text::MenuQuit, "Quit", QKeySequence("Ctrl+Q"), [this] { close(); });
}

void CMainWindow::AddEditMenu() {
  QMenu& edit = *menuBar()->addMenu(QtText(Text::MenuEdit));
  m_undo = Add(edit, Text::MenuUndo, "Undo", QKeySequence::Undo, [this] { Step(&CUndoJournal::Undo); });
  m_redo = Add(edit, Text::MenuRedo, "Redo", QKeySequence("Ctrl+Shift+Z"), [this] { Step(&CUndoJournal::Redo); });
}

void CMainWindow::AddViewMenu() {
  QMenu& menu = *menuBar()->addMenu(QtText(Text::MenuView));
  m_fit = Add(menu, Text::MenuShowEverything, "Fit", QKeySequence("Ctrl+0"),
              [this] { m_documents->Current()->View()->Fit(); });
  for (QDockWidget* const dock : findChildren<QDockWidget*>()) menu.addAction(dock->toggleViewAction());
  QMenu& themes = *menu.addMenu(QtText(Text::MenuTheme));
  auto* const choice = new QActionGroup(this);
  for (int i = 0; i < kThemes; ++i) {
    const auto theme = static_cast<ETheme>(i);
    QAction* const action = themes.addAction(ThemeText(theme), this, [theme] {
      ApplyTheme(theme);
      StoreTheme(theme);
    });
    action->setCheckable(true);
    action->setChecked(theme == StoredTheme());
    choice->addAction(action);
  }
}

void CMainWindow::AddHelpMenu() {
  QMenu& help = *menuBar()->addMenu(QtText(Text::MenuHelp));
  Add(help, Text::MenuManual, "Manual", QKeySequence::HelpContents, [this] { ShowManual(); });
  Add(help, Text::MenuAbout, "About", {}, [this] {
    const CString product = CApplication::GetProductNameWithVersion(3, 1);
    QMessageBox::about(this, QtText(Text::AboutTitle, {product}), QtText(Text::AboutText, {product}));
  });
}

void CMainWindow::AddStatusBar() {
  m_progress = new QProgressBar(this);
  m_progress->setAccessibleName(QtText(Text::Progress));
  m_progress->setMaximum(100);
  m_progress->hide();
  m_cursor = new QLabel(this);
  m_selection = new QLabel(this);
  m_selection->setTextFormat(Qt::PlainText);
  m_selection->setMinimumWidth(1);  // a long text is cut, and never widens the window
  statusBar()->addWidget(m_selection, 1);
  statusBar()->addPermanentWidget(m_progress);
  statusBar()->addPermanentWidget(m_cursor);
}

void CMainWindow::AddDock(CTextId title, const char* name, QWidget& content) {
  auto* const dock = new QDockWidget(QtText(title), this);
  dock->setObjectName(name);
  dock->setWidget(&content);
  addDockWidget(Qt::LeftDockWidgetArea, dock);
}

// ---- What changed

void CMainWindow::Step(bool (CUndoJournal::*step)()) {
  if ((m_documents->Current()->Document().Technology().Journal().*step)()) DesignChanged();
}

void CMainWindow::DesignChanged() {
  if (CDocumentView* const view = m_documents->Current()) view->Invalidate(nullptr);
  Refresh();
}

void CMainWindow::DocumentChanged() {
  CDocumentView* const view = m_documents->Current();
  m_pages->setCurrentIndex(view ? 1 : 0);
  m_cursor->clear();
  CLayerList* const layers = view ? view->Layers() : nullptr;
  if (layers && m_layers->indexOf(layers) < 0) m_layers->addWidget(layers);
  m_layers->setCurrentWidget(layers ? layers : m_layers->widget(0));
  if (view) {
    connect(view, &CDocumentView::CursorMoved, this, &CMainWindow::ShowCursor, Qt::UniqueConnection);
    connect(view, &CDocumentView::SelectionChanged, this, &CMainWindow::ShowSelection, Qt::UniqueConnection);
    connect(view, &CDocumentView::Changed, this, &CMainWindow::Refresh, Qt::UniqueConnection);
  }
  Refresh();
}

void CMainWindow::Refresh() {
  CDocumentView* const view = m_documents->Current();
  CDocument* const document = view ? &view->Document() : nullptr;
  m_settings->Show(document);
  m_history->Show(document ? &document->Technology() : nullptr);
  m_documents->RefreshTitles();
  ShowSelection();
  setWindowTitle(document ? QtText(Text::WindowTitle, {FromQt(document->Name())}) : QtText(Text::ProgramName));
  setWindowModified(document && document->IsModified());
  for (QAction* const action : m_needDesign) action->setEnabled(document != nullptr);
  m_fit->setEnabled(document && document->Drawing());

  const CUndoJournal* const journal = document ? &document->Technology().Journal() : nullptr;
  const auto name = [&](QAction& action, bool exists, CTextId plain, CTextId named, std::size_t step) {
    action.setEnabled(exists);
    action.setText(exists ? QtText(named, {FromQt(StepText(journal->Steps()[step]))}) : QtText(plain));
  };
  const std::size_t done = journal ? journal->DoneSteps() : 0;
  name(*m_undo, done > 0, Text::MenuUndo, Text::MenuUndoStep, done - 1);
  name(*m_redo, journal && done < journal->Steps().size(), Text::MenuRedo, Text::MenuRedoStep, done);
}

void CMainWindow::ShowProgress(const CString& what, std::uint64_t done, std::uint64_t total) {
  const bool isOver = done >= total;
  m_progress->setVisible(!isOver);
  if (isOver) return;
  const int percent = static_cast<int>(done * 100 / total);
  if (m_progress->value() == percent && !m_progress->format().isEmpty()) return;
  m_progress->setFormat(QtText(Text::ProgressPercent, {what, IntText(percent)}));
  m_progress->setValue(percent);
  m_progress->repaint();  // events wait until the work is done
}

void CMainWindow::ShowCursor(CPoint place) {
  CDocumentView* const view = m_documents->Current();
  if (!view || sender() != view) return;
  const CTechnology& technology = view->Document().Technology();
  const QString unit = ToQt(CUnits::Suffix(technology.GetUnits()->GetType()));
  m_cursor->setText(ToQt(technology.DsuToString(place.x, false) + ", " + technology.DsuToString(place.y, false) + " ") +
                    unit);
}

void CMainWindow::ShowSelection() {
  const CDocumentView* const view = m_documents->Current();
  const CDesign* const design = view && view->View() ? &view->View()->Design() : nullptr;
  const std::vector<CDesignItem*> items = design ? design->Selection().Items() : std::vector<CDesignItem*>();
  const auto count = static_cast<std::int64_t>(items.size());
  QString text;
  if (count == 1) text = ToQt(DescribeItem(*items.front())).simplified();
  if (count > 1) text = QtText(Text::ItemsSelected, {IntText(count)});
  m_selection->setText(text);
  m_selection->setToolTip(ToolTip(text));
}

void CMainWindow::ShowManual() {
  if (m_manual.empty()) return CAppError::ReportError(TextOf(Text::ManualNotFound));
  // Upon a dialog where one is open: it would bar the window from mouse and keys otherwise.
  (new CManualView(m_manual, m_userInterface.Parent()))->show();
}

// ---- The window

void CMainWindow::SaveLayout() {
  KeepLayout("Geometry", saveGeometry());
  KeepLayout("State", saveState());
  for (CDocumentView* const view : m_documents->Views()) view->SaveLayout();
}

/// What was kept and cannot be understood is as good as nothing. The frame has to fit on the screen too.
void CMainWindow::RestoreLayout() {
  if (!restoreGeometry(ReadLayout("Geometry"))) {
    const QRect room = screen()->availableGeometry();
    const int edge = style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    const int title = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    resize(kFirstSize.boundedTo(room.size() - QSize(2 * edge, title + 2 * edge)));
  }
  if (restoreState(ReadLayout("State"))) return;
  auto* const layers = findChild<QDockWidget*>("Layers");
  auto* const history = findChild<QDockWidget*>("History");
  resizeDocks({layers}, {200}, Qt::Horizontal);  // pixels
  resizeDocks({layers, history}, {3, 1}, Qt::Vertical);
}

void CMainWindow::closeEvent(QCloseEvent* event) {
  if (!m_documents->MayCloseAll()) return event->ignore();
  SaveLayout();
  event->accept();
}

void CMainWindow::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); }))
    event->acceptProposedAction();
}

void CMainWindow::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  CStringArray paths;
  for (const QUrl& url : event->mimeData()->urls())
    paths.push_back(FromQt(url.isLocalFile() ? url.toLocalFile() : url.toDisplayString()));
  // Whoever dropped them is not kept waiting by questions.
  QMetaObject::invokeMethod(this, [this, paths] { Open(paths); }, Qt::QueuedConnection);
}
