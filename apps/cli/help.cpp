#include "cli/platform.h"
#include "cli/subcommands.h"

CString UnknownCommand(const CLI::App& app, const CString& name) {
  return "There is no command \"" + name + "\". Type: " + app.get_name() + " help";
}

void AddHelpCommand(CLI::App& app, int& exitStatus) {
  const auto name = std::make_shared<CString>();
  CLI::App* const command = app.add_subcommand("help", "Explain the program or one of its commands");
  command->add_option("COMMAND", *name, "the command to explain")->type_name("");
  command->callback([name, &app, &exitStatus] {
    const auto asked = app.get_subcommands([&](const CLI::App* one) { return one->get_name() == *name; });
    if (name->empty()) {
      exitStatus = Print(app.get_formatter()->make_help(&app, app.get_name(), CLI::AppFormatMode::Normal));
    } else if (!asked.empty()) {
      exitStatus = Print(asked.front()->help(app.get_name()));
    } else {
      exitStatus = Fail(EExit::WrongArguments, UnknownCommand(app, *name));
    }
  });
}
