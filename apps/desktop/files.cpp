#include "desktop/files.h"

#include <filesystem>

#include "interchange/boardimport.h"
#include "model/services/apperror.h"
#include "storage/checkedwriter.h"
#include "storage/designfile.h"

namespace {
namespace fs = std::filesystem;

SFileState StateOf(std::string_view content) { return {content.size(), std::hash<std::string_view>()(content)}; }

CResult<SDesktopFiles::SOpened> Read(const CString& path) {
  CString text, error;
  if (!ReadFileLimited(path, kMaxDesignFileSize, text, error)) return SFailure{error};
  const SFileState state = StateOf(text);
  CResult<std::unique_ptr<CTechnology>> read = ParseDesign(std::move(text), path);
  if (!read) return SFailure{read.Error()};
  return SDesktopFiles::SOpened{std::move(*read), state};
}

/// The text of a design depends on the design alone, so its state is that of the file without reading it again.
CResult<SFileState> Write(const CString& path, const CTechnology& technology) {
  if (!WriteDesignFile(path, technology)) return SFailure{CAppError::GetLastErrorString()};
  return StateOf(DesignText(technology));
}

CResult<std::optional<SFileState>> Look(const CString& path) {
  std::error_code ignored;
  if (!fs::exists(fs::status(path, ignored))) return std::optional<SFileState>();
  CString text, error;
  if (!ReadFileLimited(path, kMaxDesignFileSize, text, error)) return SFailure{error};
  return std::optional(StateOf(text));
}

CResult<SDesktopFiles::SImported> Import(const CString& path) {
  std::unique_ptr<CPcbDesign> design;
  SImportSummary summary;
  SImportError error;
  if (!ImportBoard(path, design, summary, error)) return SFailure{error.Text()};
  return SDesktopFiles::SImported{std::move(design), summary.Lines()};
}

CString FindManual(const fs::path& programFolder) {
  std::error_code ignored;
  for (const char* const folder : {".", "docs", "../share/doc/Techsheet", "../../../docs"})
    if (const fs::path path = programFolder / folder / "manual.md"; fs::exists(path, ignored))
      return fs::weakly_canonical(path, ignored).string();
  return {};
}
}  // namespace

SDesktopFiles DesktopFiles(const CString& programFolder) {
  return {Read, Write, Look, Import, FindManual(programFolder)};
}
