#include "model/design/rules.h"

#include "model/design/fieldtypes.h"
#include "model/design/layertype.h"

namespace {
constexpr CField kNetClassFields[] = {
    Field<&SNetClassFields::name>("name", Text::Name),
    Field<&SNetClassFields::type>("type", Text::Type),
    Field<&SNetClassFields::minimumStyle>("minimumStyle", Text::MinimumTrackStyle),
    Field<&SNetClassFields::nominalStyle>("nominalStyle", Text::NominalTrackStyle),
    Field<&SNetClassFields::viaStyle>("viaStyle", Text::ViaStyle),
    Field<&SNetClassFields::microviaStyle>("microviaStyle", Text::MicroviaStyle),
    Field<&SNetClassFields::clearance>("clearance", Text::Clearance),
    Field<&SNetClassFields::trackLengthDiffEnabled>("trackLengthDiffEnabled", Text::TrackLengthDifferenceLimited),
    Field<&SNetClassFields::trackLengthDiff>("trackLengthDiff", Text::TrackLengthDifference),
    Field<&SNetClassFields::trackMinMaxEnabled>("trackMinMaxEnabled", Text::TrackLengthLimited),
    Field<&SNetClassFields::minTrackLength>("minTrackLength", Text::LeastTrackLength),
    Field<&SNetClassFields::maxTrackLength>("maxTrackLength", Text::GreatestTrackLength),
    Field<&SNetClassFields::useOwnColour>("useOwnColour", Text::UseOwnColour),
    Field<&SNetClassFields::ownColour>("ownColour", Text::OwnColour),
    Field<&SNetClassFields::tentedVias>("tentedVias", Text::TentedVias),
    Field<&SNetClassFields::diffPairEnabled>("diffPairEnabled", Text::DifferentialPair),
    Field<&SNetClassFields::diffPairStyle>("diffPairStyle", Text::PairStyle),
    Field<&SNetClassFields::diffPairGap>("diffPairGap", Text::PairGap),
    Field<&SNetClassFields::diffPairViaGap>("diffPairViaGap", Text::PairViaGap),
    Field<&SNetClassFields::diffPairSkewEnabled>("diffPairSkewEnabled", Text::PairSkewLimited),
    Field<&SNetClassFields::diffPairSkew>("diffPairSkew", Text::PairSkew),
};

constexpr CField kSpacingFields[] = {
    Field<&SSpacingFields::first>("first", Text::First).Identifying(),
    Field<&SSpacingFields::second>("second", Text::Second).Identifying(),
    Field<&SSpacingFields::value>("value", Text::Value),
};
}  // namespace

TECHSHEET_DEFINE_KIND(CNetClass, Text::NetClass, kNetClassFields)
TECHSHEET_DEFINE_KIND(CSpacing, Text::Spacing, kSpacingFields)

bool ValidNetClassName(const CString& name) { return ValidRecordName(name); }
