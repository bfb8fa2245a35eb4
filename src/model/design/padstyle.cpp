#include "model/design/padstyle.h"

#include <algorithm>

#include "model/design/fieldtypes.h"
#include "model/design/layer.h"
#include "model/design/technology.h"
#include "model/services/apperror.h"

namespace {
constexpr CField kPadStyleExceptionFields[] = {
    Field<&SPadStyleExceptionFields::layer>("layer", Text::Layer, EOnDelete::DeleteOwner).Identifying(),
    Field<&SPadStyleExceptionFields::shape>("shape", Text::Shape),
    Field<&SPadStyleExceptionFields::size>("size", Text::Size),
    Field<&SPadStyleExceptionFields::length>("length", Text::Length),
    Field<&SPadStyleExceptionFields::dimension3>("dimension3", Text::Dimension3),
    Field<&SPadStyleExceptionFields::dimension4>("dimension4", Text::Dimension4),
    Field<&SPadStyleExceptionFields::thermal>("thermal", Text::Thermal),
};

constexpr CField kPadStyleFields[] = {
    Field<&SPadStyleFields::name>("name", Text::Name),
    Field<&SPadStyleFields::shape>("shape", Text::Shape),
    Field<&SPadStyleFields::size>("size", Text::Size),
    Field<&SPadStyleFields::length>("length", Text::Length),
    Field<&SPadStyleFields::dimension3>("dimension3", Text::Dimension3),
    Field<&SPadStyleFields::dimension4>("dimension4", Text::Dimension4),
    Field<&SPadStyleFields::drillShape>("drillShape", Text::DrillShape),
    Field<&SPadStyleFields::drillWidth>("drillWidth", Text::DrillWidth),
    Field<&SPadStyleFields::drillLength>("drillLength", Text::DrillLength),
    Field<&SPadStyleFields::drillCornerRadius>("drillCornerRadius", Text::DrillCornerRadius),
    Field<&SPadStyleFields::drillRotated>("drillRotated", Text::DrillRotated),
    Field<&SPadStyleFields::plated>("plated", Text::Plated),
    Field<&SPadStyleFields::thermal>("thermal", Text::Thermal),
};
}  // namespace

TECHSHEET_DEFINE_KIND(CPadStyleException, Text::PadStyleException, kPadStyleExceptionFields)
TECHSHEET_DEFINE_KIND(CPadStyle, Text::PadStyle, kPadStyleFields)

CLayer* CPadStyleException::GetLayer() const { return Values().layer.Get(); }
void CPadStyleException::SetLayer(CLayer* layer) { Set(&Fields::layer, layer); }

CPadStyleException* CPadStyle::GetException(const CLayer* layer, bool orType) const {
  CPadStyleException* ofType = nullptr;
  for (CPadStyleException& exception : m_exceptions) {
    const CLayer* const other = exception.GetLayer();
    if (other == layer) return &exception;
    if (orType && !ofType && other && layer->GetType() && other->GetType() == layer->GetType()) ofType = &exception;
  }
  return ofType;
}

namespace {
/// By shape: round, square, rectangle, oval, rounded rectangle, octagon, finger, chamfered rectangle.
constexpr int kDimensions[] = {1, 1, 2, 2, 3, 2, 3, 4};
}  // namespace

bool CPadStyle::HasXDimension(int shape, int dimension) {
  return dimension <= (shape >= 0 && shape < int{std::size(kDimensions)} ? kDimensions[shape] : 1);
}

CTextId CPadStyle::GetDimension3Desc(int shape) {
  if (HasFourthDimension(shape)) return Text::Chamfer;
  return HasThirdDimension(shape) ? Text::CornerRadius : Text::Dimension3;
}
CTextId CPadStyle::GetDimension4Desc(int shape) {
  return HasFourthDimension(shape) ? Text::CornerRadius : Text::Dimension4;
}

namespace {
/// Tests one pad; the first fault is kept as the field and the last error.
struct SPadTest {
  CPadStyle::EField& field;
  const CTechnology* design;
  bool report;

