#include "model/design/technology.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "model/base/catalogue.h"
#include "model/base/decimal.h"
#include "model/design/fieldtypes.h"

namespace {
constexpr CField kDefaultsFields[] = {
    Field<&SDefaultsFields::netClass>("netClass", Text::NetClass),
    Field<&SDefaultsFields::padStyle>("padStyle", Text::PadStyle),
    Field<&SDefaultsFields::trackStyle>("trackStyle", Text::TrackStyle),
    Field<&SDefaultsFields::textStyle>("textStyle", Text::TextStyle),
    Field<&SDefaultsFields::lineStyle>("lineStyle", Text::LineStyle),
    Field<&SDefaultsFields::hatchStyle>("hatchStyle", Text::HatchStyle),
};
constexpr CField kSpacingsFields[] = {
    Field<&SDesignSpacingsFields::padToPad>("padToPad", Text::PadToPad),
    Field<&SDesignSpacingsFields::padToTrack>("padToTrack", Text::PadToTrack),
    Field<&SDesignSpacingsFields::padToVia>("padToVia", Text::PadToVia),
    Field<&SDesignSpacingsFields::trackToTrack>("trackToTrack", Text::TrackToTrack),
    Field<&SDesignSpacingsFields::trackToVia>("trackToVia", Text::TrackToVia),
    Field<&SDesignSpacingsFields::viaToVia>("viaToVia", Text::ViaToVia),
    Field<&SDesignSpacingsFields::toBoard>("toBoard", Text::ToBoard),
    Field<&SDesignSpacingsFields::holeToHole>("holeToHole", Text::HoleToHole),
    Field<&SDesignSpacingsFields::minimumTrackWidth>("minimumTrackWidth", Text::MinimumTrackWidth),
    Field<&SDesignSpacingsFields::minimumDrill>("minimumDrill", Text::MinimumDrill),
    Field<&SDesignSpacingsFields::minimumAnnularRing>("minimumAnnularRing", Text::MinimumAnnularRing),
};
}  // namespace

TECHSHEET_DEFINE_SINGLE(CDefaults, Text::Defaults, kDefaultsFields)
TECHSHEET_DEFINE_SINGLE(CDesignSpacings, Text::SpacingRules, kSpacingsFields)

CTechnology::CTechnology() {
  AddSingle("units", m_units);
  AddSingle("secondaryUnits", m_units2);
#define TECHSHEET_KIND(Kind, Class, member) AddCollection(member);
#include "model/design/kinds.def"
#undef TECHSHEET_KIND
  AddSingle("defaults", m_defaults);
  AddSingle("spacingRules", m_spacings);
}

CTechnology::~CTechnology() { m_journal.Discard(); }

void CTechnology::AddSingle(const char* name, CRecordBase& record) {
  m_singles.push_back({name, &record, record.Clone()});
  record.Connect(*this);
}

void CTechnology::AddCollection(CCollectionBase& collection) {
  collection.m_technology = this;
  m_collections.push_back(&collection);
  m_collectionOf.emplace(&collection.Kind(), &collection);
}

CCollectionBase* CTechnology::CollectionOf(const CKind& kind) const {
  const auto at = m_collectionOf.find(&kind);
  return at == m_collectionOf.end() ? nullptr : at->second;
}

// ---- Walks

namespace {
template <class Visit>
void VisitWithOwned(CRecordBase& record, const Visit& visit) {
  visit(record);
  for (std::size_t i = 0; CCollectionBase* child = record.Child(i); ++i)
    for (CRecordBase* one = child->FirstRecord(); one; one = one->Next()) VisitWithOwned(*one, visit);
}
}  // namespace

void CTechnology::ForEachRecord(const std::function<void(CRecordBase&)>& visit) const {
  for (const SSingle& single : m_singles) visit(*single.record);
  for (const CCollectionBase* collection : m_collections)
    for (CRecordBase* one = collection->FirstRecord(); one; one = one->Next()) VisitWithOwned(*one, visit);
}

void CTechnology::ForEachReference(const VisitReference& visit) const {
  ForEachRecord([&](CRecordBase& owner) {
    for (const CField& field : owner.Kind().fields) {
      if (!field.type->IsReference()) continue;
      CRecordBase* const target = field.As<CRefBase>(owner.FieldsAddress()).target;
      if (target) visit(owner, field, *target);
    }
  });
}

// ---- Validity

