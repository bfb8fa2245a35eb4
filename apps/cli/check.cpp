#include "cli/platform.h"
#include "cli/progress.h"
#include "cli/subcommands.h"
#include "cli/texttable.h"
#include "commands/checkdesign.h"

namespace {
CString CountText(std::size_t count, const char* what) {
  return (count == 0 ? "no" : IntText(static_cast<std::int64_t>(count))) + " " + what + (count == 1 ? "" : "s");
}

int Check(const CString& path) {
  CConsoleInterface console;
  const CUserInterfaceScope scope(console);
  InstallPlatform();
  const std::unique_ptr<CTechnology> technology = OpenTechnology(path);
  if (!technology) return EExit::InvalidInput;
  CDesign* const design = DynamicDowncast<CDesign>(technology.get());
  if (!design)
    return Fail(EExit::InvalidInput, path + ": this is a library. Only designs and projects can be checked.");

  const SDesignCheck check = CheckDesign(*design);
  CString text;
  for (const SDesignCheck::SFinding& one : check.violations) text += one.page + ": " + OneLine(one.text) + "\n";
  for (const SDesignCheck::SFinding& one : check.warnings) text += one.page + ": warning: " + OneLine(one.text) + "\n";
  text += path + ": " + CountText(check.violations.size(), "violation") + ", " +
          CountText(check.warnings.size(), "warning") + "\n";
  const int printed = Print(text);
  return printed != EExit::Ok || check.violations.empty() ? printed : EExit::Violations;
}
}  // namespace

void AddCheckCommand(CLI::App& app, int& exitStatus) {
  const auto path = std::make_shared<CString>();
  CLI::App* const command = app.add_subcommand("check", "Check a design as the technology dialog would");
  command->add_option("DESIGN", *path, "the design or project to check; it is not changed")->type_name("")->required();
  command->footer(kExitStatuses);
  command->callback([path, &exitStatus] { exitStatus = Check(*path); });
}
