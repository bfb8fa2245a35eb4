// Files written whole or not at all.
//
// Whatever fails, and whenever the program is killed, the target is the old file or the new one, complete on the disk.
// Everything this program writes goes through here.
#pragma once
#include "model/base/result.h"

/// Replaces the file `path`, or makes it, by way of a temporary file beside it. A symbolic link stays, and the file it
/// leads to is replaced; the mode and the extended attributes of that file are kept, and so is its owner where the
/// system permits. A hard link is broken: old file or new one comes first. Refused are targets that may not be written
/// to or are no regular files. The failure names the file and the reason; the temporary file is gone then, and the
/// target is the old file unless the failure says otherwise.
CResult<void> WriteFileChecked(const CString& path, std::string_view content);

/// Reads the regular file `path` of at most `limit` bytes, also when it grows meanwhile. The failure names the file and
/// the reason: it cannot be read or is larger.
CResult<CString> ReadFileLimited(const CString& path, std::size_t limit);
