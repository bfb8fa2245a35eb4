#include "technology/layers/layertypespage.h"

#include "model/services/application.h"
#include "technology/combos.h"

namespace {
using F = SLayerTypeFields;

bool IsElectrical(const CRecordBase& values) {
  return FieldsOf<CLayerType>(values).usage.value == ELayerUsage::Electrical;
}
bool IsForAllLayers(const CRecordBase& values) { return FieldsOf<CLayerType>(values).usage.value == ELayerUsage::All; }
bool IsNotElectrical(const CRecordBase& values) { return !IsElectrical(values); }
bool HasNoOversize(const CRecordBase& values) {
  return FieldsOf<CLayerType>(values).oversizeType.value == EOversizeType::None;
}

/// What an electrical layer always allows.
constexpr bool F::* kPermissions[] = {&F::surfacePads, &F::allLayerPads, &F::surfacePadInstances,
                                      &F::allLayerPadInstances, &F::vias};

std::vector<CColumn> MakeColumns() {
  std::vector<CColumn> columns{
      UsedMark(),
      Column<CLayerType>(Text::Name, &F::name).Width(160),
      Column<CLayerType>(Text::Usage, &F::usage)
          .Offers(&CLayerUsageComboBox::Items)
          .RefusedFromFileWhen(IsForAllLayers)
          .Width(120),
      Column<CLayerType>(Text::SurfacePads, &F::surfacePads).EnabledWhen(IsNotElectrical),
      Column<CLayerType>(Text::AllLayerPads, &F::allLayerPads).EnabledWhen(IsNotElectrical),
      Column<CLayerType>(Text::SurfacePadInstances, &F::surfacePadInstances).EnabledWhen(IsNotElectrical),
      Column<CLayerType>(Text::AllLayerPadInstances, &F::allLayerPadInstances).EnabledWhen(IsNotElectrical),
      Column<CLayerType>(Text::Vias, &F::vias).EnabledWhen(IsNotElectrical),
      Column<CLayerType>(Text::OversizeType, &F::oversizeType),
      Column<CLayerType>(Text::Oversize, &F::oversize).EmptyWhen(HasNoOversize),
      Column<CLayerType>(Text::PlacementArea, &F::placementArea).EnabledAtFillWhen(IsNotElectrical),
  };
  if (CApplication::IsExtended()) {
    columns.push_back(Column<CLayerType>(Text::BreakShapes, &F::breakShapes).EnabledAtFillWhen(IsNotElectrical));
    columns.push_back(Column<CLayerType>(Text::BreakGap, &F::breakShapesGap).EnabledAtFillWhen(IsNotElectrical));
  }
  return columns;
}
}  // namespace

CLayerTypesPage::CLayerTypesPage(CDesign& design)
    : CRecordPage(design,
                  {.title = Text::LayerTypes,
                   .settings = "Settings\\LayerTypes",
                   .nameError = Text::RowNameInvalid,
                   .inUse = Text::InUseOrRequired,
                   .exportName = Text::LayerTypesFile,
                   .validName = &ValidLayerTypeName,
                   .twoPasses = false,
                   .redraws = true},
                  design.layerTypes, MakeColumns()) {}

bool CLayerTypesPage::CheckRow(const SRowCheck& check) {
  if (!check.record || !CTechnology::IsUsed(*check.record)) return true;
  const auto& before = static_cast<const CLayerType&>(*check.record);
  const auto& after = static_cast<const CLayerType&>(check.values);
  return before.GetUsage() == after.GetUsage() || Refuse(check, &F::usage, Text::LayerTypeUsageFixed, before.GetName(),
                                                         before.GetUsageString(), after.GetUsageString());
}

void CLayerTypesPage::Derive(const CField& changed, const CRecordBase&, CRecordBase& draft) {
  if (changed.type->choices == &ELayerUsage::Choices || changed.type->choices == &EOversizeType::Choices)
    AdjustImport(nullptr, draft);
}

void CLayerTypesPage::AdjustImport(const CRecordBase*, CRecordBase& values) {
  auto& type = static_cast<CLayerType&>(values);
  if (IsElectrical(type))
    for (bool F::* permission : kPermissions) type.Set(permission, true);
  if (HasNoOversize(type)) type.SetOversize(0);
}

/// A type that is not electrical leaves every cell of the new row open.
void CLayerTypesPage::InitNew(CRecordBase& draft) {
  static_cast<CLayerType&>(draft).SetUsage(ELayerUsage::Documentation);
}

bool CLayerTypesPage::EditDraft(int row, CRecordBase& draft) {
  return CEditLayerTypeDialog(*this, row, static_cast<CLayerType&>(draft)).DoModal() == CDialog::kOk;
}
