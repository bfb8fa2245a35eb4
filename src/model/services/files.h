// Files that people choose: how the program reads and writes them. The access is installed by the program, so that
// every file goes through one checked writer.
#pragma once
#include <functional>

#include "model/base/result.h"

struct SFileAccess {
  /// The whole file; a failure when it cannot be read or is larger than `limit` bytes.
  std::function<CResult<CString>(const CString& path, std::size_t limit)> read;
  /// Afterwards the file is the old one or the new one, whatever happens.
  std::function<CResult<void>(const CString& path, std::string_view text)> write;
};

void InstallFiles(SFileAccess access);
CResult<CString> ReadTextFile(const CString& path, std::size_t limit);
CResult<void> WriteTextFile(const CString& path, std::string_view text);
