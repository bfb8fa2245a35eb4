#include "desktop/files.h"

#include <filesystem>

#include "interchange/boardimport.h"
#include "storage/designfile.h"

namespace {
namespace fs = std::filesystem;

CResult<SDesktopFiles::SOpened> Read(const CString& path) {
  CResult<SOpenedFile> opened = OpenDesignFile(path);
  if (!opened) return SFailure{opened.Error()};
  return SDesktopFiles::SOpened{std::move(opened->technology), opened->state};
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
  return {Read, WriteDesignFile, LookAtFile, Import, FindManual(programFolder)};
}
