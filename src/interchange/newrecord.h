// Records made from their fields in one go, as imports make them.
#pragma once
#include <memory>

#include "model/design/collection.h"

/// A detached record with these fields.
template <class T>
std::unique_ptr<T> NewRecord(typename T::Fields fields) {
  auto record = std::make_unique<T>();
  *static_cast<typename T::Fields*>(record->FieldsAddress()) = std::move(fields);
  return record;
}

/// A record with these fields, added at the end of a collection.
template <class T>
T& AddRecord(CCollection<T>& home, typename T::Fields fields) {
  return static_cast<T&>(home.Append(NewRecord<T>(std::move(fields))));
}
