// The edit form of a record: the fields of one row in a dialog of their own.
//
// The form has a field for each column of its page that can be edited. It works on a draft; OK runs the page's checks
// of the row and stays open, on the field at fault, when they refuse. Its lengths take any unit, in the editions too
// whose grids want plain numbers.
#pragma once
#include "technology/recordpage.h"

class CRecordForm : public CDialog {
  TECHSHEET_CLASS(CRecordForm, CDialog)
  CRecordForm(CTextId caption, CRecordPage& page, int row, CRecordBase& draft);

 protected:
  void OnOk() override;
  CRecordBase& Draft() const { return m_draft; }

 private:
  struct SEntry {
    const CColumn* column;
    std::unique_ptr<CFormField> field;
  };
  void Read(std::size_t index);
  bool IsReadOnly(const CColumn& column) const;
  void ShowValues();
  bool TakeLengths();

  CRecordPage& m_page;
  int m_row;
  CRecordBase& m_draft;
  std::vector<SEntry> m_entries;
};
