// The Layer spans page: between which layers of the stack vias and drills run.
#pragma once
#include "technology/recordpage.h"

TECHSHEET_RECORD_FORM(CEditLayerSpanDialog);

class CLayerSpansPage : public CRecordPage {
  TECHSHEET_CLASS(CLayerSpansPage, CRecordPage)
  explicit CLayerSpansPage(CDesign& design);

  CPreview GetPreview() const override;

 protected:
  void CheckValues(const SCheckedRow& row, CFindings& findings) const override;
  void Check(const SCheckedRow& row, CFindings& findings) const override;
  void CheckAlone(const SCheckedRow& row, CFindings& findings) const override;
  void CheckTogether(CFindings& findings) const override;
  void Settle(CRecordBase& values) const override;
  bool StandsBefore(const SGridRow& a, const SGridRow& b) const override;

 private:
  int OrderOf(const CLayer* layer) const;
  void CheckPair(const SCheckedRow& row, const SLayerFields& other, CFindings& findings) const;
};
