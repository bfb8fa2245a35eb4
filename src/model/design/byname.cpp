#include "model/design/byname.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "model/base/catalogue.h"

namespace {
bool Identifies(const CKind& kind, const CField& field) { return &field == kind.nameField || field.identifies; }

const CRecordBase* TargetOf(const CRecordBase& record, const CField& field) {
  return field.As<CRefBase>(record.FieldsAddress()).target;
}

bool IsBuiltInLayer(const CRecordBase& record) {
  return &record.Kind() == &CLayer::TheKind() && static_cast<const CLayer&>(record).IsBuiltIn();
}

/// One text for all that identifies a record; empty for kinds that nothing identifies.
CString KeyOf(const CRecordBase& record) {
  if (IsBuiltInLayer(record)) return "[";
  CString key;
  for (const CString& part : IdentityOf(record)) (key += part) += '\0';
  return key;
}

bool HaveOneIdentity(const CRecordBase& a, const CRecordBase& b) {
  if (&a.Kind() != &b.Kind()) return false;
  if (IsBuiltInLayer(a) || IsBuiltInLayer(b)) return IsBuiltInLayer(a) && IsBuiltInLayer(b);
  return a.Kind().nameField ? a.RecordName() == b.RecordName() : IdentityOf(a) == IdentityOf(b);
}

bool Refers(const CRecordBase* a, const CRecordBase* b) { return a && b ? HaveOneIdentity(*a, *b) : a == b; }

/// The child of `owner` that corresponds to the collection in which `record` stands in its own owner.
CCollectionBase* SameChild(const CRecordBase& record, CRecordBase& owner) {
  std::size_t index = 0;
  while (record.Owner()->Child(index) != record.Home()) ++index;
  return owner.Child(index);
}

CRecordBase* FindSingle(const CRecordBase& record, const CTechnology& technology) {
  const char* name = nullptr;
  if (record.Technology())
    for (const CTechnology::SSingle& single : record.Technology()->Singles())
      if (single.record == &record) name = single.name;
  for (const CTechnology::SSingle& single : technology.Singles())
    if (&single.record->Kind() == &record.Kind() && (!name || std::string_view(name) == single.name))
      return single.record;
  return nullptr;
}
}  // namespace

CStringArray IdentityOf(const CRecordBase& record) {
  if (record.Kind().nameField) return {record.RecordName()};
  CStringArray parts;
  bool isPair = true;
  for (const CField& field : record.Kind().fields) {
    if (!field.identifies) continue;
    if (field.type->IsReference()) {
      const CRecordBase* const target = TargetOf(record, field);
      parts.push_back(target ? target->RecordName() : CString());
    } else {
      parts.push_back(field.As<CString>(record.FieldsAddress()));
      isPair = false;
    }
  }
  if (isPair) std::sort(parts.begin(), parts.end());
  return parts;
}

CRecordBase* FindByName(const CRecordBase& record, const CTechnology& technology) {
  const CKind& kind = record.Kind();
  if (!kind.make) return FindSingle(record, technology);
  CCollectionBase* home = nullptr;
  if (record.Owner()) {
    CRecordBase* const owner = FindByName(*record.Owner(), technology);
    if (owner) home = SameChild(record, *owner);
  } else {
    home = technology.CollectionOf(kind);
  }
  if (!home) return nullptr;
  if (IsBuiltInLayer(record)) return technology.FindBuiltInLayer();
  if (kind.nameField) return home->FindRecord(record.RecordName());
  if (IdentityOf(record).empty()) return record.Owner() ? home->At(record.Home()->PlaceOf(record)) : nullptr;
  int before = 0;  // records of the same identity
  for (const CRecordBase* one = record.Previous(); one; one = one->Previous()) before += HaveOneIdentity(*one, record);
  for (CRecordBase* one = home->FirstRecord(); one; one = one->Next())
    if (HaveOneIdentity(*one, record) && before-- == 0) return one;
  return nullptr;
}

