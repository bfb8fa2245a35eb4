// Designs are read and written by what the program installs.
#include "model/design/design.h"
#include "model/services/apperror.h"

namespace {
CDesign::SFileAccess& FileAccess() {
  static CDesign::SFileAccess access;
  return access;
}
}  // namespace

void CDesign::SetFileAccess(SFileAccess access) { FileAccess() = std::move(access); }

CDesign* CDesign::ReadDesign(const CString& path) {
  if (FileAccess().read) return FileAccess().read(path);
  CAppError::SetLastError(Text::NoFileAccess, path);
  return nullptr;
}

bool CDesign::SaveDesign(const CString& path, CDesign* design) {
  if (!FileAccess().write) {
    CAppError::SetLastError(Text::NoFileAccess, path);
    return false;
  }
  if (!FileAccess().write(path, *design)) return false;
  design->Journal().MarkSaved();
  return true;
}

void CDesign::DestroyDesign(CDesign* design) { delete design; }
