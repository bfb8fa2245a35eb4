// The Track styles page: the widths in which tracks are drawn. A schematic calls them line styles.
#pragma once
#include "technology/recordform.h"

class CEditTrackStyle : public CRecordForm {
  TECHSHEET_CLASS(CEditTrackStyle, CRecordForm)
  CEditTrackStyle(CRecordPage& page, int row, CTrackStyle& draft);
};

class CTrackStylesPage : public CRecordPage {
  TECHSHEET_CLASS(CTrackStylesPage, CRecordPage)
  explicit CTrackStylesPage(CDesign& design);

 protected:
  bool CheckRow(const SRowCheck& check) override;
  bool MayDelete(int row) override;
  void InitNew(CRecordBase& draft) override;
  const CRecordBase* UsedBy(const CDesignItem& item) const override;
  bool EditDraft(int row, CRecordBase& draft) override;
};
