// The Pad styles page: shapes and drills of pads and vias, and on boards their exceptions on single layers, which are
// rows of their own under those of their styles.
//
// Nothing but name, shape and size exists in a schematic. Slots are edited in the form; the grid shows a word for them.
#pragma once
#include "technology/recordform.h"

class CEditPadStyle : public CRecordForm {
  TECHSHEET_CLASS(CEditPadStyle, CRecordForm)
  CEditPadStyle(CRecordPage& page, int row, CPadStyle& draft);
  CPreview GetPreview() const override;

 private:
  const CUnits& m_units;
};

class CEditPadStyleExceptionDialog : public CRecordForm {
  TECHSHEET_CLASS(CEditPadStyleExceptionDialog, CRecordForm)
  CEditPadStyleExceptionDialog(CRecordPage& page, int row, CPadStyleException& draft);
  CPreview GetPreview() const override;

 private:
  const CUnits& m_units;
};

class CPadStylesPage : public CRecordPage {
  TECHSHEET_CLASS(CPadStylesPage, CRecordPage)
  explicit CPadStylesPage(CDesign& design);

  CPreview GetPreview() const override;
  bool CellEntered(int row, int col, const SInput& input, const SComboItem* item, CString& why) override;

 protected:
  bool CheckRow(const SRowCheck& check) override;
  bool CheckPage() override;
  bool MayDelete(int row) override;
  void InitNew(CRecordBase& draft) override;
  const CRecordBase* UsedBy(const CDesignItem& item) const override;
  void PrepareImport(CRecordBase& values) override;
  void AdjustImport(const CRecordBase* record, CRecordBase& values) override;
  bool IsOwnedInFile(const CStringArray& fields) const override;
  bool EditDraft(int row, CRecordBase& draft) override;

 private:
  bool CheckStyle(const SRowCheck& check);
  bool CheckException(const SRowCheck& check);
  /// Fails a row at a field, the last error set; a survey, which shows no cursor, hears whose it is.
  template <class T, class V>
  bool FailPad(const SRowCheck& check, V T::* member, const CString& layer = {});
  template <class T>
  void ClearUnused(const SRowCheck& check);
  bool IsUsedByVia(const CRecordBase& style) const;
  void OnAddException();
  void OnDeleteException();

  bool m_isBoard;  // a board or a footprint, where pads are more than marks
  bool m_hasThermal;
  int m_styleRow = 0;  // the one that a new exception is for
};
