#include "interchange/boardvalues.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "model/base/decimal.h"

namespace {
constexpr std::int32_t kNmPerMm = kNmPerUnit[kUnitMm];

int ScaledValue(std::string_view text, std::int32_t scale, std::size_t at, const char* what) {
  std::int32_t value = 0;
  if (ScaleDecimal(text, scale, value)) return value;
  const CString args[] = {Quoted(text), what};
  throw STextFault{at, FormatText(IsDecimal(text) ? "%1 is beyond the range of %2" : "%1 is not %2", args)};
}
constexpr const char* kALength = "a length in millimetres";

int NotNegative(int size, std::size_t at) {
  if (size < 0) throw STextFault{at, "a size cannot be negative"};
  return size;
}

int InRange(CSNode node, std::int64_t value) {
  if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
    Fault(node, "this lies beyond the range of a design, 2147 mm from its origin");
  return static_cast<int>(value);
}
}  // namespace

void Fault(CSNode node, CString reason) { throw STextFault{node.At(), std::move(reason)}; }

CSNode Word(CSNode list, std::size_t index) {
  const CSNode value = list.Value(index);
  if (value.IsWord()) return value;
  const CString args[] = {CString(list.Tag()), IntText(static_cast<std::int64_t>(index + 1))};
  Fault(list, FormatText("the list \"%1\" lacks its value %2", args));
}

bool IsYes(CSNode node) { return node.IsWord() || (node && node.Value(0).Text() != "no"); }

std::int64_t Integer(CSNode word) {
  std::int64_t value = 0;
  if (!ParseInt(word.Text(), value)) Fault(word, Quoted(word.Text()) + " is not a whole number");
  return value;
}

int Length(CSNode word) { return ScaledValue(word.Text(), kNmPerMm, word.At(), kALength); }
int Size(CSNode word) { return NotNegative(Length(word), word.At()); }
int Length(const SJson& number) {
  if (!number.Is(SJson::EKind::Number)) throw STextFault{number.at, Quoted(number.name) + " must be a number"};
  return ScaledValue(number.text, kNmPerMm, number.at, kALength);
}
int Size(const SJson& number) { return NotNegative(Length(number), number.at); }

CPoint Point(CSNode list) {
  const CSNode y = Word(list, 1);
  return {Length(Word(list, 0)), InRange(y, -std::int64_t{Length(y)})};
}

CAngle Angle(CSNode list, std::size_t index) {
  const CSNode word = list.Value(index);
  if (!word || word.Text() == "unlocked") return {};  // a text that may be turned says so there
  return Normal(ScaledValue(word.Text(), 1000, word.At(), "an angle in degrees"));
}

CAngle Normal(std::int64_t milliDegrees) {
  constexpr std::int64_t kTurn = 360'000;
  return CAngle(static_cast<int>((milliDegrees % kTurn + kTurn) % kTurn));
}

CPoint Placed(CSNode node, CPoint at, CAngle turn, CPoint by) {
  std::int64_t x = at.x, y = at.y;
  if (const int angle = turn.GetMilliDegrees(); angle % 90'000 == 0) {
    for (int quarters = angle / 90'000; quarters > 0; --quarters) {
      std::swap(x, y);
      x = -x;
    }
  } else {
    const double radians = angle * std::numbers::pi / 180'000, sine = std::sin(radians), cosine = std::cos(radians);
    x = std::llround(at.x * cosine - at.y * sine);
    y = std::llround(at.x * sine + at.y * cosine);
  }
  return {InRange(node, x + by.x), InRange(node, y + by.y)};
}

CString Millimetres(int dsu) {
  CString text;
  AppendExact(text, dsu, kNmPerMm);
  return text;
}
