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
/// One name for each file, whatever links lead to it.
CString PlaceOf(const CString& path) {
  std::error_code error;
  const fs::path place = fs::weakly_canonical(path, error);
  return error ? path : place.string();
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
  CResult<SOpenedFile> read = OpenDesignFile(path);
  if (!read) return read.Error();
  CTechnology* const technology = read->technology.get();
  std::map<CString, SOpen> opened;
  std::map<CString, SFileState> files{{PlaceOf(path), read->state}};
  opened[name] = {std::move(read->technology), path};
  if (CProject* const project = DynamicDowncast<CProject>(technology)) {
    CResult<std::vector<SOpenedFile>> designs = OpenProjectDesigns(*project, path);
    if (!designs) return designs.Error();
    for (std::size_t i = 0; i < designs->size(); ++i) {
      const fs::path file = (FolderOf(path) / project->designFiles[i]).lexically_normal();
      const auto taken = [&](const CString& called) { return m_open.contains(called) || opened.contains(called); };
      CString called = file.stem().string();
      const auto namesake = m_open.find(called);
      const bool twice = namesake != m_open.end() && namesake->second.path == file.string();
      if (taken(called) && !twice) called = file.filename().string();  // a board and a schematic often share a name
      if (taken(called)) return Taken(called);
      opened[called] = {std::move((*designs)[i].technology), file.string()};
      files.insert_or_assign(PlaceOf(file.string()), (*designs)[i].state);
    }
  }
  m_open.merge(opened);
  files.merge(m_files);
  m_files = std::move(files);
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

/// Why the file may not be replaced, empty when it may: one that this script never met is replaced like any other.
CString CDesigns::OthersChanges(const CString& path) const {
  const auto known = m_files.find(PlaceOf(path));
  if (known == m_files.end()) return {};
  const CResult<std::optional<SFileState>> now = LookAtFile(path);
  if (now && !HoldsOthersChanges(*now, known->second)) return {};
  return Quoted(path) + " has been changed by another program since it was read or written here" +
         (now ? "" : ", as far as can be seen: " + now.Error()) + "; \"overwrite\": true replaces it all the same";
}

CString CDesigns::Save(const CString& name, const CString& path, bool overwrite) {
  const auto found = m_open.find(name);
  if (found == m_open.end()) return NoDesign(name);
  SOpen& open = found->second;
  const CString target = path.empty() ? open.path : path;
  if (target.empty()) return Quoted(name) + " has no file yet, so \"path\" has to name one";
  if (CString why = overwrite ? CString() : OthersChanges(target); !why.empty()) return why;
  CProject* const project = DynamicDowncast<CProject>(open.technology.get());
  const CStringArray listed = project ? project->designFiles : CStringArray();
  if (project) ListDesigns(*project, target, open.path.empty() ? target : open.path);
  const CResult<SFileState> written = WriteDesignFile(target, *open.technology);
  if (!written) {
    if (project) project->designFiles = listed;
    return written.Error();
  }
  m_files.insert_or_assign(PlaceOf(target), *written);
  open.technology->Journal().MarkSaved();
  open.path = target;
  if (project) JoinDesigns(*project, target);
  return {};
}

CString CDesigns::Close(const CString& name) { return m_open.erase(name) ? CString() : NoDesign(name); }
