// What a panel describes that people would rather look at than read. Views draw it beside the panel, from the values as
// they stand on the screen, applied or not.
#pragma once
#include <variant>
#include <vector>

#include "model/design/choices.h"
#include "model/design/values.h"

class CLayer;
class CTechnology;
struct SPadStyleExceptionFields;
struct SPadStyleFields;

/// A stack of layers from top to bottom, and the spans drilled through it.
struct SStackPreview {
  struct SLayer {
    CString name;
    int side, usage, bias;  // as CLayer has them; the usage that its layer type gives it
    CColour colour;
    bool current = false;  // under the cursor
  };
  struct SSpan {
    CString name;
    int top, bottom;  // places in `layers`, -1 for none; not in order while a person is choosing
    CColour colour;
    bool current = false;
  };
  std::vector<SLayer> layers;
  std::vector<SSpan> spans;
};

/// One pad with its hole, in design units.
struct SPadPreview {
  int shape;          // as CPadStyle has it
  int width, length;  // of the pad; a shape that needs one dimension ignores the length
  int dimension3, dimension4;
  int drillShape;
  int drillWidth, drillLength, drillCornerRadius;  // 0: no hole
  bool drillRotated, plated;
  int unitType = EUnitType::Millimetre, precision = 3;  // of the dimensions written beside it
};

/// The layers of a technology and its spans; the built-in layer is no part of the stack.
SStackPreview StackOf(const CTechnology& technology);
SStackPreview::SLayer StackLayerOf(const CLayer& layer);
SPadPreview PadOf(const SPadStyleFields& style);
/// The pad on the layer of an exception, without the hole.
SPadPreview PadOf(const SPadStyleExceptionFields& exception);

using CPreview = std::variant<std::monostate, SStackPreview, SPadPreview>;
