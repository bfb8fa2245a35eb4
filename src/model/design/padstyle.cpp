#include "model/design/padstyle.h"

#include "model/design/fieldtypes.h"
#include "model/design/layer.h"

namespace {
constexpr CField kPadStyleExceptionFields[] = {
    Field<&SPadStyleExceptionFields::layer>("layer", EOnDelete::DeleteOwner),
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

namespace {
constexpr int kDimensions[] = {1, 1, 2, 2,
                               3, 2, 3};  // by shape: round, square, rectangle, oval, rounded, octagon, finger
int DimensionsOf(int shape) { return shape >= 0 && shape < int{std::size(kDimensions)} ? kDimensions[shape] : 1; }
}  // namespace

bool CPadStyle::HasSecondDimension(int shape) { return DimensionsOf(shape) >= 2; }
bool CPadStyle::HasThirdDimension(int shape) { return DimensionsOf(shape) >= 3; }
bool CPadStyle::HasFourthDimension(int shape) { return DimensionsOf(shape) >= 4; }

bool ValidPadStyleName(const CString& name) { return ValidRecordName(name); }
