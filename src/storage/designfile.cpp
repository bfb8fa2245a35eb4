#include "storage/designfile.h"

#include <algorithm>

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

bool HoldsBuiltInLayerFirst(const CTechnology& technology) {
  const CLayer* const first = technology.layers.First();
  return first && first->IsBuiltIn() &&
         technology.FindLayer(ELayerUsage::All, ELayerSide::All, ELayerBias::Horizontal, nullptr) == first &&
         std::count_if(technology.layers.begin(), technology.layers.end(),
                       [](const CLayer& layer) { return layer.IsBuiltIn(); }) == 1;
}
}  // namespace

CString UnreadableReason(const CTechnology& technology) {
  for (const CCollectionBase* collection : technology.Collections()) {
    if (!collection->Kind().nameField) continue;
    for (const CRecordBase* one = collection->FirstRecord(); one; one = one->Next()) {
      if (one->RecordName().empty()) return CString("a record in \"") + collection->Name() + "\" has no name";
      if (collection->FindRecord(one->RecordName()) != one)
        return "the name \"" + one->RecordName() + "\" stands in \"" + collection->Name() + "\" twice";
    }
  }
  const CRuntimeClass* const layered[] = {CPcbDesign::GetThisClass(), CPcbSymDesign::GetThisClass(),
                                          CPcbSymbolLibrary::GetThisClass()};
  const bool wantsLayers =
      std::any_of(std::begin(layered), std::end(layered), [&](auto* kind) { return technology.IsKindOf(kind); });
  if (wantsLayers && !HoldsBuiltInLayerFirst(technology))
    return "the first of its layers, and no other, must be the built-in one: a name that begins with \"[\", side 3, "
           "usage 1, bias 1 and no type";
  return {};
}

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
  const CString reason = UnreadableReason(technology);
  if (!reason.empty())
    return Fail("\"" + path + "\" is not written, since it could not be read again: " + reason + ".");
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
  for (std::unique_ptr<CDesign>& design : opened) {
    project.AddDesign(design.get());
    designs.push_back(std::move(design));
  }
  return true;
}

void InstallFileAccess() {
  CDesign::SetFileAccess({[](const CString& path) { return AsDesign(ReadDesignFile(path), path).release(); },
                          [](const CString& path, const CDesign& design) { return WriteDesignFile(path, design); }});
}
