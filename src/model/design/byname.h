// Records across designs: one design's records are given the values of another one's.
//
// Nothing of the design that is read stays behind: every reference is found again in the receiver's design by what
// identifies its target, so the other design may be destroyed afterwards. Receivers keep their identity, their place,
// what refers to them, the fields that stay (CField::stays) and what they own apart from their values
// (CRecordBase::OwnsValues). All writing is noted in the receiver's journal; opening a level is the caller's.
#pragma once
#include <functional>
#include <span>

#include "model/design/technology.h"

/// What becomes of a reference to something that the receiver's design lacks.
enum class EMissing {
  Bring,   // it is added there, and given its values by name in turn
  Leave,   // the reference stays as it is
  Clear,   // the reference becomes none
  Report,  // the reference stays as it is, and a problem names it
};

/// How records cross, and what is to be said of it. An owned record that is identified by something missing, as a pad
/// style exception by its layer, crosses only when that is brought.
class CCarry {
 public:
  using CRule = std::function<EMissing(const CRecordBase& owner, const CField& field, const CRecordBase& target)>;
  explicit CCarry(EMissing missing) : CCarry([missing](auto&...) { return missing; }) {}
  explicit CCarry(CRule missing) : m_missing(std::move(missing)) {}

  /// One line for each reference that was reported, and for each record that has no place in the receiver's design.
  const CStringArray& Problems() const { return m_problems; }
  /// What was added to the receiver's design: what it lacked of the records handed over, and what they brought along.
  const std::vector<CRecordBase*>& Added() const { return m_added; }

 private:
  friend class CCrossing;
  CRule m_missing;
  CStringArray m_problems;
  std::vector<CRecordBase*> m_added;
};

/// What tells a record from the others of its kind: its name, or else what its identifying fields hold. One text for
/// each; the two targets of a pair of references count in either order. Empty for kinds that nothing identifies.
CStringArray IdentityOf(const CRecordBase& record);

/// The record of `technology` that stands for `record`: the one with the same identity, the same of several in order;
/// the built-in layer for the built-in layer; what a design holds once for the same; of owned records without identity
/// the one at the same place. Null when there is none, as always for other items.
CRecordBase* FindByName(const CRecordBase& record, const CTechnology& technology);

/// Gives `to`, a record in a design, the values of `from`, a record of the same kind. The fields that identify it stay
/// when both have one identity.
void AssignByName(const CRecordBase& from, CRecordBase& to, CCarry& carry);

/// Gives the record that stands for `from` in `receiver` its values, and adds one where there is none. Null, with a
/// problem, when `receiver` has no such records; null too when something that identifies it is missing there.
CRecordBase* AddByName(const CRecordBase& from, CTechnology& receiver, CCarry& carry);

/// The same for several, which may refer to each other in circles. Once copied, copying again changes nothing, unless
/// they are items that nothing identifies: those are always new.
void CopyByName(std::span<const CRecordBase* const> records, CTechnology& receiver, CCarry& carry);

/// The records of two collections of one kind that stand for each other, in the order of `from`; null where one has no
/// counterpart, those of `to` last.
struct SCounterparts {
  CRecordBase* from;
  CRecordBase* to;
};
std::vector<SCounterparts> MatchByName(const CCollectionBase& from, const CCollectionBase& to);

/// A difference that AssignByName would write: a field, or (null) an owned record that only one of the two sides has.
struct SDifference {
  const CRecordBase* from;  // null: only `to` is there
  const CRecordBase* to;    // null: only `from` is there
  const CField* field;
};
/// Calls `visit` for every difference between two records of one kind.
void CompareByName(const CRecordBase& from, const CRecordBase& to,
                   const std::function<void(const SDifference&)>& visit);
bool EqualByName(const CRecordBase& from, const CRecordBase& to);
