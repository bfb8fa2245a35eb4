// Pages of records: one row for each record of a collection, described by columns.
//
// Records that own others can have rows for these too, of a kind and with columns of their own, in the same columns of
// the grid. Such owned rows stand under the row of their owner, go where it goes, and leave with it.
//
// A row gets a draft, a detached copy of its record, at its first edit. Typing writes the draft, so Apply reads
// nothing. Filling, typing, units, sorting, both passes of Apply, CSV and the edit form are written once, here; a page
// says what is particular to it: its columns, its name rule, what may be deleted, and its checks.
//
// Row state is two facts, hidden and record: shown without record: added on Apply; shown with one: its modified cells
// are written; hidden with one: deleted; hidden without: nothing. An owned row under a hidden one lets go of its
// record, which goes with its owner.
#pragma once
#include <map>
#include <set>
#include <unordered_set>

#include "technology/columns.h"
#include "technology/techpage.h"

/// Why a row is checked. Questions are asked and remembered in the checking pass; information is shown in the writing
/// pass; a survey judges a design as it stands; an import judges one record of a file, and the edit form one row.
enum class EPass { Check, Write, Survey, Import, Form };

enum class ELayout { AfterWriting, BeforeWriting };

/// What the rows of one kind of record are made of.
struct SRowBinder {
  const CKind& kind;
  std::vector<CColumn> columns;        // as many as the grid has
  std::vector<CColumn> fileColumns{};  // where they differ from those of the grid, as the next
  std::vector<CColumn> formColumns{};
  int cursorColumn = -1;            // where the cursor goes: the first one with a field
  std::vector<int> shownColumns{};  // that show something of another record
};

struct SPageOptions {
  CTextId title{};
  CString settings;     // key under which the layout is kept
  CTextId nameError{};  // a name that is invalid or not unique; takes row and name
  CTextId inUse{};      // a record in use cannot be deleted; takes its name
  CTextId exportName{};
  bool (*validName)(const CString&) = nullptr;
  ELayout layout = ELayout::AfterWriting;
  bool twoPasses = true;       // false: rows above a refused one stay written
  bool ordered = false;        // row order is the design's order
  bool styles = false;         // rows stand by name; new ones come from the edit form, empty or as copies
  bool keepsSort = false;      // the column that sorts is kept with the layout
  bool importsToRows = false;  // an import edits the rows, as a person does, instead of the design
  bool redraws = false;        // the whole design is drawn anew after Apply and after an import
  bool nameErrorHasRow = true;
  unsigned writeLevel = 0;  // the undo level around the writing pass, which a failure takes back, and around an import
};

class CRecordPage : public CTechDialogPage {
  TECHSHEET_CLASS(CRecordPage, CTechDialogPage)

  void OnInitDialog() override;
  void OnSetActive() override;
  bool OnApply() override;
  bool SortByColumn(CEditGrid& grid, int col) override;
  SGridSort SortedBy(const CEditGrid&) const override { return {m_sortedBy, m_sortedUp}; }
  CComboItems CellItems(int row, int col) const override;
  bool CellEntered(int row, int col, const SInput& input, const SComboItem* item, CString& why) override;
  bool CellFits(int row, int col, const SInput& input, const SComboItem* item) const override;
  void CellChanged(int row, int col) override;

  /// Checks every row of the design as it stands, names included, then the page as a whole: what fails, one line each.
  /// Questions and information go to the user interface as in Apply.
  CStringArray Survey();
  /// The fields of the edit form of such a record: those of the grid, where the page has no others.
  const std::vector<CColumn>& FormColumns(const CKind& kind) const;
  /// The column of a field, -1 for a field without one.
  int ColumnOf(const CField& field) const;

 protected:
  struct SRowCheck {
    int row;                    // of the grid; the record number of an import
    CRecordBase* record;        // in the design, or null
    const CRecordBase& values;  // what is to be
    EPass pass;
    const CKind& kind = values.Kind();  // known still when a check has replaced the draft
  };

  CRecordPage(CDesign& design, const SPageOptions& options, CCollectionBase& home, std::vector<CColumn> columns);
  /// Gives the records that the page's records own rows of their own.
  void AddOwnedRows(const CKind& kind, std::vector<CColumn> columns);

