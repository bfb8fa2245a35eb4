// techsheet: designs in windows.
#include <CLI/CLI.hpp>
#include <QApplication>
#include <QTimer>

#include "commands/commands.h"
#include "desktop/files.h"
#include "model/services/application.h"
#include "shared/adapters.h"
#include "ui/qt/mainwindow.h"

namespace {
enum EExit : int { kWrongArguments = 1, kNoDisplay = 2 };

/// Whether there is a screen, or something that Qt is told to take for one.
bool HasDisplay() {
  const char* const places[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
  return std::any_of(std::begin(places), std::end(places), [](const char* place) { return !qgetenv(place).isEmpty(); });
}
}  // namespace

int main(int argc, char** argv) {
  CLI::App arguments("Opens designs in a window, to view and change their technology.", "techsheet");
  CStringArray files;
  arguments.add_option("FILES", files, "designs, libraries, projects and boards to open")->type_name("");
  arguments.set_version_flag("--version", CApplication::GetProductNameWithVersion(3, 1));
  try {
    arguments.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return arguments.exit(error) == 0 ? 0 : kWrongArguments;
  }
  if (!HasDisplay()) {
    std::fprintf(stderr, "There is no display to open a window on. techsheet-cli shows designs as text.\n");
    return kNoDisplay;
  }
  QApplication application(argc, argv);
  QApplication::setApplicationName("techsheet");
  QApplication::setApplicationDisplayName("Techsheet");
  InstallAdapters({}, [](const CString& trouble) { std::fprintf(stderr, "%s\n", trouble.c_str()); });
  ApplyTheme(StoredTheme());
  InitSetOpInterface();
  Set_RegisterIgnoreDesignChange();

  CMainWindow window(DesktopFiles(QApplication::applicationDirPath().toStdString()));
  window.show();
  // Once the window stands: what cannot be opened is told over it.
  QTimer::singleShot(0, &window, [&] { window.Open(files); });
  return QApplication::exec();
}
