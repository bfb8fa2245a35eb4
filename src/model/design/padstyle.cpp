#include "model/design/padstyle.h"

#include <algorithm>

#include "model/design/fieldtypes.h"
#include "model/design/layer.h"
#include "model/design/technology.h"
#include "model/services/apperror.h"

namespace {
constexpr CField kPadStyleExceptionFields[] = {
    Field<&SPadStyleExceptionFields::layer>("layer", EOnDelete::DeleteOwner).Identifying(),
    Field<&SPadStyleExceptionFields::shape>("shape"),
    Field<&SPadStyleExceptionFields::size>("size"),
    Field<&SPadStyleExceptionFields::length>("length"),
    Field<&SPadStyleExceptionFields::dimension3>("dimension3"),
    Field<&SPadStyleExceptionFields::dimension4>("dimension4"),
    Field<&SPadStyleExceptionFields::thermal>("thermal"),
};

constexpr CField kPadStyleFields[] = {
    Field<&SPadStyleFields::name>("name"),
    Field<&SPadStyleFields::shape>("shape"),
    Field<&SPadStyleFields::size>("size"),
    Field<&SPadStyleFields::length>("length"),
    Field<&SPadStyleFields::dimension3>("dimension3"),
    Field<&SPadStyleFields::dimension4>("dimension4"),
    Field<&SPadStyleFields::drillShape>("drillShape"),
    Field<&SPadStyleFields::drillWidth>("drillWidth"),
    Field<&SPadStyleFields::drillLength>("drillLength"),
    Field<&SPadStyleFields::drillCornerRadius>("drillCornerRadius"),
    Field<&SPadStyleFields::drillRotated>("drillRotated"),
    Field<&SPadStyleFields::plated>("plated"),
    Field<&SPadStyleFields::thermal>("thermal"),
};
}  // namespace

const CKind& CPadStyleException::TheKind() {
  static constexpr CKind kKind{"CPadStyleException", 20104, kPadStyleExceptionFields, MakeRecord<CPadStyleException>,
                               nullptr};
  return kKind;
}

const CKind& CPadStyle::TheKind() {
  static constexpr CKind kKind{"CPadStyle", 20103, kPadStyleFields, MakeRecord<CPadStyle>, &kPadStyleFields[0]};
  return kKind;
}

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
/// By shape: round, square, rectangle, oval, rounded rectangle, octagon, finger.
constexpr int kDimensions[] = {1, 1, 2, 2, 3, 2, 3};
}  // namespace

bool CPadStyle::HasXDimension(int shape, int dimension) {
  return dimension <= (shape >= 0 && shape < int{std::size(kDimensions)} ? kDimensions[shape] : 1);
}

unsigned CPadStyle::GetDimension3Desc(int shape) { return HasThirdDimension(shape) ? 21715 : 7314; }
unsigned CPadStyle::GetDimension4Desc(int) { return 7503; }

namespace {
/// Tests one pad; the first fault is kept as the field and the last error.
struct SPadTest {
  CPadStyle::EField& field;
  const CTechnology* design;
  bool report;

  template <class... Lengths>
  bool Fail(CPadStyle::EField at, unsigned id, Lengths... lengths) const {
    field = at;
    if (report) CAppError::Set(id, {design->DsuToString(lengths, true)...});
    return false;
  }
  bool IsLength(CPadStyle::EField at, unsigned label, int dsu, int least) const {
    if (dsu >= least) return true;
    field = at;
    if (report) CAppError::Set(least > 0 ? 21710 : 21711, {TextOf(label), design->DsuToString(dsu, true)});
    return false;
  }
  bool IsRadius(CPadStyle::EField at, unsigned label, int radius, int width, int length) const {
    const int side = std::min(width, length);
    return IsLength(at, label, radius, 0) && (radius <= side / 2 || Fail(at, 21714, radius, side));
  }
  /// The pad without its drill.
  bool IsPad(int shape, int size, int length, int dimension3, int thermal) const {
    using enum CPadStyle::EField;
    return IsLength(Size, 7207, size, 1) &&
           (!CPadStyle::HasSecondDimension(shape) || IsLength(Length, 7208, length, 1)) &&
           (!CPadStyle::HasThirdDimension(shape) ||
            IsRadius(Dimension3, CPadStyle::GetDimension3Desc(shape), dimension3, size, length)) &&
           IsLength(Thermal, 7547, thermal, 0);
  }
};

int LengthOf(int shape, int size, int length) { return CPadStyle::HasSecondDimension(shape) ? length : size; }
}  // namespace

bool CPadStyle::Validate(int shape, int size, int length, int dimension3, int, int drill, int thermal, EField& field,
                         const CTechnology* design, bool report, bool plated) {
  const SPadTest test{field, design, report};
  if (!test.IsPad(shape, size, length, dimension3, thermal) || !test.IsLength(EField::Drill, 7024, drill, 0))
    return false;
  const int side = std::min(size, LengthOf(shape, size, length));
  return drill == 0 || !plated || drill < side || test.Fail(EField::Drill, 21712, drill, side);
}

bool ValidateSlot(int shape, int size, int length, int dimension3, int, int drillCornerRadius, int drillWidth,
                  int drillLength, int thermal, bool drillRotated, CPadStyle::EField& field, const CTechnology* design,
                  bool report, bool plated) {
  using enum CPadStyle::EField;
  const SPadTest test{field, design, report};
  if (!test.IsPad(shape, size, length, dimension3, thermal) || !test.IsLength(Drill, 7564, drillWidth, 1) ||
      !test.IsLength(DrillLength, 7565, drillLength, 1) ||
      !test.IsRadius(DrillCornerRadius, 7668, drillCornerRadius, drillWidth, drillLength))
    return false;
  if (!plated) return true;
  const int padLength = LengthOf(shape, size, length);
  const int across = drillRotated ? drillLength : drillWidth, along = drillRotated ? drillWidth : drillLength;
  if (across <= size && along <= padLength) return true;
  const bool isTooWide = across > size;
  return test.Fail(isTooWide == drillRotated ? DrillLength : Drill, 21713, drillWidth, drillLength, size, padLength);
}

bool ValidPadStyleName(const CString& name) { return ValidRecordName(name); }
