// What the host asks for at start and before it shows a menu.
#include <algorithm>

#include "commands/commands.h"
#include "model/services/application.h"
#include "model/services/hostsettings.h"

namespace {
CSetOp::SFunctions theFunctions;
}

void CSetOp::InitSetOpFunctions(ManageLibrary technologyManager, ChangeItemValues changeValues,
                                CanShowProperties propertiesEnabled, EditNamePair editNamePair,
                                ChangeColoursOfComponents changeComponentColours) {
  theFunctions = {technologyManager, changeValues, propertiesEnabled, editNamePair, changeComponentColours};
}

const CSetOp::SFunctions& CSetOp::Functions() { return theFunctions; }

void InitSetOpInterface() { CSetOp::InitSetOpFunctions(nullptr, nullptr, &PropertiesEnabled, nullptr, nullptr); }

void Set_RegisterIgnoreDesignChange() {
  static constexpr unsigned kIgnored[] = {Text::Colours, Text::Grids, Text::RulerStops, Text::Units, 0};
  CDesign::SetIgnoreUndo(kIgnored);
}

bool PropertiesEnabled(CDesign* design) {
  if (design->InUndoLevel()) return false;
  const CSelectionOverview& selection = design->Selection();
  const CDesignItem* const first = selection.First();
  if (!first) return design->IsKindOf(CPcbDesign::GetThisClass()) || design->IsKindOf(CScmDesign::GetThisClass());
  static constexpr const CRuntimeClass* (*kWithProperties[])() = {&CFreePad::GetThisClass,
                                                                  &CPadInstance::GetThisClass,
                                                                  &CSymbolInstance::GetThisClass,
                                                                  &CFreeText::GetThisClass,
                                                                  &CNetName::GetThisClass,
                                                                  &CConnection::GetThisClass,
                                                                  &CVia::GetThisClass,
                                                                  &CBus::GetThisClass,
                                                                  &CSymbolOrigin::GetThisClass,
                                                                  &CValuePosition::GetThisClass,
                                                                  &CShapeItem::GetThisClass,
                                                                  &CError::GetThisClass,
                                                                  &CBlockOrigin::GetThisClass,
                                                                  &CPanelPcbOrigin::GetThisClass,
                                                                  &CDibInstance::GetThisClass,
                                                                  &CNote::GetThisClass};
  if (std::none_of(std::begin(kWithProperties), std::end(kWithProperties),
                   [&](const auto& kind) { return first->IsKindOf(kind()); }))
    return false;
  if (selection.IsSingleTypeSelected()) return true;
  if (!first->Owner()) return false;
  return selection.AreJustBlocksSelected() || selection.AreJustBlockPortsSelected() ||
         selection.AreJustCalloutsSelected() ||
         (selection.AreJustDimensionsSelected() && selection.AreSelectedDimensionsCompatibleTypes()) ||
         selection.AreJustDrillTablesSelected() || selection.AreJustInsertedFilesSelected() ||
         selection.AreJustInsertedReportsSelected() || selection.AreJustPanelPcbsSelected() ||
         selection.AreJustLayerStacksSelected();
}

void SetBrenloHardwiredPrefs() {
  constexpr int kSchematic = 0;
  constexpr int kPcb = 1;
  constexpr int kPushAside = 15329;
  if (CApplication::IsCorvinaPro()) return;
  CNoise::SetEnabled(false);
  CDesign::SetDocNameFirst(0);
  CDesign::SetOverwriteAssociatedFiles(true);
  CDesign::SetCopyAssociatedFiles(0);
  SetComponentEditGrid(true);
  SetCopySetting(0, 1);
  SetCopySetting(1, 0);
  SetCopySetting(2, 1);
  SetCopySetting(3, 0);
  CProject::SetAllSheets(3);
  CProject::SetOpenAllSheets(0);
  SetHeadupDisplayVisible(false);
  CProject::SetSyncSheets(false);
  SetSingleClickFinish(kSchematic, true);
  SetEditSegMoveCursor(kSchematic, false);
  SetEditTowardsNearest(kSchematic, false);
  SetDeleteAllGates(false);
  SetOnlySelectIfCompletelyFramed(kSchematic, false);
  SetSelectFramedRightToLeft(kSchematic, false);
  SetAddConDisplaysCompNetNames(false);
  SetSingleClickFinish(kPcb, true);
  SetEditSegMoveCursor(kPcb, false);
  SetEditTowardsNearest(kPcb, false);
  if (CApplication::IsTarvik()) COnlineDRC::SetEnabled(false);
  COnlineDRC::SetNeckTracks(false);
  SetPlacementPushAside(kPushAside);
  SetOnlySelectIfCompletelyFramed(kPcb, false);
  SetSelectFramedRightToLeft(kPcb, false);
  CAppInstance::SetEnabled(false);
}
