// What the desktop asks of the disk. The program installs it: the window knows designs, not how files hold them.
#pragma once
#include <functional>
#include <memory>
#include <optional>

#include "model/base/result.h"
#include "model/design/design.h"
#include "model/services/files.h"

struct SDesktopFiles {
  struct SOpened {
    std::unique_ptr<CTechnology> technology;
    SFileState state;  // of the bytes that were read
  };
  struct SImported {
    std::unique_ptr<CTechnology> technology;
    CStringArray summary;  // what the board brought, what was mended and what has no place in a design
  };
  std::function<CResult<SOpened>(const CString& path)> read;
  /// Replaces the file whole or not at all; the state of what was written.
  std::function<CResult<SFileState>(const CString& path, const CTechnology& technology)> write;
  /// The state of the file now, nothing when there is none.
  std::function<CResult<std::optional<SFileState>>(const CString& path)> look;
  std::function<CResult<SImported>(const CString& path)> importBoard;
  CString manual;  // path of the manual, empty when it was not found
};
