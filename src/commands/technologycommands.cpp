// The commands that open the technology dialog, and the one that changes the units in which it shows lengths.
#include "commands/commands.h"
#include "model/services/apperror.h"
#include "model/services/application.h"
#include "technology/layers/layerspage.h"
#include "technology/layers/layerspanspage.h"
#include "technology/sheet/pendingpages.h"
#include "technology/sheet/sizesdialog.h"
#include "technology/styles/padstylespage.h"
#include "technology/styles/textstylespage.h"
#include "technology/styles/trackstylespage.h"
#include "technology/styles/unitsdialog.h"

namespace {
/// Runs the dialog in an undo level that is kept whatever the person pressed: pages write on OK and Apply alone.
template <class Prepare>
void RunTechnology(CDesign* design, const char* command, const CRuntimeClass* initialPage, Prepare prepare) {
  const CCommandScope scope(design, command);
  const CUndoLevel level(*design, kTechnologyLevel);
  CSizesDialog dialog(design, kTechnologyLevel, initialPage);
  prepare(dialog);
  dialog.DoModal();
}

void RunOnPage(CDesign* design, const char* command, const CRuntimeClass* page) {
  RunTechnology(design, command, nullptr, [=](CSizesDialog& dialog) { dialog.SetPage(page); });
}
}  // namespace

void ChangeLayers(CDesign* design) {
  RunTechnology(design, "ChangeLayers", CLayersPage::GetThisClass(), [](CSizesDialog&) {});
}
void ChangeLayerTypes(CDesign* design) { RunOnPage(design, "ChangeLayerTypes", CLayersPage::GetThisClass()); }
void ChangeLayerSpans(CDesign* design) { RunOnPage(design, "ChangeLayerSpans", CLayerSpansPage::GetThisClass()); }
void ChangeNetClasses(CDesign* design) { RunOnPage(design, "ChangeNetClasses", CNetClassesPage::GetThisClass()); }

void ChangeNets(CDesign* design) {
  if (!design->GetDefaults()->GetNetClass()) {
    CAppError::ReportError(Text::NoDefaultNetClass);
    return;
  }
  RunOnPage(design, "ChangeNets", CNetsPage::GetThisClass());
}

void ChangeSpacings(CDesign* design) { RunOnPage(design, "ChangeSpacings", CSpacingsPage::GetThisClass()); }
void ChangeWireLinkLengths(CDesign* design) {
  RunOnPage(design, "ChangeWireLinkLengths", CWireLengthsPage::GetThisClass());
}

void ChangePadStyles(CDesign* design) { RunOnPage(design, "ChangePadStyles", CPadStylesPage::GetThisClass()); }
void ChangeTrackStyles(CDesign* design) { RunOnPage(design, "ChangeTrackStyles", CTrackStylesPage::GetThisClass()); }
void ChangeTextStyles(CDesign* design) { RunOnPage(design, "ChangeTextStyles", CTextStylesPage::GetThisClass()); }

void ChangeUnits(CDesign* design) {
  constexpr CTextId kLevel = Text::Units;
  const CCommandScope scope(design, "ChangeUnits");
  const CUndoLevel level(*design, kLevel);
  CUnitsDialog(design).DoModal();
}

void ChangeSizes(CDesign* design) {
  RunTechnology(design, "ChangeSizes", nullptr, [](CSizesDialog& dialog) {
    if (CApplication::IsTarvik()) dialog.RestoreReducedPage();
  });
}