std::vector<SCounterparts> MatchByName(const CCollectionBase& from, const CCollectionBase& to) {
  std::unordered_map<CString, std::vector<CRecordBase*>> known;  // those of `to`, the first one last
  for (CRecordBase* one = to.LastRecord(); one; one = one->Previous()) known[KeyOf(*one)].push_back(one);
  std::vector<SCounterparts> matches;
  std::unordered_set<const CRecordBase*> matched;
  for (CRecordBase* one = from.FirstRecord(); one; one = one->Next()) {
    matches.push_back({one, nullptr});
    const auto at = known.find(KeyOf(*one));
    if (at == known.end() || at->second.empty()) continue;
    matched.insert(matches.back().to = at->second.back());
    at->second.pop_back();
  }
  for (CRecordBase* one = to.FirstRecord(); one; one = one->Next())
    if (!matched.contains(one)) matches.push_back({nullptr, one});
  return matches;
}

// ---- Writing

/// One run: what the receiver lacks is added first, with its identity alone; then values are assigned until nothing is
/// left to do. So a circle of references closes.
class CCrossing {
 public:
  CCrossing(CTechnology& receiver, CCarry& carry) : m_receiver(receiver), m_carry(carry) {}

  void WillAssign(const CRecordBase& from, CRecordBase& to) { m_open.push_back({&from, &to}); }

  /// Null when the receiver has no such records, or something that identifies this one is missing.
  CRecordBase* Add(const CRecordBase& from) {
    CCollectionBase* const home = from.Owner() || !from.Kind().make ? nullptr : m_receiver.CollectionOf(from.Kind());
    if (!home) {
      m_carry.m_problems.push_back(TextOf(Text::NoPlaceInReceiver, CStringArray{from.Description()}));
      return nullptr;
    }
    std::unique_ptr<CRecordBase> record = from.Kind().make();
    if (!Fill(from, *record, EWhich::Identity)) return nullptr;
    CRecordBase& added = home->Append(std::move(record));
    m_carry.m_added.push_back(&added);
    WillAssign(from, added);
    return &added;
  }

  void Run() {
    for (std::size_t at = 0; at < m_open.size(); ++at) {
      const SOpen open = m_open[at];
      Fill(*open.from, *open.to, HaveOneIdentity(*open.from, *open.to) ? EWhich::Values : EWhich::All);
      if (open.from->OwnsValues()) FillOwned(*open.from, *open.to);
    }
  }

 private:
  enum class EWhich { Identity, Values, All };
  struct SOpen {
    const CRecordBase* from;
    CRecordBase* to;
  };

  /// Writes fields. False when an identifying reference has no counterpart.
  bool Fill(const CRecordBase& from, CRecordBase& to, EWhich which) {
    bool isIdentified = true;
    for (const CField& field : from.Kind().fields) {
      const bool identifies = Identifies(from.Kind(), field);
      if (field.stays || (which == EWhich::Identity && !identifies) || (which == EWhich::Values && identifies))
        continue;
      if (!field.type->IsReference()) {
        field.set(to, field.at(const_cast<void*>(from.FieldsAddress())));
        continue;
      }
      const CRecordBase* const target = TargetOf(from, field);
      CRefBase found;
      if (Resolve(from, field, target, found)) field.set(to, &found);
      if (identifies && target && !found.target) isIdentified = false;
    }
    return isIdentified;
  }

  void FillOwned(const CRecordBase& from, CRecordBase& to) {
    for (std::size_t i = 0; const CCollectionBase* theirs = from.Child(i); ++i) {
      CCollectionBase& mine = *to.Child(i);
      for (const SCounterparts& pair : MatchByName(*theirs, mine)) {
        if (!pair.from) {
          mine.Remove(*pair.to);
        } else if (pair.to) {
          Fill(*pair.from, *pair.to, EWhich::Values);
          FillOwned(*pair.from, *pair.to);
        } else {
          std::unique_ptr<CRecordBase> made = pair.from->Kind().make();
          if (!Fill(*pair.from, *made, EWhich::All)) continue;
          FillOwned(*pair.from, *made);
          mine.Append(std::move(made));
        }
      }
    }
  }

