#include "technology/sheet/pages.h"

#include "model/services/application.h"
#include "technology/layers/layerspage.h"
#include "technology/layers/layerspanspage.h"
#include "technology/layers/layertypespage.h"
#include "technology/sheet/pendingpages.h"
#include "technology/styles/padstylespage.h"
#include "technology/styles/textstylespage.h"
#include "technology/styles/trackstylespage.h"

namespace {
template <class Page>
std::unique_ptr<CTechDialogPage> Make(CDesign& design) {
  return std::make_unique<Page>(design);
}
template <class Page>
constexpr SSheetPage Entry(unsigned full, unsigned reduced, unsigned narrowed = 0) {
  return {&Page::GetThisClass, &Make<Page>, full, reduced, narrowed};
}
constexpr unsigned kNever = 0;
constexpr unsigned kAny = 63;
constexpr unsigned kStyled = kAny & ~kProject;
constexpr unsigned kLayered = kPcb | kPcbSym;
constexpr unsigned kWired = kPcb | kScm;

constexpr SSheetPage kPages[] = {
    Entry<CPadStylesPage>(kStyled, kAny),
    Entry<CTextStylesPage>(kStyled, kAny),
    Entry<CLineStylesPage>(kStyled, kAny),
    Entry<CHatchStylesPage>(kStyled, kNever),
    Entry<CTrackStylesPage>(kWired, kWired),
    Entry<CLayersPage>(kLayered, kLayered, kAny),
    Entry<CLayerTypesPage>(kLayered, kLayered, kAny),
    Entry<CLayerSpansPage>(kPcb, kNever, kPcb),
    Entry<CNetsPage>(kProject | kWired, kWired),
    Entry<CNetClassesPage>(kProject | kWired, kWired),
    Entry<CAttributeNamesPage>(kAny & ~kOtherKind, kNever),
    Entry<CSpacingsPage>(kLayered, kLayered),
    Entry<CRulesPage>(kLayered, kLayered),
    Entry<CCompRulesPage>(kPcb, kNever),
    Entry<CCompColoursPage>(kWired, kNever),
    Entry<CVariantsPage>(kProject | kWired, kNever),
    Entry<CWireLengthsPage>(kPcb, kNever),
};
}  // namespace

unsigned SheetKindOf(const CDesign& design) {
  if (design.IsKindOf(CProject::GetThisClass())) return kProject;
  if (design.IsKindOf(CPcbDesign::GetThisClass())) return kPcb;
  if (design.IsKindOf(CScmDesign::GetThisClass())) return kScm;
  if (design.IsKindOf(CPcbSymDesign::GetThisClass())) return kPcbSym;
  if (design.IsKindOf(CScmSymDesign::GetThisClass())) return kScmSym;
  return kOtherKind;
}

std::span<const SSheetPage> SheetPages() { return kPages; }

bool HasPage(const SSheetPage& page, const CDesign& design, const CRuntimeClass* initialPage) {
  const unsigned kind = SheetKindOf(design);
  if (!CApplication::IsTarvik() && !CApplication::IsCorvina()) return (page.full & kind) != 0;
  if (initialPage) {
    const bool isSpans = page.pageClass() == CLayerSpansPage::GetThisClass();
    return initialPage == CLayersPage::GetThisClass() && (page.narrowed & kind) != 0 &&
           !(isSpans && CApplication::IsCorvina());
  }
  const bool isLayers =
      page.pageClass() == CLayersPage::GetThisClass() || page.pageClass() == CLayerTypesPage::GetThisClass();
  return (page.reduced & kind) != 0 && (!isLayers || CApplication::IsCorvina());
}
