#include "ui/qt/commandtext.h"

#include <algorithm>

namespace {
struct SNamedText {
  std::string_view name;
  CTextId text;
};
// Letters are unique among the commands that stand on one page.
constexpr SNamedText kCommandTexts[] = {
    {"Add", 21150},
    {"AddException", 21151},
    {"Apply", 21152},
    {"Calculator", 21153},
    {"Cancel", 21154},
    {"Close", 21155},
    {"Copy", 21156},
    {"CopyAll", 21157},
    {"CopyCells", 21158},
    {"Delete", 21159},
    {"DeleteException", 21160},
    {"Directory", 21161},
    {"Edit", 21162},
    {"Export", 21163},
    {"FocusSelection", 21164},
    {"Import", 21165},
    {"Load", 21166},
    {"Merge", 21167},
    {"MoveDown", 21168},
    {"MoveUp", 21169},
    {"No", 21170},
    {"OK", 21171},
    {"Save", 21172},
    {"Sort", 21173},
    {"Swap", 21174},
    {"Yes", 21175},
};

constexpr SNamedText kControlTexts[] = {{"file", 21176}, {"grid", 21177}, {"target", 21178}, {"moves", 21179}};

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
