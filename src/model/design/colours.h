// Visibility and colours of the kinds of items in a design.
#pragma once
#include "model/design/record.h"

/// Visibility and colours of the kinds of items. Visibility is a matter of view: a step only while a level is open.
struct SDesignColoursFields {
  CItemFlags visible = CItemFlags().set();
  bool allVisible = false;
  bool allTrueWidth = false;
  CColour background{0x000000};
};
class CDesignColours : public CRecord<SDesignColoursFields> {
  TECHSHEET_RECORD(CDesignColours, CRecordBase)
  /// The items of the set: what can be hidden whatever the layer it stands on.
  enum EItem : int {
    kPadItem,
    kViaItem,
    kTrackItem,
    kConnectionItem,
    kAreaItem,
    kCopperItem,
    kShapeItem,
    kTextItem,
    kValueItem,
    kBoardItem,
    kGridItem = 65
  };
  /// Items outside the set are never visible, and setting them changes nothing.
  bool GetVisible(int item) const;
  void SetVisible(int item, bool visible);
  void SetAllVisible(bool all) { SetView(&Fields::allVisible, all); }
  void SetAllTrueWidth(bool all) { SetView(&Fields::allTrueWidth, all); }
};