namespace {
bool HoldsBuiltInLayerFirst(const CTechnology& technology) {
  const CLayer* const first = technology.layers.First();
  return first && first->IsBuiltIn() &&
         technology.FindLayer(ELayerUsage::All, ELayerSide::All, ELayerBias::Horizontal, nullptr) == first &&
         std::count_if(technology.layers.begin(), technology.layers.end(),
                       [](const CLayer& layer) { return layer.IsBuiltIn(); }) == 1;
}
}  // namespace

CStringArray CTechnology::CheckValid() const {
  CStringArray problems;
  for (const CCollectionBase* collection : m_collections) {
    if (!collection->Kind().nameField) continue;
    std::int64_t number = 0;
    for (const CRecordBase* one = collection->FirstRecord(); one; one = one->Next()) {
      ++number;
      const CString kind = TextOf(one->Kind().title);
      if (one->RecordName().empty()) {
        problems.push_back(TextOf(Text::RecordWithoutName, CStringArray{kind, IntText(number)}));
      } else if (collection->FindRecord(one->RecordName()) != one) {
        problems.push_back(TextOf(Text::NameNotUnique, CStringArray{kind, one->RecordName()}));
      }
    }
  }
  ForEachReference([&](CRecordBase& owner, const CField& field, CRecordBase& target) {
    if (target.Technology() != this || !target.IsIn())
      problems.push_back(TextOf(Text::RefersOutside, CStringArray{owner.Description(), TextOf(field.title)}));
  });
  if (NeedsBuiltInLayer() && !HoldsBuiltInLayerFirst(*this)) problems.push_back(TextOf(Text::BuiltInLayerNotFirst));
  return problems;
}

// ---- Use, deletion, merging

bool CTechnology::IsUsed(const CRecordBase& record) { return record.UseCount() > 0 || record.IsOccupied(); }

CRecordBase* CTechnology::DefaultOf(const CKind& kind) const {
  for (const CField& field : m_defaults.Kind().fields)
    if (field.type->IsReference() && field.type->target() == &kind)
      return field.As<CRefBase>(m_defaults.FieldsAddress()).target;
  return nullptr;
}

namespace {
using CKinds = std::set<const CKind*>;

void CollectTargets(const CRecordBase& record, CKinds& targets) {
  for (const CField& field : record.Kind().fields)
    if (field.type->IsReference()) targets.insert(field.type->target());
  for (std::size_t i = 0; const CCollectionBase* child = record.Child(i); ++i)
    CollectTargets(*child->Kind().make(), targets);
}

/// The kinds that records of `kind`, and what they own, can refer to: most collections need not be searched.
const CKinds& TargetsOf(const CKind& kind) {
  static std::map<const CKind*, CKinds> known;
  const auto [at, isNew] = known.try_emplace(&kind);
  if (isNew) CollectTargets(*kind.make(), at->second);
  return at->second;
}

/// What must go, or point elsewhere, together with a record.
struct SRemoval {
  struct SMove {
    CRecordBase* owner;
    const CField* field;
    CRefBase to;
  };
  std::vector<CRecordBase*> records;  // what refers to a record stands behind it
  std::set<const CRecordBase*> doomed;
  CKinds kinds;  // of them
  std::vector<SMove> moves;
  const CRecordBase* keeper = nullptr;  // whose reference refuses

