// Units, and lengths as text.
//
// A length is an integer number of design units (1 nm) everywhere in the program. Text exists only at the edges: it is
// made here for display and read here from typing, and is never converted to text and back to reach a value.
#pragma once
#include "model/design/choices.h"
#include "model/design/record.h"

struct SUnitsFields {
  CCode<EUnitType> type{EUnitType::Millimetre};
  int precision = 3;  // decimal places shown, 0 to 4
};

/// A choice of units: one of a design's two, or that of a field. As a part of a design it changes by undoable steps.
class CUnits : public CRecord<SUnitsFields> {
  TECHSHEET_RECORD(CUnits, CRecordBase)
  CUnits(int type, int precision) {
    SetType(type);
    SetPrecision(precision);
  }
  int GetType() const { return Values().type.value; }
  void SetType(int type) { Set(&Fields::type, {type}); }
  int GetPrecision() const { return Values().precision; }
  void SetPrecision(int decimals) { Set(&Fields::precision, decimals); }

  /// The name of a unit type ("Millimetres"), empty for a type that does not exist.
  static CString GetString(int type) { return ChoiceText(EUnitType::Choices(), type); }
  /// What stands behind a number ("mm").
  static const char* Suffix(int type);
  static constexpr int kTypes = 4;
  static constexpr int kMaxUnitsPrecision = 4;  // decimals that lengths are shown with
};

/// Design units in one unit of `type`; 1 for a type that does not exist.
int DsuPerUnit(int type);

/// `dsu` as text in `units`, rounded half away from zero to their precision; with `exact`, instead, the shortest
/// decimal that reads back to the same integer.
CString LengthText(int dsu, const CUnits& units, bool exact);
void AppendLength(CString& out, int dsu, const CUnits& units, bool exact);

/// Reads a length; a unit after the number overrides `unitType`. False, with `dsu` untouched, when the text is not a
/// number with at most one unit behind it, or does not fit.
bool ReadLength(std::string_view text, int unitType, int& dsu);
/// The same without admitting a unit.
bool ReadPlainLength(std::string_view text, int unitType, int& dsu);
