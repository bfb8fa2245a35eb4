// Grids: rows of plain cells that pages fill and people edit.
//
// Row 0 is the header. A row that a person deletes stays, hidden by a height of 0, until it is applied. Rows are held
// by pointer, so that swapping two is one exchange, and carry what they stand for: the record in the design (item data,
// null for a new row) and the draft that collects the edits.
#pragma once
#include <map>
#include <memory>
#include <set>

#include "model/controls/value.h"
#include "model/design/record.h"

class CEditGrid;
class CGridCtrl;
class CUnits;

enum class EAlign : std::uint8_t { Left, Centre, Right };

struct SCell {
  CString text;
  std::int64_t value = 0;        // a number, an address, a colour, or the exact length ("cell_size_value")
  std::uint32_t background = 0;  // 0xRRGGBB, where hasBackground
  EEditor editor = EEditor::None;
  bool enabled : 1 = true;
  bool modified : 1 = false;
  bool hasValue : 1 = false;  // an emptied length cell has none
  bool hasBackground : 1 = false;
  bool wrong : 1 = false;  // holds a text that does not parse
};

/// A question about a field that was answered with OK, by the identifier of its text.
struct SAnswer {
  const CField* field;
  unsigned question;
  bool operator==(const SAnswer&) const = default;
};

struct SGridRow {
  // What loops over all rows look at stands first, in one line of memory.
  std::vector<SCell> cells;
  CRecordBase* record = nullptr;
  std::unique_ptr<CRecordBase> draft;
  int kind = 0;                    // which of its page's kinds of row this is, 0 for most
  int height = 1;                  // 0: hidden, that is deleted
  bool deletionConfirmed = false;  // of a record in use
  bool wentWithOwner = false;      // hidden when its owner was
  bool modified = false;
  bool selected = false;
  std::set<const CField*> editedInForm;  // fields without a cell
  std::vector<SAnswer> answers;          // that hold until their field changes
  std::map<int, CString> problems;       // by column: why Apply refuses what stands there
  /// Whether the row belongs to the first row above it that belongs to none. It stays under that row, whatever moves.
  bool IsOwned() const { return kind > 0; }
};

struct SGridColumn {
  CTextId header{};
  CString title;
  EAlign align = EAlign::Left;
  int width = 100;          // pixels
  bool hasLengths = false;  // in some of its cells at least
  int usualWidth = 100;     // until a person chooses another; set by SetColumns
  CString unit{};           // of its lengths, as people read it
};

struct SGridPlace {
  int row = -1;
  int col = -1;
  bool operator==(const SGridPlace&) const = default;
};

class CGridCtrl : public CObject {
  TECHSHEET_CLASS(CGridCtrl, CObject)
  CGridCtrl();

  /// Cells sort by their numbers or by their texts.
  enum ECompare { CellNumericCompare, CellTextCompare };

  int GetRowCount() const { return static_cast<int>(m_rows.size()); }
  int GetColumnCount() const { return static_cast<int>(m_columns.size()); }
  bool IsValid(int row, int col) const { return row >= 1 && row < GetRowCount() && col >= 0 && col < GetColumnCount(); }
  void SetColumns(std::vector<SGridColumn> columns);
  const SGridColumn& Column(int col) const { return m_columns[static_cast<std::size_t>(col)]; }
  SGridColumn& Column(int col) { return m_columns[static_cast<std::size_t>(col)]; }
  SGridRow& Row(int row) { return *m_rows[static_cast<std::size_t>(row)]; }
  const SGridRow& Row(int row) const { return *m_rows[static_cast<std::size_t>(row)]; }
  SCell& Cell(int row, int col) { return Row(row).cells[static_cast<std::size_t>(col)]; }
  const SCell& Cell(int row, int col) const { return Row(row).cells[static_cast<std::size_t>(col)]; }

  const CString& GetItemText(int row, int col) const { return Cell(row, col).text; }
  void SetItemText(int row, int col, const CString& text) { Cell(row, col).text = text; }
  CRecordBase* GetItemData(int row) const { return Row(row).record; }
  void SetItemData(int row, CRecordBase* record) { Row(row).record = record; }

  SGridPlace GetFocusCell() const { return m_focus; }
  void SetFocusCell(int row, int col);

  /// Sorts the rows by a column, stable; hidden rows are sorted like others, owned ones go with their owners.
  void SortItems(int col, bool ascending, ECompare compare);
  /// Puts the rows into the order that `rows` gives (old row numbers, each of 1 to the last once); the focus stays with
  /// its row.
  void Reorder(const std::vector<int>& rows);

 protected:
  std::vector<std::unique_ptr<SGridRow>> m_rows;
  std::vector<SGridColumn> m_columns;
  SGridPlace m_focus;
};

class CFlexGrid : public CGridCtrl {
  TECHSHEET_CLASS(CFlexGrid, CGridCtrl)

