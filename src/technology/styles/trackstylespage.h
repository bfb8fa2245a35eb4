// The Track styles page: the widths in which tracks are drawn. A schematic calls them line styles.
#pragma once
#include "technology/recordpage.h"

TECHSHEET_RECORD_FORM(CEditTrackStyle);

class CTrackStylesPage : public CRecordPage {
  TECHSHEET_CLASS(CTrackStylesPage, CRecordPage)
  explicit CTrackStylesPage(CDesign& design);

 protected:
  void CheckValues(const SCheckedRow& row, CFindings& findings) const override;
  void InitNew(CRecordBase& draft) const override;
  const CRecordBase* UsedBy(const CDesignItem& item) const override;
};
