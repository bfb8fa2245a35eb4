#include "model/design/project.h"

CProject::CProject(EContent content) {
  if (content == EContent::DefaultTechnology) SetDefaultTechnology(false);
}
CProject::~CProject() {
  for (CDesign* design : m_designs) design->m_project = nullptr;
}

void CProject::AddDesign(CDesign* design) {
  if (design->m_project == this) return;
  if (design->m_project) design->m_project->RemoveDesign(design);
  design->m_project = this;
  m_designs.push_back(design);
}

void CProject::RemoveDesign(CDesign* design) {
  if (std::erase(m_designs, design) > 0) design->m_project = nullptr;
}
