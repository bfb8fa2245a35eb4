#include "model/design/layertype.h"

#include "model/design/fieldtypes.h"

namespace {
constexpr CField kLayerTypeFields[] = {
    Field<&SLayerTypeFields::name>("name", Text::Name),
    Field<&SLayerTypeFields::usage>("usage", Text::Usage),
    Field<&SLayerTypeFields::surfacePads>("surfacePads", Text::SurfacePads),
    Field<&SLayerTypeFields::allLayerPads>("allLayerPads", Text::AllLayerPads),
    Field<&SLayerTypeFields::surfacePadInstances>("surfacePadInstances", Text::SurfacePadInstances),
    Field<&SLayerTypeFields::allLayerPadInstances>("allLayerPadInstances", Text::AllLayerPadInstances),
    Field<&SLayerTypeFields::vias>("vias", Text::Vias),
    Field<&SLayerTypeFields::oversizeType>("oversizeType", Text::OversizeType),
    Field<&SLayerTypeFields::oversize>("oversize", Text::Oversize),
    Field<&SLayerTypeFields::placementArea>("placementArea", Text::PlacementArea),
    Field<&SLayerTypeFields::breakShapes>("breakShapes", Text::BreakShapes),
    Field<&SLayerTypeFields::breakShapesGap>("breakShapesGap", Text::BreakGap),
};
}  // namespace

TECHSHEET_DEFINE_KIND(CLayerType, Text::LayerType, kLayerTypeFields)

bool ValidRecordName(std::string_view name) {
  return !name.empty() && name.size() <= 255 && IsValidUtf8(name) && !HasControlCharacters(name) &&
         name.find('"') == std::string_view::npos && Trim(name) == name && !name.starts_with('[');
}

bool ValidLayerTypeName(const CString& name) { return ValidRecordName(name); }
