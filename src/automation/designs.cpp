#include "automation/designs.h"

#include <algorithm>
#include <filesystem>

#include "model/base/textfault.h"
#include "storage/designfile.h"

namespace fs = std::filesystem;

namespace {
CString Taken(const CString& name) { return Quoted(name) + " is open already"; }

fs::path FolderOf(const CString& path) {
  std::error_code error;
  const fs::path whole = fs::absolute(path, error);
  return (error ? fs::path(path) : whole).lexically_normal().parent_path();
}
fs::path OwnPath(const CString& path) { return FolderOf(path) / fs::path(path).filename(); }
}  // namespace

CString NoDesign(const CString& name) { return "no design is called " + Quoted(name); }

CTechnology* CDesigns::Find(const CString& name) const {
  const auto found = m_open.find(name);
  return found == m_open.end() ? nullptr : found->second.technology.get();
}

CString CDesigns::NameOf(const CObject& object) const {
  for (const auto& [name, open] : m_open)
    if (open.technology.get() == &object) return name;
  return object.GetObjectName();
}

CString CDesigns::New(const CString& name, const CString& className, const CString& project) {
  if (name.empty()) return "a design needs a name";
  if (m_open.contains(name)) return Taken(name);
  std::unique_ptr<CTechnology> technology = MakeTechnology(className, EContent::DefaultTechnology);
  if (!technology) return Quoted(className) + " is no kind of design";
  if (!project.empty()) {
    CProject* const home = DynamicDowncast<CProject>(Find(project));
    CDesign* const design = DynamicDowncast<CDesign>(technology.get());
    if (!home) return Quoted(project) + " is no open project";
    if (!design || design->IsKindOf(CProject::GetThisClass())) return "a " + className + " cannot be part of a project";
    home->AddDesign(design);
  }
  m_open[name].technology = std::move(technology);
  return {};
}

CString CDesigns::Open(const CString& name, const CString& path) {
  if (name.empty()) return "a design needs a name";
  if (m_open.contains(name)) return Taken(name);
  CResult<std::unique_ptr<CTechnology>> read = ReadDesignFile(path);
  if (!read) return read.Error();
  CTechnology* const technology = read->get();
  std::map<CString, SOpen> opened;
  opened[name] = {std::move(*read), path};
  if (CProject* const project = DynamicDowncast<CProject>(technology)) {
    CResult<std::vector<std::unique_ptr<CDesign>>> designs = OpenProjectDesigns(*project, path);
    if (!designs) return designs.Error();
    for (std::size_t i = 0; i < designs->size(); ++i) {
      const fs::path file = (FolderOf(path) / project->designFiles[i]).lexically_normal();
      const auto taken = [&](const CString& called) { return m_open.contains(called) || opened.contains(called); };
      CString called = file.stem().string();
      const auto namesake = m_open.find(called);
      const bool twice = namesake != m_open.end() && namesake->second.path == file.string();
      if (taken(called) && !twice) called = file.filename().string();  // a board and a schematic often share a name
      if (taken(called)) return Taken(called);
      opened[called] = {std::move((*designs)[i]), file.string()};
    }
  }
  m_open.merge(opened);
  for (const auto& [called, open] : m_open)
    if (CProject* const project = DynamicDowncast<CProject>(open.technology.get())) JoinDesigns(*project, open.path);
  return {};
}

/// Takes the open designs that the project lists in, and notes which of its entries each of its designs is.
void CDesigns::JoinDesigns(CProject& project, const CString& path) const {
  for (const auto& [name, open] : m_open) {
    CDesign* const design = DynamicDowncast<CDesign>(open.technology.get());
    if (!design || design->IsKindOf(CProject::GetThisClass()) || open.path.empty() || path.empty()) continue;
    if (design->GetProject() && design->GetProject() != &project) continue;
    for (const CString& file : project.designFiles)
      if ((FolderOf(path) / file).lexically_normal() == OwnPath(open.path)) project.AddDesign(design, file);
  }
}

/// Makes the list of a project that goes to `path` complete. Entries beside the old file are told from the new one.
void CDesigns::ListDesigns(CProject& project, const CString& path, const CString& oldPath) const {
  const fs::path folder = FolderOf(path), oldFolder = FolderOf(oldPath);
  if (folder != oldFolder)
    for (CString& file : project.designFiles)
      if (fs::path(file).is_relative()) file = (oldFolder / file).lexically_proximate(folder).string();
  for (const auto& [name, open] : m_open) {
    const CDesign* const design = DynamicDowncast<CDesign>(open.technology.get());
    if (!design || design->GetProject() != &project || open.path.empty()) continue;
    const fs::path own = OwnPath(open.path);
    if (std::none_of(project.designFiles.begin(), project.designFiles.end(),
                     [&](const CString& file) { return (folder / file).lexically_normal() == own; }))
      project.designFiles.push_back(own.lexically_proximate(folder).string());
  }
}

CString CDesigns::Save(const CString& name, const CString& path) {
  const auto found = m_open.find(name);
  if (found == m_open.end()) return NoDesign(name);
  SOpen& open = found->second;
  const CString target = path.empty() ? open.path : path;
  if (target.empty()) return Quoted(name) + " has no file yet, so \"path\" has to name one";
  CProject* const project = DynamicDowncast<CProject>(open.technology.get());
  const CStringArray listed = project ? project->designFiles : CStringArray();
  if (project) ListDesigns(*project, target, open.path.empty() ? target : open.path);
  if (const CResult<void> written = WriteDesignFile(target, *open.technology); !written) {
    if (project) project->designFiles = listed;
    return written.Error();
  }
  open.technology->Journal().MarkSaved();
  open.path = target;
  if (project) JoinDesigns(*project, target);
  return {};
}

CString CDesigns::Close(const CString& name) { return m_open.erase(name) ? CString() : NoDesign(name); }
