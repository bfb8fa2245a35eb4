#include <filesystem>

#include "cli/platform.h"
#include "cli/progress.h"
#include "cli/sections.h"
#include "cli/subcommands.h"
#include "interchange/boardimport.h"
#include "interchange/sexpression.h"
#include "shared/console.h"
#include "storage/designfile.h"

namespace {
struct SImportOptions {
  CString board;
  CString output;
  bool verbose = false;
  std::optional<CString> edition;
};

constexpr std::string_view kExtension = ".tspcb";

CString StemOf(const CString& path) {
  return path.substr(0, path.size() - std::filesystem::path(path).extension().string().size());
}

/// Why `output` cannot be the design that is made of the board; empty when it can.
CString OutputFault(const SImportOptions& options) {
  const CString& output = options.output;
  if (output == kStandardStream) return {};
  std::error_code none;
  const std::filesystem::path board(options.board);
  for (const auto& read : {board, std::filesystem::path(board).replace_extension(".kicad_pro")})
    if (std::filesystem::equivalent(read, output, none))
      return "\"" + output + "\" is " + (read == board ? "the board itself" : "the project file of the board") +
             ". Name another file for the design.";
  const CString extension = std::filesystem::path(output).extension().string();
  if (EqualNoCase(extension, kExtension)) return {};
  return "\"" + output + "\" cannot hold the design of a board. Use the extension \"" + CString(kExtension) +
         "\", such as \"" + StemOf(output) + CString(kExtension) + "\".";
}

CResult<SImportedBoard, SImportError> ReadBoard(const CString& path) {
  if (path != kStandardStream) return ::ImportBoard(path);
  CResult<CString> text = ReadInput(path, CSList::kMaxSize);
  if (!text) return SFailed{SImportError{InputName(path), {0, 0}, text.Error()}};
  return ImportBoardText(*text, InputName(path));
}

/// How many records of each kind the board brought, and what became of the rest.
CString ImportText(const SImportOptions& options, const SImportedBoard& board) {
  const CPcbDesign& design = *board.design;
  const CString output = options.output == kStandardStream ? "standard output" : options.output;
  CString text =
      VisibleText(InputName(options.board) + " is now " + output, true) + "\n" + CountsText(SectionsOf(design), design);
  for (const CString& line : board.summary.Lines(options.verbose)) text += VisibleText(line, true) + "\n";
  if (board.summary.IsShortened() && !options.verbose) text += "With --verbose everything is listed\n";
  return text;
}

int ImportBoard(const SImportOptions& options) {
  CConsoleInterface console;
  const CUserInterfaceScope scope(console);
  if (const CResult<void> installed = InstallPlatform(options.edition); !installed)
    return Fail(EExit::WrongArguments, installed.Error());
  if (const CString fault = OutputFault(options); !fault.empty()) return Fail(EExit::WrongArguments, fault);
  const CResult<SImportedBoard, SImportError> imported = ReadBoard(options.board);
  if (!imported) return Fail(EExit::InvalidInput, imported.Error().Text());
  if (options.output != kStandardStream) {
    const CResult<SFileState> written = WriteDesignFile(options.output, *imported->design);
    return written ? Print(ImportText(options, *imported)) : Fail(EExit::NotWritable, written.Error());
  }
  const CResult<CString> text = DesignFileText(*imported->design);
  if (!text) return Fail(EExit::NotWritable, "The design is not written, since " + text.Error());
  const int printed = Print(*text, EReader::File);
  if (printed == EExit::Ok) TellOnStandardError(ImportText(options, *imported));
  return printed;
}
}  // namespace

void AddImportBoardCommand(CLI::App& app, int& exitStatus) {
  const auto options = std::make_shared<SImportOptions>();
  CLI::App* const command = app.add_subcommand("import-board", "Make a design of a board (.kicad_pcb, formats 4 to 9)");
  command
      ->add_option("BOARD", options->board,
                   "the board; a project file (.kicad_pro) beside it is read too; - is standard input")
      ->type_name("")
      ->required();
  command
      ->add_option("-o,--output", options->output,
                   "the design to write (.tspcb); one that is there is replaced; - is standard output")
      ->type_name("DESIGN")
      ->required();
  command->add_flag("--verbose", options->verbose, "list all that was left out, also words that are no settings");
  AddEditionOption(*command, options->edition);
  command->footer(kExitStatuses);
  command->callback([options, &exitStatus] { exitStatus = ImportBoard(*options); });
}
