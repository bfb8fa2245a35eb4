// What a fallible operation hands back: its value, or why there is none.
//
// Exactly one of the two is there. Why is a text unless the operation says otherwise, ready to be shown: it says where,
// what was found and what is allowed.
#pragma once
#include <cassert>
#include <optional>
#include <utility>
#include <variant>

#include "model/base/text.h"

/// Makes any CResult a failed one: `return SFailure{"..."};`
template <class E>
struct SFailed {
  E error;
};
using SFailure = SFailed<CString>;

template <class T, class E = CString>
class [[nodiscard]] CResult {
 public:
  // Implicit, so that a function returns the value or the failure as it is.
  CResult(T value) : m_state(std::in_place_index<0>, std::move(value)) {}  // NOLINT(google-explicit-constructor)
  CResult(SFailed<E> failure)                                              // NOLINT(google-explicit-constructor)
      : m_state(std::in_place_index<1>, std::move(failure)) {}

  explicit operator bool() const { return m_state.index() == 0; }
  T& operator*() { return Value(); }
  const T& operator*() const { return const_cast<CResult*>(this)->Value(); }
  T* operator->() { return &Value(); }
  const T* operator->() const { return &**this; }
  const E& Error() const {
    assert(!*this);
    return std::get_if<1>(&m_state)->error;
  }

 private:
  T& Value() {
    assert(*this);
    return *std::get_if<0>(&m_state);
  }
  std::variant<T, SFailed<E>> m_state;
};

/// Of an operation that has no value: `return {};` when it is done.
template <class E>
class [[nodiscard]] CResult<void, E> {
 public:
  CResult() = default;
  CResult(SFailed<E> failure) : m_failure(std::move(failure)) {}  // NOLINT(google-explicit-constructor)

  explicit operator bool() const { return !m_failure; }
  const E& Error() const {
    assert(m_failure);
    return m_failure->error;
  }

 private:
  std::optional<SFailed<E>> m_failure;
};
