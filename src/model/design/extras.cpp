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
    Field<&SGridFields::working>("working", Text::WorkingGrid).Staying(),
    Field<&SGridFields::screen>("screen", Text::ScreenGrid).Staying(),
};

constexpr CField kComponentColourFields[] = {
    Field<&SComponentColourFields::pattern>("pattern", Text::Pattern).Identifying(),
    Field<&SComponentColourFields::colour>("colour", Text::Colour),
};

constexpr CField kComponentRuleFields[] = {
    Field<&SComponentRuleFields::firstPattern>("firstPattern", Text::FirstPattern).Identifying(),
    Field<&SComponentRuleFields::secondPattern>("secondPattern", Text::SecondPattern).Identifying(),
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

TECHSHEET_DEFINE_KIND(CAttributeName, Text::AttributeName, kAttributeNameFields)
TECHSHEET_DEFINE_KIND(CVariant, Text::Variant, kVariantFields)
TECHSHEET_DEFINE_KIND(CGrid, Text::Grid, kGridFields)
TECHSHEET_DEFINE_KIND(CComponentColour, Text::ComponentColour, kComponentColourFields)
TECHSHEET_DEFINE_KIND(CComponentRule, Text::ComponentRule, kComponentRuleFields)
TECHSHEET_DEFINE_KIND(CAssocPart, Text::AssociatedPart, kAssocPartFields)
TECHSHEET_DEFINE_KIND(CAttribute, Text::Attribute, kAttributeFields)
TECHSHEET_DEFINE_KIND(CRulerStop, Text::RulerStop, kRulerStopFields)
