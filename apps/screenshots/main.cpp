// techsheet-screenshots FOLDER: makes the pictures that README and manual show, without a screen.
//
// Every picture is of the program itself, worked as a person would: menus are chosen, cells typed into, messages
// answered. A picture at 200 % needs a program of its own, since the scale is settled when a program starts.
#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include "commands/commands.h"
#include "desktop/files.h"
#include "model/services/registry.h"
#include "ui/qt/mainwindow.h"
#include "ui/qt/theme.h"

namespace {
constexpr const char* kScale = "QT_SCALE_FACTOR";
constexpr QSize kWindow(1180, 720);
constexpr QSize kDialog(1300, 540);
constexpr int kSettled = 300;  // milliseconds until everything has been painted

class CPictures {
 public:
  CPictures(QDir folder, CMainWindow& window) : m_folder(std::move(folder)), m_window(window) {}
  bool AreAllWritten() const { return m_areWritten; }

  void Take(QWidget& widget, const char* name) {
    QTest::qWait(kSettled);
    if (widget.grab().save(m_folder.filePath(name))) return;
    std::fprintf(stderr, "%s cannot be written.\n", qPrintable(m_folder.filePath(name)));
    m_areWritten = false;
  }

  /// Chooses a command that opens a dialog, and works in the dialog.
  template <class Work>
  void InDialog(const char* command, Work work) {
    Meet([work](QWidget& dialog) {
      if (dialog.findChild<QTabBar*>()) dialog.resize(kDialog);
      work(dialog);
    });
    m_window.findChild<QAction*>(command)->trigger();
  }

  /// Presses a button that opens a form, and takes its picture.
  void TakeForm(QWidget& dialog, const QString& button, const char* name) {
    for (auto* const one : dialog.findChildren<QPushButton*>()) {
      if (!one->isVisible() || one->accessibleName() != button) continue;
      Meet([this, name](QWidget& form) { Take(form, name); });
      one->click();
      return;
    }
    std::fprintf(stderr, "There is no button %s.\n", qPrintable(button));
    m_areWritten = false;
  }

 private:
  /// Works in the dialog that opens next and leaves it by Escape; what asks about unapplied edits on the way is
  /// answered too.
  template <class Work>
  static void Meet(Work work) {
    QTimer::singleShot(kSettled, [work] {
      const QPointer<QWidget> dialog = QApplication::activeModalWidget();
      if (!dialog) return;
      work(*dialog);
      while (dialog && dialog->isVisible()) {
        QWidget& top = *QApplication::activeModalWidget();
        QTimer::singleShot(kSettled, [] {
          if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->buttons().first()->click();
        });
        QTest::keyClick(&top, Qt::Key_Escape);
        QTest::qWait(2 * kSettled);
      }
    });
  }

  QDir m_folder;
  CMainWindow& m_window;
  bool m_areWritten = true;
};

/// Presses Return in the message that stands over everything, once it does.
void AnswerNext() {
  QTimer::singleShot(kSettled, [] {
    if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
      box->buttons().first()->click();
  });
}

/// The cell in the column "Name" that holds a name.
QModelIndex NameCell(const QAbstractItemModel& grid, const QString& name) {
  for (int column = 0; column < grid.columnCount(); ++column) {
    if (grid.headerData(column, Qt::Horizontal).toString() != "Name") continue;
    const QModelIndexList found = grid.match(grid.index(0, column), Qt::DisplayRole, name, 1, Qt::MatchExactly);
    if (!found.empty()) return found.front();
  }
  return {};
}

/// The table of the page with that title, made the active one.
QAbstractItemView& ShowPage(QWidget& dialog, const QString& title) {
  auto& tabs = *dialog.findChild<QTabBar*>();
  for (int tab = 0; tab < tabs.count(); ++tab)
    if (tabs.tabText(tab) == title) tabs.setCurrentIndex(tab);
  for (auto* const grid : dialog.findChildren<QAbstractItemView*>())
    if (grid->isVisible()) return *grid;
  std::abort();  // every page has a table
}

void Type(QAbstractItemView& grid, const QString& text) {
  QTest::keyClick(&grid, Qt::Key_F2);
  QWidget* const editor = QApplication::focusWidget();
  if (!editor || editor == &grid) return;
  QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(editor, text);
  QTest::keyClick(editor, Qt::Key_Return);
}
}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "Usage: techsheet-screenshots FOLDER\n");
    return 1;
  }
  QApplication application(argc, argv);
  const bool isLarge = qEnvironmentVariableIsSet(kScale);
  Set_RegisterIgnoreDesignChange();
  ApplyTheme(ETheme::Light);
  CMainWindow window(DesktopFiles({}));
  CPictures pictures(QDir(argv[1]), window);
  window.resize(kWindow);
  window.show();
  for (const char* const example : {"amplifier.tsscm", "four-layer.tspcb"})
    window.Open({CString(TECHSHEET_SOURCE_DIR "/examples/") + example});

  if (isLarge) {
    pictures.InDialog("ChangeLayers", [&](QWidget& dialog) {
      // The screen that is none is small: the table began narrower than its first column.
      dialog.findChild<QAbstractItemView*>()->horizontalScrollBar()->setValue(0);
      pictures.Take(dialog, "layers-200.png");
    });
    return pictures.AreAllWritten() ? 0 : 4;
  }
  pictures.Take(window, "main-window.png");
  pictures.InDialog("ChangeLayers", [&](QWidget& dialog) {
    auto& grid = *dialog.findChild<QAbstractItemView*>();
    grid.setCurrentIndex(NameCell(*grid.model(), "Ground"));
    pictures.Take(dialog, "layers-page.png");
    Type(grid, "Top");  // the name of another layer
    AnswerNext();
    QTest::keyClick(&dialog, Qt::Key_Y, Qt::AltModifier);  // Apply
    pictures.Take(dialog, "refused.png");
  });
  pictures.InDialog("ChangeLayerSpans", [&](QWidget& dialog) { pictures.Take(dialog, "layer-spans.png"); });
  pictures.InDialog("ChangeSizes", [&](QWidget& dialog) {
    QAbstractItemView& pads = ShowPage(dialog, "Pad styles");
    pads.setCurrentIndex(NameCell(*pads.model(), "Power jack slot"));
    pictures.Take(dialog, "pad-styles.png");
    pictures.TakeForm(dialog, "Edit", "pad-form.png");
    QAbstractItemView& tracks = ShowPage(dialog, "Track styles");
    tracks.selectAll();
    pictures.TakeForm(dialog, "Merge", "merge.png");
    ShowPage(dialog, "Text styles");
    pictures.Take(dialog, "text-styles.png");
  });
  pictures.InDialog("ChangeUnits", [&](QWidget& dialog) { pictures.Take(dialog, "units.png"); });
  ApplyTheme(ETheme::Dark);
  pictures.Take(window, "dark-theme.png");

  QProcessEnvironment scaled = QProcessEnvironment::systemEnvironment();
  scaled.insert(kScale, "2");
  QProcess large;
  large.setProcessEnvironment(scaled);
  large.setProcessChannelMode(QProcess::ForwardedChannels);
  large.start(application.applicationFilePath(), {argv[1]});
  const bool isDone = large.waitForFinished(60'000) && large.exitCode() == 0;
  return isDone && pictures.AreAllWritten() ? 0 : 4;
}
