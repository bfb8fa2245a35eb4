#include "cli/platform.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "cli/descriptorbuffer.h"
#include "model/base/jsontext.h"
#include "model/base/textfault.h"
#include "shared/adapters.h"
#include "shared/console.h"
#include "shared/editions.h"
#include "storage/checkedwriter.h"
#include "storage/designfile.h"

namespace {
constexpr std::string_view kBoardExtension = ".kicad_pcb";

CString Reason(int code) { return std::generic_category().message(code) + "."; }

bool IsBoard(const CString& path) {
  return path.size() > kBoardExtension.size() &&
         EqualNoCase(std::string_view(path).substr(path.size() - kBoardExtension.size()), kBoardExtension);
}
}  // namespace

void AddEditionOption(CLI::App& command, std::optional<CString>& edition) {
  command.add_option("--edition", edition, "the editions that hold; those of the settings unless given, else Pellam")
      ->type_name("NAME[,NAME...]");
}

CResult<void> InstallPlatform(const std::optional<CString>& edition, const CString& settingsFolder) {
  InstallAdapters(settingsFolder, TellOnStandardError);
  return ChooseEditions(edition, TellOnStandardError);
}

int Fail(int exitStatus, const CString& reason) {
  TellOnStandardError(VisibleText(reason, true));
  return exitStatus;
}

int Print(std::string_view text, EReader reader) {
  CDescriptorBuffer out(STDOUT_FILENO);
  const bool isFile = reader == EReader::File && ::isatty(STDOUT_FILENO) == 0;
  std::fflush(stdout);
  out.Write(isFile ? CString(text) : reader == EReader::Person ? VisibleText(text) : JsonOfVisibleText(text));
  if (out.Error() == 0) return EExit::Ok;
  if (out.Error() == EPIPE) return EExit::NotWritable;  // a reader that has seen enough needs no explanation
  return Fail(EExit::NotWritable, "Standard output cannot be written: " + Reason(out.Error()));
}

CResult<CString> ReadInput(const CString& path, std::size_t limit) {
  if (path != kStandardStream) return ReadFileLimited(path, limit);
  CDescriptorBuffer in(STDIN_FILENO);
  CString text;
  if (!in.Read(text, limit))
    return SFailure{InputName(path) + " is larger than " + IntText(static_cast<std::int64_t>(limit)) + " bytes."};
  if (in.Error() != 0) return SFailure{InputName(path) + " cannot be read: " + Reason(in.Error())};
  return text;
}

CString InputName(const CString& path) { return path == kStandardStream ? "standard input" : path; }

std::unique_ptr<CTechnology> OpenTechnology(const CString& path) {
  CResult<CString> text = ReadInput(path, kMaxDesignFileSize);
  if (!text) return Fail(EExit::InvalidInput, text.Error()), nullptr;
  CResult<std::unique_ptr<CTechnology>> technology = ParseDesign(std::move(*text), InputName(path));
  if (technology) return std::move(*technology);
  if (IsBoard(path)) {
    const CString design = path.substr(0, path.size() - kBoardExtension.size()) + ".tspcb";
    const CString args[] = {path, design};
    Fail(EExit::InvalidInput, FormatText("%1: this is a board of another tool. Make a design of it first: "
                                         "techsheet-cli import-board \"%1\" -o \"%2\"",
                                         args));
  } else {
    Fail(EExit::InvalidInput, technology.Error());
  }
  return nullptr;
}
