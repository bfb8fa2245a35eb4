// The types of fields behind their erased form. Included by the .cpp of each kind and nowhere else.
#pragma once
#include "model/design/choices.h"
#include "model/design/record.h"

template <class T>
struct FieldTraits;

#define TECHSHEET_PLAIN_FIELD(Type, Class)                             \
  template <>                                                          \
  struct FieldTraits<Type> {                                           \
    static constexpr EFieldClass kClass = EFieldClass::Class;          \
    static constexpr const CKind* (*kTarget)() = nullptr;              \
    static constexpr std::span<const SChoice> (*kChoices)() = nullptr; \
  }
TECHSHEET_PLAIN_FIELD(CString, Text);
TECHSHEET_PLAIN_FIELD(CName, Name);
TECHSHEET_PLAIN_FIELD(Dsu, Length);
TECHSHEET_PLAIN_FIELD(int, Integer);
TECHSHEET_PLAIN_FIELD(bool, Boolean);
TECHSHEET_PLAIN_FIELD(CColour, Colour);
TECHSHEET_PLAIN_FIELD(CPoint, Point);
TECHSHEET_PLAIN_FIELD(CPoints, Points);
TECHSHEET_PLAIN_FIELD(CAngle, Angle);
TECHSHEET_PLAIN_FIELD(CItemFlags, Flags);
#undef TECHSHEET_PLAIN_FIELD

template <class Tag>
struct FieldTraits<CCode<Tag>> {
  static constexpr EFieldClass kClass = EFieldClass::Code;
  static constexpr const CKind* (*kTarget)() = nullptr;
  static constexpr std::span<const SChoice> (*kChoices)() = &Tag::Choices;
};
template <class T>
struct FieldTraits<CRef<T>> {
  static constexpr EFieldClass kClass = EFieldClass::Reference;
  static constexpr const CKind* (*kTarget)() = +[]() -> const CKind* { return &T::TheKind(); };
  static constexpr std::span<const SChoice> (*kChoices)() = nullptr;
};
template <class T>
struct FieldTraits<CPartRef<T>> : FieldTraits<CRef<T>> {};
template <class T>
struct FieldTraits<CFallbackRef<T>> : FieldTraits<CRef<T>> {};

template <class T>
constexpr EReference ReferenceOf() {
  if constexpr (std::is_base_of_v<CRefBase, T>) return T::kReference;
  return EReference::Use;
}

template <class T>
inline constexpr CFieldType kFieldType{
    FieldTraits<T>::kClass,
    +[](const void* a, const void* b) { return *static_cast<const T*>(a) == *static_cast<const T*>(b); },
    FieldTraits<T>::kTarget, FieldTraits<T>::kChoices, ReferenceOf<T>()};

template <class F, class T>
F OwnerOf(T F::*);
template <class F, class T>
T ValueOf(T F::*);

/// The erased form of one member, as an entry of a kind's array of fields.
template <auto kMember>
constexpr CField Field(const char* name, CTextId title, EOnDelete onDelete = EOnDelete::Refuse) {
  using F = decltype(OwnerOf(kMember));
  using T = decltype(ValueOf(kMember));
  return {name,
          title,
          &kFieldType<T>,
          +[](void* fields) -> void* { return &(static_cast<F*>(fields)->*kMember); },
          +[](CRecordBase& record, const void* value) {
            assert(dynamic_cast<CRecord<F>*>(&record));  // the field belongs to the record's kind
            return static_cast<CRecord<F>&>(record).Set(kMember, *static_cast<const T*>(value));
          },
          onDelete};
}

template <class Class>
std::unique_ptr<CRecordBase> MakeRecord() {
  return std::make_unique<Class>();
}

/// The indexed name among the fields of a kind, or null.
constexpr const CField* NameFieldOf(std::span<const CField> fields) {
  for (const CField& field : fields)
    if (field.type->fieldClass == EFieldClass::Name) return &field;
  return nullptr;
}

/// Defines the kind of a record class: its title and its array of fields.
#define TECHSHEET_DEFINE_KIND(Class, title, fields) TECHSHEET_DEFINE_KIND_MADE(Class, title, fields, MakeRecord<Class>)
/// The same for a kind of which a design holds exactly one.
#define TECHSHEET_DEFINE_SINGLE(Class, title, fields) TECHSHEET_DEFINE_KIND_MADE(Class, title, fields, nullptr)
#define TECHSHEET_DEFINE_KIND_MADE(Class, title, fields, make)                      \
  const CKind& Class::TheKind() {                                                   \
    static constexpr CKind kKind{#Class, title, fields, make, NameFieldOf(fields)}; \
    return kKind;                                                                   \
  }
