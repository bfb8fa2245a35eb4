#include "ui/qt/messages.h"

#include <QMessageBox>
#include <QPushButton>

#include "ui/qt/commandtext.h"

namespace {
struct SButton {
  EAnswer answer;
  const char* command;
  QMessageBox::ButtonRole role;
};

std::vector<SButton> ButtonsOf(EButtons buttons) {
  switch (buttons) {
    case EButtons::YesNo:
      return {{EAnswer::Yes, "Yes", QMessageBox::YesRole}, {EAnswer::No, "No", QMessageBox::NoRole}};
    case EButtons::OkCancel:
      return {{EAnswer::Ok, "OK", QMessageBox::AcceptRole}, {EAnswer::Cancel, "Cancel", QMessageBox::RejectRole}};
    default: return {{EAnswer::Ok, "OK", QMessageBox::AcceptRole}};
  }
}

/// A long list inside a text would make the window higher than the screen: the middle goes to the details.
void SetText(QMessageBox& box, QString text) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  if (text.endsWith(u'\n')) text.chop(1);  // of a list at the end, which may be empty
  QStringList lines = text.split(u'\n');
  constexpr qsizetype kLines = 16;
  if (lines.size() > kLines) {
    box.setDetailedText(text);
    const qsizetype left = lines.size() - kLines;
    lines.remove(kLines - 2, left + 1);  // the last line is the question
    lines.insert(kLines - 2, QtText(Text::AndMore, {IntText(left + 1)}));
    text = lines.join(u'\n');
  }
  box.setText(text);
}
}  // namespace

EAnswer AskPerson(const SMessage& message, QWidget* parent) {
  QMessageBox box(parent);
  box.setWindowTitle(QtText(Text::ProgramName));
  box.setIcon(message.buttons == EButtons::OkCancel ? QMessageBox::Question : QMessageBox::Warning);
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  SetText(box, ToQt(message.text));
  const std::vector<SButton> buttons = ButtonsOf(message.buttons);
  std::vector<QPushButton*> shown;
  for (const SButton& button : buttons) {
    shown.push_back(box.addButton(CommandText(button.command), button.role));
    if (button.answer == message.Default()) box.setDefaultButton(shown.back());
  }
  box.setEscapeButton(shown.back());
  box.exec();
  for (std::size_t at = 0; at < shown.size(); ++at)
    if (box.clickedButton() == shown[at]) return buttons[at].answer;
  return buttons.back().answer;
}
