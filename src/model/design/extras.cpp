#include "model/design/extras.h"

#include "model/design/fieldtypes.h"

namespace {
constexpr CField kAttributeNameFields[] = {
    Field<&SAttributeNameFields::name>("name"),
    Field<&SAttributeNameFields::displayed>("displayed"),
    Field<&SAttributeNameFields::defaultValue>("defaultValue"),
};

constexpr CField kVariantFields[] = {
    Field<&SVariantFields::name>("name"),
    Field<&SVariantFields::description>("description"),
};

constexpr CField kGridFields[] = {
    Field<&SGridFields::name>("name"),
    Field<&SGridFields::stepX>("stepX"),
    Field<&SGridFields::stepY>("stepY"),
    Field<&SGridFields::snapMode>("snapMode"),
    Field<&SGridFields::working>("working").Staying(),
    Field<&SGridFields::screen>("screen").Staying(),
};

constexpr CField kComponentColourFields[] = {
    Field<&SComponentColourFields::pattern>("pattern").Identifying(),
    Field<&SComponentColourFields::colour>("colour"),
};

constexpr CField kComponentRuleFields[] = {
    Field<&SComponentRuleFields::firstPattern>("firstPattern").Identifying(),
    Field<&SComponentRuleFields::secondPattern>("secondPattern").Identifying(),
    Field<&SComponentRuleFields::spacing>("spacing"),
};

constexpr CField kAssocPartFields[] = {
    Field<&SAssocPartFields::name>("name"),
    Field<&SAssocPartFields::quantity>("quantity"),
    Field<&SAssocPartFields::description>("description"),
};

constexpr CField kAttributeFields[] = {
    Field<&SAttributeFields::name>("name"),
    Field<&SAttributeFields::attributeName>("attributeName"),
    Field<&SAttributeFields::value>("value"),
};

constexpr CField kRulerStopFields[] = {
    Field<&SRulerStopFields::name>("name"),
    Field<&SRulerStopFields::origin>("origin"),
    Field<&SRulerStopFields::spacing>("spacing"),
};
}  // namespace

const CKind& CAttributeName::TheKind() {
  static constexpr CKind kKind{"CAttributeName", 20118, kAttributeNameFields, MakeRecord<CAttributeName>,
                               &kAttributeNameFields[0]};
  return kKind;
}

const CKind& CVariant::TheKind() {
  static constexpr CKind kKind{"CVariant", 20119, kVariantFields, MakeRecord<CVariant>, &kVariantFields[0]};
  return kKind;
}

const CKind& CGrid::TheKind() {
  static constexpr CKind kKind{"CGrid", 20120, kGridFields, MakeRecord<CGrid>, &kGridFields[0]};
  return kKind;
}

const CKind& CComponentColour::TheKind() {
  static constexpr CKind kKind{"CComponentColour", 20121, kComponentColourFields, MakeRecord<CComponentColour>,
                               nullptr};
  return kKind;
}

const CKind& CComponentRule::TheKind() {
  static constexpr CKind kKind{"CComponentRule", 20122, kComponentRuleFields, MakeRecord<CComponentRule>, nullptr};
  return kKind;
}

const CKind& CAssocPart::TheKind() {
  static constexpr CKind kKind{"CAssocPart", 20123, kAssocPartFields, MakeRecord<CAssocPart>, &kAssocPartFields[0]};
  return kKind;
}

const CKind& CAttribute::TheKind() {
  static constexpr CKind kKind{"CAttribute", 20124, kAttributeFields, MakeRecord<CAttribute>, &kAttributeFields[0]};
  return kKind;
}

const CKind& CRulerStop::TheKind() {
  static constexpr CKind kKind{"CRulerStop", 20154, kRulerStopFields, MakeRecord<CRulerStop>, &kRulerStopFields[0]};
  return kKind;
}
