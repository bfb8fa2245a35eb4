// The edit form of a record: the fields of one row in a dialog of their own.
//
// The form has a field for each column of its page that can be edited. It works on a draft; OK checks the draft as it
// would be settled, and stays open, on the field at fault, when a check refuses. Its lengths take any unit, in the
// editions too whose grids want plain numbers.
//
// A page says what its forms are in one entry each; the classes of forms are names alone, by which scripts and settings
// know them.
#pragma once
#include "model/controls/dialog.h"
#include "technology/recordtable.h"

class CRecordForm;

struct SRecordForm {
  struct SDraft {
    CRecordTable& rows;
    int row;       // 0: a row to come
    int ownerRow;  // the row that owns it or will, 0 for none
    CRecordBase& draft;
  };
  std::unique_ptr<CRecordForm> (*make)(const SRecordForm& form, const SDraft& draft) = nullptr;
  CTextId caption{};
  CPreview (*preview)(const CRecordBase& values) = nullptr;
  /// The draft as it is handed back on OK, where that is not just what was entered.
  void (*handBack)(CRecordBase& draft) = nullptr;
  /// Tells others of what OK changed, before the row has it.
  void (*announce)(const CRecordBase& before, const CRecordBase& after) = nullptr;
};

class CRecordForm : public CDialog {
  TECHSHEET_CLASS(CRecordForm, CDialog)
  CRecordForm(const SRecordForm& form, const SRecordForm::SDraft& draft);
  CPreview GetPreview() const override;
  /// The answers to questions about the draft, for the row that takes it.
  const std::vector<SAnswer>& Answers() const { return m_answers; }

 protected:
  void OnOk() override;

 private:
  struct SEntry {
    const CColumn* column;
    std::unique_ptr<CFormField> field;
  };
  void Read(std::size_t index);
  bool IsReadOnly(const CColumn& column) const;
  void ShowValues();
  bool TakeLengths();
  const CUnits& Units() const;

  const SRecordForm& m_form;
  SRecordForm::SDraft m_of;
  std::unique_ptr<CRecordBase> m_before;
  std::vector<SEntry> m_entries;
  std::vector<SAnswer> m_answers;
};

/// The entry of a form whose class is named `Form`.
template <class Form>
SRecordForm RecordForm(CTextId caption) {
  return {[](const SRecordForm& form, const SRecordForm::SDraft& draft) -> std::unique_ptr<CRecordForm> {
            return std::make_unique<Form>(form, draft);
          },
          caption};
}
#define TECHSHEET_RECORD_FORM(Class)    \
  class Class : public CRecordForm {    \
    TECHSHEET_CLASS(Class, CRecordForm) \
    using CRecordForm::CRecordForm;     \
  }
