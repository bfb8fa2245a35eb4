// The Units dialog: the units in which lengths are shown and typed, and those shown beside them.
#pragma once
#include "model/controls/dialog.h"
#include "model/design/design.h"

class CUnitsDialog : public CDialog {
  TECHSHEET_CLASS(CUnitsDialog, CDialog)
  explicit CUnitsDialog(CDesign* design);

  /// The decimal places that a unit of so many design units gets when it is chosen.
  static int DefaultPrecision(int dsuPerUnit);

 protected:
  void OnInitDialog() override;
  /// Writes both units, primary first, and tells everyone, also when nothing differs.
  void OnOk() override;

 private:
  struct SUnits {
    CUnits* units;
    CComboBox type;
    CIntegerEdit precision;
    int lastType;

    SUnits(CUnits* ofDesign, const char* typeName, CTextId typeLabel, const char* precisionName,
           CTextId precisionLabel);
    void TypeChosen();
    void Write() const;
  };
  void Swap();

  CDesign* m_design;
  SUnits m_primary;
  SUnits m_secondary;
};
