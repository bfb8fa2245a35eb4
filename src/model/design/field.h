// Erased fields: what file format, reference walk, columns, drafts and comparison need to know of a record's fields.
#pragma once
#include <limits>
#include <span>

#include "model/base/catalogue.h"
#include "model/design/values.h"

struct CKind;
struct SChoice;

/// How a field is shown, edited and written.
enum class EFieldClass { Text, Name, Length, Integer, Boolean, Colour, Code, Reference, Point, Points, Angle, Flags };

/// What DeleteUsed<Kind> of the target of a use does to the record that holds it.
enum class EOnDelete { Refuse, Clear, DeleteOwner };

/// The behaviour that all fields of one C++ type share.
struct CFieldType {
  EFieldClass fieldClass;
  bool (*equal)(const void* a, const void* b);
  const CKind* (*target)();               // references: the kind referred to; others null
  std::span<const SChoice> (*choices)();  // enumerations: the values in display order; others null
  EReference reference;                   // references only

  constexpr bool IsReference() const { return target != nullptr; }
  /// Whether two values are the same; most are one number, which takes no call.
  bool AreEqual(const void* a, const void* b) const {
    switch (fieldClass) {
      case EFieldClass::Length:
      case EFieldClass::Integer:
      case EFieldClass::Code: return *static_cast<const int*>(a) == *static_cast<const int*>(b);
      case EFieldClass::Boolean: return *static_cast<const bool*>(a) == *static_cast<const bool*>(b);
      default: return equal(a, b);
    }
  }
};

/// One field of one kind of record. `at` takes the address of the record's fields.
struct CField {
  const char* name = nullptr;  // as in files; of a form field and a column with a capital first letter
  CTextId title;               // as people read it, in columns, forms and lists alike
  const CFieldType* type = nullptr;
  void* (*at)(void* fields) = nullptr;
  bool (*set)(CRecordBase& record, const void* value) = nullptr;  // through the journal; true when it changed something
  EOnDelete onDelete = EOnDelete::Refuse;                         // uses only

  bool identifies = false;  // tells a record without a name from the others of its kind
  bool stays = false;       // keeps its value when the record is given those of another design's, and is not compared
  // Files did not always have this key: it is left out for the usual value also where all others are written, so that a
  // file that uses nothing new keeps its bytes.
  bool isLate = false;
  int least = std::numeric_limits<int>::min();  // the integers that files may hold
  int most = std::numeric_limits<int>::max();
  std::int64_t (*shown)(const CRecordBase& record) = nullptr;  // what people see instead of the number of the field

  constexpr CField Identifying() const {
    CField field = *this;
    field.identifies = true;
    return field;
  }
  constexpr CField Staying() const {
    CField field = *this;
    field.stays = true;
    return field;
  }
  constexpr CField Late() const {
    CField field = *this;
    field.isLate = true;
    return field;
  }
  constexpr CField Within(int aLeast, int aMost) const {
    CField field = *this;
    field.least = aLeast;
    field.most = aMost;
    return field;
  }
  constexpr CField ShownAs(std::int64_t (*number)(const CRecordBase& record)) const {
    CField field = *this;
    field.shown = number;
    return field;
  }

  /// Whether two records of the kind have the same value here.
  bool HasEqual(const CRecordBase& a, const CRecordBase& b) const;

  template <class T>
  const T& As(const void* fields) const {
    return *static_cast<const T*>(at(const_cast<void*>(fields)));
  }
};
