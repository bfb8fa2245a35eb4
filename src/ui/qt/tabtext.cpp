#include "ui/qt/tabtext.h"

namespace {
constexpr QChar kQuote = u'"';

QString Quoted(const QString& cell) {
  const bool isPlain =
      !cell.contains(u'\t') && !cell.contains(u'\n') && !cell.contains(u'\r') && !cell.contains(kQuote);
  return isPlain ? cell : kQuote + QString(cell).replace(kQuote, QStringLiteral("\"\"")) + kQuote;
}

/// Reads the cell that begins at `at` and leaves `at` on what ended it, or at the end of the text.
QString ReadCell(const QString& text, qsizetype& at) {
  QString cell;
  if (at < text.size() && text[at] == kQuote) {
    for (++at; at < text.size(); ++at) {
      if (text[at] == kQuote && (++at == text.size() || text[at] != kQuote)) break;
      cell += text[at];
    }
  }
  for (; at < text.size() && text[at] != u'\t' && text[at] != u'\n'; ++at) {
    const bool isLineEnd = text[at] == u'\r' && (at + 1 == text.size() || text[at + 1] == u'\n');
    if (!isLineEnd) cell += text[at];
  }
  return cell;
}
}  // namespace

QString ToTabText(const CTabLines& lines) {
  QString text;
  for (const QStringList& line : lines) {
    for (qsizetype col = 0; col < line.size(); ++col) {
      if (col > 0) text += u'\t';
      text += Quoted(line[col]);
    }
    text += u'\n';
  }
  return text;
}

CTabLines FromTabText(const QString& text) {
  CTabLines lines(1);
  for (qsizetype at = 0;; ++at) {
    lines.back().push_back(ReadCell(text, at));
    if (at >= text.size()) break;
    if (text[at] == u'\n') {
      if (at + 1 == text.size()) break;
      lines.emplace_back();
    }
  }
  return lines;
}
