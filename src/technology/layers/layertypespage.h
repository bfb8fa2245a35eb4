// The Layer types page: what the layers of each type are used for and what may stand on them.
#pragma once
#include "technology/recordform.h"

class CEditLayerTypeDialog : public CRecordForm {
  TECHSHEET_CLASS(CEditLayerTypeDialog, CRecordForm)
  CEditLayerTypeDialog(CRecordPage& page, int row, CLayerType& draft)
      : CRecordForm(Text::LayerType, page, row, draft) {}
};

class CLayerTypesPage : public CRecordPage {
  TECHSHEET_CLASS(CLayerTypesPage, CRecordPage)
  explicit CLayerTypesPage(CDesign& design);

 protected:
  bool CheckRow(const SRowCheck& check) override;
  void Derive(const CField& changed, const CRecordBase& before, CRecordBase& draft) override;
  void AdjustImport(const CRecordBase* record, CRecordBase& values) override;
  void InitNew(CRecordBase& draft) override;
  bool EditDraft(int row, CRecordBase& draft) override;
};
