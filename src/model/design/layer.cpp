#include "model/design/layer.h"

#include <tuple>

#include "model/design/collection.h"
#include "model/design/fieldtypes.h"
#include "model/design/nets.h"

namespace {
/// A layer counts as what its type says, and people see it as that.
std::int64_t EffectiveUsage(const CRecordBase& layer) { return static_cast<const CLayer&>(layer).GetUsage(); }

constexpr CField kLayerFields[] = {
    Field<&SLayerFields::name>("name", Text::Name),
    Field<&SLayerFields::type>("type", Text::Type),
    Field<&SLayerFields::side>("side", Text::Side),
    Field<&SLayerFields::usage>("usage", Text::Usage).ShownAs(EffectiveUsage),
    Field<&SLayerFields::bias>("bias", Text::Bias),
    Field<&SLayerFields::net>("net", Text::PlaneNet),
    Field<&SLayerFields::colour>("colour", Text::Colour),
    Field<&SLayerFields::displayed>("displayed", Text::Shown),
    Field<&SLayerFields::trueWidth>("trueWidth", Text::TrueWidth),
    Field<&SLayerFields::visiblePlane>("visiblePlane", Text::PlaneShown),
};

constexpr CField kLayerSpanFields[] = {
    Field<&SLayerFields::name>("name", Text::Name),
    Field<&SLayerFields::topLayer>("topLayer", Text::TopLayer),
    Field<&SLayerFields::bottomLayer>("bottomLayer", Text::BottomLayer),
    Field<&SLayerFields::colour>("colour", Text::Colour),
    Field<&SLayerFields::displayed>("displayed", Text::Shown),
};
}  // namespace

TECHSHEET_DEFINE_KIND(CLayer, Text::Layer, kLayerFields)
TECHSHEET_DEFINE_KIND(CLayerSpan, Text::LayerSpan, kLayerSpanFields)

CNet* CLayer::GetNet() const { return Values().net.Get(); }
void CLayer::SetNet(CNet* net) { Set(&Fields::net, net); }

int StackRank(const CLayer& layer) {
  if (layer.IsBuiltIn()) return 0;
  switch (layer.GetSide()) {
    case ELayerSide::Top: return 1;
    case ELayerSide::Inner: return 2;
    case ELayerSide::Bottom: return 3;
    default: return 4;
  }
}

namespace {
std::size_t PlaceOf(const CLayer* layer) {
  return layer && layer->Home() ? layer->Home()->PlaceOf(*layer) : static_cast<std::size_t>(-1);
}
}  // namespace

bool CLayer::operator>=(const CLayer& other) const {
  if (&Kind() == &CLayerSpan::TheKind() && &other.Kind() == &CLayerSpan::TheKind()) {
    const auto key = [](const CLayer& span) {
      return std::tuple(PlaceOf(span.Values().topLayer.Get()), PlaceOf(span.Values().bottomLayer.Get()),
                        span.GetName());
    };
    return key(*this) >= key(other);
  }
  return std::pair(StackRank(*this), PlaceOf(this)) >= std::pair(StackRank(other), PlaceOf(&other));
}

CLayer* CLayer::GetCommonLayer(CLayer* other) {
  if (!other) return nullptr;
  if (IsBuiltIn()) return other;
  return other->IsBuiltIn() ? this : nullptr;
}

bool ValidLayerName(const CString& name) { return ValidRecordName(name); }
bool ValidLayerSpanName(const CString& name) { return ValidRecordName(name); }
