// Layers and layer spans.
//
// The stack of a board reads: the built-in layer "[All layers]", then the layers of side 0 (top), 2 (inner) and 1
// (bottom), then the rest. A span is a kind of layer that names the two layers between which a via or drill may run.
#pragma once
#include "model/design/choices.h"
#include "model/design/layertype.h"
#include "model/design/record.h"

class CLayer;
class CNet;

struct SLayerFields {
  CName name;
  CRef<CLayerType> type;
  CCode<ELayerSide> side{ELayerSide::Bottom};
  CCode<ELayerUsage> usage{ELayerUsage::Documentation};  // counts while the layer has no type
  CCode<ELayerBias> bias;
  CRef<CNet> net;
  CColour colour{0x808080};
  bool displayed = true;
  bool trueWidth = true;
  bool visiblePlane = true;
  CRef<CLayer> topLayer;  // spans only, as the next
  CRef<CLayer> bottomLayer;
};

class CLayer : public CRecord<SLayerFields> {
  TECHSHEET_RECORD(CLayer, CRecordBase)
  const CString& GetName() const { return Values().name.text; }
  void SetName(const CString& name) { Set(&Fields::name, CName{name}); }
  CLayerType* GetType() const { return Values().type.Get(); }
  void SetType(CLayerType* type) { Set(&Fields::type, type); }
  int GetSide() const { return Values().side.value; }
  CString GetSideString() const { return GetLayerSideString(GetSide()); }
  void SetSide(int side) { Set(&Fields::side, {side}); }
  /// The usage of the layer's type when it has one, otherwise its own.
  int GetUsage() const { return GetType() ? GetType()->GetUsage() : Values().usage.value; }
  CString GetUsageString() const { return GetLayerUsageString(GetUsage()); }
  void SetUsage(int usage) { Set(&Fields::usage, {usage}); }
  int GetBias() const { return Values().bias.value; }
  void SetBias(int bias) { Set(&Fields::bias, {bias}); }
  CNet* GetNet() const;
  void SetNet(CNet* net);
  CColour GetColour() const { return Values().colour; }
  void SetColour(CColour colour) { Set(&Fields::colour, colour); }
  bool GetDisplayed() const { return Values().displayed; }
  void SetDisplayed(bool displayed) { SetView(&Fields::displayed, displayed); }
  bool GetTrueWidth() const { return Values().trueWidth; }
  void SetTrueWidth(bool trueWidth) { SetView(&Fields::trueWidth, trueWidth); }
  bool GetVisiblePlane() const { return Values().visiblePlane; }
  void SetVisiblePlane(bool visible) { SetView(&Fields::visiblePlane, visible); }

  /// Whether this stands for one layer of the board, not for all of them or a span.
  virtual bool IsSingleLayer() const { return !IsBuiltIn(); }
  /// Whether this layer does not stand before `other`: by stack order, then by place in the design; spans by top layer,
  /// then bottom layer, then name.
  bool operator>=(const CLayer& other) const;
  /// The layer that this and `other` have in common: where one of the two is the built-in layer the other one,
  /// otherwise null.
  CLayer* GetCommonLayer(CLayer* other);

  /// The value that a text names, -1 for a text that names none.
  static int GetUsage(const CString& text) { return ChoiceValue(ELayerUsage::Choices(), text); }
  static int GetSide(const CString& text) { return ChoiceValue(ELayerSide::Choices(), text); }
  static int GetBias(const CString& text) { return ChoiceValue(ELayerBias::Choices(), text); }
};

class CLayerSpan : public CLayer {
  TECHSHEET_RECORD(CLayerSpan, CLayer)
  CLayer* GetTopLayer() const { return Values().topLayer.Get(); }
  void SetTopLayer(CLayer* layer) { Set(&Fields::topLayer, layer); }
  CLayer* GetBottomLayer() const { return Values().bottomLayer.Get(); }
  void SetBottomLayer(CLayer* layer) { Set(&Fields::bottomLayer, layer); }
  bool IsSingleLayer() const override { return false; }
};

/// The place of a side in the stack, smaller is higher: the built-in layer's side first, then 0, 2, 1, then the rest.
int StackRank(const CLayer& layer);

bool ValidLayerName(const CString& name);
bool ValidLayerSpanName(const CString& name);
