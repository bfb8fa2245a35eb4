#include "ui/qt/documents.h"

#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QToolButton>
#include <algorithm>
#include <set>

#include "model/services/apperror.h"
#include "model/services/report.h"
#include "model/services/userinterface.h"
#include "ui/qt/commandtext.h"
#include "ui/qt/text.h"

namespace {
constexpr const char* kBoardExtension = ".kicad_pcb";

struct SButton {
  CTextId text;
  QMessageBox::ButtonRole role;
};
/// Asks with buttons of one's own, and answers with the place of the one that was pressed. The last one is what Escape
/// and the window's close mean, the one at `byDefault` what Return does.
int Ask(QWidget* parent, const QString& question, const QString& more, std::initializer_list<SButton> buttons,
        std::size_t byDefault) {
  QMessageBox box(QMessageBox::Warning, QtText(Text::ProgramName), question, QMessageBox::NoButton, parent);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(more);
  std::vector<QPushButton*> shown;
  for (const SButton& button : buttons) shown.push_back(box.addButton(QtText(button.text), button.role));
  box.setDefaultButton(shown[byDefault]);
  box.setEscapeButton(shown.back());
  box.exec();
  const auto at = std::find(shown.begin(), shown.end(), box.clickedButton());
  return static_cast<int>((at == shown.end() ? shown.end() - 1 : at) - shown.begin());
}

/// "Designs (*.tspcb *.tsscm ...)"
CString DesignFilter() {
  CString patterns;
  std::set<CString> seen;  // kinds of design share technology files
  for (const CString& name : TechnologyClassNames()) {
    const std::unique_ptr<CTechnology> one = MakeTechnology(name, EContent::Empty);
    for (const CString& extension : {CDesign::GetFileExtension(one->GetRuntimeClass()),
                                     CDesign::GetTechnologyFileExtension(one->GetRuntimeClass())})
      if (seen.insert(extension).second) patterns += (patterns.empty() ? "*." : " *.") + extension;
  }
  return TextOf(Text::DesignFilter, std::vector{patterns});
}

/// Where a file that a project lists is.
CString ListedPath(const CDocument& project, const CString& file) {
  return FromQt(QDir::cleanPath(QFileInfo(ToQt(project.Path())).dir().absoluteFilePath(ToQt(file))));
}

CString AbsolutePath(const CString& path) { return FromQt(QFileInfo(ToQt(path)).absoluteFilePath()); }
}  // namespace

CDocuments::CDocuments(SDesktopFiles files, QWidget* parent) : QTabWidget(parent), m_files(std::move(files)) {
  setDocumentMode(true);
  setMovable(true);
  setTabsClosable(true);
  setElideMode(Qt::ElideMiddle);
  setAccessibleName(QtText(Text::Designs));
  tabBar()->setAccessibleName(QtText(Text::Designs));
  connect(this, &QTabWidget::currentChanged, this, &CDocuments::CurrentChanged);
  connect(this, &QTabWidget::tabCloseRequested, this,
          [this](int index) { Close(*static_cast<CDocumentView*>(widget(index))); });
}

CDocumentView* CDocuments::Current() const { return static_cast<CDocumentView*>(currentWidget()); }

std::vector<CDocumentView*> CDocuments::Views() const {
  std::vector<CDocumentView*> views;
  for (int i = 0; i < count(); ++i) views.push_back(static_cast<CDocumentView*>(widget(i)));
  return views;
}

CDocumentView* CDocuments::ViewOf(const CObject& design) const {
  for (CDocumentView* const view : Views())
    if (&view->Document().Technology() == &design) return view;
  return nullptr;
}

CDocumentView* CDocuments::ViewOfFile(const CString& path) const {
  for (CDocumentView* const view : Views())
    if (IsSameFile(view->Document().Path(), path)) return view;
  return nullptr;
}

CDocumentView& CDocuments::Add(std::unique_ptr<CDocument> document) {
  auto* const view = new CDocumentView(std::move(document), this);
  addTab(view, view->Document().Name());
  setCurrentWidget(view);
  RefreshTitles();
  return *view;
}

void CDocuments::RefreshTitles() {
  for (CDocumentView* const view : Views()) {
    CDocument& document = view->Document();
    const int index = indexOf(view);
    setTabText(index, document.Name().replace("&", "&&") + (document.IsModified() ? "*" : ""));
    setTabToolTip(index, ToolTip(document.Path().empty() ? document.Name() : ToQt(document.Path())));
    for (const QTabBar::ButtonPosition side : {QTabBar::LeftSide, QTabBar::RightSide})
      if (QWidget* const button = tabBar()->tabButton(index, side))
        button->setAccessibleName(QtText(Text::CloseTab, {FromQt(document.Name())}));
  }
}

