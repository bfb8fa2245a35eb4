// The Layers page: the stack of a board, layer by layer.
#pragma once
#include <set>

#include "technology/recordform.h"

class CEditLayerDialog : public CRecordForm {
  TECHSHEET_CLASS(CEditLayerDialog, CRecordForm)
  CEditLayerDialog(CRecordPage& page, int row, CLayer& draft)
      : CRecordForm(Text::Layer, page, row, draft), m_colour(draft.GetColour()) {}

 protected:
  void OnOk() override;

 private:
  CColour m_colour;
};

class CLayersPage : public CRecordPage {
  TECHSHEET_CLASS(CLayersPage, CRecordPage)
  explicit CLayersPage(CDesign& design);

  bool OnApply() override;
  CPreview GetPreview() const override;

 protected:
  bool CheckRow(const SRowCheck& check) override;
  bool CheckPage() override;
  bool MayDelete(int row) override;
  void Derive(const CField& changed, const CRecordBase& before, CRecordBase& draft) override;
  bool IsPinned(int row) const override;
  void WriteField(CRecordBase& record, const CField& field, const CRecordBase& values) override;
  void Added(CRecordBase& record) override;
  bool Delete(int row) override;
  void Written() override;
  void AdjustImport(const CRecordBase* record, CRecordBase& values) override;
  void PlaceImported(CRecordBase& record) override;
  CString UsedMarkOf(int row) const override;
  bool SortsBefore(const SGridRow& a, const SGridRow& b) const override;
  bool EditDraft(int row, CRecordBase& draft) override;

 private:
  struct SStackEntry {
    int row;
    const CLayer* layer;
  };
  std::vector<SStackEntry> Stack() const;
  bool RefuseBias(const SRowCheck& check, const CLayer& layer, int first, int second);
  bool CheckOrder(const std::vector<SStackEntry>& stack);
  bool CheckPairs(const std::vector<SStackEntry>& stack, int side);
  bool AcceptsPlane(const SRowCheck& check, const CLayer& layer);
  void FocusSelection();

  std::set<const CRecordBase*> m_planesAccepted;  // the answers of this Apply
  bool m_coloursChanged = false;
};
