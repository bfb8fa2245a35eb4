// Files that people choose: how the program reads and writes them. The access is installed by the program, so that
// every file goes through one checked writer.
#pragma once
#include <functional>

#include "model/base/text.h"

struct SFileAccess {
  /// The whole file; false, with `text` untouched, when it cannot be read or is larger than `limit` bytes.
  std::function<bool(const CString& path, std::size_t limit, CString& text, CString& error)> read;
  /// Afterwards the file is the old one or the new one, whatever happens.
  std::function<bool(const CString& path, std::string_view text, CString& error)> write;
};

void InstallFiles(SFileAccess access);
bool ReadTextFile(const CString& path, std::size_t limit, CString& text, CString& error);
bool WriteTextFile(const CString& path, std::string_view text, CString& error);
