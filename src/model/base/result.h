// What a fallible operation hands back: its value, or the text that says why there is none.
//
// Exactly one of the two is there. The text is ready to be shown: it says where, what was found and what is allowed.
#pragma once
#include <cassert>
#include <utility>
#include <variant>

#include "model/base/text.h"

/// Makes any CResult a failed one: `return SFailure{"..."};`
struct SFailure {
  CString text;
};

template <class T>
class [[nodiscard]] CResult {
 public:
  // Implicit, so that a function returns the value or the failure as it is.
  CResult(T value) : m_state(std::in_place_index<0>, std::move(value)) {}  // NOLINT(google-explicit-constructor)
  CResult(SFailure failure)                                                // NOLINT(google-explicit-constructor)
      : m_state(std::in_place_index<1>, std::move(failure)) {}

  explicit operator bool() const { return m_state.index() == 0; }
  T& operator*() { return Value(); }
  const T& operator*() const { return const_cast<CResult*>(this)->Value(); }
  T* operator->() { return &Value(); }
  const T* operator->() const { return &**this; }
  const CString& Error() const {
    assert(!*this);
    return std::get_if<1>(&m_state)->text;
  }

 private:
  T& Value() {
    assert(*this);
    return *std::get_if<0>(&m_state);
  }
  std::variant<T, SFailure> m_state;
};
