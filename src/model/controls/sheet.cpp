#include "model/controls/sheet.h"

#include <algorithm>

#include "model/services/registry.h"

void CPropertyPagePlus::SetModified(bool modified) {
  m_modified = modified;
  Changed();
}

void CPropertyPagePlus::CancelToClose() {
  if (m_sheet) m_sheet->CancelToClose();
}

CPropertySheetPlus::CPropertySheetPlus(CTextId caption, int initialPage)
    : CDialog(caption), m_active(static_cast<std::size_t>(std::max(initialPage, 0))) {
  AddCommand("Apply", [this] { ApplyPages(); }, [this] { return IsModified(); });
}

void CPropertySheetPlus::AddPage(CPropertyPagePlus* page) {
  page->m_sheet = this;
  m_pages.push_back(page);
}

bool CPropertySheetPlus::SetPage(const CRuntimeClass* pageClass) {
  for (std::size_t index = 0; index < m_pages.size(); ++index) {
    if (!m_pages[index]->IsKindOf(pageClass)) continue;
    Activate(index);
    return true;
  }
  return false;
}

bool CPropertySheetPlus::SetPage(std::string_view className) {
  for (std::size_t index = 0; index < m_pages.size(); ++index) {
    if (className != m_pages[index]->GetRuntimeClass()->name) continue;
    Activate(index);
    return true;
  }
  return false;
}

void CPropertySheetPlus::Activate(std::size_t index) {
  m_active = index;
  if (!IsOpen() || index >= m_pages.size()) return;
  CPropertyPagePlus& page = *m_pages[index];
  if (!page.m_shown) {
    page.m_shown = true;
    page.OnInitDialog();
  }
  page.OnSetActive();
  Changed();
}

CPanel& CPropertySheetPlus::ActivePanel() {
  CPropertyPagePlus* const page = GetActivePage();
  return page ? static_cast<CPanel&>(*page) : *this;
}

const CPropertyPagePlus* CPropertySheetPlus::GetSpeakingPage() const {
  return m_applied == GetActivePage() ? nullptr : m_applied;
}

bool CPropertySheetPlus::IsModified() const {
  return std::any_of(m_pages.begin(), m_pages.end(), [](const CPropertyPagePlus* page) { return page->IsModified(); });
}

void CPropertySheetPlus::OnInitDialog() {
  if (m_active >= m_pages.size()) m_active = 0;
  Activate(m_active);
}

void CPropertySheetPlus::OnDestroy() {
  for (CPropertyPagePlus* page : m_pages)
    if (page->IsShown()) page->OnDestroy();
}

bool CPropertySheetPlus::ApplyPages() {
  m_refused = true;
  for (std::size_t index = 0; index < m_pages.size(); ++index) {
    CPropertyPagePlus& page = *m_pages[index];
    if (!page.IsShown()) continue;
    CAppError::SetLastError(0);
    struct SApplied {
      const CPropertyPagePlus*& page;
      ~SApplied() { page = nullptr; }
    };
    m_applied = &page;
    bool isDone = false;
    {
      const SApplied applied{m_applied};
      isDone = page.OnApply();
    }
    if (!isDone) {
      if (m_active != index) Activate(index);
      return false;
    }
    page.m_modified = false;
  }
  m_refused = false;
  CancelToClose();
  Changed();
  return true;
}

void CPropertySheetPlus::OnOk() {
  if (ApplyPages()) EndDialog(kOk);
}

void CPropertySheetPlus::SaveActivePage(const CString& key) const {
  if (const CPropertyPagePlus* page = GetActivePage())
    CAppRegistry(key).SetValue("ActivePage", page->GetRuntimeClass()->name);
}

void CPropertySheetPlus::RestoreActivePage(const CString& key) {
  CString className;
  if (CAppRegistry(key).GetValue("ActivePage", className)) SetPage(std::string_view(className));
}
