// Records: what a design consists of.
//
// A record is a plain struct of fields. All writing goes through Set, which swaps the old value into the journal of
// the design that owns the record; an equal value notes nothing. A record outside every design (a draft, a copy)
// belongs to no journal and notes nothing. A record that has left the design is owned by the journal entry that took
// it out; nothing writes to it, nor refers to it. A record in a design refers to records of that design alone: Set, and
// the insertion into a collection, refuse any other target.
#pragma once
#include <cassert>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

#include "model/base/catalogue.h"
#include "model/base/object.h"
#include "model/design/field.h"
#include "model/design/journal.h"
#include "model/design/values.h"

class CCollectionBase;
class CTechnology;

/// What all records of one class have in common.
struct CKind {
  const char* name;  // of the class
  CTextId title;     // as people read it ("Layer type")
  std::span<const CField> fields;
  std::unique_ptr<CRecordBase> (*make)();  // null for kinds of which a design holds exactly one
  const CField* nameField;                 // null where records have no indexed name

  const CField* FindField(std::string_view fieldName) const;
};

class CRecordBase : public CObject {
  TECHSHEET_CLASS(CRecordBase, CObject)
  ~CRecordBase() override = default;

  virtual const CKind& Kind() const = 0;
  virtual void* FieldsAddress() = 0;
  const void* FieldsAddress() const { return const_cast<CRecordBase*>(this)->FieldsAddress(); }
  /// A detached copy, its owned records included.
  virtual std::unique_ptr<CRecordBase> Clone() const = 0;
  /// Gives a detached record the fields of one of the same kind, not what that one owns.
  virtual void CopyFields(const CRecordBase& other) = 0;
  /// The collections of records that this record owns, null past the last.
  virtual CCollectionBase* Child(std::size_t) { return nullptr; }
  const CCollectionBase* Child(std::size_t index) const { return const_cast<CRecordBase*>(this)->Child(index); }

  /// The name, empty for a kind without one.
  const CString& RecordName() const;
  /// Whether it came with the program: its name begins with "[".
  bool IsBuiltIn() const { return RecordName().starts_with('['); }
  CString GetObjectName() const override { return RecordName(); }
  /// What the record is called in messages: its kind and what identifies it, behind those of the record that owns it.
  CString Description() const;

  bool IsIn() const { return m_in; }                        // part of a design
  CUndoJournal* Journal() const { return m_journal; }       // null for a detached record
  CCollectionBase* Home() const { return m_home; }          // null for a draft, and for one-of-a-kind records
  CTechnology* Technology() const { return m_technology; }  // null for a detached record
  CRecordBase* Owner() const;                               // the record whose collection holds this one, or null
  /// Whether the record counts as used by what it owns, as a net that connects something does.
  virtual bool IsOccupied() const { return false; }
  /// Whether what this record owns belongs to its values, so that it crosses to other designs with them.
  virtual bool OwnsValues() const { return true; }
  /// References to this record from records that are in the design, parts left out.
  int UseCount() const { return m_uses; }
  /// Whether references that do not keep this record from being deleted lead here.
  bool HasYieldingReferences() const { return m_yielding > 0; }
  CRecordBase* Previous() const { return m_previous; }
  CRecordBase* Next() const { return m_next; }

  /// Makes every field, and every owned record, equal to those of `other`, which is of the same kind; this record keeps
  /// its identity. Owned records are matched by place.
  void AssignFrom(const CRecordBase& other);
  /// Whether all fields and owned records are equal; references are equal when they name the same record.
  bool EqualValues(const CRecordBase& other) const;

  /// Whether refusing a reference fails an assertion, where there are assertions. Returns what held before.
  static bool AssertOnRefusal(bool doesAssert);

 protected:
  CRecordBase() = default;
  CRecordBase(const CRecordBase&) : CObject() {}  // a copy is detached
  CRecordBase& operator=(const CRecordBase&) = delete;
  /// Makes room in the index for the name that the record is about to get.
  void MakeRoomForName();
  /// Fills the empty collections of a copy; called by the copy constructors of kinds that own records.
  void CopyChildren(const CRecordBase& other);
  /// Whether `value` may be written into `field`, a reference of this record: while the record is in a design, the
  /// target must be too. Otherwise the last error says what was refused.
  bool Admits(const CRefBase& value, const void* field) const {
    return !m_in || !value.target || (value.target->m_in && value.target->m_technology == m_technology) ||
           RefuseReference(field, *value.target);
  }

 private:
  friend class CCollectionBase;
  friend class CTechnology;
  friend void ConnectField(CRecordBase&, const CName&, bool);
  friend void ConnectField(CRecordBase&, const CRefBase&, EReference, bool);

  bool RefuseReference(const void* field, const CRecordBase& target) const;  // always false
  /// Empties what refers to records outside `technology`, in the owned records too; the last error names the last such.
  void DropForeignReferences(const CTechnology& technology);
  void MakeRoomForOwned();                // in the indexes that Connect fills
  void Connect(CTechnology& technology);  // enters the design: indexes the name, counts the references
  void Disconnect();
  void ConnectFields(bool in);
  virtual void HasLeft() {}

