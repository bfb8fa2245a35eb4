#include "technology/sheet/sizesdialog.h"

#include "model/services/application.h"
#include "technology/sheet/pages.h"

namespace {
constexpr const char* kKey = "Settings\\Styles";
constexpr const char* kReducedKey = "Settings\\LastBrenloStyle";
constexpr std::size_t kReducedPages = 4;  // the pages whose place the reduced sheet remembers
}  // namespace

CSizesDialog::CSizesDialog(CDesign* design, CTextId captionAndUndoId, const CRuntimeClass* initialPage)
    : CPropertySheetPlus(captionAndUndoId), m_design(design) {
  for (const SSheetPage& page : SheetPages()) {
    if (!HasPage(page, *design, initialPage)) continue;
    m_ownPages.push_back(page.make(*design));
    AddPage(m_ownPages.back().get());
  }
  if (initialPage && !CApplication::IsTarvik()) {
    SetPage(initialPage);
  } else {
    RestoreActivePage(kKey);
  }
  SetSizeRegistryKey(kKey);
}

void CSizesDialog::RestoreReducedPage() { RestoreActivePage(kReducedKey); }

void CSizesDialog::OnCommand(const SCommand& command) {
  SaveActivePage(kKey);
  if (CApplication::IsTarvik() && GetActiveIndex() < kReducedPages) SaveActivePage(kReducedKey);
  CPropertySheetPlus::OnCommand(command);
}

void CSizesDialog::OnDestroy() {
  CPropertySheetPlus::OnDestroy();
  if (m_design) CEvt::Send("TechnologyChanged", m_design);
}
