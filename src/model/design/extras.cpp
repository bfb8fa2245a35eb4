#include "model/design/extras.h"

#include "model/design/fieldtypes.h"

namespace {
constexpr CField kAttributeNameFields[] = {
    Field<&SAttributeNameFields::name>("name", Text::Name),
    Field<&SAttributeNameFields::displayed>("displayed", Text::Shown),
    Field<&SAttributeNameFields::defaultValue>("defaultValue", Text::DefaultValue),
};

constexpr CField kVariantFields[] = {
    Field<&SVariantFields::name>("name", Text::Name),
    Field<&SVariantFields::description>("description", Text::Description),
};

constexpr CField kGridFields[] = {
    Field<&SGridFields::name>("name", Text::Name),
    Field<&SGridFields::stepX>("stepX", Text::StepX),
    Field<&SGridFields::stepY>("stepY", Text::StepY),
    Field<&SGridFields::snapMode>("snapMode", Text::SnapMode),
    Field<&SGridFields::working>("working", Text::WorkingGrid),
    Field<&SGridFields::screen>("screen", Text::ScreenGrid),
};

constexpr CField kComponentColourFields[] = {
    Field<&SComponentColourFields::pattern>("pattern", Text::Pattern),
    Field<&SComponentColourFields::colour>("colour", Text::Colour),
};

constexpr CField kComponentRuleFields[] = {
    Field<&SComponentRuleFields::firstPattern>("firstPattern", Text::FirstPattern),
    Field<&SComponentRuleFields::secondPattern>("secondPattern", Text::SecondPattern),
    Field<&SComponentRuleFields::spacing>("spacing", Text::Spacing),
};

constexpr CField kAssocPartFields[] = {
    Field<&SAssocPartFields::name>("name", Text::Name),
    Field<&SAssocPartFields::quantity>("quantity", Text::Quantity),
    Field<&SAssocPartFields::description>("description", Text::Description),
};

constexpr CField kAttributeFields[] = {
    Field<&SAttributeFields::name>("name", Text::Name),
    Field<&SAttributeFields::attributeName>("attributeName", Text::AttributeName),
    Field<&SAttributeFields::value>("value", Text::Value),
};

constexpr CField kRulerStopFields[] = {
    Field<&SRulerStopFields::name>("name", Text::Name),
    Field<&SRulerStopFields::origin>("origin", Text::Origin),
    Field<&SRulerStopFields::spacing>("spacing", Text::Spacing),
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