  // ---- What a page decides
  /// The rules of one row beyond its name; Refuse is how it fails.
  virtual bool CheckRow(const SRowCheck&) { return true; }
  /// The rules between rows, after all of them have passed.
  virtual bool CheckPage() { return true; }
  /// Whether the row, which stands for a record, may be deleted; says why not.
  virtual bool MayDelete(int row);
  /// Fills a new row's draft.
  virtual void InitNew(CRecordBase&) {}
  /// After a field changed: what else follows from it in the draft.
  virtual void Derive(const CField& /*changed*/, const CRecordBase& /*before*/, CRecordBase& /*draft*/) {}
  /// Rows that never change places.
  virtual bool IsPinned(int) const { return false; }
  /// Writes one field that was edited; events belong here.
  virtual void WriteField(CRecordBase& record, const CField& field, const CRecordBase& values);
  virtual void Added(CRecordBase&) {}
  /// Takes the record of a hidden row out; false fails Apply. A record that stays has its row shown again.
  virtual bool Delete(int row);
  /// The record of this page that a selected item of the design uses, or null; its row is selected when the page opens.
  virtual const CRecordBase* UsedBy(const CDesignItem&) const { return nullptr; }
  /// After everything was written, by Apply or by an import.
  virtual void Written() {}
  /// Before a record of a file is read into `values`, those of the record of that name or of a new one.
  virtual void PrepareImport(CRecordBase& /*values*/) {}
  /// Before an imported record is judged: `record` is what it was, in the design or in its row, or null.
  virtual void AdjustImport(const CRecordBase*, CRecordBase&) {}
  /// Whether a record of a file is one of those that others own.
  virtual bool IsOwnedInFile(const CStringArray& /*fields*/) const { return false; }
  /// Where a record that an import added or changed belongs; places it there.
  virtual void PlaceImported(CRecordBase&) {}
  virtual CString UsedMarkOf(int row) const;
  /// Whether anything refers to the record, or will once merged styles have moved to it.
  bool IsInUse(const CRecordBase& record) const;
  /// The record that references to this one will go to; itself unless it is merged away.
  const CRecordBase& SurvivorOf(const CRecordBase& record) const;
  bool HasMerged() const { return !m_merged.empty(); }
  /// Whether row `a` stands before row `b` after Sort.
  virtual bool SortsBefore(const SGridRow& a, const SGridRow& b) const;

  // ---- For pages
  template <class T, class V, class... Args>
  bool Refuse(const SRowCheck& check, V T::* member, CTextId id, const Args&... args) {
    SetFailed(check, member);
    return RefusePage(id, args...);
  }
  /// Fails a row at a field; the last error has been set.
  template <class T, class V>
  bool FailAt(const SRowCheck& check, V T::* member) {
    SetFailed(check, member);
    return Refused();
  }
  template <class... Args>
  bool RefusePage(CTextId id, const Args&... args) {
    CAppError::SetLastError(id, args...);
    return Refused();
  }
  /// What a check returns that has set the last error: false, but a survey notes the error and goes on.
  bool Refused();
  /// Puts the cursor on a row when Apply fails.
  void FailAt(int row) { m_failed = {row, BinderOf(row).cursorColumn}; }
  int CurrentRow() const;  // 0 when the focus is on no present row
  int NameColumn() const { return m_nameColumn; }
  /// The number of a row, and of what is checked, as messages call it.
  CString RowText(int row) const { return IntText(m_grid.PresentNumber(row)); }
  CString RowText(const SRowCheck& check) const {
    return check.pass == EPass::Import ? IntText(check.row) : RowText(check.row);
  }
  CRecordBase& Draft(int row);
  const CRecordBase& ValuesOf(int row) const { return ValuesOf(m_grid.Row(row)); }
  const CRecordBase& ValuesOf(const SGridRow& row) const { return row.draft ? *row.draft : *row.record; }
  CString RowName(int row) const { return m_grid.GetItemText(row, m_nameColumn); }
  /// Takes the draft that a form filled into a row, as if its cells had been typed.
  void TakeDraft(int row, std::unique_ptr<CRecordBase> draft);
  int AppendRow(CRecordBase* record, std::unique_ptr<CRecordBase> draft = nullptr, int before = -1);
  std::unique_ptr<CRecordBase> MakeNew();
  /// Puts a row for a record that is new to the design where `before` says (-1: at the end), under the cursor.
  void AddDraft(std::unique_ptr<CRecordBase> draft, int before = -1);
  /// Hides a row, which deletes its record on Apply; the cursor goes to the next one.
  void DeleteRow(int row);
  /// The whole check of a present row, as Apply runs it.
  bool CheckPresentRow(int row);
  /// What the edit form runs on OK: name and row rules over `values`.
  bool CheckDraft(int row, const CRecordBase& values);
  CCollectionBase& Home() const { return m_home; }
  const SPageOptions& Options() const { return m_options; }

