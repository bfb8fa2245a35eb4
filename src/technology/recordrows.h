// Rows that stand for the records of a collection: what each shows, what was typed into it, its order and presence.
//
// A row gets a draft, a detached copy of its record, at its first edit. Typing writes the draft, so Apply reads
// nothing. Records that own others can have rows for these too: they stand under the row of their owner, go where it
// goes, and leave with it.
//
// Row state is two facts, hidden and record: shown without record: added when written; shown with one: its modified
// cells are written; hidden with one: deleted; hidden without: nothing. An owned row under a hidden one lets go of its
// record, which goes with its owner. That the deletion of a used record was confirmed is a fact of the row, too.
//
// What the findings of checks lead to, and what files hold, is not the rows' (CRecordTable).
#pragma once
#include "model/controls/panel.h"
#include "technology/gridrows.h"
#include "technology/merges.h"
#include "technology/recordrules.h"
#include "technology/rowkinds.h"

class CRecordRows : public CGridRows {
 public:
  /// `name` is what scripts call the grid.
  CRecordRows(CTechDialogPage& page, CRecordRules& rules, CCollectionBase& home, const SPageOptions& options,
              const char* name = "grid");

  CCollectionBase& Home() const { return m_home; }
  CRowKinds& Kinds() { return m_kinds; }
  const CRowKinds& Kinds() const { return m_kinds; }
  CMerges& Merges() { return m_merges; }
  const CMerges& Merges() const { return m_merges; }
  const SPageOptions& Options() const { return m_options; }
  CRecordRules& Rules() const { return m_rules; }
  /// Makes the header row of the columns; called when the kinds are complete.
  void MakeColumns();

  // ---- What the rows are
  /// The numbers of the present rows, in order.
  auto PresentRows() const {
    return std::views::iota(1, m_grid.GetRowCount()) |
           std::views::filter([this](int row) { return m_grid.IsPresent(row); });
  }
  /// The row that stands for a record, present or not; 0 for none.
  int FindRow(const CRecordBase* record) const;
  const CRecordBase& Values(int row) const { return Values(m_grid.Row(row)); }
  static const CRecordBase& Values(const SGridRow& row) { return row.draft ? *row.draft : *row.record; }
  /// The name of its record, with what tells it from the others of its owner.
  CString NameOfRow(int row) const override;
  int NameColumn() const { return m_nameColumn; }
  /// The present row under the cursor, or 0.
  int CurrentRow() const;
  /// Whether a record keeps what this column shows.
  bool IsReadOnly(const CColumn& column, const CRecordBase& values) const;
  const SRowKind& KindOf(int row) const { return m_kinds.At(m_grid.Row(row).kind); }
  int ColumnFor(const SFinding& finding) const override;

  // ---- Changing rows
  /// The draft of a new record of the page.
  std::unique_ptr<CRecordBase> MakeNew() const;
  /// Inserts a row for a record of the design, or with the draft of one to come, before another row (-1: at the end).
  int Append(CRecordBase* record, std::unique_ptr<CRecordBase> draft = nullptr, int before = -1);
  /// Takes a draft that was filled in elsewhere, as if its cells had been typed.
  void TakeDraft(int row, std::unique_ptr<CRecordBase> draft);
  /// Takes a draft that a rule has changed; cells whose text does not parse keep it.
  void TakeSettled(int row, std::unique_ptr<CRecordBase> draft);
  /// Hides a row, which deletes its record when it is written, with the rows that it owns.
  void Hide(int row);
  /// Shows a row again whose record stays, with those that went with it; its merge and its deletion are off.
  void Show(int row);
  /// Selects the present rows of these records and puts the cursor on the first of them, or on the last.
  void SelectRecords(const std::vector<const CRecordBase*>& records, bool cursorToLast = false);
  /// Takes over what was written to records of edited rows elsewhere, in fields that were not edited here.
  void RefreshDrafts();
  /// Fills the cells of these columns anew, save those that were edited; the draft of an edited row takes over what was
  /// written to its record in fields that were not edited here.
  void Refill(int row, const std::vector<int>& columns);

  // ---- Order
  /// Sorts by a column, the other way round if they stood so; pages in the design's order do not sort by columns.
  bool SortByColumn(int col);
  SGridSort SortedBy() const { return {m_sortedBy, m_sortedUp}; }
  /// Puts the rows into the design's order, those without a record last; false when they stood so.
  bool SortInOrder();

  // ---- CGridRows
  void Fill() override;
  void Refresh() override;
  void SaveLayout() const override;
  CComboItems CellItems(int row, int col) const override;
  bool CellEntered(int row, int col, const SInput& input, const SComboItem* item, CString& why) override;
  void CellChanged(int row, int col) override;

 protected:
  /// Lets go of records that are out of the design, and shows anew which ones are in use.
  void RefreshPresence();
  /// Whether the design has changed since the last call.
  bool HasNews();

 private:
  const CColumn& ColumnAt(int row, int col) const { return KindOf(row).grid[static_cast<std::size_t>(col)]; }
  void FillCell(int row, int col, bool refill);
  CString MarkOf(int row) const;
  void RefreshDraft(SGridRow& line) const;
  void NoteEdited(int row, const CRecordBase& before);
  void ShowChanged(int row, const CRecordBase& before, int except = -1);

  CRecordRules& m_rules;
  const SPageOptions& m_options;
  CCollectionBase& m_home;
  CRowKinds m_kinds;
  CMerges m_merges;
  int m_nameColumn = -1;
  int m_markColumn = -1;
  int m_sortedBy = -1;
  bool m_sortedUp = false;
  std::uint64_t m_seen = 0;                                // revision of the journal at the last look
  std::pair<std::uint64_t, std::uint64_t> m_seenPresence;  // the same of what the marks tell: of records and of merges
  std::unique_ptr<CRecordBase> m_before;                   // the draft as it was before the cell that is being edited
};
