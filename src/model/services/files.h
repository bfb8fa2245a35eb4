// Files that people choose: how the program reads and writes them. The access is installed by the program, so that
// every file goes through one checked writer.
#pragma once
#include <functional>
#include <optional>

#include "model/base/result.h"

/// What a file held when it was last looked at: two states differ when the bytes do. The time of its last change takes
/// no part, since programs set it back.
struct SFileState {
  std::uint64_t size = 0;
  std::uint64_t hash = 0;
  bool operator==(const SFileState&) const = default;
};
SFileState StateOfText(std::string_view text);
/// Whether writing over a file would lose what somebody else wrote: it is there `now` and is not as it is `known` to
/// be, from the last time that it was read or written here.
bool HoldsOthersChanges(const std::optional<SFileState>& now, const std::optional<SFileState>& known);

struct SFileAccess {
  /// The whole file; a failure when it cannot be read or is larger than `limit` bytes.
  std::function<CResult<CString>(const CString& path, std::size_t limit)> read;
  /// Afterwards the file is the old one or the new one, whatever happens.
  std::function<CResult<void>(const CString& path, std::string_view text)> write;
};

void InstallFiles(SFileAccess access);
CResult<CString> ReadTextFile(const CString& path, std::size_t limit);
CResult<void> WriteTextFile(const CString& path, std::string_view text);
