// Design files: a whole design, library or project as UTF-8 JSON (docs/file-format.md).
//
// The text of a design is canonical: it depends on the design alone, so that a file differs only where the design does
// and saving twice gives the same bytes. Reading is strict and yields a whole design or none.
#pragma once
#include <memory>

#include "model/base/result.h"
#include "model/design/design.h"
#include "model/services/files.h"

inline constexpr int kDesignFileVersion = 1;                      // written, and the newest that is read
inline constexpr std::size_t kMaxDesignFileSize = 512 * 1 << 20;  // bytes

/// The text of a design file.
CString DesignText(const CTechnology& technology);

/// The value of a field as such a text holds it, in one line.
CString FieldJson(const CField& field, const CRecordBase& record);

/// Reads such a text into a new design without history. The failure names `name`, the line and column, and the reason.
/// Shows progress while a long text is read.
CResult<std::unique_ptr<CTechnology>> ParseDesign(CString text, const CString& name);

struct SOpenedFile {
  std::unique_ptr<CTechnology> technology;
  SFileState state{};  // of the bytes that were read
};
/// The same with the text of a file of at most kMaxDesignFileSize bytes.
CResult<SOpenedFile> OpenDesignFile(const CString& path);
CResult<std::unique_ptr<CTechnology>> ReadDesignFile(const CString& path);

/// The state of a design file now; nothing when there is none.
CResult<std::optional<SFileState>> LookAtFile(const CString& path);

/// The text of a design file that can be read back; a failure for a design that breaks a rule of files
/// (CTechnology::CheckValid) or takes more than `limit` bytes.
CResult<CString> DesignFileText(const CTechnology& technology, std::size_t limit = kMaxDesignFileSize);

/// Writes a design file with such a text, whole or not at all: the state that it has then.
CResult<SFileState> WriteDesignFile(const CString& path, const CTechnology& technology);

/// Opens all designs that the project names; relative paths start at the folder of `projectPath`. They belong to the
/// project then. A failure, with nothing opened, when one of them cannot be read or is no design.
CResult<std::vector<SOpenedFile>> OpenProjectDesigns(CProject& project, const CString& projectPath);

/// Makes CDesign::ReadDesign and SaveDesign read and write design files; what fails becomes the last error.
void InstallFileAccess();
