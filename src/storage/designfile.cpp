#include "storage/designfile.h"

#include "model/services/apperror.h"
#include "storage/checkedwriter.h"

namespace {
bool Fail(const CString& reason) {
  CAppError::SetLastErrorText(reason);
  return false;
}

/// A technology that is no design, such as a library, is refused.
std::unique_ptr<CDesign> AsDesign(std::unique_ptr<CTechnology> technology, const CString& path) {
  CDesign* const design = DynamicDowncast<CDesign>(technology.get());
  if (design) {
    technology.release();
  } else if (technology) {
    Fail(path + ": this is a library, not a design.");
  }
  return std::unique_ptr<CDesign>(design);
}
}  // namespace

std::unique_ptr<CTechnology> ReadDesignFile(const CString& path) {
  CString text, error;
  if (!ReadFileLimited(path, kMaxDesignFileSize, text, error)) {
    Fail(error);
    return nullptr;
  }
  CResult<std::unique_ptr<CTechnology>> read = ParseDesign(std::move(text), path);
  if (read) return std::move(*read);
  Fail(read.Error());
  return nullptr;
}

bool WriteDesignFile(const CString& path, const CTechnology& technology) {
  const CStringArray problems = technology.CheckValid();
  if (!problems.empty())
    return Fail("\"" + path + "\" is not written, since it could not be read again: " + problems.front());
  CString error;
  return WriteFileChecked(path, DesignText(technology), error) || Fail(error);
}

bool OpenProjectDesigns(CProject& project, const CString& projectPath, std::vector<std::unique_ptr<CDesign>>& designs) {
  const CString folder = projectPath.substr(0, projectPath.rfind('/') + 1);
  std::vector<std::unique_ptr<CDesign>> opened;
  for (const CString& file : project.designFiles) {
    const CString path = file.starts_with('/') ? file : folder + file;
    std::unique_ptr<CDesign> design = AsDesign(ReadDesignFile(path), path);
    if (!design) return false;
    if (design->IsKindOf(CProject::GetThisClass()))
      return Fail(path + ": this is a project, and a project holds designs alone.");
    opened.push_back(std::move(design));
  }
  for (std::size_t i = 0; i < opened.size(); ++i) {
    project.AddDesign(opened[i].get(), project.designFiles[i]);
    designs.push_back(std::move(opened[i]));
  }
  return true;
}

void InstallFileAccess() {
  CDesign::SetFileAccess({[](const CString& path) { return AsDesign(ReadDesignFile(path), path).release(); },
                          [](const CString& path, const CDesign& design) { return WriteDesignFile(path, design); }});
}
