// Pad styles: the shape of a pad or via, its drill, and what differs on single layers.
//
// Lengths are design units. A dimension that the shape does not use is 0.
#pragma once
#include "model/design/choices.h"
#include "model/design/collection.h"
#include "model/design/record.h"

class CLayer;

struct SPadStyleExceptionFields {
  CRef<CLayer> layer;
  CCode<EPadShape> shape;
  Dsu size;
  Dsu length;
  Dsu dimension3;
  Dsu dimension4;
  Dsu thermal;
};

class CPadStyleException : public CRecord<SPadStyleExceptionFields> {
  TECHSHEET_RECORD(CPadStyleException, CRecordBase)
  CLayer* GetLayer() const;
  void SetLayer(CLayer* layer);
  CString GetShapeString() const { return ChoiceText(EPadShape::Choices(), Values().shape.value); }
  void SetShape(int shape) { Set(&Fields::shape, {shape}); }
  void SetSize(int dsu) { Set(&Fields::size, Dsu{dsu}); }
  void SetLength(int dsu) { Set(&Fields::length, Dsu{dsu}); }
  void SetDimension3(int dsu) { Set(&Fields::dimension3, Dsu{dsu}); }
  void SetDimension4(int dsu) { Set(&Fields::dimension4, Dsu{dsu}); }
  int GetThermal() const { return Values().thermal.value; }
  void SetThermal(int dsu) { Set(&Fields::thermal, Dsu{dsu}); }
};

struct SPadStyleFields {
  CName name;
  CCode<EPadShape> shape;
  Dsu size{1'000'000};
  Dsu length;
  Dsu dimension3;
  Dsu dimension4;
  CCode<EDrillShape> drillShape;
  Dsu drillWidth;  // 0: no drill
  Dsu drillLength;
  Dsu drillCornerRadius;
  bool drillRotated = false;
  bool plated = true;
  Dsu thermal;
};

class CPadStyle : public CRecord<SPadStyleFields> {
  TECHSHEET_OWNING_RECORD(CPadStyle, CRecordBase)

  const CString& GetName() const { return Values().name.text; }
  void SetName(const CString& name) { Set(&Fields::name, CName{name}); }
  bool IsBuiltIn() const { return GetName().starts_with('['); }
  CString GetShapeString() const { return GetShapeName(Values().shape.value); }
  CString GetDrillShapeString() const { return ChoiceText(EDrillShape::Choices(), Values().drillShape.value); }
  void SetShape(int shape) { Set(&Fields::shape, {shape}); }
  void SetSize(int dsu) { Set(&Fields::size, Dsu{dsu}); }
  void SetLength(int dsu) { Set(&Fields::length, Dsu{dsu}); }
  void SetDimension3(int dsu) { Set(&Fields::dimension3, Dsu{dsu}); }
  void SetDimension4(int dsu) { Set(&Fields::dimension4, Dsu{dsu}); }
  void SetDrillShape(int shape) { Set(&Fields::drillShape, {shape}); }
  void SetDrillWidth(int dsu) { Set(&Fields::drillWidth, Dsu{dsu}); }
  void SetDrillLength(int dsu) { Set(&Fields::drillLength, Dsu{dsu}); }
  void SetDrillCornerRadius(int dsu) { Set(&Fields::drillCornerRadius, Dsu{dsu}); }
  void SetDrillRotated(bool rotated) { Set(&Fields::drillRotated, rotated); }
  void SetPlated(bool plated) { Set(&Fields::plated, plated); }
  int GetThermal() const { return Values().thermal.value; }
  void SetThermal(int dsu) { Set(&Fields::thermal, Dsu{dsu}); }

  CCollection<CPadStyleException>& Exceptions() { return m_exceptions; }
  const CCollection<CPadStyleException>& Exceptions() const { return m_exceptions; }
  CCollectionBase* Child(std::size_t index) override { return index == 0 ? &m_exceptions : nullptr; }

  static bool HasSecondDimension(int shape);
  static bool HasThirdDimension(int shape);
  static bool HasFourthDimension(int shape);
  static CString GetShapeName(int shape) { return ChoiceText(EPadShape::Choices(), shape); }
  static int GetShapeType(const CString& text) { return ChoiceValue(EPadShape::Choices(), text); }  // -1: none

 private:
  CCollection<CPadStyleException> m_exceptions{"exceptions", this};
};

bool ValidPadStyleName(const CString& name);
