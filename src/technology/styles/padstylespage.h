// The Pad styles page: shapes and drills of pads and vias, and on boards their exceptions on single layers, which are
// rows of their own under those of their styles.
//
// Nothing but name, shape and size exists in a schematic. Slots are edited in the form; the grid shows a word for them.
#pragma once
#include "technology/recordpage.h"

TECHSHEET_RECORD_FORM(CEditPadStyle);
TECHSHEET_RECORD_FORM(CEditPadStyleExceptionDialog);

class CPadStylesPage : public CRecordPage {
  TECHSHEET_CLASS(CPadStylesPage, CRecordPage)
  explicit CPadStylesPage(CDesign& design);

  CPreview GetPreview() const override;

 protected:
  void CheckValues(const SCheckedRow& row, CFindings& findings) const override;
  void Check(const SCheckedRow& row, CFindings& findings) const override;
  void CheckAll(CFindings& findings) const override;
  void Settle(CRecordBase& values) const override;
  CTextId WhyUnusable(const SRowKind& kind, const CFileFields& fields) const override;
  void InitNew(CRecordBase& draft) const override;
  const CRecordBase* UsedBy(const CDesignItem& item) const override;

 private:
  void CheckStyle(const SCheckedRow& row, CFindings& findings) const;
  void CheckException(const SCheckedRow& row, CFindings& findings) const;
  void AddException();
  void DeleteException();

  bool m_isBoard;  // a board or a footprint, where pads are more than marks
  bool m_hasThermal;
};
