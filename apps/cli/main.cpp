// techsheet-cli: shows, checks, changes and converts the technology of designs without a screen.
#include <sstream>

#include "cli/platform.h"
#include "cli/subcommands.h"
#include "model/base/catalogue.h"
#include "shared/console.h"

int main(int argc, char** argv) {
  IgnoreSignalsOfWriting();
  CLI::App app("Shows, checks and changes the technology of printed-circuit designs.", "techsheet-cli");
  app.require_subcommand(1);
  app.footer(kExitStatuses);
  app.set_version_flag("-V,--version", [] { return CString(Trim(VersionText())); }, "Say which version this is");
  int exitStatus = EExit::Ok;
  for (const auto add :
       {AddShowCommand, AddCheckCommand, AddImportBoardCommand, AddAutomateCommand, AddVersionCommand, AddHelpCommand})
    add(app, exitStatus);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const CStringArray rest = app.remaining();
    if (app.get_subcommands().empty() && !rest.empty() && !rest.front().starts_with('-'))
      return Fail(EExit::WrongArguments, UnknownCommand(app, rest.front()));
    std::ostringstream text, reason;
    if (app.exit(error, text, reason) == 0) return Print(text.str());  // help or the version was asked for
    TellOnStandardError(reason.str());
    return app.got_subcommand("automate") ? kWrongUseOfAutomate : EExit::WrongArguments;
  } catch (const std::bad_alloc&) {
    return Fail(EExit::OtherError, TextOf(Text::MemoryRanOut));
  } catch (const std::exception& failure) {
    return Fail(EExit::OtherError, failure.what());
  }
  return exitStatus;
}
