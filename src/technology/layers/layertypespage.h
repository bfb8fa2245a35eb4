// The Layer types page: what the layers of each type are used for and what may stand on them.
#pragma once
#include "technology/recordpage.h"

TECHSHEET_RECORD_FORM(CEditLayerTypeDialog);

class CLayerTypesPage : public CRecordPage {
  TECHSHEET_CLASS(CLayerTypesPage, CRecordPage)
  explicit CLayerTypesPage(CDesign& design);

 protected:
  void CheckValues(const SCheckedRow& row, CFindings& findings) const override;
  void CheckAlone(const SCheckedRow& row, CFindings& findings) const override;
  void Follow(const CField& changed, const CRecordBase& before, CRecordBase& values) const override;
  void InitNew(CRecordBase& draft) const override;
};