  CTechnology* m_technology = nullptr;
  CUndoJournal* m_journal = nullptr;
  CCollectionBase* m_home = nullptr;
  CRecordBase* m_previous = nullptr;
  CRecordBase* m_next = nullptr;
  CRecordBase* m_sameBucket = nullptr;  // next record in the bucket of the name index
  std::uint32_t m_hash = 0;             // of the name, while indexed
  std::uint32_t m_place = 0;            // in the collection, when the collection's numbering vouches for it
  int m_uses = 0;
  int m_yielding = 0;  // parts and fallbacks
  bool m_in = false;
};

/// Indexes or unindexes a name, counts or uncounts a reference of a record that is in the design.
void ConnectField(CRecordBase& record, const CName& name, bool in);
void ConnectField(CRecordBase& record, const CRefBase& reference, EReference what, bool in);

template <class T>
inline constexpr bool kConnects = std::is_same_v<T, CName> || std::is_base_of_v<CRefBase, T>;

template <class T>
void ConnectValue(CRecordBase& record, const T& field, bool in) {
  if constexpr (std::is_base_of_v<CRefBase, T>) {
    ConnectField(record, field, T::kReference, in);
  } else {
    ConnectField(record, field, in);
  }
}

/// Swaps a value into a field; the field is disconnected and connected around it. `value` is then the old one.
template <class T>
void ExchangeField(CRecordBase& record, T& field, T& value) {
  if constexpr (kConnects<T>) {
    if (record.IsIn()) ConnectValue(record, field, false);
  }
  std::swap(field, value);
  if constexpr (kConnects<T>) {
    if (record.IsIn()) ConnectValue(record, field, true);
  }
}

/// The old value of one field.
template <class T>
class CFieldChange final : public CChange<CFieldChange<T>> {
 public:
  CFieldChange(CRecordBase& record, T& field, T&& old) : m_record(&record), m_field(&field), m_value(std::move(old)) {}
  void Swap() noexcept override { ExchangeField(*m_record, *m_field, m_value); }

 private:
  CRecordBase* m_record;
  T* m_field;
  T m_value;
};

/// The base of the records with fields F: CRecordBase, or what F names as its RecordBase.
template <class F>
struct RecordBaseOf {
  using Type = CRecordBase;
};
template <class F>
  requires requires { typename F::RecordBase; }
struct RecordBaseOf<F> {
  using Type = typename F::RecordBase;
};

template <class F>
class CRecord : public RecordBaseOf<F>::Type {
  using Base = typename RecordBaseOf<F>::Type;

 public:
  using Fields = F;
  CRecord() = default;
  CRecord(const CRecord& other) : Base(other), m_fields(other.m_fields) {}
  using Base::IsIn;
  using Base::Journal;

  const F& Values() const { return m_fields; }
  void* FieldsAddress() final { return &m_fields; }
  using Base::FieldsAddress;
  void CopyFields(const CRecordBase& other) final {
    assert(!Journal() && &this->Kind() == &other.Kind());
    m_fields = static_cast<const CRecord&>(other).m_fields;
  }

  /// Writes one field. True when the value was another one before. A reference to a record that is not in the design of
  /// this one is refused: false, the field keeps its value, and the last error is set (builds with assertions stop).
  template <class T>
  bool Set(T F::* member, std::type_identity_t<T> value) {
    T& field = m_fields.*member;
    if (field == value) return false;
    assert(IsIn() || !Journal());  // a record that is out is not written to
    if constexpr (std::is_base_of_v<CRefBase, T>) {
      if (!this->Admits(value, &field)) return false;
    }
    const bool isNoted = Journal() && Journal()->IsRecording();
    if (isNoted) Journal()->Reserve();  // from here on nothing can fail
    if constexpr (std::is_same_v<T, CName>) this->MakeRoomForName();
    ExchangeField(*this, field, value);
    if (isNoted) Journal()->template Note<CFieldChange<T>>(*this, field, std::move(value));
    return true;
  }

  /// Writes a flag of view (visibility and the like): part of a step while a level is open; otherwise changed directly,
  /// which is no step and leaves the design as modified as it was.
  template <class T>
  bool SetView(T F::* member, std::type_identity_t<T> value) {
    if (!Journal() || Journal()->InLevel()) return Set(member, std::move(value));
    T& field = m_fields.*member;
    if (field == value) return false;
    std::swap(field, value);
    return true;
  }

 private:
  F m_fields;
};

/// Declares what a record class owes its base. `Base` is the class it derives from; the kind is defined in the .cpp.
#define TECHSHEET_RECORD_COMMON(Class, Base)                                                     \
  TECHSHEET_CLASS(Class, Base)                                                                   \
  Class() = default;                                                                             \
  static const CKind& TheKind();                                                                 \
  const CKind& Kind() const override { return TheKind(); }                                       \
  std::unique_ptr<CRecordBase> Clone() const override { return std::make_unique<Class>(*this); } \
  Class& operator=(const Class& other) {                                                         \
    if (this != &other) AssignFrom(other);                                                       \
    return *this;                                                                                \
  }
#define TECHSHEET_RECORD(Class, Base)  \
  TECHSHEET_RECORD_COMMON(Class, Base) \
  Class(const Class& other) = default;
/// The same for a kind that owns records; it overrides Child.
#define TECHSHEET_OWNING_RECORD(Class, Base)                          \
  TECHSHEET_RECORD_COMMON(Class, Base)                                \
  Class(const Class& other) : CRecord(other) { CopyChildren(other); } \
  using CRecordBase::Child;