// ---- New and open

void CDocuments::New(std::string_view className) {
  const CString name =
      TextOf(Text::UntitledName, std::vector{FromQt(PlainText(KindText(className))), IntText(++m_untitled)});
  Add(std::make_unique<CDocument>(MakeTechnology(className, EContent::DefaultTechnology), CString(), std::nullopt,
                                  ToQt(name)));
}

void CDocuments::Open(const CString& given) {
  const CString path = AbsolutePath(given);
  if (CDocumentView* const view = ViewOfFile(path)) return setCurrentWidget(view);
  if (path.ends_with(kBoardExtension)) return Import(path);
  CResult<SDesktopFiles::SOpened> opened = m_files.read(path);
  if (!opened) return CAppError::ReportError(opened.Error());
  CDocumentView& view = Add(std::make_unique<CDocument>(std::move(opened->technology), path, opened->state, QString()));
  emit FileUsed(path);
  JoinProject(view.Document());
  OpenDesignsOf(view);
}

void CDocuments::OpenDesignsOf(CDocumentView& view) {
  CDocument& document = view.Document();
  CProject* const project = DynamicDowncast<CProject>(static_cast<CObject*>(&document.Technology()));
  if (!project) return;
  CString failed;
  for (const CString& file : project->designFiles) {
    const CString path = ListedPath(document, file);
    std::unique_ptr<CDocument> read;
    CDocumentView* const open = ViewOfFile(path);
    if (!open) {
      CResult<SDesktopFiles::SOpened> opened = m_files.read(path);
      if (!opened) {
        failed += "\n" + opened.Error();
        continue;
      }
      read = std::make_unique<CDocument>(std::move(opened->technology), path, opened->state, QString());
    }
    CDesign* const design = (open ? open->Document() : *read).Design();
    if (!design || design->IsKindOf(CProject::GetThisClass())) {
      failed += "\n" + TextOf(Text::NotADesign, std::vector{path});
      continue;
    }
    if (read) Add(std::move(read));
    if (!design->GetProject()) project->AddDesign(design, file);
  }
  setCurrentWidget(&view);
  if (!failed.empty()) CAppError::ReportError(Text::ProjectDesignsNotOpened, FromQt(document.Name()), failed);
}

void CDocuments::JoinProject(CDocument& document) {
  CDesign* const design = document.Design();
  if (!design || design->IsKindOf(CProject::GetThisClass())) return;
  for (CDocumentView* const view : Views()) {
    CProject* const project = DynamicDowncast<CProject>(static_cast<CObject*>(&view->Document().Technology()));
    if (!project || design->GetProject()) continue;
    for (const CString& file : project->designFiles)
      if (IsSameFile(ListedPath(view->Document(), file), document.Path())) project->AddDesign(design, file);
  }
}

void CDocuments::ChooseAndOpen() {
  if (const auto path = UserInterface().ChooseFile({SFileChooser::EKind::Open, {}, {}, DesignFilter()})) Open(*path);
}

void CDocuments::ChooseAndImport() {
  if (const auto path = UserInterface().ChooseFile({SFileChooser::EKind::Open, {}, {}, TextOf(Text::BoardFilter)}))
    Import(*path);
}

/// The design of a board has no file yet: it is modified from the start, and saved under a name beside the board.
void CDocuments::Import(const CString& given) {
  const CString path = AbsolutePath(given);
  CResult<SDesktopFiles::SImported> board = m_files.importBoard(path);
  if (!board) return CAppError::ReportError(board.Error());
  const QFileInfo file(ToQt(path));
  board->technology->Journal().MarkModified();
  CTechnology& design = *board->technology;
  Add(std::make_unique<CDocument>(std::move(board->technology), CString(), std::nullopt,
                                  file.absolutePath() + "/" + file.completeBaseName()));
  emit FileUsed(path);
  CReportFile report(&design, Text::ImportOfBoard);
  report.Open();
  report.Write(Text::ImportOf, FromQt(file.fileName()));
  for (const CString& line : board->summary) report.WriteLine(line);
  report.Close();
  report.View();
}

// ---- Save

bool CDocuments::Save(CDocumentView& view) {
  const CString path = view.Document().Path();
  if (path.empty()) return SaveAs(view);
  ESave save = MayWrite(view, path);
  if (save == ESave::Go) save = Write(view, path);
  return save == ESave::OtherName ? SaveAs(view) : save == ESave::Go;
}

