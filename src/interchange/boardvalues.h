// Values of a board file: lengths, places and angles, each checked where it stands.
//
// Lengths are millimetres in the file and design units here. Board files count y downwards, designs upwards. All of
// these throw STextFault for a value that is missing, of the wrong form or out of range.
#pragma once
#include <cstdint>

#include "interchange/json.h"
#include "interchange/sexpression.h"
#include "model/design/values.h"

[[noreturn]] void Fault(CSNode node, CString reason);

/// The `index`-th value of a list, which must be a word.
CSNode Word(CSNode list, std::size_t index = 0);
/// Whether a list says so: (hide yes), (hide) or a word by itself; not (hide no).
bool IsYes(CSNode node);

std::int64_t Integer(CSNode word);
int Length(CSNode word);
int Size(CSNode word);  // a length that is not negative
int Length(const SJson& number);
int Size(const SJson& number);
CPoint Point(CSNode list);                     // of the first two values
CAngle Angle(CSNode list, std::size_t index);  // 0 to below 360 degrees; 0 where the value is absent
inline int SizeOf(CSNode list) { return Size(Word(list)); }

CAngle Normal(std::int64_t milliDegrees);  // the same direction between 0 and below 360 degrees
/// `at` turned about the origin and moved by `by`; turns by other than quarters are rounded to the nearest unit.
CPoint Placed(CSNode node, CPoint at, CAngle turn, CPoint by);
/// A length as it is shown in names: millimetres, exact.
CString Millimetres(int dsu);
