// Items: the records that stand somewhere in a design and can be selected. Selection is never part of a step.
#pragma once
#include "model/design/record.h"

class CDesignItem : public CRecordBase {
  TECHSHEET_CLASS(CDesignItem, CRecordBase)
  bool IsSelected() const { return m_selected; }
  void SetSelected(bool selected) { m_selected = selected; }
  /// The rectangle around the places of the item and of its parts, without what their styles add, in design units;
  /// empty for an item without a place.
  CBox GetBoundingBox() const;

 private:
  void HasLeft() override { m_selected = false; }  // so an item that comes back is not selected
  bool m_selected = false;
};
