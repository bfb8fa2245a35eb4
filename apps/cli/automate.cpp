// techsheet-cli automate: the headless user interface (docs/automation.md).
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <istream>
#include <ostream>
#include <system_error>

#include "automation/automation.h"
#include "cli/descriptorbuffer.h"
#include "cli/platform.h"
#include "cli/subcommands.h"

namespace {
constexpr int kRefused = 1;

struct SAutomateOptions {
  std::optional<CString> edition;
  CString settings;                  // folder; empty: the user's own
  CString script = kStandardStream;  // path
};

/// Why a stream failed; a reader that went away is no failure to speak of.
int FailAt(const char* what, int error) {
  return Fail(kWrongUseOfAutomate, what + std::generic_category().message(error) + ".");
}

int Automate(const SAutomateOptions& options) {
  const bool isScript = options.script != kStandardStream;
  const int input = isScript ? ::open(options.script.c_str(), O_RDONLY | O_CLOEXEC) : STDIN_FILENO;
  if (input < 0) return FailAt(("--script: \"" + options.script + "\" cannot be read: ").c_str(), errno);
  if (const CResult<void> installed = InstallPlatform(options.edition, options.settings); !installed)
    return Fail(kWrongUseOfAutomate, installed.Error());
  CDescriptorBuffer requests(input), responses(STDOUT_FILENO);
  std::istream in(&requests);
  std::ostream out(&responses);
  CAutomation automation(in, out);
  const bool allOk = automation.Run();
  if (requests.Error() != 0) return FailAt("The requests cannot be read: ", requests.Error());
  if (responses.Error() != 0 && responses.Error() != EPIPE)
    return FailAt("The responses cannot be written: ", responses.Error());
  if (!allOk) return kRefused;
  return automation.Unfinished().empty() ? EExit::Ok : Fail(EExit::Unfinished, automation.Unfinished());
}
}  // namespace

void AddAutomateCommand(CLI::App& app, int& exitStatus) {
  const auto options = std::make_shared<SAutomateOptions>();
  CLI::App* const command =
      app.add_subcommand("automate", "Drive every dialog without a screen: a JSON request a line, a response each");
  AddEditionOption(*command, options->edition);
  command->add_option("--settings", options->settings, "keep the settings in this folder, not in the user's own")
      ->type_name("DIR");
  command->add_option("--script", options->script, "read the requests from this file; - is standard input")
      ->type_name("FILE")
      ->capture_default_str();
  command->footer(
      "Exit status: 0 every response was ok, 1 one was not, 2 wrong command-line use, or requests that cannot be read "
      "or responses that cannot be written, 6 a dialog was left open or refused the last OK or Apply.");
  command->callback([options, &exitStatus] { exitStatus = Automate(*options); });
}
