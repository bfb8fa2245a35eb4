// techsheet: designs in windows.
#include <CLI/CLI.hpp>
#include <QApplication>
#include <QTimer>
#include <new>
#include <sstream>

#include "commands/commands.h"
#include "desktop/files.h"
#include "model/services/apperror.h"
#include "model/services/application.h"
#include "shared/adapters.h"
#include "shared/console.h"
#include "shared/editions.h"
#include "ui/qt/mainwindow.h"

namespace {
enum EExit : int { kWrongArguments = 1, kNoDisplay = 2 };

/// Whether there is a screen, or something that Qt is told to take for one.
bool HasDisplay() {
  const char* const places[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
  return std::any_of(std::begin(places), std::end(places), [](const char* place) { return !qgetenv(place).isEmpty(); });
}

/// Work for which memory runs out ends and is told; the program goes on.
class CWindowApplication final : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
      CAppError::ReportError(Text::MemoryRanOut);
      return false;
    }
  }
};

/// Trouble with the settings, in a terminal and, once it stands, in the window.
void TellTrouble(const CString& trouble) {
  TellOnStandardError(trouble);
  QTimer::singleShot(0, qApp, [trouble] { CAppError::ReportError(trouble); });
}
}  // namespace

int main(int argc, char** argv) {
  IgnoreSignalsOfWriting();
  CLI::App arguments("Opens designs in a window, to view and change their technology.", "techsheet");
  CStringArray files;
  arguments.add_option("FILES", files, "designs, libraries, projects and boards to open")->type_name("");
  std::optional<CString> edition;
  arguments.add_option("--edition", edition, "the editions that hold; those of the settings unless given, else Pellam")
      ->type_name("NAME[,NAME...]");
  arguments.set_version_flag("-V,--version", CApplication::GetProductNameWithVersion(3, 1));
  try {
    arguments.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    std::ostringstream text, reason;
    const int status = arguments.exit(error, text, reason);
    std::fputs(text.str().c_str(), stdout);  // the help or the version
    TellOnStandardError(reason.str());
    return status == 0 ? 0 : kWrongArguments;
  }
  if (!HasDisplay()) {
    std::fprintf(stderr, "There is no display to open a window on. techsheet-cli shows designs as text.\n");
    return kNoDisplay;
  }
  const CWindowApplication application(argc, argv);
  QApplication::setApplicationName("techsheet");
  QApplication::setApplicationDisplayName("Techsheet");
  InstallAdapters({}, TellTrouble);
  if (const CResult<void> chosen = ChooseEditions(edition, TellTrouble); !chosen) {
    TellOnStandardError(chosen.Error());
    return kWrongArguments;
  }
  ApplyTheme(StoredTheme());
  InitSetOpInterface();
  Set_RegisterIgnoreDesignChange();

  CMainWindow window(DesktopFiles(QApplication::applicationDirPath().toStdString()));
  window.show();
  // Once the window stands: what cannot be opened is told over it.
  QTimer::singleShot(0, &window, [&] { window.Open(files); });
  return QApplication::exec();
}
