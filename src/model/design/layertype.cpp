#include "model/design/layertype.h"

#include "model/design/fieldtypes.h"

namespace {
constexpr CField kLayerTypeFields[] = {
    Field<&SLayerTypeFields::name>("name"),
    Field<&SLayerTypeFields::usage>("usage"),
    Field<&SLayerTypeFields::surfacePads>("surfacePads"),
    Field<&SLayerTypeFields::allLayerPads>("allLayerPads"),
    Field<&SLayerTypeFields::surfacePadInstances>("surfacePadInstances"),
    Field<&SLayerTypeFields::allLayerPadInstances>("allLayerPadInstances"),
    Field<&SLayerTypeFields::vias>("vias"),
    Field<&SLayerTypeFields::oversizeType>("oversizeType"),
    Field<&SLayerTypeFields::oversize>("oversize"),
    Field<&SLayerTypeFields::placementArea>("placementArea"),
    Field<&SLayerTypeFields::breakShapes>("breakShapes"),
    Field<&SLayerTypeFields::breakShapesGap>("breakShapesGap"),
};
}  // namespace

const CKind& CLayerType::TheKind() {
  static constexpr CKind kKind{"CLayerType", Text::LayerType, kLayerTypeFields, MakeRecord<CLayerType>,
                               &kLayerTypeFields[0]};
  return kKind;
}

bool ValidRecordName(std::string_view name) {
  return !name.empty() && name.size() <= 255 && IsValidUtf8(name) && !HasControlCharacters(name) &&
         name.find('"') == std::string_view::npos && Trim(name) == name && !name.starts_with('[');
}

bool ValidLayerTypeName(const CString& name) { return ValidRecordName(name); }
