// The table inside a grid's view: what keys, clicks and closing editors mean in it.
#pragma once
#include <QTableView>
#include <functional>

#include "ui/qt/griddelegate.h"

class CGridTable : public QTableView {
  Q_OBJECT
 public:
  CGridTable(CGridFilter& filter, QWidget* parent);

  using QTableView::edit;
  CGridDelegate& Delegate() { return m_delegate; }
  /// Sees each key before the table does; true when it has done what the key means.
  std::function<bool(QKeyEvent& event)> onKey;
  /// A context menu is wanted at a place of the screen.
  std::function<void(const QPoint& place)> onMenu;
  /// The current cell or the selection is another.
  std::function<void()> onMoved;

  /// Moves the cursor to a cell, which alone is selected then, whatever keys are held.
  void GoTo(const QModelIndex& index);
  /// Where the menu of the current cell opens, on the screen.
  QPoint MenuPlace() const;
  /// Columns that are shown, from left to right.
  std::vector<int> ShownColumns() const;

 protected:
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  /// The next cell that can be edited in reading order, invalid after the last.
  QModelIndex NextEditable(const QModelIndex& from, int step) const;
  CGridDelegate m_delegate;
};
