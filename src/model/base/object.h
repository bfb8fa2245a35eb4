// Run-time classes.
//
// Designs, dialogs, pages and records are told apart by the class they were made as, derived classes included. The
// name of a class is also what scripts and settings call it, so it is part of the program's outside.
#pragma once
#include "model/base/text.h"

struct CRuntimeClass {
  const char* name;
  const CRuntimeClass* base;  // null for CObject alone
};

class CObject {
 public:
  virtual ~CObject() = default;

  static const CRuntimeClass* GetThisClass() {
    static const CRuntimeClass theClass{"CObject", nullptr};
    return &theClass;
  }
  virtual const CRuntimeClass* GetRuntimeClass() const { return GetThisClass(); }
  bool IsKindOf(const CRuntimeClass* wanted) const;

  /// What scripts and notifications call this object: the name of a design or a record, empty for others.
  virtual CString GetObjectName() const { return {}; }

 protected:
  CObject() = default;
  CObject(const CObject&) = default;
  CObject& operator=(const CObject&) = default;
};

/// Gives `Class`, which derives from `Base`, its run-time class. Stands first in the class; leaves it public.
#define TECHSHEET_CLASS(Class, Base)                                   \
 public:                                                               \
  static const CRuntimeClass* GetThisClass() {                         \
    static const CRuntimeClass theClass{#Class, Base::GetThisClass()}; \
    return &theClass;                                                  \
  }                                                                    \
  const CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }

/// `object` as a T when it is one (derived classes included), otherwise null.
template <class T>
T* DynamicDowncast(CObject* object) {
  return object && object->IsKindOf(T::GetThisClass()) ? static_cast<T*>(object) : nullptr;
}
template <class T>
const T* DynamicDowncast(const CObject* object) {
  return object && object->IsKindOf(T::GetThisClass()) ? static_cast<const T*>(object) : nullptr;
}
