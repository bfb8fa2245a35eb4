// Decimal numbers and lengths as text.
//
// A length is a whole number of nanometres (one design unit) in a signed 32-bit integer. Its text is made and read here
// with integer arithmetic alone: no floating-point number and no locale comes between, every result is the correctly
// rounded one (half away from zero), and what does not fit is refused and never wraps.
#pragma once
#include <array>
#include <cstdint>
#include <string_view>

#include "model/base/text.h"

/// Codes of the length units, and how many nanometres each holds: 0 mil, 1 millimetre, 2 inch, 3 micrometre.
inline constexpr int kUnitMil = 0, kUnitMm = 1, kUnitInch = 2, kUnitMicrometre = 3, kUnitTypes = 4;
inline constexpr std::array<std::int32_t, kUnitTypes> kNmPerUnit{25'400, 1'000'000, 25'400'000, 1'000};

/// The largest scale that the functions below take; the smallest is 1.
inline constexpr std::int32_t kMaxScale = 100'000'000;
inline constexpr int kMaxDecimals = 9;

/// A whole text of the form [+-]digits[.digits][e[+-]digits], where one side of the point may lack its digits ("5.",
/// ".5"). Blanks, digit grouping, hexadecimal, "inf" and "nan" are no numbers.
bool IsDecimal(std::string_view text);

/// Reads such a number and multiplies it by `scale`, rounding once: ScaleDecimal("0.5", kNmPerUnit[kUnitMil], nm) gives
/// 12700. Time is linear in the text, whatever its digits or exponent. False, with `value` untouched, when the text is
/// no number or the product does not fit; IsDecimal tells which.
bool ScaleDecimal(std::string_view number, std::int32_t scale, std::int32_t& value);

/// Appends `value` / `scale` with exactly `precision` (0 to kMaxDecimals) decimals; zero has no sign.
void AppendRounded(CString& out, std::int32_t value, std::int32_t scale, int precision);

/// Appends the number with the fewest decimals for which ScaleDecimal with the same `scale` gives back `value`; the
/// nearest one, where several have as few.
void AppendExact(CString& out, std::int32_t value, std::int32_t scale);

/// Appends an area of `square` (square nanometres) / `scale`², otherwise as AppendRounded.
void AppendRoundedArea(CString& out, std::int64_t square, std::int32_t scale, int precision);

/// Parts a typed length from the one unit that may stand behind it, with or without blanks before it and in any case:
/// mil, mils, thou, th; mm; in, inch, inches, "; um, µm, micron, microns. `unitType` is its code, or -1 without a unit.
/// `number` is what stands before, without blanks around it and not yet checked to be a number. False, with both
/// untouched, when something other than one of these units stands there.
bool SplitUnit(std::string_view text, std::string_view& number, int& unitType);
