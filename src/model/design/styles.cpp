#include "model/design/styles.h"

#include "model/design/fieldtypes.h"
#include "model/design/layertype.h"
#include "model/design/technology.h"
#include "model/services/apperror.h"

namespace {
constexpr CField kTrackStyleFields[] = {
    Field<&STrackStyleFields::name>("name", Text::Name),
    Field<&STrackStyleFields::width>("width", Text::Size),
};

constexpr CField kTextStyleFields[] = {
    Field<&STextStyleFields::name>("name", Text::Name),
    Field<&STextStyleFields::size>("width", Text::Size),
    Field<&STextStyleFields::lineWidth>("lineWidth", Text::LineWidth),
    Field<&STextStyleFields::font>("font", Text::Font),
    Field<&STextStyleFields::underlined>("underlined", Text::Underlined),
    Field<&STextStyleFields::proportional>("proportional", Text::Proportional),
    Field<&STextStyleFields::charWidthPercent>("charWidthPercent", Text::CharacterWidth),
    Field<&STextStyleFields::interlineHeightPercent>("interlineHeightPercent", Text::LineDistance),
    Field<&STextStyleFields::parameter1>("parameter1", Text::NarrowBar),
    Field<&STextStyleFields::parameter2>("parameter2", Text::WideBar),
    Field<&STextStyleFields::parameter3>("parameter3", Text::BarGap),
    Field<&STextStyleFields::parameter4>("parameter4", Text::QuietZone),
    Field<&STextStyleFields::parameter5>("parameter5", Text::BarHeight),
    Field<&STextStyleFields::parameter6>("parameter6", Text::TextBelow),
};

constexpr CField kLineStyleFields[] = {
    Field<&SLineStyleFields::name>("name", Text::Name),
    Field<&SLineStyleFields::width>("width", Text::Width),
    Field<&SLineStyleFields::pattern>("pattern", Text::Pattern),
};

constexpr CField kHatchStyleFields[] = {
    Field<&SHatchStyleFields::name>("name", Text::Name),
    Field<&SHatchStyleFields::spacing>("spacing", Text::Spacing),
    Field<&SHatchStyleFields::lineStyle>("lineStyle", Text::LineStyle),
    Field<&SHatchStyleFields::angle>("angle", Text::Angle),
    Field<&SHatchStyleFields::crossed>("crossed", Text::Crossed),
};
}  // namespace

TECHSHEET_DEFINE_KIND(CTrackStyle, Text::TrackStyle, kTrackStyleFields)
TECHSHEET_DEFINE_KIND(CTextStyle, Text::TextStyle, kTextStyleFields)
TECHSHEET_DEFINE_KIND(CLineStyle, Text::LineStyle, kLineStyleFields)
TECHSHEET_DEFINE_KIND(CHatchStyle, Text::HatchStyle, kHatchStyleFields)

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
