#include "model/controls/panel.h"

#include <algorithm>

#include "model/services/apperror.h"

const SCommand* CPanel::FindCommand(std::string_view name) const {
  const auto at =
      std::find_if(m_commands.begin(), m_commands.end(), [&](const SCommand& one) { return name == one.name; });
  return at == m_commands.end() ? nullptr : &*at;
}

void CPanel::ShowCommand(std::string_view name, bool visible) {
  for (SCommand& command : m_commands)
    if (name == command.name) command.visible = visible;
}

void CPanel::DisableCommand(std::string_view name) {
  for (SCommand& command : m_commands)
    if (name == command.name) command.enabled = [] { return false; };
}

void CPanel::FailCommand(const CString& why) {
  m_failure = why;
  CAppError::ReportError(why);
}

CFormField* CPanel::FindField(std::string_view name) const {
  const auto at =
      std::find_if(m_fields.begin(), m_fields.end(), [&](const CFormField* one) { return name == one->Name(); });
  return at == m_fields.end() ? nullptr : *at;
}

CEditGrid* CPanel::FindGrid(std::string_view name) const {
  const auto at = std::find_if(m_grids.begin(), m_grids.end(), [&](const SNamedGrid& one) { return name == one.name; });
  return at == m_grids.end() ? nullptr : at->grid;
}

CFormField* CPanel::FocusField() const {
  const auto at = std::find_if(m_fields.begin(), m_fields.end(), [](const CFormField* one) { return one->HasFocus(); });
  return at == m_fields.end() ? nullptr : *at;
}
