// What every subcommand stands on: files, settings, editions, exit statuses.
#pragma once
#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "model/base/result.h"
#include "model/design/technology.h"

/// How the program ends. Scripts depend on these numbers.
struct EExit {
  enum : int { Ok, WrongArguments, OtherError, InvalidInput, NotWritable, Violations, Unfinished };
};
/// The same for people, as the last lines of a help text.
inline constexpr char kExitStatuses[] =
    "Exit status: 0 ok, 1 wrong arguments, 2 other error, 3 invalid input file, 4 output not writable, 5 violations.";
/// Behind every argument that names a file.
inline constexpr char kStandardStream[] = "-";

/// Adds the option by which people choose editions.
void AddEditionOption(CLI::App& command, std::optional<CString>& edition);

/// Installs what every program installs, and the editions; trouble with the settings goes to standard error. Fails when
/// `edition` names none.
CResult<void> InstallPlatform(const std::optional<CString>& edition, const CString& settingsFolder = {});

/// Ends a subcommand: the reason, one line, goes to standard error, the status is handed back.
int Fail(int exitStatus, const CString& reason);

/// Who is to read an output: in a text for people control characters are shown, in JSON escaped, and the content of a
/// file is left as it is unless it goes to a terminal.
enum class EReader { Person, Program, File };
/// Writes to standard output. EExit::Ok, or NotWritable with the reason told.
int Print(std::string_view text, EReader reader = EReader::Person);

/// The file `path` of at most `limit` bytes; "-" is standard input.
CResult<CString> ReadInput(const CString& path, std::size_t limit);
/// What messages call the file `path`.
CString InputName(const CString& path);

/// The design, project or library in the file `path`; null, with the reason told, when there is none.
std::unique_ptr<CTechnology> OpenTechnology(const CString& path);