bool CDocuments::SaveAs(CDocumentView& view) {
  CDocument& document = view.Document();
  const CString extension = document.Extension();
  const CString kind = FromQt(PlainText(KindText(document.Technology().GetRuntimeClass()->name)));
  for (CString proposed = document.ProposedPath();;) {
    // The chooser has asked about a file that is there already, though not whether it was changed since it was read.
    const auto chosen = UserInterface().ChooseFile(
        {SFileChooser::EKind::Save, proposed, extension, TextOf(Text::FileFilter, std::vector{kind, extension})});
    if (!chosen) return false;
    const CString path = AbsolutePath(*chosen);
    CDocumentView* const other = ViewOfFile(path);
    if (other && other != &view) {
      CAppError::ReportError(Text::OpenInOtherTab, path);
    } else {
      ESave save = other ? MayWrite(view, path) : ESave::Go;
      if (save == ESave::Go) save = Write(view, path);
      if (save != ESave::OtherName) return save == ESave::Go;
    }
    proposed = path;
  }
}

CDocuments::ESave CDocuments::MayWrite(CDocumentView& view, const CString& path) {
  const CResult<bool> changed = view.Document().HasChangedOnDisk(m_files, path);
  if (changed && !*changed) return ESave::Go;
  const CString name = FromQt(QFileInfo(ToQt(path)).fileName());
  enum EAnswers { kOverwrite, kOtherName, kReload, kCancel };
  switch (Ask(this, QtText(Text::OverwriteOthersChanges, {name}),
              changed ? QtText(Text::ReloadGivesUp) : QtText(Text::OthersChangesUnknown, {changed.Error()}),
              {{Text::ButtonOverwrite, QMessageBox::DestructiveRole},
               {Text::MenuSaveAs, QMessageBox::ActionRole},
               {Text::ButtonReload, QMessageBox::DestructiveRole},
               {Text::ButtonCancel, QMessageBox::RejectRole}},
              kCancel)) {
    case kOverwrite: return ESave::Go;
    case kOtherName: return ESave::OtherName;
    case kReload: return Reload(view), ESave::Done;
    default: return ESave::Done;
  }
}

CDocuments::ESave CDocuments::Write(CDocumentView& view, const CString& path) {
  if (const CResult<void> written = view.Document().Write(m_files, path); !written) {
    const int answer =
        Ask(this, ToQt(written.Error()), QtText(Text::SaveElsewhere),
            {{Text::MenuSaveAs, QMessageBox::AcceptRole}, {Text::ButtonCancel, QMessageBox::RejectRole}}, 0);
    return answer == 0 ? ESave::OtherName : ESave::Done;
  }
  RefreshTitles();
  emit FileUsed(path);
  emit Saved(path);
  return ESave::Go;
}

void CDocuments::Reload(CDocumentView& view) {
  const CString path = view.Document().Path();
  CResult<SDesktopFiles::SOpened> opened = m_files.read(path);
  if (!opened) return CAppError::ReportError(opened.Error());
  auto document = std::make_unique<CDocument>(std::move(opened->technology), path, opened->state, QString());
  view.SaveLayout();
  const int place = indexOf(&view);
  CDocumentView& fresh = Add(std::move(document));
  tabBar()->moveTab(indexOf(&fresh), place);
  removeTab(indexOf(&view));
  delete &view;
  JoinProject(fresh.Document());
  OpenDesignsOf(fresh);
}

// ---- Close

bool CDocuments::MayClose(CDocumentView& view) {
  const CDocument& document = view.Document();
  if (!document.DiffersFromFile()) return true;
  setCurrentWidget(&view);
  const CTextId question = document.IsModified() ? Text::SaveBeforeClose : Text::SaveViewBeforeClose;
  enum EAnswers { kSave, kDiscard };
  switch (Ask(this, QtText(question, {FromQt(document.Name())}), QtText(Text::UnsavedIsLost),
              {{Text::ButtonSaveChanges, QMessageBox::AcceptRole},
               {Text::ButtonDiscard, QMessageBox::DestructiveRole},
               {Text::ButtonCancel, QMessageBox::RejectRole}},
              kSave)) {
    case kSave: return Save(view);
    case kDiscard: return true;
    default: return false;
  }
}

bool CDocuments::Close(CDocumentView& view) {
  if (!MayClose(view)) return false;
  view.SaveLayout();
  removeTab(indexOf(&view));
  delete &view;
  return true;
}

bool CDocuments::MayCloseAll() {
  return std::ranges::all_of(Views(), [this](CDocumentView* view) { return MayClose(*view); });
}