  void Doom(CRecordBase& record) {
    if (!doomed.insert(&record).second) return;
    records.push_back(&record);
    kinds.insert(&record.Kind());
  }
  bool GoesWithOwner(const CRecordBase& record) const {
    for (const CRecordBase* owner = record.Owner(); owner; owner = owner->Owner())
      if (doomed.contains(owner)) return true;
    return false;
  }
  void CarryOut() const {
    for (const SMove& move : moves) move.field->set(*move.owner, &move.to);
    for (auto at = records.rbegin(); at != records.rend(); ++at)
      if (!GoesWithOwner(**at)) (*at)->Home()->Remove(**at);
  }
};

/// False when the record owns something in use or a reference refuses; without `takesUses` every use does.
bool Plan(const CTechnology& technology, CRecordBase& record, bool takesUses, SRemoval& removal) {
  if (record.IsOccupied()) return false;
  removal.Doom(record);
  if (record.UseCount() == 0 && !record.HasYieldingReferences()) return true;
  const auto weigh = [&](CRecordBase& owner, const CField& field, CRecordBase& target) {
    if (!removal.doomed.contains(&target) || removal.doomed.contains(&owner) || removal.GoesWithOwner(owner))
      return true;
    if (field.type->reference == EReference::Fallback) {
      removal.moves.push_back({&owner, &field, {technology.DefaultOf(target.Kind())}});
    } else if (field.type->reference == EReference::Part || (takesUses && field.onDelete == EOnDelete::DeleteOwner)) {
      removal.Doom(owner);
    } else if (takesUses && field.onDelete == EOnDelete::Clear) {
      removal.moves.push_back({&owner, &field, {}});
    } else {
      removal.keeper = &owner;
      return false;
    }
    return true;
  };
  bool passes = true;
  const auto visit = [&](CRecordBase& owner) {
    for (const CField& field : owner.Kind().fields) {
      if (!field.type->IsReference()) continue;
      CRecordBase* const target = field.As<CRefBase>(owner.FieldsAddress()).target;
      if (target && passes) passes = weigh(owner, field, *target);
    }
  };
  for (std::size_t before = 0; passes && before != removal.records.size();) {
    before = removal.records.size();
    removal.moves.clear();
    for (const CTechnology::SSingle& single : technology.Singles()) visit(*single.record);
    for (const CCollectionBase* collection : technology.Collections()) {
      const CKinds& targets = TargetsOf(collection->Kind());
      if (std::none_of(removal.kinds.begin(), removal.kinds.end(), [&](auto* kind) { return targets.contains(kind); }))
        continue;
      for (CRecordBase* one = collection->FirstRecord(); one; one = one->Next()) VisitWithOwned(*one, visit);
    }
  }
  return passes;
}

bool PlanUsed(const CTechnology& technology, CRecordBase& record, SRemoval& removal) {
  return !record.IsBuiltIn() && Plan(technology, record, true, removal);
}
}  // namespace

bool CTechnology::DeleteRecord(CRecordBase& record) {
  if (IsUsed(record) && !record.HasYieldingReferences()) return false;
  SRemoval removal;
  if (!Plan(*this, record, false, removal)) return false;
  removal.CarryOut();
  return true;
}

const CRecordBase* CTechnology::KeeperOf(CRecordBase& record) const {
  SRemoval removal;
  if (PlanUsed(*this, record, removal)) return nullptr;
  return removal.keeper ? removal.keeper : &record;
}

bool CTechnology::DeleteUsedRecord(CRecordBase& record) {
  SRemoval removal;
  if (!PlanUsed(*this, record, removal)) return false;
  removal.CarryOut();
  return true;
}

void CTechnology::Merge(const std::map<const CRecordBase*, CRecordBase*>& survivors) {
  ForEachReference([&](CRecordBase& owner, const CField& field, CRecordBase& target) {
    const auto at = survivors.find(&target);
    if (at == survivors.end()) return;
    const CRefBase moved{at->second};
    field.set(owner, &moved);
  });
}

// ---- Units

void CTechnology::SwitchUnits() {
  const CUnits first = m_units;
  m_units = m_units2;
  m_units2 = first;
}

CString CTechnology::SquaredDsuToString(std::int64_t squareDsu) const {
  CString text;
  AppendRoundedArea(text, squareDsu, DsuPerUnit(m_units.GetType()), m_units.GetPrecision());
  return text;
}

double CTechnology::DsuToUserUnits(int dsu) const { return dsu / static_cast<double>(DsuPerUnit(m_units.GetType())); }

int CTechnology::DsuFromUserUnits(double value, int unitType) {
  constexpr double kMost = std::numeric_limits<int>::max();
  const double dsu = std::round(value * DsuPerUnit(unitType));  // halves away from zero
  return std::isnan(dsu) ? 0 : static_cast<int>(std::clamp(dsu, -kMost - 1, kMost));
}

int CTechnology::ThouToDsu(int thou) {
  constexpr std::int64_t kLeast = std::numeric_limits<int>::min();
  constexpr std::int64_t kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(std::int64_t{thou} * DsuPerUnit(EUnitType::Mil), kLeast, kMost));
}

// ---- Layers

CLayer* CTechnology::FindBuiltInLayer() const {
  for (CLayer& layer : layers)
    if (layer.IsBuiltIn()) return &layer;
  return nullptr;
}

CLayer* CTechnology::FindLayer(unsigned usage, int side, int bias, const CLayerType* type) const {
  for (CLayer& layer : layers)
    if (layer.Values().usage.value == static_cast<int>(usage) && layer.GetSide() == side && layer.GetBias() == bias &&
        layer.GetType() == type)
      return &layer;
  return nullptr;
}

void CTechnology::SetDefaultLayerOrder() {
  std::vector<CLayer*> order;
  for (CLayer& layer : layers) order.push_back(&layer);
  std::stable_sort(order.begin(), order.end(),
                   [](const CLayer* a, const CLayer* b) { return StackRank(*a) < StackRank(*b); });
  for (std::size_t place = 0; place < order.size(); ++place) layers.SetPlace(*order[place], place);
}

