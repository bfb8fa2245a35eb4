#include "model/design/styles.h"

#include "model/design/fieldtypes.h"
#include "model/design/layertype.h"

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
  static constexpr CKind kKind{"CTrackStyle", 20105, kTrackStyleFields, MakeRecord<CTrackStyle>, &kTrackStyleFields[0]};
  return kKind;
}

const CKind& CTextStyle::TheKind() {
  static constexpr CKind kKind{"CTextStyle", 20106, kTextStyleFields, MakeRecord<CTextStyle>, &kTextStyleFields[0]};
  return kKind;
}

const CKind& CLineStyle::TheKind() {
  static constexpr CKind kKind{"CLineStyle", 20107, kLineStyleFields, MakeRecord<CLineStyle>, &kLineStyleFields[0]};
  return kKind;
}

const CKind& CHatchStyle::TheKind() {
  static constexpr CKind kKind{"CHatchStyle", 20108, kHatchStyleFields, MakeRecord<CHatchStyle>, &kHatchStyleFields[0]};
  return kKind;
}

bool ValidTrackStyleName(const CString& name) { return ValidRecordName(name); }
bool ValidTextStyleName(const CString& name) { return ValidRecordName(name); }
