// Texts between the core and Qt.
#pragma once
#include <QString>
#include <QTextDocument>
#include <string_view>

#include "model/base/catalogue.h"

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline CString FromQt(const QString& text) { return text.toStdString(); }
/// A text as a tooltip, which would take what looks like markup for it.
inline QString ToolTip(const QString& text) {
  return text.isEmpty() ? QString() : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}
/// A text of the catalogue.
inline QString QtText(CTextId id, const CStringArray& args = {}) { return ToQt(TextOf(id, args)); }
