// What every subcommand stands on: files, settings, exit statuses.
#pragma once
#include <memory>

#include "model/design/technology.h"

/// How the program ends. Scripts depend on these numbers.
struct EExit {
  enum : int { Ok, WrongArguments, OtherError, InvalidInput, NotWritable, Violations };
};
/// The same for people, as the last lines of a help text.
inline constexpr char kExitStatuses[] =
    "Exit status: 0 ok, 1 wrong arguments, 2 other error, 3 invalid input file, 4 output not writable, 5 violations.";

/// Installs what every program installs; trouble with the settings goes to standard error.
void InstallPlatform(const CString& settingsFolder = {});

/// Ends a subcommand: the reason goes to standard error, the status is handed back.
int Fail(int exitStatus, const CString& reason);
/// Writes to standard output. EExit::Ok, or NotWritable with the reason told.
int Print(std::string_view text);

/// The design, project or library in the file `path`; null, with the reason told, when there is none.
std::unique_ptr<CTechnology> OpenTechnology(const CString& path);
