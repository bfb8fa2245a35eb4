// JSON on one line, built from the outside in; what separates values is put in by itself.
#pragma once
#include <concepts>
#include <utility>

#include "model/base/text.h"

class CJsonWriter {
 public:
  /// Names the next value; inside objects only.
  CJsonWriter& Key(std::string_view name);

  /// Bytes of `text` that are no UTF-8 appear as U+FFFD.
  CJsonWriter& Text(std::string_view text);
  CJsonWriter& Integer(std::int64_t value);
  CJsonWriter& Boolean(bool value);
  CJsonWriter& Null();
  /// Anything that is complete JSON already.
  CJsonWriter& Raw(std::string_view json);

  /// An object or a list, whose content `fill` writes.
  template <std::invocable F>
  CJsonWriter& Object(F&& fill) {
    return Nested('{', '}', std::forward<F>(fill));
  }
  template <std::invocable F>
  CJsonWriter& Array(F&& fill) {
    return Nested('[', ']', std::forward<F>(fill));
  }
  /// A list with one value for each element, which `write` writes.
  template <class Range, class F>
  CJsonWriter& Array(const Range& range, F&& write) {
    return Array([&] {
      for (const auto& element : range) write(element);
    });
  }
  CJsonWriter& Texts(const CStringArray& texts) {
    return Array(texts, [this](const CString& text) { Text(text); });
  }

  const CString& Json() const { return m_out; }

 private:
  template <class F>
  CJsonWriter& Nested(char open, char close, F&& fill) {
    Separate();
    m_out += open;
    m_first = true;
    std::forward<F>(fill)();
    m_out += close;
    m_first = false;
    return *this;
  }
  void Separate();

  CString m_out;
  bool m_first = true;  // nothing stands before the next value in its object or list, or its key does
};
