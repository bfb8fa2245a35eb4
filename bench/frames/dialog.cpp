#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "bench/frames/times.h"
#include "commands/commands.h"
#include "ui/qt/userinterface.h"

void MeasureDialog(int rows) {
  CPcbDesign design;
  design.Journal().SetRecording(false);
  for (int i = 0; i < rows; ++i) {
    CLayerType type;
    type.SetName("Layer type " + IntText(i));
    design.AddLayerType(&type);
  }
  design.Journal().SetRecording(true);
  std::printf("the Layer types page with %d rows\n", rows);
  CQtUserInterface user(nullptr);
  const CUserInterfaceScope installed(user);
  QElapsedTimer opening;
  for (int round = 0; round < 5; ++round) {
    QTimer::singleShot(0, [&] {
      QWidget& dialog = *QApplication::activeModalWidget();
      dialog.repaint();
      std::printf("opened and painted after %.1f ms\n", static_cast<double>(opening.nsecsElapsed()) / 1e6);
      auto& grid = *dialog.findChild<QAbstractItemView*>();
      if (round == 4) {
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
        const char letters[] = "type 77";
        STimes(7, [&](int i) {
          QTest::keyClick(QApplication::focusWidget(), letters[i]);
          QApplication::processEvents();
        }).Print("a letter of a filter");
      }
      dialog.close();
    });
    opening.start();
    ChangeLayerTypes(&design);
  }
}
