// Decimal commas. The core reads points alone; a person types what the keyboard of their country has.
#pragma once
#include <QLocale>
#include <QString>

/// A typed number with the locale's decimal comma made a point. A text that holds points already stays as it is: what
/// its commas mean cannot be known.
inline QString WithDecimalPoint(QString text, const QLocale& locale = QLocale()) {
  if (locale.decimalPoint() == QStringLiteral(",") && !text.contains(u'.')) text.replace(u',', u'.');
  return text;
}
