// Items: the records that stand somewhere in a design and can be selected. Selection is never part of a step.
#pragma once
#include "model/design/record.h"

class CDesignItem : public CRecordBase {
  TECHSHEET_CLASS(CDesignItem, CRecordBase)
  bool IsSelected() const { return m_selectedAs != 0; }
  /// The rectangle around the places of the item and of its parts, without what their styles add, in design units;
  /// empty for an item without a place.
  CBox GetBoundingBox() const;

 protected:
  CDesignItem() = default;
  CDesignItem(const CDesignItem& other) : CRecordBase(other) {}  // a copy is not selected

 private:
  friend class CSelectionOverview;
  void HasLeft() override;
  std::uint32_t m_selectedAs = 0;  // number in the selection, from 1; 0: not selected
};
