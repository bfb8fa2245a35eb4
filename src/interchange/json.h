// The JSON of project files as a tree that knows where each value stands.
//
// Numbers keep their digits, so that a length never passes through a floating-point number. A text is read whole or not
// at all; a name that occurs twice in one object is a fault, since nobody could say which value holds.
#pragma once
#include <vector>

#include "model/base/textfault.h"

struct SJson {
  enum class EKind { Null, Boolean, Number, Text, Array, Object };
  EKind kind = EKind::Null;
  CString name;  // in its object
  CString text;  // the digits of a number, "true" or "false", or the text itself
  std::vector<SJson> items;
  std::size_t at = 0;  // bytes from the start of the text

  bool Is(EKind wanted) const { return kind == wanted; }
  /// The member of that name, or one that is Null.
  const SJson& operator[](std::string_view member) const;
};

/// Throws STextFault for a text that is not one JSON object, or goes more than 64 deep.
SJson ReadJson(const CString& text);
