// Layer types: what the layers that refer to them are used for, and what may stand on those layers.
#pragma once
#include "model/design/choices.h"
#include "model/design/record.h"

struct SLayerTypeFields {
  CName name;
  CCode<ELayerUsage> usage{ELayerUsage::Electrical};
  bool surfacePads = true;
  bool allLayerPads = true;
  bool surfacePadInstances = true;
  bool allLayerPadInstances = true;
  bool vias = true;
  CCode<EOversizeType> oversizeType;
  Dsu oversize;  // may be negative: undersize
  bool placementArea = false;
  bool breakShapes = false;
  Dsu breakShapesGap;
};

class CLayerType : public CRecord<SLayerTypeFields> {
  TECHSHEET_RECORD(CLayerType, CRecordBase)
  const CString& GetName() const { return Values().name.text; }
  void SetName(const CString& name) { Set(&Fields::name, CName{name}); }
  int GetUsage() const { return Values().usage.value; }
  CString GetUsageString() const { return GetLayerUsageString(GetUsage()); }
  void SetUsage(int usage) { Set(&Fields::usage, {usage}); }
  void SetSurfacePadsEnabled(bool enabled) { Set(&Fields::surfacePads, enabled); }
  void SetAllLayerPadsEnabled(bool enabled) { Set(&Fields::allLayerPads, enabled); }
  void SetSurfacePadInstancesEnabled(bool enabled) { Set(&Fields::surfacePadInstances, enabled); }
  void SetAllLayerPadInstancesEnabled(bool enabled) { Set(&Fields::allLayerPadInstances, enabled); }
  void SetViasEnabled(bool enabled) { Set(&Fields::vias, enabled); }
  void SetOversizeType(int type) { Set(&Fields::oversizeType, {type}); }
  void SetOversize(int dsu) { Set(&Fields::oversize, Dsu{dsu}); }
  void SetPlacementArea(bool enabled) { Set(&Fields::placementArea, enabled); }
  bool GetBreakShapesEnabled() const { return Values().breakShapes; }
  void SetBreakShapesEnabled(bool enabled) { Set(&Fields::breakShapes, enabled); }
  int GetBreakShapesGap() const { return Values().breakShapesGap.value; }
  void SetBreakShapesGap(int dsu) { Set(&Fields::breakShapesGap, Dsu{dsu}); }
};

/// Names of layers, styles and classes are 1 to 255 bytes of valid UTF-8 without control characters, quotation marks,
/// or blanks at either end; a "[" may begin only built-in names.
bool ValidRecordName(std::string_view name);
bool ValidLayerTypeName(const CString& name);
