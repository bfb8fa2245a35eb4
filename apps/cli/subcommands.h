// The subcommands of techsheet-cli, one file each. Each adds itself and sets the program's exit status when it runs.
#pragma once
#include <CLI/CLI.hpp>

#include "model/base/text.h"

void AddAutomateCommand(CLI::App& app, int& exitStatus);
void AddCheckCommand(CLI::App& app, int& exitStatus);
void AddHelpCommand(CLI::App& app, int& exitStatus);
void AddImportBoardCommand(CLI::App& app, int& exitStatus);
void AddShowCommand(CLI::App& app, int& exitStatus);
void AddVersionCommand(CLI::App& app, int& exitStatus);

/// What the program says about itself.
CString VersionText();

CString UnknownCommand(const CLI::App& app, const CString& name);

/// How `automate` ends when the command line is wrong, unlike the others.
inline constexpr int kWrongUseOfAutomate = 2;
