#include "model/design/styles.h"

#include "model/design/fieldtypes.h"
#include "model/design/layertype.h"
#include "model/design/technology.h"
#include "model/services/apperror.h"

namespace {
constexpr CField kTrackStyleFields[] = {
    Field<&STrackStyleFields::name>("name"),
    Field<&STrackStyleFields::width>("width"),
};

constexpr CField kTextStyleFields[] = {
    Field<&STextStyleFields::name>("name"),
    Field<&STextStyleFields::width>("width"),
    Field<&STextStyleFields::lineWidth>("lineWidth"),
    Field<&STextStyleFields::font>("font"),
    Field<&STextStyleFields::underlined>("underlined"),
    Field<&STextStyleFields::proportional>("proportional"),
    Field<&STextStyleFields::charWidthPercent>("charWidthPercent"),
    Field<&STextStyleFields::interlineHeightPercent>("interlineHeightPercent"),
    Field<&STextStyleFields::parameter1>("parameter1"),
    Field<&STextStyleFields::parameter2>("parameter2"),
    Field<&STextStyleFields::parameter3>("parameter3"),
    Field<&STextStyleFields::parameter4>("parameter4"),
    Field<&STextStyleFields::parameter5>("parameter5"),
    Field<&STextStyleFields::parameter6>("parameter6"),
};

constexpr CField kLineStyleFields[] = {
    Field<&SLineStyleFields::name>("name"),
    Field<&SLineStyleFields::width>("width"),
    Field<&SLineStyleFields::pattern>("pattern"),
};

constexpr CField kHatchStyleFields[] = {
    Field<&SHatchStyleFields::name>("name"),           Field<&SHatchStyleFields::spacing>("spacing"),
    Field<&SHatchStyleFields::lineStyle>("lineStyle"), Field<&SHatchStyleFields::angle>("angle"),
    Field<&SHatchStyleFields::crossed>("crossed"),
};
}  // namespace

const CKind& CTrackStyle::TheKind() {
  static constexpr CKind kKind{"CTrackStyle", Text::TrackStyle, kTrackStyleFields, MakeRecord<CTrackStyle>,
                               &kTrackStyleFields[0]};
  return kKind;
}

const CKind& CTextStyle::TheKind() {
  static constexpr CKind kKind{"CTextStyle", Text::TextStyle, kTextStyleFields, MakeRecord<CTextStyle>,
                               &kTextStyleFields[0]};
  return kKind;
}

const CKind& CLineStyle::TheKind() {
  static constexpr CKind kKind{"CLineStyle", Text::LineStyle, kLineStyleFields, MakeRecord<CLineStyle>,
                               &kLineStyleFields[0]};
  return kKind;
}

const CKind& CHatchStyle::TheKind() {
  static constexpr CKind kKind{"CHatchStyle", Text::HatchStyle, kHatchStyleFields, MakeRecord<CHatchStyle>,
                               &kHatchStyleFields[0]};
  return kKind;
}

namespace {
using ParameterField = int STextStyleFields::*;
constexpr ParameterField kBarcodeParameters[CTextStyle::kParameters] = {
    &STextStyleFields::parameter1, &STextStyleFields::parameter2, &STextStyleFields::parameter3,
    &STextStyleFields::parameter4, &STextStyleFields::parameter5, &STextStyleFields::parameter6};
}  // namespace

int CTextStyle::GetParameter(int index) const {
  return index >= 0 && index < kParameters ? Values().*kBarcodeParameters[index] : 0;
}

void CTextStyle::CopyBarcodeParams(const CTextStyle* other) {
  for (const ParameterField parameter : kBarcodeParameters) Set(parameter, int{other->Values().*parameter});
}

bool ValidTrackStyleName(const CString& name) { return ValidRecordName(name); }
bool ValidTextStyleName(const CString& name) { return ValidRecordName(name); }

bool IsValidDimension(int dsu, const CTechnology* design) {
  if (dsu > 0) return true;
  CAppError::SetLastError(Text::WidthNotDrawable, design->DsuToString(dsu, true));
  return false;
}
