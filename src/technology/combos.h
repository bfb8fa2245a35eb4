// What the combos of several pages offer.
#pragma once
#include "model/controls/value.h"
#include "model/design/technology.h"

/// The sides of a layer in stack order: 0, 2, 1.
struct CLayerSideComboBox {
  static CComboItems Items(const CTechnology& design);
};
/// The usages that a person can choose: 2 and 4 always, 8 and 16 in the editions that know them.
struct CLayerUsageComboBox {
  static CComboItems Items(const CTechnology& design);
};
/// The layers of certain effective usages (a set of usage bits).
struct CLayerComboBox {
  /// `current` is listed too, whatever its usage, so that what is chosen stays visible.
  static CComboItems Fill(const CTechnology& design, const CLayer* current, long usages);
};
