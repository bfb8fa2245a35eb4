#include "ui/qt/userinterface.h"

#include <QApplication>
#include <QCursor>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFontDatabase>
#include <QMenu>
#include <QProgressDialog>
#include <QUrl>

#include "model/services/report.h"
#include "ui/qt/dialogview.h"
#include "ui/qt/messages.h"
#include "ui/qt/reportwindow.h"

CQtUserInterface::CQtUserInterface(QWidget* mainWindow) : m_mainWindow(mainWindow) {}
CQtUserInterface::~CQtUserInterface() = default;

QWidget* CQtUserInterface::Parent() const {
  QWidget* const modal = QApplication::activeModalWidget();
  return modal && modal != m_progress.get() ? modal : m_mainWindow;
}

int CQtUserInterface::DoModal(CDialog& dialog) {
  if (!dialog.IsOpen()) return CDialog::kCancel;  // it ended while it was filled
  return CDialogView::Make(*this, dialog, Parent())->exec();
}

EAnswer CQtUserInterface::ShowMessage(const SMessage& message) {
  m_reason = message.buttons == EButtons::Ok ? ToQt(message.text) : QString();
  const auto* const dialog = dynamic_cast<const CDialogView*>(Parent());
  const CString speaker = dialog ? dialog->Speaker() : CString();
  if (speaker.empty()) return AskPerson(message, Parent());
  SMessage named = message;
  named.text = TextOf(Text::LabelAndValue, CStringArray{speaker, message.text});
  return AskPerson(named, Parent());
}

void CQtUserInterface::Beep(int) { QApplication::beep(); }

void CQtUserInterface::OpenFile(const CString& path) { QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(path))); }

void CQtUserInterface::ViewReport(const CReportFile& report) { CReportWindow(*this, report, Parent()).exec(); }

std::optional<CString> CQtUserInterface::ChooseFile(const SFileChooser& chooser) {
  QFileDialog dialog(Parent());
  switch (chooser.kind) {
    case SFileChooser::EKind::Open: dialog.setFileMode(QFileDialog::ExistingFile); break;
    case SFileChooser::EKind::Save:
      dialog.setAcceptMode(QFileDialog::AcceptSave);  // which asks before it overwrites
      dialog.setFileMode(QFileDialog::AnyFile);
      break;
    case SFileChooser::EKind::Folder:
      dialog.setFileMode(QFileDialog::Directory);
      dialog.setOption(QFileDialog::ShowDirsOnly);
      break;
  }
  if (!chooser.extension.empty()) dialog.setDefaultSuffix(ToQt(chooser.extension));
  if (!chooser.filter.empty())
    dialog.setNameFilters({ToQt(chooser.filter), QtText(Text::AllFiles) + QStringLiteral(" (*)")});
  const QFileInfo proposed(ToQt(chooser.proposed));
  if (chooser.kind == SFileChooser::EKind::Folder && proposed.isDir()) {
    dialog.setDirectory(proposed.filePath());
  } else if (!chooser.proposed.empty()) {
    if (proposed.isAbsolute()) dialog.setDirectory(proposed.path());
    dialog.selectFile(proposed.fileName());
  }
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return FromQt(dialog.selectedFiles().constFirst());
}

int CQtUserInterface::ShowMenu(const CStringArray& entries) {
  QMenu menu(Parent());
  menu.setAccessibleName(QtText(Text::Menu));
  for (const CString& entry : entries) menu.addAction(ToQt(entry))->setData(menu.actions().size() - 1);
  const QAction* const chosen = menu.exec(QCursor::pos());
  return chosen ? chosen->data().toInt() : -1;
}

void CQtUserInterface::Redraw(const CObject& design, const CBox* area) {
  if (onRedraw) onRedraw(design, area);
}

CStringArray CQtUserInterface::TrueTypeFonts() {
  CStringArray fonts;
  for (const QString& family : QFontDatabase::families())
    if (!QFontDatabase::isPrivateFamily(family) && QFontDatabase::isSmoothlyScalable(family))
      fonts.push_back(FromQt(family));
  return fonts;
}

void CQtUserInterface::Progress(const CString& what, std::uint64_t done, std::uint64_t total) {
  if (onProgress) onProgress(what, done, total);
  if (done >= total) {
    m_progress.reset();
    return;
  }
  constexpr int kSteps = 1000;
  if (!m_progress) {
    m_progress = std::make_unique<QProgressDialog>(ToQt(what), QString(), 0, kSteps, Parent());
    m_progress->setWindowModality(Qt::WindowModal);  // nobody changes what is being worked on
    m_progress->setMinimumDuration(500);
    m_progress->setAutoReset(false);
  }
  m_progress->setLabelText(ToQt(what));
  m_progress->setValue(static_cast<int>(static_cast<double>(done) / static_cast<double>(total) * kSteps));
}
