#include <filesystem>

#include "cli/platform.h"
#include "cli/progress.h"
#include "cli/sections.h"
#include "cli/subcommands.h"
#include "interchange/boardimport.h"
#include "storage/designfile.h"

namespace {
struct SImportOptions {
  CString board;
  CString output;
  bool verbose = false;
};

CString PlaceText(const SImportError& error) {
  if (error.place.line == 0) return error.reason;
  const CString args[] = {error.file, IntText(static_cast<std::int64_t>(error.place.line)),
                          IntText(static_cast<std::int64_t>(error.place.column)), error.reason};
  return FormatText("%1:%2:%3: %4", args);
}

/// How many records of each kind the board brought, and what became of the rest.
CString ImportText(const SImportOptions& options, const SImportedBoard& board) {
  const CPcbDesign& design = *board.design;
  CString text = options.board + " is now " + options.output + "\n" + CountsText(SectionsOf(design), design);
  for (const CString& line : board.summary.Lines(options.verbose)) text += line + "\n";
  if (board.summary.IsShortened() && !options.verbose) text += "With --verbose everything is listed\n";
  return text;
}

int ImportBoard(const SImportOptions& options) {
  CConsoleInterface console;
  const CUserInterfaceScope scope(console);
  InstallPlatform();
  std::error_code none;
  const std::filesystem::path board(options.board);
  for (const auto& read : {board, std::filesystem::path(board).replace_extension(".kicad_pro")})
    if (std::filesystem::equivalent(read, options.output, none))
      return Fail(EExit::WrongArguments, "\"" + options.output + "\" is " +
                                             (read == board ? "the board itself" : "the project file of the board") +
                                             ". Name another file for the design.");
  const CResult<SImportedBoard, SImportError> imported = ::ImportBoard(options.board);
  if (!imported) return Fail(EExit::InvalidInput, PlaceText(imported.Error()));
  if (const CResult<void> written = WriteDesignFile(options.output, *imported->design); !written)
    return Fail(EExit::NotWritable, written.Error());
  return Print(ImportText(options, *imported));
}
}  // namespace

void AddImportBoardCommand(CLI::App& app, int& exitStatus) {
  const auto options = std::make_shared<SImportOptions>();
  CLI::App* const command = app.add_subcommand("import-board", "Make a design of a board (.kicad_pcb, formats 4 to 9)");
  command->add_option("BOARD", options->board, "the board; a project file (.kicad_pro) beside it is read too")
      ->type_name("")
      ->required();
  command->add_option("-o,--output", options->output, "the design to write (.tspcb); one that is there is replaced")
      ->type_name("DESIGN")
      ->required();
  command->add_flag("--verbose", options->verbose, "list all that was left out, also words that are no settings");
  command->footer(kExitStatuses);
  command->callback([options, &exitStatus] { exitStatus = ImportBoard(*options); });
}