  /// False when the reference stays as it is.
  bool Resolve(const CRecordBase& owner, const CField& field, const CRecordBase* target, CRefBase& found) {
    if (!target) return true;
    if (target->Technology() == &m_receiver && target->IsIn()) {
      found.target = const_cast<CRecordBase*>(target);
    } else {
      found.target = FindByName(*target, m_receiver);
    }
    if (found.target) return true;
    switch (m_carry.m_missing(owner, field, *target)) {
      case EMissing::Bring: found.target = Add(*target); return found.target != nullptr;
      case EMissing::Leave: return false;
      case EMissing::Clear: return true;
      case EMissing::Report: break;
    }
    m_carry.m_problems.push_back(TextOf(Text::TargetNotInReceiver,
                                        CStringArray{owner.Description(), TextOf(field.title), target->Description()}));
    return false;
  }

  CTechnology& m_receiver;
  CCarry& m_carry;
  std::vector<SOpen> m_open;
};

void AssignByName(const CRecordBase& from, CRecordBase& to, CCarry& carry) {
  assert(&from.Kind() == &to.Kind() && to.IsIn());
  CCrossing crossing(*to.Technology(), carry);
  crossing.WillAssign(from, to);
  crossing.Run();
}

CRecordBase* AddByName(const CRecordBase& from, CTechnology& receiver, CCarry& carry) {
  CRecordBase* to = FindByName(from, receiver);
  CCrossing crossing(receiver, carry);
  if (to) {
    crossing.WillAssign(from, *to);
  } else {
    to = crossing.Add(from);
  }
  crossing.Run();
  return to;
}

void CopyByName(std::span<const CRecordBase* const> records, CTechnology& receiver, CCarry& carry) {
  CCrossing crossing(receiver, carry);
  const auto begin = [&](const CRecordBase& record, CRecordBase* to) {
    if (to) {
      crossing.WillAssign(record, *to);
    } else {
      crossing.Add(record);
    }
  };
  // Records that their fields identify come last, since those may be references to the others; and they are matched
  // once a collection, since finding each of them is a search.
  std::vector<const CRecordBase*> identified;
  for (const CRecordBase* record : records) {
    if (record->Home() && !record->Owner() && !record->Kind().nameField && !IdentityOf(*record).empty()) {
      identified.push_back(record);
    } else {
      begin(*record, FindByName(*record, receiver));
    }
  }
  std::unordered_map<const CCollectionBase*, std::unordered_map<const CRecordBase*, CRecordBase*>> known;
  for (const CRecordBase* record : identified) {
    const auto [at, isNew] = known.try_emplace(record->Home());
    if (const CCollectionBase* const mine = receiver.CollectionOf(record->Kind()); isNew && mine)
      for (const SCounterparts& pair : MatchByName(*record->Home(), *mine)) at->second[pair.from] = pair.to;
    begin(*record, at->second[record]);
  }
  crossing.Run();
}

// ---- Comparing

void CompareByName(const CRecordBase& from, const CRecordBase& to,
                   const std::function<void(const SDifference&)>& visit) {
  assert(&from.Kind() == &to.Kind());
  const bool isOne = HaveOneIdentity(from, to);
  for (const CField& field : from.Kind().fields) {
    if (field.stays || (isOne && Identifies(from.Kind(), field))) continue;
    const bool equal =
        field.type->IsReference() ? Refers(TargetOf(from, field), TargetOf(to, field)) : field.HasEqual(from, to);
    if (!equal) visit({&from, &to, &field});
  }
  if (!from.OwnsValues()) return;
  for (std::size_t i = 0; const CCollectionBase* theirs = from.Child(i); ++i) {
    for (const SCounterparts& pair : MatchByName(*theirs, *to.Child(i))) {
      if (pair.from && pair.to) {
        CompareByName(*pair.from, *pair.to, visit);
      } else {
        visit({pair.from, pair.to, nullptr});
      }
    }
  }
}

bool EqualByName(const CRecordBase& from, const CRecordBase& to) {
  bool equal = true;
  CompareByName(from, to, [&](const SDifference&) { equal = false; });
  return equal;
}
