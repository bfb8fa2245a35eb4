// Net classes and the spacings between them. Lengths are design units.
#pragma once
#include "model/design/choices.h"
#include "model/design/padstyle.h"
#include "model/design/record.h"
#include "model/design/styles.h"

struct SNetClassFields {
  CName name;
  CCode<ENetClassType> type;
  CRef<CTrackStyle> minimumStyle;
  CRef<CTrackStyle> nominalStyle;
  CRef<CPadStyle> viaStyle;
  CRef<CPadStyle> microviaStyle;
  Dsu clearance;  // to other nets where no spacing of the pair says more
  bool trackLengthDiffEnabled = false;
  Dsu trackLengthDiff;
  bool trackMinMaxEnabled = false;
  Dsu minTrackLength;
  Dsu maxTrackLength;
  bool useOwnColour = false;
  CColour ownColour{0x808080};
  CCode<ETentedVias> tentedVias{ETentedVias::AsStyle};
  bool diffPairEnabled = false;
  CRef<CTrackStyle> diffPairStyle;
  Dsu diffPairGap;
  Dsu diffPairViaGap;
  bool diffPairSkewEnabled = false;
  Dsu diffPairSkew;
};
class CNetClass : public CRecord<SNetClassFields> {
  TECHSHEET_RECORD(CNetClass, CRecordBase)
  const CString& GetName() const { return Values().name.text; }
  void SetName(const CString& name) { Set(&Fields::name, CName{name}); }
  CTrackStyle* GetMinimumStyle() const { return Values().minimumStyle.Get(); }
  CTrackStyle* GetNominalStyle() const { return Values().nominalStyle.Get(); }
  void SetTrackStyles(CTrackStyle* minimum, CTrackStyle* nominal) {
    Set(&Fields::minimumStyle, minimum);
    Set(&Fields::nominalStyle, nominal);
  }
  void SetViaStyle(CPadStyle* style) { Set(&Fields::viaStyle, style); }
};

/// The least distance between items of two net classes.
struct SSpacingFields {
  CPartRef<CNetClass> first;
  CPartRef<CNetClass> second;
  Dsu value;
};
class CSpacing : public CRecord<SSpacingFields> {
  TECHSHEET_RECORD(CSpacing, CRecordBase)
};

bool ValidNetClassName(const CString& name);
