// The Text styles page: size, strokes and font of texts.
#pragma once
#include "technology/recordform.h"

/// What can be chosen as a font: the built-in ones, then the TrueType fonts of the machine. The value of a TrueType
/// font is its address, that of a built-in one 0.
struct CFontComboBox {
  static CComboItems Fill(const CTechnology& design);
};

class CEditTextStyle : public CRecordForm {
  TECHSHEET_CLASS(CEditTextStyle, CRecordForm)
  CEditTextStyle(CRecordPage& page, int row, CTextStyle& draft) : CRecordForm(Text::TextStyle, page, row, draft) {}
};

class CTextStylesPage : public CRecordPage {
  TECHSHEET_CLASS(CTextStylesPage, CRecordPage)
  explicit CTextStylesPage(CDesign& design);

  void OnInitDialog() override;

 protected:
  bool CheckRow(const SRowCheck& check) override;
  bool MayDelete(int row) override;
  void InitNew(CRecordBase& draft) override;
  const CRecordBase* UsedBy(const CDesignItem& item) const override;
  bool EditDraft(int row, CRecordBase& draft) override;
};
