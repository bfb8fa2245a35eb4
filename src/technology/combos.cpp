#include "technology/combos.h"

#include "model/base/catalogue.h"
#include "model/services/application.h"

namespace {
template <class Keep>
CComboItems ItemsOf(std::span<const SChoice> choices, Keep keep) {
  CComboItems items;
  for (const SChoice& choice : choices)
    if (keep(choice.value)) items.push_back({choice.value, TextOf(choice.text)});
  return items;
}
}  // namespace

CComboItems CLayerSideComboBox::Items(const CTechnology&) {
  return ItemsOf(ELayerSide::Choices(), [](int side) { return side != ELayerSide::All; });
}

CComboItems CLayerUsageComboBox::Items(const CTechnology&) {
  const bool masks = CApplication::IsExtended();
  return ItemsOf(ELayerUsage::Choices(), [=](int usage) {
    return usage == ELayerUsage::Electrical || usage == ELayerUsage::Documentation ||
           (masks && (usage == ELayerUsage::SolderMask || usage == ELayerUsage::PasteMask));
  });
}

CComboItems CLayerComboBox::Fill(const CTechnology& design, const CLayer* current, long usages) {
  CComboItems items;
  for (CLayer& layer : design.layers)
    if (&layer == current || (!layer.IsBuiltIn() && (layer.GetUsage() & usages) != 0))
      items.push_back({reinterpret_cast<std::int64_t>(&layer), layer.GetName()});
  return items;
}
