#include "ui/qt/commandtext.h"

#include <algorithm>

namespace {
struct SNamedText {
  std::string_view name;
  CTextId text;
};
// Letters are unique among the commands that stand on one page.
constexpr SNamedText kCommandTexts[] = {
    {"Add", Text::ButtonAdd},
    {"AddException", Text::ButtonAddException},
    {"Apply", Text::ButtonApply},
    {"Calculator", Text::ButtonCalculator},
    {"Cancel", Text::ButtonCancel},
    {"Close", Text::ButtonClose},
    {"Copy", Text::ButtonCopy},
    {"CopyAll", Text::ButtonCopyAll},
    {"CopyCells", Text::ButtonFill},
    {"Delete", Text::ButtonDelete},
    {"DeleteException", Text::ButtonDeleteException},
    {"Directory", Text::ButtonFolder},
    {"Edit", Text::ButtonEdit},
    {"Export", Text::ButtonExport},
    {"FocusSelection", Text::ButtonGoToSelection},
    {"Import", Text::ButtonImport},
    {"Load", Text::ButtonLoad},
    {"Merge", Text::ButtonMerge},
    {"MoveDown", Text::ButtonMoveDown},
    {"MoveUp", Text::ButtonMoveUp},
    {"No", Text::ButtonNo},
    {"OK", Text::ButtonOk},
    {"Save", Text::ButtonSave},
    {"Sort", Text::ButtonSort},
    {"Swap", Text::ButtonSwap},
    {"Yes", Text::ButtonYes},
};

constexpr SNamedText kControlTexts[] = {
    {"file", Text::TechnologyFile}, {"grid", Text::Table}, {"target", Text::Design}, {"moves", Text::WhatHappens}};

/// "MergeStyles" is "Merge styles".
QString InWords(std::string_view command) {
  QString words;
  for (const QChar letter : ToQt(command)) {
    if (letter.isUpper() && !words.isEmpty()) words += u' ';
    words += words.isEmpty() ? letter : letter.toLower();
  }
  return words;
}

QString Find(std::span<const SNamedText> table, std::string_view name) {
  const auto at = std::find_if(table.begin(), table.end(), [&](const SNamedText& one) { return one.name == name; });
  return at == table.end() ? InWords(name) : QtText(at->text);
}
}  // namespace

QString CommandText(std::string_view command) { return Find(kCommandTexts, command); }

QString ControlText(std::string_view name) { return Find(kControlTexts, name); }

QString PlainText(QString text) {
  text.remove(u'&');
  if (text.endsWith(u"...")) text.chop(3);
  return text;
}

QString CMnemonics::Assign(const QString& text) {
  const qsizetype own = text.indexOf(u'&');
  QString plain = text;
  plain.remove(u'&');
  const auto take = [&](qsizetype at) {
    return at >= 0 && at < plain.size() && plain[at].isLetterOrNumber() && m_taken.insert(plain[at].toLower()).second;
  };
  if (take(own)) return text;
  for (const bool wordsAlone : {true, false}) {
    for (qsizetype at = 0; at < plain.size(); ++at) {
      if (wordsAlone && at > 0 && plain[at - 1] != u' ') continue;
      if (take(at)) return plain.insert(at, u'&');
    }
  }
  return plain;
}

void CMnemonics::Release(const QString& text) {
  const qsizetype at = text.indexOf(u'&') + 1;
  if (at > 0 && at < text.size()) m_taken.erase(text[at].toLower());
}
