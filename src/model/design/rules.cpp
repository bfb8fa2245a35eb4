#include "model/design/rules.h"

#include "model/design/fieldtypes.h"
#include "model/design/layertype.h"

namespace {
constexpr CField kNetClassFields[] = {
    Field<&SNetClassFields::name>("name"),
    Field<&SNetClassFields::type>("type"),
    Field<&SNetClassFields::minimumStyle>("minimumStyle"),
    Field<&SNetClassFields::nominalStyle>("nominalStyle"),
    Field<&SNetClassFields::viaStyle>("viaStyle"),
    Field<&SNetClassFields::microviaStyle>("microviaStyle"),
    Field<&SNetClassFields::clearance>("clearance"),
    Field<&SNetClassFields::trackLengthDiffEnabled>("trackLengthDiffEnabled"),
    Field<&SNetClassFields::trackLengthDiff>("trackLengthDiff"),
    Field<&SNetClassFields::trackMinMaxEnabled>("trackMinMaxEnabled"),
    Field<&SNetClassFields::minTrackLength>("minTrackLength"),
    Field<&SNetClassFields::maxTrackLength>("maxTrackLength"),
    Field<&SNetClassFields::useOwnColour>("useOwnColour"),
    Field<&SNetClassFields::ownColour>("ownColour"),
    Field<&SNetClassFields::tentedVias>("tentedVias"),
    Field<&SNetClassFields::diffPairEnabled>("diffPairEnabled"),
    Field<&SNetClassFields::diffPairStyle>("diffPairStyle"),
    Field<&SNetClassFields::diffPairGap>("diffPairGap"),
    Field<&SNetClassFields::diffPairViaGap>("diffPairViaGap"),
    Field<&SNetClassFields::diffPairSkewEnabled>("diffPairSkewEnabled"),
    Field<&SNetClassFields::diffPairSkew>("diffPairSkew"),
};

constexpr CField kSpacingFields[] = {
    Field<&SSpacingFields::first>("first").Identifying(),
    Field<&SSpacingFields::second>("second").Identifying(),
    Field<&SSpacingFields::value>("value"),
};
}  // namespace

const CKind& CNetClass::TheKind() {
  static constexpr CKind kKind{"CNetClass", 20109, kNetClassFields, MakeRecord<CNetClass>, &kNetClassFields[0]};
  return kKind;
}

const CKind& CSpacing::TheKind() {
  static constexpr CKind kKind{"CSpacing", 20110, kSpacingFields, MakeRecord<CSpacing>, nullptr};
  return kKind;
}

bool ValidNetClassName(const CString& name) { return ValidRecordName(name); }
