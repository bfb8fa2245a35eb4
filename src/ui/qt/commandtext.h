// What buttons and menus call the commands of dialogs, and the letters by which the keyboard reaches them.
#pragma once
#include <QString>
#include <set>
#include <string_view>

#include "ui/qt/text.h"

/// The text of a command with "&" before its letter, and "..." where it asks for more. A command that the table does
/// not know is called by its own name, in words.
QString CommandText(std::string_view command);

/// What stands above a list or a grid of that name.
QString ControlText(std::string_view name);

/// Hands out letters so that none occurs twice in a window.
class CMnemonics {
 public:
  /// `text` with "&" before the letter that it got: its own, when that is free, otherwise the first free one of a word,
  /// then any. Without a free letter there is none.
  QString Assign(const QString& text);
  /// Makes the letter of such a text free again.
  void Release(const QString& text);

 private:
  std::set<QChar> m_taken;
};

/// The text without its letter and without "...", as accessible names and sentences want it.
QString PlainText(QString text);
