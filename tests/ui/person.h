// A person at the desktop: windows are met as they open and worked with by keys and clicks.
#pragma once
#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <functional>

#include "ui/qt/commandtext.h"
#include "ui/qt/gridtable.h"
#include "ui/qt/gridview.h"

inline QWidget* Front() { return QApplication::activeModalWidget(); }

/// Runs `work`, which opens a window and comes back when that has closed, and `script` on the window meanwhile. A
/// window that the script leaves open is a fault, and closed.
inline bool Meet(const std::function<void()>& work, const std::function<void(QDialog& window)>& script) {
  const QWidget* const before = Front();
  bool met = false;
  bool left = false;
  QTimer timer;
  timer.setInterval(1);
  QObject::connect(&timer, &QTimer::timeout, [&] {
    const QPointer<QDialog> window = qobject_cast<QDialog*>(Front());
    if (!window || window == before || !window->isActiveWindow()) return;
    timer.stop();
    met = true;
    script(*window);
    QCoreApplication::processEvents();
    left = window && window->isVisible();
    if (left) window->done(0);
  });
  timer.start();
  work();
  if (QWidget* const behind = Front()) {  // as a window manager does
    behind->activateWindow();
    left |= !QTest::qWaitForWindowActive(behind);
  }
  return met && !left;
}

template <class T>
T* Shown(QWidget& window, const std::function<bool(T&)>& wanted) {
  for (T* const one : window.findChildren<T*>())
    if (one->isVisible() && wanted(*one)) return one;
  return nullptr;
}

inline QAbstractButton* Button(QWidget& window, const QString& text) {
  return Shown<QAbstractButton>(window, [&](QAbstractButton& one) { return PlainText(one.text()) == text; });
}

inline void Click(QWidget& window, const QString& text) {
  QAbstractButton* const button = Button(window, text);
  QVERIFY2(button && button->isEnabled(), qPrintable(text));
  QTest::mouseClick(button, Qt::LeftButton);
}

template <class T>
T* Named(QWidget& window, const QString& accessibleName) {
  return Shown<T>(window, [&](T& one) { return one.accessibleName() == accessibleName; });
}

/// A key for whatever has the keyboard, as the window system would hand it over.
inline void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  QWidget* const taker = QApplication::focusWidget();
  QTest::keyClick(taker ? taker : Front(), key, modifiers);
}
inline void Keys(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }

inline CGridTable& Table(QWidget& window) {
  return Shown<CGridView>(window, [](CGridView&) { return true; })->Table();
}

/// The cell in the row that holds `row`, under the header `column`.
inline QModelIndex Cell(QWidget& window, const QString& row, const QString& column) {
  const QAbstractItemModel& model = *Table(window).model();
  for (int col = 0; col < model.columnCount(); ++col) {
    const QString header = model.headerData(col, Qt::Horizontal).toString();
    if (header != column && !header.startsWith(column + QStringLiteral(" ("))) continue;  // a unit may follow
    for (int line = 0; line < model.rowCount(); ++line)
      for (int other = 0; other < model.columnCount(); ++other)
        if (model.index(line, other).data().toString() == row) return model.index(line, col);
  }
  return {};
}
inline QString CellText(QWidget& window, const QString& row, const QString& column) {
  return Cell(window, row, column).data().toString();
}
inline void Go(QWidget& window, const QString& row, const QString& column) {
  const QModelIndex cell = Cell(window, row, column);
  QVERIFY2(cell.isValid(), qPrintable(row + u'/' + column));
  Table(window).scrollTo(cell);
  QTest::mouseClick(Table(window).viewport(), Qt::LeftButton, {}, Table(window).visualRect(cell).center());
}
inline void Type(QWidget& window, const QString& row, const QString& column, const QString& text) {
  Go(window, row, column);
  Key(Qt::Key_F2);
  if (auto* const edit = qobject_cast<QLineEdit*>(QApplication::focusWidget())) edit->selectAll();
  Keys(text);
  Key(Qt::Key_Return);
}

/// The text of the message that `work` shows, answered with the button of that text; of what Escape does without one.
inline QString MessageOf(const std::function<void()>& work, const QString& answer = {}) {
  QString text;
  const bool met = Meet(work, [&](QDialog& window) {
    if (auto* const box = qobject_cast<QMessageBox*>(&window)) text = box->text();
    if (answer.isEmpty()) {
      QTest::keyClick(&window, Qt::Key_Escape);
    } else {
      Click(window, answer);
    }
  });
  return met ? text : QStringLiteral("(no message)");
}

/// Walks what assistive programs see, and notes what can take the keyboard and is not called anything.
inline void FindNameless(QAccessibleInterface* node, QStringList& nameless, int& seen) {
  if (!node || !node->isValid() || node->state().invisible) return;
  ++seen;
  const bool takesKeyboard = node->state().focusable && !node->state().disabled;
  const bool isHeader = node->role() == QAccessible::ColumnHeader;
  if ((takesKeyboard || isHeader) && node->text(QAccessible::Name).trimmed().isEmpty()) {
    const QObject* const object = node->object();
    QAccessibleInterface* const around = object ? nullptr : node->parent();
    const QObject* const owner = around ? around->object() : object;
    nameless += QStringLiteral("%1 (role %2)").arg(owner ? owner->metaObject()->className() : "-").arg(node->role());
  }
  for (int child = 0; child < node->childCount(); ++child) FindNameless(node->child(child), nameless, seen);
}

/// Everything in the window that takes the keyboard, and every header, is called something; `least` things are there.
inline void VerifyNames(QWidget& window, int least) {
  QAccessible::setActive(true);
  QStringList nameless;
  int seen = 0;
  FindNameless(QAccessible::queryAccessibleInterface(&window), nameless, seen);
  QVERIFY2(nameless.isEmpty(), qPrintable(nameless.join(", ")));
  QVERIFY2(seen >= least, qPrintable(QString::number(seen)));
}
