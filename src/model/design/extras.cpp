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
    Field<&SGridFields::name>("name"),       Field<&SGridFields::stepX>("stepX"),
    Field<&SGridFields::stepY>("stepY"),     Field<&SGridFields::snapMode>("snapMode"),
    Field<&SGridFields::working>("working"), Field<&SGridFields::screen>("screen"),
};

constexpr CField kComponentColourFields[] = {
    Field<&SComponentColourFields::pattern>("pattern"),
    Field<&SComponentColourFields::colour>("colour"),
};

constexpr CField kComponentRuleFields[] = {
    Field<&SComponentRuleFields::firstPattern>("firstPattern"),
    Field<&SComponentRuleFields::secondPattern>("secondPattern"),
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
  static constexpr CKind kKind{"CAttributeName", Text::AttributeName, kAttributeNameFields, MakeRecord<CAttributeName>,
                               &kAttributeNameFields[0]};
  return kKind;
}

const CKind& CVariant::TheKind() {
  static constexpr CKind kKind{"CVariant", Text::Variant, kVariantFields, MakeRecord<CVariant>, &kVariantFields[0]};
  return kKind;
}

const CKind& CGrid::TheKind() {
  static constexpr CKind kKind{"CGrid", Text::Grid, kGridFields, MakeRecord<CGrid>, &kGridFields[0]};
  return kKind;
}

const CKind& CComponentColour::TheKind() {
  static constexpr CKind kKind{"CComponentColour", Text::ComponentColour, kComponentColourFields,
                               MakeRecord<CComponentColour>, nullptr};
  return kKind;
}

const CKind& CComponentRule::TheKind() {
  static constexpr CKind kKind{"CComponentRule", Text::ComponentRule, kComponentRuleFields, MakeRecord<CComponentRule>,
                               nullptr};
  return kKind;
}

const CKind& CAssocPart::TheKind() {
  static constexpr CKind kKind{"CAssocPart", Text::AssociatedPart, kAssocPartFields, MakeRecord<CAssocPart>,
                               &kAssocPartFields[0]};
  return kKind;
}

const CKind& CAttribute::TheKind() {
  static constexpr CKind kKind{"CAttribute", Text::Attribute, kAttributeFields, MakeRecord<CAttribute>,
                               &kAttributeFields[0]};
  return kKind;
}

const CKind& CRulerStop::TheKind() {
  static constexpr CKind kKind{"CRulerStop", Text::RulerStop, kRulerStopFields, MakeRecord<CRulerStop>,
                               &kRulerStopFields[0]};
  return kKind;
}
