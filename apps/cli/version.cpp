#include "cli/platform.h"
#include "cli/subcommands.h"
#include "model/services/application.h"
#include "storage/designfile.h"

CString VersionText() {
  return CApplication::GetProductNameWithVersion(3, 1) + "\nReads design files up to version " +
         IntText(kDesignFileVersion) + "\n";
}

void AddVersionCommand(CLI::App& app, int& exitStatus) {
  CLI::App* const command = app.add_subcommand("version", "Say which version this is");
  command->callback([&exitStatus] { exitStatus = Print(VersionText()); });
}
