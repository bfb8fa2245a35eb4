// The values that fields of records hold, beside bool, int and CString.
//
// The C++ type of a field decides what the field does: a CName is indexed, a reference counted, everything else inert;
// and it chooses the cell, the form field and the text in files.
#pragma once
#include <bitset>
#include <cstdint>

#include "model/base/geometry.h"
#include "model/base/text.h"

class CRecordBase;

/// A length in design units (1 unit is 1 nm).
struct Dsu {
  int value = 0;
  bool operator==(const Dsu&) const = default;
};

/// An angle in thousandths of a degree, counter-clockwise.
class CAngle {
 public:
  constexpr CAngle() = default;
  constexpr explicit CAngle(int milliDegrees) : m_milliDegrees(milliDegrees) {}
  constexpr int GetMilliDegrees() const { return m_milliDegrees; }
  bool operator==(const CAngle&) const = default;

 private:
  int m_milliDegrees = 0;
};

/// A colour, 0xRRGGBB.
struct CColour {
  std::uint32_t rgb = 0;
  bool operator==(const CColour&) const = default;
};
CString ColourText(CColour colour);                        // "#RRGGBB"
bool ColourFromText(std::string_view text, CColour& out);  // false, out untouched, for any other text

/// The name of a record, by which its collection finds it.
struct CName {
  CString text;
  bool operator==(const CName&) const = default;
};

/// An enumerated value of the choice list that belongs to `Tag` (choices.h). Values outside the list are kept.
template <class Tag>
struct CCode {
  int value = 0;
  bool operator==(const CCode&) const = default;
};

/// What a reference is to its target. A use keeps the target from being deleted. The owner of a part goes with the
/// target, which is none the more used for it. A fallback is a use that does not keep the target: when that is deleted,
/// the reference goes to the record of this kind that the defaults name.
enum class EReference { Use, Part, Fallback };

/// A reference to a named record of the same design, or none. Counted in the target while its owner is in the design.
struct CRefBase {
  CRecordBase* target = nullptr;
  bool operator==(const CRefBase&) const = default;
};
template <class T>
struct CRef : CRefBase {
  static constexpr EReference kReference = EReference::Use;
  CRef() = default;
  CRef(T* record) : CRefBase{record} {}  // NOLINT(google-explicit-constructor): stands for the pointer
  T* Get() const { return static_cast<T*>(target); }
  explicit operator bool() const { return target != nullptr; }
  bool operator==(const CRef&) const = default;
};
template <class T>
struct CPartRef : CRef<T> {
  static constexpr EReference kReference = EReference::Part;
  using CRef<T>::CRef;
  bool operator==(const CPartRef&) const = default;
};
template <class T>
struct CFallbackRef : CRef<T> {
  static constexpr EReference kReference = EReference::Fallback;
  using CRef<T>::CRef;
  bool operator==(const CFallbackRef&) const = default;
};

/// One flag for every item of a colour set.
using CItemFlags = std::bitset<128>;
