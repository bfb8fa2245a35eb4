// Pad styles: the shape of a pad or via, its drill, and what differs on single layers.
//
// Lengths are design units. A dimension that the shape does not use is 0.
#pragma once
#include "model/design/choices.h"
#include "model/design/collection.h"
#include "model/design/record.h"

class CLayer;
class CTechnology;

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
  TECHSHEET_WALK(Exception, CPadStyleException, m_exceptions)
  /// Adds a copy at the end and returns it.
  CPadStyleException* AddException(const CPadStyleException* exception) { return m_exceptions.Add(*exception); }
  void DeleteException(CPadStyleException* exception) { m_exceptions.Remove(*exception); }
  /// The exception for that very layer, or null. With `orType`, failing that, the first one for a layer of the same
  /// layer type.
  CPadStyleException* GetException(const CLayer* layer, bool orType) const;

  static bool HasXDimension(int shape, int dimension);  // dimensions count from 1, the size
  static bool HasSecondDimension(int shape) { return HasXDimension(shape, 2); }
  static bool HasThirdDimension(int shape) { return HasXDimension(shape, 3); }
  static bool HasFourthDimension(int shape) { return HasXDimension(shape, 4); }
  /// Text identifiers of what the dimensions of a shape are called.
  static CTextId GetDimension3Desc(int shape);
  static CTextId GetDimension4Desc(int shape);
  static CString GetShapeName(int shape) { return ChoiceText(EPadShape::Choices(), shape); }
  static int GetShapeType(const CString& text) { return ChoiceValue(EPadShape::Choices(), text); }  // -1: none

  enum class EField { None, Size, Length, Dimension3, Dimension4, Drill, DrillLength, DrillCornerRadius, Thermal };
  /// Whether a pad with a round drill, or none (0), can be made: a size and length greater than 0, a corner radius of
  /// at most half the smaller side, which a chamfer shares, no length below 0, and copper around the drill where the
  /// hole is plated. Dimensions that the shape lacks are ignored. Otherwise `field` names the one at fault, which is
  /// untouched by success, and with `report` the last error is set, in the units of `design`.
  static bool Validate(int shape, int size, int length, int dimension3, int dimension4, int drill, int thermal,
                       EField& field, const CTechnology* design, bool report, bool plated = true);

 private:
  CCollection<CPadStyleException> m_exceptions{"exceptions", this};
};

/// The same for a slotted drill, which lies within the pad where it is plated; its corner radius is at most half its
/// smaller side. A rotated slot has its length across the pad.
bool ValidateSlot(int shape, int size, int length, int dimension3, int dimension4, int drillCornerRadius,
                  int drillWidth, int drillLength, int thermal, bool drillRotated, CPadStyle::EField& field,
                  const CTechnology* design, bool report, bool plated = true);

bool ValidPadStyleName(const CString& name);
