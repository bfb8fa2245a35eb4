// The Layers page: the stack of a board, layer by layer.
#pragma once
#include "technology/recordpage.h"

TECHSHEET_RECORD_FORM(CEditLayerDialog);

class CLayersPage : public CRecordPage {
  TECHSHEET_CLASS(CLayersPage, CRecordPage)
  explicit CLayersPage(CDesign& design);

  CPreview GetPreview() const override;

 protected:
  void Check(const SCheckedRow& row, CFindings& findings) const override;
  void CheckValues(const SCheckedRow& row, CFindings& findings) const override { Check(row, findings); }
  void CheckAll(CFindings& findings) const override;
  void CheckDeletion(const SCheckedRow& row, CFindings& findings) const override;
  void Follow(const CField& changed, const CRecordBase& before, CRecordBase& values) const override;
  bool StandsBefore(const SGridRow& a, const SGridRow& b) const override;
  void WriteField(CRecordBase& record, const CField& field, const CRecordBase& values) override;
  void Added(CRecordBase& record) override;
  void Deleted(CRecordBase& record) override;
  void PlaceImported(CRecordBase& record) override;
  void Announce() override;

 private:
  void CheckPlane(const SCheckedRow& row, CFindings& findings) const;
  void CheckOrder(const std::vector<SCheckedRow>& stack, CFindings& findings) const;
  void CheckPairs(const std::vector<SCheckedRow>& stack, int side, CFindings& findings) const;
  void FocusSelection();

  bool m_coloursChanged = false;
};
