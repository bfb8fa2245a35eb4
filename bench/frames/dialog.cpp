#include <QApplication>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <cstdlib>

#include "bench/frames/times.h"
#include "commands/commands.h"
#include "model/services/registry.h"
#include "ui/qt/userinterface.h"

namespace {
QAbstractItemView& TheTable(QWidget& dialog) {
  for (auto* const table : dialog.findChildren<QTableView*>())
    if (table->isVisible()) return *table;
  std::abort();  // the page has one
}
}  // namespace

void MeasureDialog(int rows) {
  CPcbDesign design;
  design.Journal().SetRecording(false);
  CTextStyle style;
  for (int i = 0; i < rows; ++i) {
    style.SetName("Text style " + IntText(i));
    design.AddTextStyle(&style);
  }
  design.Journal().SetRecording(true);
  std::printf("the Text styles page with %d rows\n", rows);
  CQtUserInterface user(nullptr);
  const CUserInterfaceScope installed(user);
  QElapsedTimer opening;
  for (int round = 0; round < 5; ++round) {
    QTimer::singleShot(0, [&] {
      QWidget& dialog = *QApplication::activeModalWidget();
      dialog.repaint();
      std::printf("opened and painted after %.1f ms\n", static_cast<double>(opening.nsecsElapsed()) / 1e6);
      QAbstractItemView& grid = TheTable(dialog);
      if (round == 4) {
        QTest::qWait(300);  // until it has the keyboard
        grid.setFocus();
        std::printf("%d rows are shown\n", grid.model()->rowCount());
        const auto key = [](Qt::Key pressed) {
          QTest::keyClick(QApplication::focusWidget(), pressed);
          QApplication::processEvents();
        };
        STimes(200, [&](int) { key(Qt::Key_Down); }).Print("an arrow key");
        STimes(50, [&](int) {
          key(Qt::Key_F2);
          key(Qt::Key_X);
          key(Qt::Key_Return);
        }).Print("a letter typed: three keys");
        QTest::keyClick(&grid, Qt::Key_F, Qt::ControlModifier);
        const char letters[] = "yle 777";
        STimes(7, [&](int i) {
          QTest::keyClick(QApplication::focusWidget(), letters[i]);
          QApplication::processEvents();
        }).Print("a letter of a filter");
      }
      dialog.close();
    });
    CAppRegistry("Settings\\Styles").SetValue("ActivePage", CString("CTextStylesPage"));
    opening.start();
    ChangeSizes(&design);
  }
}
