// The rows behind one grid of a page: who fills it, reads what a person types into it, checks it, writes it.
//
// This base knows plain cells: a length, a number, a check mark or a text that stands in the grid alone until it is
// written. Rows that stand for records of a collection are CRecordRows.
#pragma once
#include <climits>
#include <memory>

#include "technology/findings.h"
#include "technology/importcsv.h"

class CTechDialogPage;
class CReportFile;

/// What is judged: rows that were edited, by the rules that this calls for; or everything, as it stands.
enum class EJudged { Edits, Everything };

class CGridRows : public CGridOwner {
 public:
  /// `name` is what scripts call the grid; `settings` the key under which its layout is kept.
  CGridRows(CTechDialogPage& page, const char* name, const CString& settings);
  ~CGridRows() override = default;
  CGridRows(const CGridRows&) = delete;
  CGridRows& operator=(const CGridRows&) = delete;

  CEditGrid& Grid() { return m_grid; }
  const CEditGrid& Grid() const { return m_grid; }
  const char* Name() const { return m_name; }
  CTechDialogPage& Page() const { return m_page; }

  /// Makes the rows, and the columns where these depend on the design; called when the page is first shown.
  virtual void Fill() = 0;
  /// Shows what other pages have changed meanwhile; called whenever the page becomes active.
  virtual void Refresh() {}

  // ---- Apply, in this order
  /// Brings the rows up to date before they are judged; like judging, it writes nothing but drafts.
  virtual void Prepare() {}
  /// Settles and checks the present rows in order, and appends what is wrong; texts that do not parse, for plain cells.
  virtual void Judge(CFindings& findings, EJudged judged);
  /// Writes the rows above `before`, and tells each row's informations right before it is written. The refusal of the
  /// design, when it does not take one; the rows above that are written then.
  virtual std::optional<SFinding> Write(const CFindings& findings, int before = INT_MAX) = 0;
  /// What Keep kept comes back with Restore: everything that writing changes in the rows.
  class CKept {
   public:
    virtual ~CKept() = default;
  };
  virtual std::unique_ptr<CKept> Keep() const;
  virtual void Restore(std::unique_ptr<CKept> kept);
  /// All is written: no cell counts as modified any more.
  virtual void AfterWriting() { m_grid.ClearModified(); }
  virtual void SaveLayout() const { m_grid.SaveSettings(); }

  /// Rows, records and cells lie apart in memory: a loop over all rows asks at each for those that it will come to.
  void FetchAhead(int row) const;
  /// The column of a finding's cell, where the cursor goes; the first that can be edited for a row as a whole.
  virtual int ColumnFor(const SFinding& finding) const;
  /// What a list of findings calls a row.
  virtual CString NameOfRow(int row) const { return m_grid.GetItemText(row, 0); }

  // ---- Files
  /// The title of every column that is in files, then every present row.
  virtual void Export(CCsvWriter& file) const;
  /// The titles by which the first record of a file is known as a header.
  virtual std::vector<SFileTitle> FileTitles() const;
  /// Enters a file of such rows into the cells as a person would; the first field names the row. What cannot be taken
  /// stands in the report. True when the design was changed, not the cells alone.
  virtual bool Import(CReportFile& report);

  // ---- Typing
  CComboItems CellItems(int, int) const override { return {}; }
  bool CellEntered(int row, int col, const SInput& input, const SComboItem* item, CString& why) override;
  bool CellFits(int row, int col, const SInput& input, const SComboItem* item) const override;
  void CellChanged(int row, int col) override;
  CString CellCopy(const SCell& cell) const override;
  CString CellHint(const SCell& cell) const override;

 protected:
  /// What was entered, as the editor of the cell understands it.
  struct SEntry {
    std::int64_t value = 0;
    CString text{};             // of a cell of text, or the entry of a combo
    bool isUnderstood = false;  // by such a cell at all
    bool isEmptied = false;     // a length
    bool isWrong = false;       // a length that does not parse
  };
  SEntry ReadEntry(EEditor editor, const SInput& input, const SComboItem* item) const;
  /// What is wrong in a cell holds no longer.
  void EraseProblem(int row, int col);
  void ExportTitles(CCsvWriter& file) const;
  CString RowText(int row) const { return IntText(m_grid.PresentNumber(row)); }
  CTechDialogPage& m_page;
  CEditGrid m_grid;

 private:
  const char* m_name;
};
