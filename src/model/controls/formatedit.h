// Entry fields for lengths, numbers, angles and coordinates.
#pragma once
#include <optional>

#include "model/controls/fields.h"
#include "model/design/technology.h"

/// The length entry field. It keeps the exact length beside its text, so that a change of units loses nothing; a text
/// that does not parse stays visible, and GetValue tells so.
class CFormatEdit : public CFormField {
  TECHSHEET_CLASS(CFormatEdit, CFormField)
  using CFormField::CFormField;
  const char* KindName() const override { return m_kind == EKind::Length ? "length" : "text"; }
  CString GetText() const override { return m_text; }
  CValue GetOuterValue() const override;
  CString GetUnit() const override;
  bool IsNumber() const override { return m_kind != EKind::Text; }

  /// Binds the field to the units of a design (or library); lengths need it.
  void SetDesign(const CTechnology* design) { m_design = design; }
  void SetValue(const CTechnology* design, int dsu);
  void SetValue(int number);
  void SetValue(double number, int precision);
  void SetValue(const CString& text);
  void SetValue(const CAngle* angle);  // shown in degrees

  /// Reads the field; `ok` (may be null) tells whether it holds such a value, which otherwise is untouched. A length
  /// that does not parse is also the last error.
  void GetValue(int& value, bool* ok) const;  // a length, when the field was given one
  void GetValue(double& value, bool* ok) const;
  void GetValue(CAngle& value, bool* ok) const;
  void GetValue(CString& value, bool* ok) const;

  /// Allows a leading sign that means a change by that amount; IsRelative tells whether one was typed.
  void SetRelative(bool relative) { m_relative = relative; }
  bool IsRelative() const { return m_relative && m_isTyped && (m_text.starts_with('+') || m_text.starts_with('-')); }
  /// Marks the field as one half of a coordinate pair.
  void SetXY(bool xy) { m_xy = xy; }
  bool IsXY() const { return m_xy; }
  /// Shows the stored length in the units that hold now; a text that did not parse gives way to it.
  void OnUnitChange();

  /// The length that a text typed in any unit stands for, in design units; the units of `design`, or the unit
  /// `unitType`, hold for a text without one. `ok` is false, the result 0, and the last error set, when it does not
  /// parse or fit. Lengths are taken exactly: the `precision` that they are shown with changes none.
  static int StringToDsu(const CString& text, const CTechnology* design, bool& ok);
  static int StringToDsu(const CString& text, int unitType, int precision, bool& ok);
  /// The same for a plain number in `unitType`: anything behind the number is refused.
  static int PlainStringToDsu(const CString& text, int unitType, bool& ok);
  /// Whether a text is a number with at most one unit behind it.
  static bool IsRealNumber(const CString& text, bool allowNegative = true);

 protected:
  bool Take(const SInput& input, CString& why) override;

 private:
  enum class EKind { Text, Number, Length, Angle };
  EKind m_kind = EKind::Text;
  const CTechnology* m_design = nullptr;
  CString m_text;
  int m_value = 0;  // exact, of a length
  bool m_parsed = true;
  bool m_relative = false;
  bool m_isTyped = false;  // what the field shows
  bool m_xy = false;
};

/// A coordinate: a plain number of mils or millimetres, shown to a precision and kept exactly, in design units.
class CCoordEdit : public CFormField {
  TECHSHEET_CLASS(CCoordEdit, CFormField)
  using CFormField::CFormField;
  const char* KindName() const override { return "length"; }
  CString GetText() const override { return m_text; }
  CString GetUnit() const override { return CUnits::Suffix(m_units.GetType()); }
  bool IsNumber() const override { return true; }
  void Init(bool imperial, int precision);
  void SetImperial(bool imperial);
  void SetValue(long dsu);
  /// False, with `dsu` untouched, when the text is no coordinate.
  bool GetValue(long& dsu) const;

 protected:
  bool Take(const SInput& input, CString& why) override;

 private:
  CUnits m_units{EUnitType::Millimetre, 3};
  CString m_text;
  std::optional<int> m_value;  // of a text that nobody typed
};
