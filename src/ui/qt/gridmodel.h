// Grids of the core as Qt's views read them.
//
// A row of the model is a present row of the grid, in the grid's order; rows that are hidden, that is deleted, are not
// in it. The grid is the truth: the model keeps which rows it last told its views, and Refresh tells them what is new.
#pragma once
#include <QAbstractTableModel>
#include <functional>
#include <vector>

#include "model/controls/grid.h"

class CGridModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  /// Roles beside Qt's own.
  enum ERole {
    EditorRole = Qt::UserRole,  // EEditor as int
    ProblemRole,                // why the cell is marked wrong, empty for a good one
    FilterRole                  // what the cell reads as, check boxes included
  };

  explicit CGridModel(CEditGrid& grid, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

  CEditGrid& Grid() const { return m_grid; }
  int GridRow(const QModelIndex& index) const { return m_rows[static_cast<std::size_t>(index.row())].number; }
  /// An empty cell, while the grid has lost a row of which the views do not know yet.
  const SCell& Cell(const QModelIndex& index) const;
  /// The index of a cell of the grid; invalid when there is no such cell or its row is not present.
  QModelIndex IndexOf(int row, int col) const;
  /// What a column is called: its title, or what stands for an empty one.
  QString ColumnName(int col) const;

  /// What a person enters into a cell. False, and nothing changed, with the reason in `why`, when it takes no such
  /// input.
  bool Enter(const QModelIndex& index, const SInput& input, CString& why);
  /// Runs after a cell took an input through setData, by which assistive programs change check boxes and texts.
  std::function<void()> onEntered;

  /// Tells the views what has changed in the grid since the last call: nothing, when nothing has.
  void Refresh();

  /// Marks one cell as refused, for a reason; the mark stays with its row when rows move, until the cell is entered.
  void SetProblem(int row, int col, const QString& reason);
  void ClearProblem();
  bool HasProblem() const { return m_problemRow != nullptr; }

 private:
  struct SShownRow {
    const SGridRow* row;  // compared alone: what it points to may be gone
    int number;           // in the grid
    std::size_t print;    // of all that the cells show
  };
  std::vector<SShownRow> PresentRows() const;
  static std::size_t PrintOf(const SGridRow& row);
  void TakeMoved(std::vector<SShownRow> now, std::size_t first, std::size_t last);
  void TakeReplaced(std::vector<SShownRow> now, std::size_t first, std::size_t oldEnd, std::size_t newEnd);
  void TakeChanged(std::vector<SShownRow> now);
  void RefreshHeader();
  void TellChanged(std::size_t first, std::size_t last);
  QString ProblemOf(const QModelIndex& index) const;
  QString AccessibleText(const QModelIndex& index) const;
  QString AccessibleDescription(const QModelIndex& index) const;

  CEditGrid& m_grid;
  std::vector<SShownRow> m_rows;
  std::vector<CString> m_units;  // of the columns, as the header shows them
  const SGridRow* m_problemRow = nullptr;
  int m_problemCol = -1;
  QString m_problem;
};
