#include "cli/platform.h"
#include "cli/progress.h"
#include "cli/subcommands.h"
#include "commands/checkdesign.h"

namespace {
CString CountText(std::size_t count, const char* what) {
  return (count == 0 ? "no" : IntText(static_cast<std::int64_t>(count))) + " " + what + (count == 1 ? "" : "s");
}

struct SCheckOptions {
  CString path;
  std::optional<CString> edition;
};

int Check(const SCheckOptions& options) {
  CConsoleInterface console;
  const CUserInterfaceScope scope(console);
  if (const CResult<void> installed = InstallPlatform(options.edition); !installed)
    return Fail(EExit::WrongArguments, installed.Error());
  const std::unique_ptr<CTechnology> technology = OpenTechnology(options.path);
  if (!technology) return EExit::InvalidInput;
  const CString path = VisibleText(InputName(options.path), true);
  CDesign* const design = DynamicDowncast<CDesign>(technology.get());
  if (!design)
    return Fail(EExit::InvalidInput, path + ": this is a library. Only designs and projects can be checked.");

  const SDesignCheck check = CheckDesign(*design);
  CString text;
  for (const SDesignCheck::SFinding& one : check.violations)
    text += one.page + ": " + VisibleText(one.text, true) + "\n";
  for (const SDesignCheck::SFinding& one : check.warnings)
    text += one.page + ": warning: " + VisibleText(one.text, true) + "\n";
  text += path + ": " + CountText(check.violations.size(), "violation") + ", " +
          CountText(check.warnings.size(), "warning") + "\n";
  const int printed = Print(text);
  return printed != EExit::Ok || check.violations.empty() ? printed : EExit::Violations;
}
}  // namespace

void AddCheckCommand(CLI::App& app, int& exitStatus) {
  const auto options = std::make_shared<SCheckOptions>();
  CLI::App* const command = app.add_subcommand("check", "Check a design as the technology dialog would");
  command->add_option("DESIGN", options->path, "the design or project to check; it is not changed; - is standard input")
      ->type_name("")
      ->required();
  AddEditionOption(*command, options->edition);
  command->footer(kExitStatuses);
  command->callback([options, &exitStatus] { exitStatus = Check(*options); });
}
