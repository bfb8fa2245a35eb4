// Pages of records: one row for each record of a collection, described by columns.
//
// A page says what is particular to it: its options and columns (in its constructor), its forms, and the rules that it
// overrides of CRecordRules. Rows, checks, Apply, files and forms are CRecordTable, CTechDialogPage, CRecordImport and
// CRecordForm; here stand the commands.
#pragma once
#include "technology/recordform.h"
#include "technology/techpage.h"

class CRecordPage : public CTechDialogPage, public CRecordRules {
  TECHSHEET_CLASS(CRecordPage, CTechDialogPage)

  bool SortByColumn(CEditGrid& grid, int col) override;
  SGridSort SortedBy(const CEditGrid&) const override { return m_rows.SortedBy(); }
  CRecordTable& Rows() { return m_rows; }
  const CRecordTable& Rows() const { return m_rows; }

 protected:
  CRecordPage(CDesign& design, CCollectionBase& home, SPageOptions options);

  /// What the page shows of its records.
  void Columns(std::initializer_list<SColumns> columns) { Columns(Flat(columns)); }
  void Columns(std::vector<CColumn> columns);
  /// Gives the records that the page's records own rows of their own, with as many columns in the grid.
  void OwnedColumns(const CKind& kind, std::vector<CColumn> columns) { m_rows.Kinds().Add(kind, std::move(columns)); }
  /// The form of the page's records, then that of those they own.
  void AddForm(const SRecordForm& form) { m_forms.push_back(form); }

  /// Refuses a built-in record, and one in use; both as the options say.
  void CheckDeletion(const SCheckedRow& row, CFindings& findings) const override;
  /// Whether anything refers to the record, or will once merged styles have moved to it.
  bool IsInUse(const CRecordBase& record) const { return m_rows.Merges().UsesOf(record) > 0; }

  /// Puts a row for a record that is new to the design where `before` says (-1: at the end), under the cursor.
  int AddDraft(std::unique_ptr<CRecordBase> draft, int before = -1);
  /// Opens the form of a draft; true when it closed with OK, and the row has the draft. Row 0 stands for a row to come:
  /// it is put where `before` says, under `ownerRow` where another owns it.
  bool EditInForm(int row, std::unique_ptr<CRecordBase> draft, int ownerRow = 0, int before = -1);
  /// Hides a row, which deletes its record on Apply; the cursor goes to the next one.
  void HideRow(int row);
  /// The present row under the cursor; 0, with a beep, when there is none.
  int RowOrBeep() const;

 private:
  bool HasWrongText(int first, int end);
  void OnAdd();
  void OnCopy();
  void OnEdit();
  void OnDelete();
  void OnMerge();
  bool CanMerge() const;
  std::vector<int> RowsToMerge() const;
  void OnMove(int step);
  void OnSort();

  SPageOptions m_options;
  CRecordTable m_rows;
  std::vector<SRecordForm> m_forms;
};