  int GetRowHeight(int row) const { return Row(row).height; }
  void SetRowHeight(int row, int height) { Row(row).height = height; }
  bool IsPresent(int row) const { return GetRowHeight(row) > 0; }
  int PresentRows() const;
  /// The number of a present row as people read it: rows that have been deleted do not count.
  int PresentNumber(int row) const;
  /// Inserts an empty row before `at` (-1: at the end) and returns its number.
  int InsertRow(int at = -1);
  void DeleteAllRows();
  void SwapRows(int a, int b);
  /// The present row next to `row` in the direction of `step` (1 or -1), or 0.
  int NeighbourRow(int row, int step) const;
  /// The row that an owned row belongs to; any other row itself.
  int OwnerRow(int row) const;
  /// The row behind those that the owner of `row` owns.
  int OwnedEnd(int row) const;

  /// Whether no other present row has this text in that column.
  bool IsStringUniqueInColumn(int row, int col, const CString& text) const;

  /// The value beside a cell. The only key is "cell_size_value", the exact length of a length cell; under another one
  /// nothing is found.
  bool GetCellData(int row, int col, const CString& key, int& value) const;
  void SetCellData(int row, int col, const CString& key, int value);
  void DeleteCellData(int row, int col, const CString& key);

  /// Shows the units of the lengths in the column titles; `anew` shows every length again, from its exact value.
  void ShowLengths(const CUnits& units, bool anew);

  void SetRowSel(int row, bool selected = true);
  void ClearSelection();
  /// The selected rows that are present, in order.
  std::vector<int> SelectedRows() const;

  void SetRegistryKey(const CString& key) { m_registryKey = key; }
  const CString& GetRegistryKey() const { return m_registryKey; }
  /// Takes column widths from the settings; `found` tells whether there were usable ones. Damaged ones are ignored.
  void LoadSettings(bool* found = nullptr);
  void SaveSettings() const;

 private:
  void ShowLengthsOf(int col, const CUnits& units);

  CString m_registryKey;
};

/// Who fills a grid: decides what its combos offer and what an edit does.
class CGridOwner {
 public:
  virtual ~CGridOwner() = default;
  /// What the combo of a cell offers.
  virtual CComboItems CellItems(int row, int col) const = 0;
  /// A person entered something into an enabled cell; for combos `item` is the entry chosen. False, with the cell as it
  /// was and the reason in `why`, when the cell cannot take it.
  virtual bool CellEntered(int row, int col, const SInput& input, const SComboItem* item, CString& why) = 0;
  /// Whether the cell could hold the input, enabled or not; changes nothing. A text that would stay in its cell as a
  /// wrong one does not fit.
  virtual bool CellFits(int /*row*/, int /*col*/, const SInput&, const SComboItem*) const { return false; }
  /// The text of a cell for the clipboard, from which a cell reads back what this one holds.
  virtual CString CellCopy(const SCell& cell) const { return cell.text; }
  /// What is said of a cell beside its text: a length in the other units.
  virtual CString CellHint(const SCell&) const { return {}; }
  /// The cell changed and has been marked modified.
  virtual void CellChanged(int row, int col) = 0;
};

class CEditGrid : public CFlexGrid {
  TECHSHEET_CLASS(CEditGrid, CFlexGrid)

  void SetOwner(CGridOwner* owner) { m_owner = owner; }

  std::int64_t GetValue(int row, int col) const { return Cell(row, col).value; }
  void SetValue(int row, int col, std::int64_t value) { Cell(row, col).value = value; }
  EEditor GetCellEditClass(int row, int col) const { return Cell(row, col).editor; }
  bool IsCellEnabled(int row, int col) const { return Cell(row, col).enabled; }
  /// A row without a record counts as modified in every cell.
  bool GetCellModified(int row, int col) const { return !Row(row).record || Cell(row, col).modified; }
  void SetCellModified(int row, int col, bool modified);
  bool GetRowModified(int row) const { return Row(row).modified; }
  void SetRowModified(int row, bool modified = true) { Row(row).modified = modified; }
  void ClearModified();
  void SendEditChangeMessage(int row, int col) {
    if (m_owner) m_owner->CellChanged(row, col);
  }

  CComboItems Items(int row, int col) const { return m_owner ? m_owner->CellItems(row, col) : CComboItems(); }
  /// What a person can do to a cell. False, and nothing changed, with the reason in `why`: no such cell, not present,
  /// disabled, without an editor, or an entry that the combo does not offer.
  bool Enter(int row, int col, const SInput& input, CString& why);
  /// Whether a cell, enabled or not, could hold the input: asked before several are entered, all or none.
  bool Fits(int row, int col, const SInput& input) const;
  /// The text of a cell for the clipboard.
  CString CopyText(int row, int col) const {
    return m_owner ? m_owner->CellCopy(Cell(row, col)) : GetItemText(row, col);
  }
  CString HintText(int row, int col) const { return m_owner ? m_owner->CellHint(Cell(row, col)) : CString(); }
  /// The value of a cell as people and scripts read it.
  CValue OuterValue(int row, int col) const;

 private:
  /// The entry of a cell's combo that the input names, among `items`; false when the combo does not offer it.
  bool FindOffered(int row, int col, const SInput& input, CComboItems& items, const SComboItem*& item) const;
  CGridOwner* m_owner = nullptr;
};
