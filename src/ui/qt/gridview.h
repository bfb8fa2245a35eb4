// A grid on the screen: its table, a box that filters the rows, and a line under it that says what was refused.
//
// The view changes the grid only as a person does, by entering into cells, and asks for commands of the panel; what
// changes it from elsewhere is seen after Refresh. Rows and columns are those of the grid everywhere in this interface.
#pragma once
#include <QWidget>
#include <functional>

#include "model/controls/panel.h"
#include "ui/qt/gridcolumns.h"
#include "ui/qt/gridentries.h"
#include "ui/qt/tabtext.h"

class CProblemLine;
class QLabel;
class QLineEdit;

class CGridView : public QWidget {
  Q_OBJECT
 public:
  CGridView(CPanel& panel, CEditGrid& grid, QWidget* parent = nullptr);
  ~CGridView() override;

  /// A command of the panel is wanted: by a key, or from the menu.
  std::function<void(const char* command)> onCommand;
  /// One or more cells were entered.
  std::function<void()> onChanged;
  /// A person began to change a cell in its editor, or that editor was closed.
  std::function<void()> onEdited;
  /// A person moved the cursor or the selection; the grid knows.
  std::function<void()> onMoved;

  /// Enters what an open editor holds and closes it. False when the cell does not take it: the editor stays open.
  bool CommitEdit();
  /// Whether a person has changed what an open editor holds.
  bool HasChangedEdit() const { return m_table->Delegate().HasChangedEdit(); }
  /// The grid may have changed. Costs little when it has not; selection, scroll position and an open editor stay.
  void Refresh();
  /// Goes to a cell, whatever hides it, and opens its editor when it has one.
  void EditCell(int row, int col);
  /// Marks a cell as refused and says why under the grid; the mark goes when the cell is entered.
  void ShowProblem(int row, int col, const QString& reason);
  void ClearProblem();
  /// Opens the box that filters the rows.
  void OpenFilter();

  /// In which all columns that are shown are seen.
  int WantedWidth() const;

  CGridTable& Table() { return *m_table; }

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  struct SBlock {  // of the table, in shown rows and places among the shown columns
    int top = 0, left = 0, rows = 0, cols = 0;
  };
  QWidget* MakeFilterBar();
  bool OnKey(QKeyEvent& event);
  bool EnterInto(const QModelIndex& index, const SInput& input);
  bool EnterAll(CGridEntries& entries);
  void Toggle(const QModelIndex& index);
  bool ToggleSelected();
  bool Command(const char* command);
  const SCommand* Available(const char* command) const;
  bool CanAppend() const;
  bool AddRows(int rows);
  void Copy();
  void Paste();
  bool PasteLines(const CTabLines& lines);
  SBlock SelectedBlock() const;
  bool FitsBlock(const SBlock& block, int wantedRows, int wantedCols);
  void OpenMenu(const QPoint& place);
  void OpenHeaderMenu(const QPoint& place);
  void SortBy(int col);
  void SetFilter(const QString& text);
  void ShowCount();
  void CloseFilter();
  void Moved();
  /// Gives the grid the cursor and the selection of the table.
  void HandOver();
  void TakeFocusFromGrid();
  void ShowSort();
  void Say(const QString& notice, bool isProblem);
  /// The index of a cell; the filter ends when it hides the row.
  QModelIndex Reveal(SGridPlace place);

  CPanel& m_panel;
  CEditGrid& m_grid;
  CGridModel m_model;
  CGridFilter m_filter;
  CGridTable* m_table;
  QLineEdit* m_filterText = nullptr;  // both made with the bar, hence before it
  QLabel* m_filterCount = nullptr;
  QWidget* m_filterBar;
  CProblemLine* m_problem;
  QLabel* m_notice;
  CGridColumns m_columns;
  bool m_isOfCell = false;  // the problem that is shown is that of a marked cell, and goes with the mark
  bool m_busy = false;      // rows or cells are on the move: what they send is heard afterwards
};