  /// Files, or forms, that hold other fields than the grid.
  void SetFileColumns(std::vector<CColumn> columns, std::size_t binder = 0) {
    m_binders[binder].fileColumns = std::move(columns);
  }
  void SetFormColumns(std::vector<CColumn> columns, std::size_t binder = 0) {
    m_binders[binder].formColumns = std::move(columns);
  }

  void OnAdd();
  void OnCopy();
  void OnEdit();
  void OnDelete();
  void OnMerge();
  /// Whether two rows of styles are selected, at least, of which one can survive.
  bool CanMerge() const;
  void OnMove(int step);
  void OnSort();
  void OnImport();
  void OnExport();

  /// Opens the form of the row's draft and returns true when it closed with OK. Row 0 stands for a row to come.
  virtual bool EditDraft(int row, CRecordBase& draft) = 0;

 private:
  friend class CRecordForm;
  struct SEntry {
    std::int64_t value = 0;
    bool isUnderstood = false;
    bool isEmptied = false;  // a length
    bool isWrong = false;    // a length that does not parse; it is the last error
  };
  template <class T, class V>
  void SetFailed(const SRowCheck& check, V T::* member) {
    static const T kSample;
    m_failedField = FieldAt(check.kind, &kSample, &(kSample.*member));
    const int col = ColumnOf(*m_failedField);
    m_failed = {check.row, col < 0 ? BinderOf(check.kind).cursorColumn : col};  // some have no cell
  }
  void AddBinder(SRowBinder binder);
  const SRowBinder& BinderOf(int row) const { return m_binders[static_cast<std::size_t>(m_grid.Row(row).binder)]; }
  const SRowBinder& BinderOf(const CKind& kind) const {
    return &kind == &m_binders.front().kind ? m_binders.front() : m_binders.back();
  }
  const CColumn& ColumnAt(int row, int col) const { return BinderOf(row).columns[static_cast<std::size_t>(col)]; }
  CCollectionBase& HomeOf(int row) const;
  void AppendRows(CRecordBase& record);
  void HideRow(int row);
  void ShowRow(int row);
  void DropLostRows();
  void SortAsKept();
  void SaveLayout() const;
  SEntry ReadEntry(const CColumn& column, const SInput& input, const SComboItem* item) const;
  void FillRow(int row);
  void FillCell(int row, int col, bool refill);
  void RefreshMarks();
  void RefreshShown();
  void RefillRow(int row, const std::vector<bool>& columns);
  std::vector<bool> ColumnsOfFiles() const;
  void RefreshDrafts();
  void MoveReplacedRows();
  void RefillAfterImport();
  bool HasNewNames() const;
  void FindDuplicates();
  bool CheckName(const SRowCheck& check, const CString& name, bool isUnique);
  bool IsNewName(const CString& name) const;
  bool CheckCells(int row);
  bool RunChecks(int row, EPass pass);
  int UsesOf(const CRecordBase& record) const;
  std::vector<int> RowsToMerge() const;
  void MoveMerged();
  void SelectUsed();
  void FinishWriting();
  bool WriteInLevel();
  bool WriteRows();
  bool WriteRow(int row, std::size_t place);
  using FileColumns = std::vector<const CColumn*>;
  struct SImport;
  struct SFileRecord;
  void ImportRecord(const SFileRecord& record, SImport& import);
  void ImportRow(const SFileRecord& record, SImport& import);
  int FindOwned(const SFileRecord& record, int owner) const;
  void InsertOwned(SImport& import);
  bool ReadRecord(const SFileRecord& record, const CRecordBase* present, CRecordBase& values, SImport& import);
  bool CheckImport(const SFileRecord& record, CRecordBase* present, const CRecordBase& values, SImport& import);
  std::vector<FileColumns> AllFileColumns() const;

  SPageOptions m_options;
  CCollectionBase& m_home;
  std::vector<SRowBinder> m_binders;  // of the page's records, then of those that they own
  int m_nameColumn = -1;
  int m_sortedBy = -1;
  bool m_sortedUp = false;
  std::uint64_t m_seenRevision = 0;       // of the journal, when the drafts were last known to be fresh
  std::unique_ptr<CRecordBase> m_before;  // the draft as it was before the cell that is being edited
  SGridPlace m_failed;
  const CField* m_failedField = nullptr;
  std::unordered_set<const CRecordBase*> m_taken;       // those of them that the design had already
  std::map<const CRecordBase*, CRecordBase*> m_merged;  // styles of hidden rows, and those that their references go to
  CStringArray* m_problems = nullptr;                   // while a survey runs
  std::size_t m_imported = 0;                           // records taken by the import that runs
  std::set<const CRecordBase*> m_replaced;              // those of them that it put to another place in the design
  std::set<std::string_view> m_duplicates;              // names that present rows share, while a pass runs
};
