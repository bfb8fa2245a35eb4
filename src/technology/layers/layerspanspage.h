// The Layer spans page: between which layers of the stack vias and drills run.
#pragma once
#include "technology/recordform.h"

class CEditLayerSpanDialog : public CRecordForm {
  TECHSHEET_CLASS(CEditLayerSpanDialog, CRecordForm)
  CEditLayerSpanDialog(CRecordPage& page, int row, CLayerSpan& draft)
      : CRecordForm(Text::LayerSpan, page, row, draft) {}
};

class CLayerSpansPage : public CRecordPage {
  TECHSHEET_CLASS(CLayerSpansPage, CRecordPage)
  explicit CLayerSpansPage(CDesign& design);

  CPreview GetPreview() const override;

 protected:
  bool CheckRow(const SRowCheck& check) override;
  void AdjustImport(const CRecordBase* record, CRecordBase& values) override;
  bool SortsBefore(const SGridRow& a, const SGridRow& b) const override;
  bool EditDraft(int row, CRecordBase& draft) override;

 private:
  int OrderOf(const CLayer* layer) const;
  bool IsUpsideDown(const SLayerFields& span) const;
  bool CheckPair(const SRowCheck& check, const SLayerFields& span, const SLayerFields& other);
};
