// A technology: the collections, defaults and journal that designs and symbol libraries share.
//
// Every change is noted in one journal. Named records are found, added, deleted and asked for their use by operations
// that are the same for every kind (First<Kind>, Next<Kind>, Find<Kind>, Add<Kind>, Delete<Kind>, Is<Kind>Used).
#pragma once
#include <functional>
#include <map>

#include "model/design/collection.h"
#include "model/design/extras.h"
#include "model/design/layer.h"
#include "model/design/nets.h"
#include "model/design/padstyle.h"
#include "model/design/rules.h"
#include "model/design/styles.h"
#include "model/design/units.h"

/// The defaults for newly placed items. Referring to a record from here is a use of it.
struct SDefaultsFields {
  CRef<CNetClass> netClass;
  CRef<CPadStyle> padStyle;
  CRef<CTrackStyle> trackStyle;
  CRef<CTextStyle> textStyle;
  CRef<CLineStyle> lineStyle;
  CRef<CHatchStyle> hatchStyle;
};
class CDefaults : public CRecord<SDefaultsFields> {
  TECHSHEET_RECORD(CDefaults, CRecordBase)
  CNetClass* GetNetClass() const { return Values().netClass.Get(); }
  CPadStyle* GetPadStyle() const { return Values().padStyle.Get(); }
  CTrackStyle* GetTrackStyle() const { return Values().trackStyle.Get(); }
  CTextStyle* GetTextStyle() const { return Values().textStyle.Get(); }
};

/// The spacing rules that hold for the whole design, in design units; pairs of classes may ask for more.
struct SDesignSpacingsFields {
  Dsu padToPad, padToTrack, padToVia, trackToTrack, trackToVia, viaToVia;
  Dsu toBoard, holeToHole, minimumTrackWidth, minimumDrill, minimumAnnularRing;
};
class CDesignSpacings : public CRecord<SDesignSpacingsFields> {
  TECHSHEET_RECORD(CDesignSpacings, CRecordBase)
};

