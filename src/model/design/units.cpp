#include "model/design/units.h"

#include "model/base/decimal.h"
#include "model/design/fieldtypes.h"

namespace {
constexpr CField kUnitsFields[] = {
    Field<&SUnitsFields::type>("type", Text::Type),
    Field<&SUnitsFields::precision>("precision", Text::Precision).Within(0, CUnits::kMaxUnitsPrecision)};
constexpr const char* kSuffixes[CUnits::kTypes] = {"mil", "mm", "in", "µm"};
}  // namespace

TECHSHEET_DEFINE_SINGLE(CUnits, Text::Units, kUnitsFields)

const char* CUnits::Suffix(int type) { return type >= 0 && type < kTypes ? kSuffixes[type] : ""; }

int DsuPerUnit(int type) { return type >= 0 && type < kUnitTypes ? kNmPerUnit[static_cast<std::size_t>(type)] : 1; }

void AppendLength(CString& out, int dsu, const CUnits& units, bool exact) {
  const int scale = DsuPerUnit(units.GetType());
  if (exact) {
    AppendExact(out, dsu, scale);
  } else {
    AppendRounded(out, dsu, scale, units.GetPrecision());
  }
}

CString LengthText(int dsu, const CUnits& units, bool exact) {
  CString text;
  AppendLength(text, dsu, units, exact);
  return text;
}

bool ReadLength(std::string_view text, int unitType, int& dsu) {
  if (ReadPlainLength(text, unitType, dsu)) return true;  // nearly every length has no unit
  std::string_view number;
  int typed = -1;
  return SplitUnit(text, number, typed) && typed >= 0 && ReadPlainLength(number, typed, dsu);
}

bool ReadPlainLength(std::string_view text, int unitType, int& dsu) {
  return ScaleDecimal(Trim(text), DsuPerUnit(unitType), dsu);
}
