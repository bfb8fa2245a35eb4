#include "commands/checkdesign.h"

#include "model/base/catalogue.h"
#include "model/services/userinterface.h"
#include "technology/recordpage.h"
#include "technology/sheet/pages.h"

namespace {
/// Answers every question with going on, and keeps what was said.
class CListener final : public CNoUserInterface {
 public:
  EAnswer ShowMessage(const SMessage& message) override {
    heard.push_back(message.text);
    return message.buttons == EButtons::YesNo ? EAnswer::Yes : EAnswer::Ok;
  }
  CStringArray heard;
};
}  // namespace

SDesignCheck CheckDesign(CDesign& design) {
  SDesignCheck check;
  for (const CString& problem : design.CheckValid()) check.violations.push_back({TextOf(Text::Design), problem});
  for (const SSheetPage& entry : SheetPages()) {
    if (!HasPage(entry, design, nullptr)) continue;
    CListener listener;
    const CUserInterfaceScope scope(listener);
    const std::unique_ptr<CTechDialogPage> page = entry.make(design);
    CRecordPage* const records = DynamicDowncast<CRecordPage>(static_cast<CObject*>(page.get()));
    if (!records) continue;
    for (const CString& problem : records->Survey()) check.violations.push_back({page->GetTitle(), problem});
    for (const CString& said : listener.heard) check.warnings.push_back({page->GetTitle(), said});
  }
  return check;
}
