#include "ui/qt/reportwindow.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "model/services/files.h"
#include "ui/qt/commandtext.h"
#include "ui/qt/userinterface.h"

CReportWindow::CReportWindow(CQtUserInterface& ui, const CReportFile& report, QWidget* parent)
    : QDialog(parent), m_ui(ui), m_text(new QPlainTextEdit(this)) {
  const QString title = report.Title() ? PlainText(ToQt(TextOf(report.Title()))) : QtText(Text::Report);
  setWindowTitle(title);
  setSizeGripEnabled(true);
  for (const SReportLine& line : report.Lines()) m_text->appendPlainText(ToQt(line.text));
  m_text->setReadOnly(true);
  m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  m_text->setTabChangesFocus(true);
  m_text->setAccessibleName(title);
  m_text->moveCursor(QTextCursor::Start);
  auto* const buttons = new QDialogButtonBox(this);
  const auto add = [&](const char* command, QDialogButtonBox::ButtonRole role, auto&& run) {
    QPushButton* const button = buttons->addButton(CommandText(command), role);
    connect(button, &QPushButton::clicked, this, run);
    return button;
  };
  add("Copy", QDialogButtonBox::ActionRole, [this] { QGuiApplication::clipboard()->setText(m_text->toPlainText()); });
  add("Save", QDialogButtonBox::ActionRole, [this] { Save(); });
  add("Close", QDialogButtonBox::RejectRole, [this] { reject(); })->setDefault(true);
  auto* const column = new QVBoxLayout(this);
  column->addWidget(m_text, 1);
  column->addWidget(buttons);
  constexpr int kColumns = 100;
  constexpr int kLines = 24;
  resize(fontMetrics().averageCharWidth() * kColumns, fontMetrics().lineSpacing() * kLines);
}

void CReportWindow::Save() {
  const auto path =
      m_ui.ChooseFile({SFileChooser::EKind::Save, TextOf(Text::ReportFile), "txt", TextOf(Text::ReportFilter)});
  if (!path) return;
  const CResult<void> written = WriteTextFile(*path, FromQt(m_text->toPlainText() + u'\n'));
  if (!written) m_ui.ShowMessage({0, {}, written.Error()});
}
