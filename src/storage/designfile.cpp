#include "storage/designfile.h"

#include <filesystem>

#include "model/services/apperror.h"
#include "storage/checkedwriter.h"

namespace {
/// A technology that is no design, such as a library, is refused.
CResult<SOpenedFile> OpenAsDesign(const CString& path) {
  CResult<SOpenedFile> opened = OpenDesignFile(path);
  if (opened && !DynamicDowncast<CDesign>(opened->technology.get()))
    return SFailure{path + ": this is a library, not a design."};
  return opened;
}
}  // namespace

CResult<SOpenedFile> OpenDesignFile(const CString& path) {
  CResult<CString> text = ReadFileLimited(path, kMaxDesignFileSize);
  if (!text) return SFailure{text.Error()};
  const SFileState state = StateOfText(*text);
  CResult<std::unique_ptr<CTechnology>> read = ParseDesign(std::move(*text), path);
  if (!read) return SFailure{read.Error()};
  return SOpenedFile{std::move(*read), state};
}

CResult<std::unique_ptr<CTechnology>> ReadDesignFile(const CString& path) {
  CResult<SOpenedFile> opened = OpenDesignFile(path);
  if (!opened) return SFailure{opened.Error()};
  return std::move(opened->technology);
}

CResult<std::optional<SFileState>> LookAtFile(const CString& path) {
  std::error_code ignored;
  if (!std::filesystem::exists(std::filesystem::status(path, ignored))) return std::optional<SFileState>();
  const CResult<CString> text = ReadFileLimited(path, kMaxDesignFileSize);
  if (!text) return SFailure{text.Error()};
  return std::optional(StateOfText(*text));
}

CResult<CString> DesignFileText(const CTechnology& technology, std::size_t limit) {
  const CStringArray problems = technology.CheckValid();
  if (!problems.empty()) return SFailure{"it could not be read again: " + problems.front()};
  CString text = DesignText(technology);
  if (text.size() <= limit) return text;
  return SFailure{"it could not be read again: it takes " + IntText(static_cast<std::int64_t>(text.size())) +
                  " bytes, and a design file holds at most " + IntText(static_cast<std::int64_t>(limit)) + "."};
}

CResult<SFileState> WriteDesignFile(const CString& path, const CTechnology& technology) {
  const CResult<CString> text = DesignFileText(technology);
  if (!text) return SFailure{"\"" + path + "\" is not written, since " + text.Error()};
  if (const CResult<void> written = WriteFileChecked(path, *text); !written) return SFailure{written.Error()};
  return StateOfText(*text);
}

CResult<std::vector<SOpenedFile>> OpenProjectDesigns(CProject& project, const CString& projectPath) {
  const CString folder = projectPath.substr(0, projectPath.rfind('/') + 1);
  std::vector<SOpenedFile> opened;
  for (const CString& file : project.designFiles) {
    const CString path = file.starts_with('/') ? file : folder + file;
    CResult<SOpenedFile> design = OpenAsDesign(path);
    if (!design) return SFailure{design.Error()};
    if (design->technology->IsKindOf(CProject::GetThisClass()))
      return SFailure{path + ": this is a project, and a project holds designs alone."};
    opened.push_back(std::move(*design));
  }
  for (std::size_t i = 0; i < opened.size(); ++i)
    project.AddDesign(DynamicDowncast<CDesign>(opened[i].technology.get()), project.designFiles[i]);
  return opened;
}

void InstallFileAccess() {
  CDesign::SetFileAccess({[](const CString& path) -> CDesign* {
                            CResult<SOpenedFile> design = OpenAsDesign(path);
                            if (design) return DynamicDowncast<CDesign>(design->technology.release());
                            CAppError::SetLastErrorText(design.Error());
                            return nullptr;
                          },
                          [](const CString& path, const CDesign& design) {
                            const CResult<SFileState> written = WriteDesignFile(path, design);
                            if (!written) CAppError::SetLastErrorText(written.Error());
                            return static_cast<bool>(written);
                          }});
}
