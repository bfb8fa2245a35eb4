#include "model/controls/preview.h"

#include "model/design/technology.h"

SStackPreview::SLayer StackLayerOf(const CLayer& layer) {
  return {layer.GetName(), layer.GetSide(), layer.GetUsage(), layer.GetBias(), layer.GetColour()};
}

SStackPreview StackOf(const CTechnology& technology) {
  SStackPreview stack;
  std::map<const CLayer*, int> places;
  for (const CLayer& layer : technology.layers) {
    if (layer.IsBuiltIn()) continue;
    places.emplace(&layer, static_cast<int>(stack.layers.size()));
    stack.layers.push_back(StackLayerOf(layer));
  }
  const auto placeOf = [&](const CLayer* layer) {
    const auto at = places.find(layer);
    return at == places.end() ? -1 : at->second;
  };
  for (const CLayerSpan& span : technology.layerSpans)
    stack.spans.push_back(
        {span.GetName(), placeOf(span.GetTopLayer()), placeOf(span.GetBottomLayer()), span.GetColour()});
  return stack;
}

SPadPreview PadOf(const SPadStyleFields& style) {
  return {style.shape.value,
          style.size.value,
          style.length.value,
          style.dimension3.value,
          style.dimension4.value,
          style.drillShape.value,
          style.drillWidth.value,
          style.drillLength.value,
          style.drillCornerRadius.value,
          style.drillRotated,
          style.plated};
}

SPadPreview PadOf(const SPadStyleExceptionFields& exception) {
  SPadPreview pad{};
  pad.shape = exception.shape.value;
  pad.width = exception.size.value;
  pad.length = exception.length.value;
  pad.dimension3 = exception.dimension3.value;
  pad.dimension4 = exception.dimension4.value;
  return pad;
}
