#include "commands/checkdesign.h"

#include "model/base/catalogue.h"
#include "technology/sheet/pages.h"

SDesignCheck CheckDesign(CDesign& design) {
  SDesignCheck check;
  for (const CString& problem : design.CheckValid()) check.violations.push_back({TextOf(Text::Design), problem});
  for (const SSheetPage& entry : SheetPages()) {
    if (!HasPage(entry, design, nullptr)) continue;
    const std::unique_ptr<CTechDialogPage> page = entry.make(design);
    const CFindings findings = page->Survey();
    for (const SFinding& finding : findings.All())
      (finding.kind == EFinding::Refusal ? check.violations : check.warnings)
          .push_back({page->GetTitle(), CTechDialogPage::SurveyText(finding)});
  }
  // A file holds texts as they are, so a spreadsheet that opens one runs such a name.
  for (const CCollectionBase* collection : design.Collections())
    for (const CRecordBase* one = collection->FirstRecord(); one; one = one->Next())
      if (one->RecordName().starts_with('=') || one->RecordName().starts_with('@'))
        check.warnings.push_back(
            {TextOf(one->Kind().title), TextOf(Text::NameLikeFormula, CStringArray{one->RecordName()})});
  return check;
}