class CTechnology : public CObject {
  TECHSHEET_CLASS(CTechnology, CObject)
  CTechnology(const CTechnology&) = delete;
  CTechnology& operator=(const CTechnology&) = delete;
  ~CTechnology() override;

#define TECHSHEET_KIND(Kind, Class, member)                                    \
  CCollection<Class> member{#member};                                          \
  TECHSHEET_WALK(Kind, Class, member)                                          \
  Class* Find##Kind(std::string_view name) const { return member.Find(name); } \
  Class* Add##Kind(const Class* record) { return member.Add(*record); }        \
  bool Delete##Kind(Class* record) { return DeleteRecord(*record); }           \
  bool Is##Kind##Used(const Class* record) const { return IsUsed(*record); }   \
  void Set##Kind##InOrder(Class* record, int place) { member.SetPlace(*record, static_cast<std::size_t>(place)); }
#include "model/design/kinds.def"
#undef TECHSHEET_KIND
  std::size_t CountLayerSpans() const { return layerSpans.Count(); }
  std::size_t CountVariants() const { return variants.Count(); }
  std::size_t CountNetClasses() const { return netClasses.Count(); }

  CDefaults* GetDefaults() { return &m_defaults; }
  const CDefaults* GetDefaults() const { return &m_defaults; }
  CDesignSpacings* GetDesignSpacings() { return &m_spacings; }

  /// The units in which lengths are shown and typed, and those shown beside them.
  CUnits* GetUnits() { return &m_units; }
  const CUnits* GetUnits() const { return &m_units; }
  CUnits* GetUnits2() { return &m_units2; }
  const CUnits* GetUnits2() const { return &m_units2; }
  CString GetUnitsString() const { return CUnits::GetString(m_units.GetType()); }
  /// Exchanges the two units.
  void SwitchUnits();
  /// A length in the current units, rounded to their precision, or exact (the shortest text that reads back).
  CString DsuToString(int dsu, bool exact) const { return LengthText(dsu, m_units, exact); }
  static CString DsuToString(int dsu, int unitType, int precision, bool exact) {
    return LengthText(dsu, CUnits(unitType, precision), exact);
  }
  CString SquaredDsuToString(std::int64_t squareDsu) const;
  double DsuToUserUnits(int dsu) const;
  /// `value` in units of `unitType` as design units, rounded half away from zero and limited to the range of lengths.
  static int DsuFromUserUnits(double value, int unitType);
  static int DsuFromUserUnits(double value, const CUnits& units) { return DsuFromUserUnits(value, units.GetType()); }
  /// Thousandths of an inch as design units; limited to the range of lengths.
  static int ThouToDsu(int thou);

  // ---- Adding by values, as imports do
  CLayer* AddLayer(const CString& name, CLayerType* type, int side, int bias, CNet* net);
  CLayerSpan* AddLayerSpan(const CString& name, CLayer* top, CLayer* bottom);
  CTrackStyle* AddTrackStyle(const CString& name, int width);
  CNet* AddNet(const CString& name, CNetClass* netClass);
  /// `name`, or when a pad style has it already "name 2", "name 3" and so on.
  CString FindFreePadStyleName(const CString& name) const;

  CUndoJournal& Journal() { return m_journal; }
  const CUndoJournal& Journal() const { return m_journal; }

  /// All collections of records, in the order of files; what is referred to does not always stand first.
  const std::vector<CCollectionBase*>& Collections() const { return m_collections; }
  /// The records of which there is exactly one, with their names in files and what they are in a new technology.
  struct SSingle {
    const char* name;
    CRecordBase* record;
    std::unique_ptr<const CRecordBase> usual;
  };
  const std::vector<SSingle>& Singles() const { return m_singles; }
  /// The record of a kind that the defaults name, or null.
  CRecordBase* DefaultOf(const CKind& kind) const;
  /// The top-level collection that holds the records of a kind, or null.
  CCollectionBase* CollectionOf(const CKind& kind) const;

  /// Calls `visit` for every record of the design, owned records after their owners.
  void ForEachRecord(const std::function<void(CRecordBase&)>& visit) const;
  /// Calls `visit` for every reference of every record that is not none.
  using VisitReference = std::function<void(CRecordBase& owner, const CField& field, CRecordBase& target)>;
  void ForEachReference(const VisitReference& visit) const;

  /// What is wrong with the design as a whole, one line each; empty when nothing is: names that are missing or occur
  /// twice, references that leave the design, a built-in layer that is missing or out of its place. A design with such
  /// a fault cannot be saved, since its file could not be read again.
  CStringArray CheckValid() const;
  /// Whether layers are a part of every design of this kind.
  virtual bool NeedsBuiltInLayer() const { return false; }

  /// Whether any record of the design refers to this one (a net is also used while it connects something).
  static bool IsUsed(const CRecordBase& record);
  /// Grows whenever a record comes into the design or goes, and whenever one comes into use or out of it: while it is
  /// the same, all records that were there are, and IsUsed says of each what it said.
  std::uint64_t PresenceRevision() const { return m_presenceRevision; }
  /// Takes the record out, with the owners of the parts that lead to it; fallbacks go to the record that the defaults
  /// name. False, and nothing changed, when anything else refers to one of them.
  bool DeleteRecord(CRecordBase& record);
  /// The same, and each use gets what it asks for: clearing it, or taking its owner out too. False, and nothing
  /// changed, when one of them refuses or the record is built in.
  bool DeleteUsedRecord(CRecordBase& record);
  /// What keeps DeleteUsedRecord from taking the record out: who refers to it, or itself; null when nothing does.
  const CRecordBase* KeeperOf(CRecordBase& record) const;
  /// Points every reference to a key of `survivors` at the value beside it, in one pass over the references.
  void Merge(const std::map<const CRecordBase*, CRecordBase*>& survivors);

  /// The stack: the built-in layer, then sides 0, 2, 1, then the rest; stable within a side. Changes nothing in a stack
  /// that is in order.
  void SetDefaultLayerOrder();
  /// The place of the layer in the design, smaller is higher.
  int GetLayerOrder(const CLayer* layer) const { return static_cast<int>(layers.PlaceOf(*layer)); }
  CLayer* FindBuiltInLayer() const;  // null in a technology without layers
  /// The first layer with these values of its own, or null: FindLayer(1, 3, 1, null) is the built-in layer.
  CLayer* FindLayer(unsigned usage, int side, int bias, const CLayerType* type) const;
  /// Deletes a layer with the items and pad exceptions on it. False, and nothing changed, while a span ends on it or it
  /// is built in.
  bool DeleteUsedLayer(CLayer* layer) { return DeleteUsedRecord(*layer); }
  /// What uses the layer, one line a kind of use.
  void GetLayerUsed(const CLayer* layer, CStringArray& uses) const;

 protected:
  CTechnology();
  void AddSingle(const char* name, CRecordBase& record);
  void AddCollection(CCollectionBase& collection);
  /// A selected item leaves the design, so that it must leave the selection.
  virtual void SelectedItemLeaves(CDesignItem&) {}
  /// Fills a new technology with what every one of its kind starts with; the journal keeps nothing of it.
  void SetDefaultTechnology(bool withLayers);

 private:
  friend class CDesignItem;
  friend class CCollectionBase;
  friend void ConnectField(CRecordBase&, const CRefBase&, EReference, bool);
  void NotePresence() { ++m_presenceRevision; }

  std::uint64_t m_presenceRevision = 0;
  CUndoJournal m_journal;
  CUnits m_units{EUnitType::Millimetre, 3};
  CUnits m_units2{EUnitType::Mil, 2};
  CDefaults m_defaults;
  CDesignSpacings m_spacings;
  std::vector<CCollectionBase*> m_collections;
  std::vector<SSingle> m_singles;
  std::map<const CKind*, CCollectionBase*> m_collectionOf;
};
