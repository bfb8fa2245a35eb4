#include "technology/layers/layertypespage.h"

#include <algorithm>

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

CColumn PermissionColumn(bool F::* permission) { return Column(permission).EnabledWhen(IsNotElectrical); }
}  // namespace

CLayerTypesPage::CLayerTypesPage(CDesign& design)
    : CRecordPage(design, design.layerTypes,
                  {.title = Text::LayerTypes,
                   .settings = "Settings\\LayerTypes",
                   .nameError = Text::RowNameInvalid,
                   .inUse = Text::InUseOrRequired,
                   .exportName = Text::LayerTypesFile,
                   .validName = &ValidLayerTypeName,
                   .rowByRow = true,
                   .redraws = true}) {
  Columns({
      UsedMark(),
      Column(&F::name).Width(160),
      Column(&F::usage).Offers(&CLayerUsageComboBox::Items).RefusedFromFileWhen(IsForAllLayers).Width(120),
      PermissionColumn(&F::surfacePads),
      PermissionColumn(&F::allLayerPads),
      PermissionColumn(&F::surfacePadInstances),
      PermissionColumn(&F::allLayerPadInstances),
      PermissionColumn(&F::vias),
      Column(&F::oversizeType),
      Column(&F::oversize).EmptyWhen(HasNoOversize),
      Column(&F::placementArea).EnabledAtFillWhen(IsNotElectrical),
      Group(CApplication::IsExtended())
          .Of({Column(&F::breakShapes).EnabledAtFillWhen(IsNotElectrical),
               Column(&F::breakShapesGap).EnabledAtFillWhen(IsNotElectrical)}),
  });
  AddForm(RecordForm<CEditLayerTypeDialog>(Text::LayerType));
}

void CLayerTypesPage::CheckValues(const SCheckedRow& row, CFindings& findings) const {
  const auto* const before = row.Before<CLayerType>();
  const auto& after = row.As<CLayerType>();
  if (before && CTechnology::IsUsed(*before) && before->GetUsage() != after.GetUsage())
    findings.Add(row, &F::usage, Text::LayerTypeUsageFixed, before->GetName(), before->GetUsageString(),
                 after.GetUsageString());
}

/// A file may hold what nobody can take away here.
void CLayerTypesPage::CheckAlone(const SCheckedRow& row, CFindings& findings) const {
  CRecordPage::CheckAlone(row, findings);
  const F& type = row.As<CLayerType>().Values();
  CString denied;
  for (bool F::* permission : kPermissions)
    if (IsElectrical(row.values) && !(type.*permission))
      denied += (denied.empty() ? "" : ", ") + TextOf(FieldOf(row.Kind(), permission).title);
  if (!denied.empty()) findings.Tell(row, &F::usage, Text::ElectricalTypeDenies, type.name, denied);
}

void CLayerTypesPage::Follow(const CField& changed, const CRecordBase&, CRecordBase& values) const {
  auto& type = static_cast<CLayerType&>(values);
  const auto isChanged = [&](auto F::* member) { return &changed == &FieldOf(type.Kind(), member); };
  if (IsElectrical(type) && (isChanged(&F::usage) || std::ranges::any_of(kPermissions, isChanged)))
    for (bool F::* permission : kPermissions) type.Set(permission, true);
  if (HasNoOversize(type) && (isChanged(&F::oversizeType) || isChanged(&F::oversize))) type.SetOversize(0);
}

/// A type that is not electrical leaves every cell of the new row open.
void CLayerTypesPage::InitNew(CRecordBase& draft) const {
  static_cast<CLayerType&>(draft).SetUsage(ELayerUsage::Documentation);
}
