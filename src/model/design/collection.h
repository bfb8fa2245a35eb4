// Collections of records: intrusive lists with stable addresses, found by name in one hashed look-up.
//
// A collection belongs to a design (or library) or to a record. Its changes of presence and place are noted in the
// journal of the design. Places are numbered lazily: the collection vouches for the numbers of a leading run only,
// which an insertion or a removal shortens and the next question for a place lengthens again, so that passes that put
// one record after the other stay linear.
#pragma once
#include <cstddef>
#include <iterator>
#include <memory>
#include <vector>

#include "model/design/record.h"

/// The cursor of a First/Next walk: the record that Next returns. Stays valid while that record is in the design.
using POSITION = CRecordBase*;

class CCollectionBase {
 public:
  /// `name` is what files call the collection. `owner` is the record that owns it, null where the design does.
  CCollectionBase(const CKind& kind, const char* name, CRecordBase* owner);
  CCollectionBase(const CCollectionBase&) = delete;
  CCollectionBase& operator=(const CCollectionBase&) = delete;
  ~CCollectionBase();

  const CKind& Kind() const { return m_kind; }
  const char* Name() const { return m_name; }
  CRecordBase* Owner() const { return m_owner; }
  std::size_t Count() const { return m_count; }
  CRecordBase* FirstRecord() const { return m_first; }
  CRecordBase* LastRecord() const { return m_last; }

  /// The first record of that name, or null. Always null for an empty name, in a collection whose kind has no indexed
  /// name, and in one that is not part of a design.
  CRecordBase* FindRecord(std::string_view name) const;

  /// Puts a detached record behind `previous` (null: in front), and takes ownership. References to records that are not
  /// in the design, those of its owned records too, are emptied, and the last error is set (builds with assertions
  /// stop).
  CRecordBase& Insert(std::unique_ptr<CRecordBase> record, CRecordBase* previous);
  CRecordBase& Append(std::unique_ptr<CRecordBase> record) { return Insert(std::move(record), m_last); }
  /// Takes a record out. In a design the journal owns it from then on, so its address stays valid while the step can
  /// be undone. Nothing in the design may refer to it or to its owned records (asserted).
  void Remove(CRecordBase& record);
  /// Puts a record of this collection at `place`, counted from 0; a place past the end means the end.
  void SetPlace(CRecordBase& record, std::size_t place);

  std::size_t PlaceOf(const CRecordBase& record) const;
  CRecordBase* At(std::size_t place) const;  // null past the end

  /// Whether this collection is part of a design, so that its records are.
  bool IsIn() const { return m_technology && (!m_owner || m_owner->IsIn()); }

 private:
  friend class CRecordBase;
  friend class CTechnology;
  friend class CPresenceChange;
  friend class CPlaceChange;
  friend void ConnectField(CRecordBase&, const CName&, bool);

  void Enter(CRecordBase& record, CRecordBase* previous) noexcept;
  void Leave(CRecordBase& record) noexcept;
  void Link(CRecordBase& record, CRecordBase* previous) noexcept;
  void Unlink(CRecordBase& record) noexcept;
  void Clear() noexcept;
  void MakeIndex();  // so that Index cannot fail
  void Index(CRecordBase& record, const CString& name) noexcept;
  void Unindex(CRecordBase& record);
  void Rehash(std::size_t buckets);
  bool IsNumbered(const CRecordBase& record) const {
    return record.m_place < m_numbered.size() && m_numbered[record.m_place] == &record;
  }
  bool HasRoomForNumber() const noexcept;
  bool NumberNext() const;  // vouches for one record more; false when all are numbered

  const CKind& m_kind;
  const char* m_name;
  CRecordBase* m_owner;
  CTechnology* m_technology = nullptr;
  CRecordBase* m_first = nullptr;
  CRecordBase* m_last = nullptr;
  std::size_t m_count = 0;
  mutable std::vector<CRecordBase*> m_numbered;  // the leading run, by place
  std::vector<CRecordBase*> m_buckets;           // a power of two, or none yet
  std::size_t m_indexed = 0;
};

template <class T>
class CCollection : public CCollectionBase {
 public:
  explicit CCollection(const char* name, CRecordBase* owner = nullptr) : CCollectionBase(T::TheKind(), name, owner) {}

  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = T*;
    using reference = T&;
    Iterator() = default;
    explicit Iterator(CRecordBase* at) : m_at(at) {}
    T& operator*() const { return static_cast<T&>(*m_at); }
    T* operator->() const { return static_cast<T*>(m_at); }
    Iterator& operator++() {
      m_at = m_at->Next();
      return *this;
    }
    Iterator operator++(int) {
      Iterator old = *this;
      ++*this;
      return old;
    }
    bool operator==(const Iterator&) const = default;

   private:
    CRecordBase* m_at = nullptr;
  };
  Iterator begin() const { return Iterator(FirstRecord()); }
  Iterator end() const { return Iterator(); }

  T* First() const { return static_cast<T*>(FirstRecord()); }
  /// A walk: First sets `position` to the record behind the one that it returns, and so does Next; null past the end.
  T* First(POSITION& position) const {
    position = FirstRecord();
    return Next(position);
  }
  static T* Next(POSITION& position) {
    CRecordBase* const at = position;
    position = at ? at->Next() : nullptr;
    return static_cast<T*>(at);
  }
  T* Find(std::string_view name) const { return static_cast<T*>(FindRecord(name)); }
  /// Adds a copy at the end and returns it.
  T* Add(const T& record) { return static_cast<T*>(&Append(record.Clone())); }
};

/// The record behind an owned one: of the same owner, or else the first one of the owners that follow; null past the
/// end.
CRecordBase* NextOfOwners(const CRecordBase& record);

/// A walk through what the records of one collection own.
template <class T>
T* NextOwned(POSITION& position) {
  CRecordBase* const at = position;
  position = at ? NextOfOwners(*at) : nullptr;
  return static_cast<T*>(at);
}
template <class T, class Owner>
T* FirstOwned(POSITION& position, const CCollection<Owner>& owners, CCollection<T>& (Owner::*owned)()) {
  position = nullptr;
  for (auto owner = owners.begin(); !position && owner != owners.end(); ++owner)
    position = ((*owner).*owned)().FirstRecord();
  return NextOwned<T>(position);
}

/// First<Kind> and Next<Kind> of a collection; `position` is the record that the next call returns.
#define TECHSHEET_WALK(Kind, Class, collection)                                       \
  Class* First##Kind(POSITION& position) const { return collection.First(position); } \
  Class* Next##Kind(POSITION& position) const { return collection.Next(position); }
