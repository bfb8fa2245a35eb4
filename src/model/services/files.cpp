#include "model/services/files.h"

#include "model/base/catalogue.h"

namespace {
SFileAccess theFiles;

SFailure NoAccess(const CString& path) { return {TextOf(Text::NoFileAccess, CStringArray{path})}; }
}  // namespace

SFileState StateOfText(std::string_view text) { return {text.size(), std::hash<std::string_view>()(text)}; }

bool HoldsOthersChanges(const std::optional<SFileState>& now, const std::optional<SFileState>& known) {
  return now && now != known;
}

void InstallFiles(SFileAccess access) { theFiles = std::move(access); }

CResult<CString> ReadTextFile(const CString& path, std::size_t limit) {
  if (!theFiles.read) return NoAccess(path);
  return theFiles.read(path, limit);
}

CResult<void> WriteTextFile(const CString& path, std::string_view text) {
  if (!theFiles.write) return NoAccess(path);
  return theFiles.write(path, text);
}
