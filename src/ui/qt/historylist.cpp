#include "ui/qt/historylist.h"

#include <QSignalBlocker>

#include "ui/qt/settingsmenu.h"
#include "ui/qt/text.h"

QString StepText(const CUndoJournal::SStep& step) {
  return step.id != 0 ? ToQt(TextOf(CTextId(step.id))) : SettingsCommandText(step.command);
}

CHistoryList::CHistoryList(QWidget* parent) : QListWidget(parent) {
  setAccessibleName(QtText(Text::History));
  setAccessibleDescription(QtText(Text::HistoryHint));
  setToolTip(QtText(Text::HistoryHint));
  // The arrow keys alone choose nothing: one may read the list without undoing half a day's work.
  connect(this, &QListWidget::itemActivated, this, [this] { JumpTo(static_cast<std::size_t>(currentRow())); });
  connect(this, &QListWidget::itemClicked, this, [this] { JumpTo(static_cast<std::size_t>(currentRow())); });
}

void CHistoryList::Show(CTechnology* technology) {
  m_technology = technology;
  const QSignalBlocker quiet(this);
  clear();
  if (!technology) return;
  technology->Journal().EndImplicitStep();
  const CUndoJournal& journal = technology->Journal();
  addItem(QtText(Text::AsOpened));
  for (std::size_t i = 0; i < journal.Steps().size(); ++i) {
    const QString text = StepText(journal.Steps()[i]);
    addItem(i < journal.DoneSteps() ? text : QtText(Text::StepUndone, {FromQt(text)}));
    if (i < journal.DoneSteps()) continue;
    QFont font = item(count() - 1)->font();
    font.setItalic(true);
    item(count() - 1)->setFont(font);
  }
  setCurrentRow(static_cast<int>(journal.DoneSteps()));
}

void CHistoryList::JumpTo(std::size_t done) {
  if (!m_technology) return;
  CUndoJournal& journal = m_technology->Journal();
  while (journal.DoneSteps() > done && journal.Undo()) continue;
  while (journal.DoneSteps() < done && journal.Redo()) continue;
  if (onJumped) onJumped();
}
