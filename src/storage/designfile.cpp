#include "storage/designfile.h"

#include "model/services/apperror.h"
#include "storage/checkedwriter.h"

namespace {
/// A technology that is no design, such as a library, is refused.
CResult<std::unique_ptr<CDesign>> ReadAsDesign(const CString& path) {
  CResult<std::unique_ptr<CTechnology>> read = ReadDesignFile(path);
  if (!read) return SFailure{read.Error()};
  CDesign* const design = DynamicDowncast<CDesign>(read->get());
  if (!design) return SFailure{path + ": this is a library, not a design."};
  read->release();
  return std::unique_ptr<CDesign>(design);
}
}  // namespace

CResult<std::unique_ptr<CTechnology>> ReadDesignFile(const CString& path) {
  CResult<CString> text = ReadFileLimited(path, kMaxDesignFileSize);
  if (!text) return SFailure{text.Error()};
  return ParseDesign(std::move(*text), path);
}

CResult<CString> DesignFileText(const CTechnology& technology, std::size_t limit) {
  const CStringArray problems = technology.CheckValid();
  if (!problems.empty()) return SFailure{"it could not be read again: " + problems.front()};
  CString text = DesignText(technology);
  if (text.size() <= limit) return text;
  return SFailure{"it could not be read again: it takes " + IntText(static_cast<std::int64_t>(text.size())) +
                  " bytes, and a design file holds at most " + IntText(static_cast<std::int64_t>(limit)) + "."};
}

CResult<void> WriteDesignFile(const CString& path, const CTechnology& technology) {
  const CResult<CString> text = DesignFileText(technology);
  if (!text) return SFailure{"\"" + path + "\" is not written, since " + text.Error()};
  return WriteFileChecked(path, *text);
}

CResult<std::vector<std::unique_ptr<CDesign>>> OpenProjectDesigns(CProject& project, const CString& projectPath) {
  const CString folder = projectPath.substr(0, projectPath.rfind('/') + 1);
  std::vector<std::unique_ptr<CDesign>> opened;
  for (const CString& file : project.designFiles) {
    const CString path = file.starts_with('/') ? file : folder + file;
    CResult<std::unique_ptr<CDesign>> design = ReadAsDesign(path);
    if (!design) return SFailure{design.Error()};
    if ((*design)->IsKindOf(CProject::GetThisClass()))
      return SFailure{path + ": this is a project, and a project holds designs alone."};
    opened.push_back(std::move(*design));
  }
  for (std::size_t i = 0; i < opened.size(); ++i) project.AddDesign(opened[i].get(), project.designFiles[i]);
  return opened;
}

void InstallFileAccess() {
  CDesign::SetFileAccess({[](const CString& path) -> CDesign* {
                            CResult<std::unique_ptr<CDesign>> design = ReadAsDesign(path);
                            if (design) return design->release();
                            CAppError::SetLastErrorText(design.Error());
                            return nullptr;
                          },
                          [](const CString& path, const CDesign& design) {
                            const CResult<void> written = WriteDesignFile(path, design);
                            if (!written) CAppError::SetLastErrorText(written.Error());
                            return static_cast<bool>(written);
                          }});
}
