// What is selected in a design.
//
// The selection is kept, not searched: an item knows its place in it and leaves it when it leaves the design, so that
// what is selected is always in the design, through deletion, undo and redo. An item that comes back is not selected.
#pragma once
#include "model/design/items.h"

class CSelectionOverview {
 public:
  explicit CSelectionOverview(CTechnology& design) : m_design(design) {}
  CSelectionOverview(const CSelectionOverview&) = delete;
  CSelectionOverview& operator=(const CSelectionOverview&) = delete;

  /// Selects an item; one that is not in the design, or selected already, changes nothing.
  void Add(CDesignItem& item);
  void Clear();
  /// The selected items in the order in which they were selected.
  std::vector<CDesignItem*> Items() const;
  CDesignItem* First() const;  // null without a selection
  bool IsSingleTypeSelected() const;
  /// Whether every selected item is of a kind, or a part of an item of it; false without a selection.
  bool AreJustBlocksSelected() const { return AreAll(CBlockOrigin::GetThisClass()); }
  bool AreJustBlockPortsSelected() const { return AreAll(CBlockPort::GetThisClass()); }
  bool AreJustCalloutsSelected() const { return AreAll(CCallout::GetThisClass()); }
  bool AreJustDimensionsSelected() const { return AreAll(CDimension::GetThisClass()); }
  bool AreSelectedDimensionsCompatibleTypes() const;
  bool AreJustDrillTablesSelected() const { return AreAll(CDrillTable::GetThisClass()); }
  bool AreJustInsertedFilesSelected() const { return AreAll(CInsertedFile::GetThisClass()); }
  bool AreJustInsertedReportsSelected() const { return AreAll(CInsertedReport::GetThisClass()); }
  bool AreJustPanelPcbsSelected() const { return AreAll(CPanelPcbOrigin::GetThisClass()); }
  bool AreJustLayerStacksSelected() const { return AreAll(CLayerStack::GetThisClass()); }

 private:
  friend class CDesign;
  void Remove(CDesignItem& item);  // one that leaves the design
  void CloseGaps();
  template <class Test>
  bool All(Test test) const;
  bool AreAll(const CRuntimeClass* kind) const;

  CTechnology& m_design;
  std::vector<CDesignItem*> m_items;  // null where an item has left; at most half of them
  std::size_t m_gaps = 0;
};