void CTechnology::GetLayerUsed(const CLayer* layer, CStringArray& uses) const {
  std::map<const CKind*, std::size_t> unnamed;
  ForEachReference([&](CRecordBase& owner, const CField&, CRecordBase& target) {
    if (&target != layer) return;
    if (owner.RecordName().empty()) {
      ++unnamed[&owner.Kind()];
    } else {
      uses.push_back(TextOf(Text::KindAndName, CStringArray{TextOf(owner.Kind().title), owner.RecordName()}));
    }
  });
  CStringArray counts;
  for (const auto& [kind, count] : unnamed)
    counts.push_back(
        TextOf(Text::KindAndCount, CStringArray{TextOf(kind->title), IntText(static_cast<std::int64_t>(count))}));
  std::sort(counts.begin(), counts.end());  // by text: the order of kinds in memory means nothing
  uses.insert(uses.end(), counts.begin(), counts.end());
}

// ---- Adding by values

CLayer* CTechnology::AddLayer(const CString& name, CLayerType* type, int side, int bias, CNet* net) {
  CLayer layer;
  layer.SetName(name);
  layer.SetType(type);
  layer.SetSide(side);
  layer.SetBias(bias);
  layer.SetNet(net);
  return layers.Add(layer);
}

CLayerSpan* CTechnology::AddLayerSpan(const CString& name, CLayer* top, CLayer* bottom) {
  CLayerSpan span;
  span.SetName(name);
  span.SetTopLayer(top);
  span.SetBottomLayer(bottom);
  return layerSpans.Add(span);
}

CTrackStyle* CTechnology::AddTrackStyle(const CString& name, int width) {
  CTrackStyle style;
  style.SetName(name);
  style.SetWidth(width);
  return trackStyles.Add(style);
}

CNet* CTechnology::AddNet(const CString& name, CNetClass* netClass) {
  CNet net;
  net.SetName(name);
  net.Set(&SNetFields::netClass, netClass);
  return nets.Add(net);
}

CString CTechnology::FindFreePadStyleName(const CString& name) const {
  CString free = name;
  for (std::int64_t number = 2; FindPadStyle(free); ++number) free = name + " " + IntText(number);
  return free;
}

void CTechnology::SetDefaultTechnology(bool withLayers) {
  constexpr const char* kDefault = "Default";
  m_journal.SetRecording(false);
  if (withLayers) {
    CLayer all;
    all.SetName("[All layers]");
    all.SetUsage(ELayerUsage::All);
    all.SetSide(ELayerSide::All);
    all.SetBias(ELayerBias::Horizontal);
    layers.Add(all);
    for (const int side : {ELayerSide::Top, ELayerSide::Bottom}) {
      CLayer outer;
      outer.SetName(GetLayerSideString(side));
      outer.SetUsage(ELayerUsage::Electrical);
      outer.SetSide(side);
      outer.SetBias(ELayerBias::Any);
      outer.SetColour(CColour{side == ELayerSide::Top ? 0xC83434u : 0x4D7FC4u});
      layers.Add(outer);
    }
  }
  CTrackStyle trackStyle;
  trackStyle.SetName(kDefault);
  CPadStyle padStyle;
  padStyle.SetName(kDefault);
  padStyle.SetDrillWidth(500'000);
  CTextStyle textStyle;
  textStyle.SetName(kDefault);
  CTextStyle drillTable;
  drillTable.SetName("[Drill Table]");
  CLineStyle lineStyle;
  lineStyle.Set(&SLineStyleFields::name, CName{kDefault});
  m_defaults.Set(&SDefaultsFields::trackStyle, trackStyles.Add(trackStyle));
  m_defaults.Set(&SDefaultsFields::padStyle, padStyles.Add(padStyle));
  m_defaults.Set(&SDefaultsFields::textStyle, textStyles.Add(textStyle));
  textStyles.Add(drillTable);
  m_defaults.Set(&SDefaultsFields::lineStyle, lineStyles.Add(lineStyle));
  CNetClass netClass;
  netClass.SetName(kDefault);
  netClass.SetTrackStyles(m_defaults.GetTrackStyle(), m_defaults.GetTrackStyle());
  netClass.SetViaStyle(m_defaults.GetPadStyle());
  m_defaults.Set(&SDefaultsFields::netClass, netClasses.Add(netClass));
  m_journal.SetRecording(true);
}
