#include "model/services/files.h"

#include "model/base/catalogue.h"

namespace {
SFileAccess theFiles;
}

void InstallFiles(SFileAccess access) { theFiles = std::move(access); }

bool ReadTextFile(const CString& path, std::size_t limit, CString& text, CString& error) {
  if (theFiles.read) return theFiles.read(path, limit, text, error);
  error = TextOf(Text::NoFileAccess, CStringArray{path});
  return false;
}

bool WriteTextFile(const CString& path, std::string_view text, CString& error) {
  if (theFiles.write) return theFiles.write(path, text, error);
  error = TextOf(Text::NoFileAccess, CStringArray{path});
  return false;
}
