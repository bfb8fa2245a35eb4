// The Text styles page: size, strokes and font of texts.
#pragma once
#include "technology/recordpage.h"

/// What can be chosen as a font: the built-in ones, then the TrueType fonts of the machine. The value of a TrueType
/// font is its address, that of a built-in one 0.
struct CFontComboBox {
  static CComboItems Fill(const CTechnology& design);
};

TECHSHEET_RECORD_FORM(CEditTextStyle);

class CTextStylesPage : public CRecordPage {
  TECHSHEET_CLASS(CTextStylesPage, CRecordPage)
  explicit CTextStylesPage(CDesign& design);

  void OnInitDialog() override;

 protected:
  void CheckValues(const SCheckedRow& row, CFindings& findings) const override;
  void CheckDeletion(const SCheckedRow& row, CFindings& findings) const override;
  void InitNew(CRecordBase& draft) const override;
  const CRecordBase* UsedBy(const CDesignItem& item) const override;
};
