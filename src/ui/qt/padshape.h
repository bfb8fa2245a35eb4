// The outlines of pads and their holes, centred on (0, 0), in design units with y down as on the screen.
#pragma once
#include <QPainterPath>

#include "model/controls/preview.h"

/// Empty for a pad without size.
QPainterPath PadPath(const SPadPreview& pad);
/// Empty for a pad without a hole. A slot has round ends unless it gives a corner radius.
QPainterPath HolePath(const SPadPreview& pad);
/// How far the pad reaches to either side, by its shape: one without a length is as long as wide.
QSizeF PadSize(const SPadPreview& pad);
