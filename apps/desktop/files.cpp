#include "desktop/files.h"

#include <filesystem>

#include "interchange/boardimport.h"
#include "storage/checkedwriter.h"
#include "storage/designfile.h"

namespace {
namespace fs = std::filesystem;

SFileState StateOf(std::string_view content) { return {content.size(), std::hash<std::string_view>()(content)}; }

CResult<SDesktopFiles::SOpened> Read(const CString& path) {
  CResult<CString> text = ReadFileLimited(path, kMaxDesignFileSize);
  if (!text) return SFailure{text.Error()};
  const SFileState state = StateOf(*text);
  CResult<std::unique_ptr<CTechnology>> read = ParseDesign(std::move(*text), path);
  if (!read) return SFailure{read.Error()};
  return SDesktopFiles::SOpened{std::move(*read), state};
}

/// The text of a design depends on the design alone, so its state is that of the file without reading it again.
CResult<SFileState> Write(const CString& path, const CTechnology& technology) {
  if (const CResult<void> written = WriteDesignFile(path, technology); !written) return SFailure{written.Error()};
  return StateOf(DesignText(technology));
}

CResult<std::optional<SFileState>> Look(const CString& path) {
  std::error_code ignored;
  if (!fs::exists(fs::status(path, ignored))) return std::optional<SFileState>();
  const CResult<CString> text = ReadFileLimited(path, kMaxDesignFileSize);
  if (!text) return SFailure{text.Error()};
  return std::optional(StateOf(*text));
}

CResult<SDesktopFiles::SImported> Import(const CString& path) {
  CResult<SImportedBoard, SImportError> board = ImportBoard(path);
  if (!board) return SFailure{board.Error().Text()};
  return SDesktopFiles::SImported{std::move(board->design), board->summary.Lines(/*verbose=*/false)};
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
