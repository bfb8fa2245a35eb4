#include "model/design/project.h"

#include <algorithm>
#include <iterator>

CProject::CProject(EContent content) {
  if (content == EContent::DefaultTechnology) SetDefaultTechnology(false);
}
CProject::~CProject() {
  for (CDesign* design : m_designs) design->m_project = nullptr;
}

void CProject::AddDesign(CDesign* design, const CString& file) {
  if (design->m_project != this) {
    if (design->m_project) design->m_project->RemoveDesign(design);
    design->m_project = this;
    m_designs.push_back(design);
  }
  if (!file.empty()) design->m_projectFile = file;
}

void CProject::RemoveDesign(CDesign* design) {
  if (std::erase(m_designs, design) == 0) return;
  design->m_project = nullptr;
  design->m_projectFile.clear();
}

CStringArray CProject::FilesNotOpen() const {
  CStringArray files;
  std::copy_if(designFiles.begin(), designFiles.end(), std::back_inserter(files), [this](const CString& file) {
    return std::ranges::none_of(m_designs, [&](const CDesign* design) { return design->m_projectFile == file; });
  });
  return files;
}

/// A position is the record of the values of a design, which no other design shares.
std::vector<CDesign*>::const_iterator CProject::PlaceOf(POSITION position) const {
  return std::ranges::find_if(m_designs, [&](const CDesign* design) { return &design->DesignValues() == position; });
}

template <class Test>
CDesign* CProject::WalkDesigns(std::vector<CDesign*>::const_iterator from, POSITION& position, Test test) const {
  const auto at = std::find_if(from, m_designs.end(), test);
  const auto next = at == m_designs.end() ? at : std::find_if(at + 1, m_designs.end(), test);
  position = next == m_designs.end() ? nullptr : &(*next)->DesignValues();
  return at == m_designs.end() ? nullptr : *at;
}

namespace {
auto IsOtherSchematic(const CDesign* asking) {
  return [=](const CDesign* one) { return one != asking && one->IsKindOf(CScmDesign::GetThisClass()); };
}
auto HoldsNet(std::string_view net, const CDesign* asking) {
  return [=](const CDesign* one) { return one != asking && one->FindNet(net); };
}
}  // namespace

CDesign* CProject::FirstNetClassDesign(POSITION& position, const CDesign* asking) const {
  return WalkDesigns(m_designs.begin(), position, IsOtherSchematic(asking));
}

CDesign* CProject::NextNetClassDesign(POSITION& position, const CDesign* asking) const {
  return WalkDesigns(PlaceOf(position), position, IsOtherSchematic(asking));
}

CDesign* CProject::FirstNetDesign(std::string_view net, POSITION& position, const CDesign* asking) const {
  return WalkDesigns(m_designs.begin(), position, HoldsNet(net, asking));
}

CDesign* CProject::NextNetDesign(std::string_view net, POSITION& position, const CDesign* asking) const {
  return WalkDesigns(PlaceOf(position), position, HoldsNet(net, asking));
}