  template <class... Lengths>
  bool Fail(CPadStyle::EField at, CTextId id, Lengths... lengths) const {
    field = at;
    if (report) CAppError::Set(id, {design->DsuToString(lengths, true)...});
    return false;
  }
  bool IsLength(CPadStyle::EField at, CTextId label, int dsu, int least) const {
    if (dsu >= least) return true;
    field = at;
    if (report)
      CAppError::Set(least > 0 ? Text::PadLengthNotPositive : Text::PadLengthNegative,
                     {TextOf(label), design->DsuToString(dsu, true)});
    return false;
  }
  bool IsRadius(CPadStyle::EField at, CTextId label, int radius, int width, int length) const {
    const int side = std::min(width, length);
    return IsLength(at, label, radius, 0) && (radius <= side / 2 || Fail(at, Text::CornerRadiusTooLarge, radius, side));
  }
  /// A chamfer, and the rounding of the corners that it leaves, share half the smaller side.
  bool IsChamfer(int chamfer, int radius, int width, int length) const {
    using enum CPadStyle::EField;
    const int half = std::min(width, length) / 2;
    return IsLength(Dimension3, Text::Chamfer, chamfer, 0) &&
           (chamfer <= half || Fail(Dimension3, Text::ChamferTooLarge, chamfer, std::min(width, length))) &&
           IsLength(Dimension4, Text::CornerRadius, radius, 0) &&
           (radius <= half - chamfer ||
            Fail(Dimension4, Text::ChamferedRadiusTooLarge, radius, half - chamfer, chamfer));
  }
  /// The pad without its drill.
  bool IsPad(int shape, int size, int length, int dimension3, int dimension4, int thermal) const {
    using enum CPadStyle::EField;
    if (!IsLength(Size, Text::Size, size, 1) ||
        (CPadStyle::HasSecondDimension(shape) && !IsLength(Length, Text::Length, length, 1)))
      return false;
    if (CPadStyle::HasFourthDimension(shape)) {
      if (!IsChamfer(dimension3, dimension4, size, length)) return false;
    } else if (CPadStyle::HasThirdDimension(shape) &&
               !IsRadius(Dimension3, CPadStyle::GetDimension3Desc(shape), dimension3, size, length)) {
      return false;
    }
    return IsLength(Thermal, Text::Thermal, thermal, 0);
  }
};

int LengthOf(int shape, int size, int length) { return CPadStyle::HasSecondDimension(shape) ? length : size; }
}  // namespace

bool CPadStyle::Validate(int shape, int size, int length, int dimension3, int dimension4, int drill, int thermal,
                         EField& field, const CTechnology* design, bool report, bool plated) {
  const SPadTest test{field, design, report};
  if (!test.IsPad(shape, size, length, dimension3, dimension4, thermal) ||
      !test.IsLength(EField::Drill, Text::Drill, drill, 0))
    return false;
  const int side = std::min(size, LengthOf(shape, size, length));
  return drill == 0 || !plated || drill < side || test.Fail(EField::Drill, Text::DrillTooLarge, drill, side);
}

bool ValidateSlot(int shape, int size, int length, int dimension3, int dimension4, int drillCornerRadius,
                  int drillWidth, int drillLength, int thermal, bool drillRotated, CPadStyle::EField& field,
                  const CTechnology* design, bool report, bool plated) {
  using enum CPadStyle::EField;
  const SPadTest test{field, design, report};
  if (!test.IsPad(shape, size, length, dimension3, dimension4, thermal) ||
      !test.IsLength(Drill, Text::DrillWidth, drillWidth, 1) ||
      !test.IsLength(DrillLength, Text::DrillLength, drillLength, 1) ||
      !test.IsRadius(DrillCornerRadius, Text::DrillCornerRadius, drillCornerRadius, drillWidth, drillLength))
    return false;
  if (!plated) return true;
  const int padLength = LengthOf(shape, size, length);
  const int across = drillRotated ? drillLength : drillWidth, along = drillRotated ? drillWidth : drillLength;
  if (across <= size && along <= padLength) return true;
  const bool isTooWide = across > size;
  return test.Fail(isTooWide == drillRotated ? DrillLength : Drill, Text::SlotTooLarge, drillWidth, drillLength, size,
                   padLength);
}

bool ValidPadStyleName(const CString& name) { return ValidRecordName(name); }
