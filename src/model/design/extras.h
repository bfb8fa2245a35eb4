// The smaller kinds of a technology: attribute names, variants, grids, component colours and rules, attributes.
#pragma once
#include "model/design/choices.h"
#include "model/design/record.h"

struct SAttributeNameFields {
  CName name;
  bool displayed = false;
  CString defaultValue;
};
class CAttributeName : public CRecord<SAttributeNameFields> {
  TECHSHEET_RECORD(CAttributeName, CRecordBase)
};

struct SVariantFields {
  CName name;
  CString description;
};
class CVariant : public CRecord<SVariantFields> {
  TECHSHEET_RECORD(CVariant, CRecordBase)
};

struct SGridFields {
  CName name;
  Dsu stepX{1'000'000};
  Dsu stepY{1'000'000};
  CCode<EGridSnapMode> snapMode;
  bool working = false;  // at most one grid of a design is, as with the next
  bool screen = false;
};
class CGrid : public CRecord<SGridFields> {
  TECHSHEET_RECORD(CGrid, CRecordBase)
  const CString& GetName() const { return Values().name.text; }
};

/// The colour of the components whose name matches a pattern. The first match in order counts.
struct SComponentColourFields {
  CString pattern;
  CColour colour{0x808080};
};
class CComponentColour : public CRecord<SComponentColourFields> {
  TECHSHEET_RECORD(CComponentColour, CRecordBase)
};

/// The least distance between components whose names match two patterns. The first match in order counts.
struct SComponentRuleFields {
  CString firstPattern;
  CString secondPattern;
  Dsu spacing;
};
class CComponentRule : public CRecord<SComponentRuleFields> {
  TECHSHEET_RECORD(CComponentRule, CRecordBase)
};

/// A part that is ordered with the design but not placed in it.
struct SAssocPartFields {
  CName name;
  int quantity = 1;
  CString description;
};
class CAssocPart : public CRecord<SAssocPartFields> {
  TECHSHEET_RECORD(CAssocPart, CRecordBase)
};

struct SAttributeFields {
  CName name;
  CRef<CAttributeName> attributeName;
  CString value;
};
class CAttribute : public CRecord<SAttributeFields> {
  TECHSHEET_RECORD(CAttribute, CRecordBase)
};

/// A set of ruler stops: places at equal distances at which the rulers catch.
struct SRulerStopFields {
  CName name;
  CPoint origin;
  Dsu spacing{10'000'000};
};
class CRulerStop : public CRecord<SRulerStopFields> {
  TECHSHEET_RECORD(CRulerStop, CRecordBase)
};
