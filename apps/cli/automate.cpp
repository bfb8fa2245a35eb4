// techsheet-cli automate: the headless user interface (docs/automation.md).
#include <fstream>
#include <iostream>

#include "automation/automation.h"
#include "cli/platform.h"
#include "cli/subcommands.h"
#include "model/services/application.h"

namespace {
constexpr int kRefused = 1;

struct SAutomateOptions {
  CStringArray editions{"Pellam"};
  CString settings;  // folder; empty: the user's own
  CString script;    // path; empty: standard input
};

int Automate(const SAutomateOptions& options) {
  if (!CApplication::SetEditions(options.editions)) {
    CString names;
    for (const CString& name : CApplication::AllEditions()) names += ' ' + name;
    return Fail(kWrongUseOfAutomate, "--edition: the names are" + names + '.');
  }
  std::ifstream script;
  if (!options.script.empty()) {
    script.open(options.script, std::ios::binary);
    if (!script) return Fail(kWrongUseOfAutomate, "--script: \"" + options.script + "\" cannot be read.");
  }
  InstallPlatform(options.settings);
  std::istream& in = options.script.empty() ? std::cin : script;
  return CAutomation(in, std::cout).Run() ? EExit::Ok : kRefused;
}
}  // namespace

void AddAutomateCommand(CLI::App& app, int& exitStatus) {
  const auto options = std::make_shared<SAutomateOptions>();
  CLI::App* const command =
      app.add_subcommand("automate", "Drive every dialog without a screen: a JSON request a line, a response each");
  command->add_option("--edition", options->editions, "names of the edition tests that hold")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->type_name("NAME[,NAME...]")
      ->capture_default_str();
  command->add_option("--settings", options->settings, "keep the settings in this folder, not in the user's own")
      ->type_name("DIR");
  command->add_option("--script", options->script, "read the requests from this file, not from standard input")
      ->type_name("FILE")
      ->check(CLI::ExistingFile);
  command->footer("Exit status: 0 every response was ok, 1 one was not, 2 wrong command-line use.");
  command->callback([options, &exitStatus] { exitStatus = Automate(*options); });
}
