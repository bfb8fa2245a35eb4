#include "ui/qt/gridtable.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>

CGridTable::CGridTable(CGridFilter& filter, QWidget* parent) : QTableView(parent), m_delegate(filter) {
  setModel(&filter);
  setItemDelegate(&m_delegate);
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
  setSelectionMode(ExtendedSelection);
  setSelectionBehavior(SelectItems);
  setTabKeyNavigation(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setWordWrap(false);
  setCornerButtonEnabled(true);
  // A click on a header sorts; it takes neither cursor nor selection along.
  disconnect(horizontalHeader(), &QHeaderView::sectionPressed, this, nullptr);
  disconnect(horizontalHeader(), &QHeaderView::sectionEntered, this, nullptr);
  constexpr int kPadding = 8;  // pixels, of a row beyond its text
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kPadding);
}

std::vector<int> CGridTable::ShownColumns() const {
  std::vector<int> columns;
  for (int place = 0; place < horizontalHeader()->count(); ++place)
    if (const int col = horizontalHeader()->logicalIndex(place); !isColumnHidden(col)) columns.push_back(col);
  return columns;
}

QModelIndex CGridTable::NextEditable(const QModelIndex& from, int step) const {
  const std::vector<int> columns = ShownColumns();
  const auto count = static_cast<int>(columns.size());
  auto place = static_cast<int>(std::find(columns.begin(), columns.end(), from.column()) - columns.begin());
  for (int row = from.row(); count > 0;) {
    place += step;
    if (place < 0 || place >= count) {
      row += step;
      place = step > 0 ? 0 : count - 1;
    }
    if (row < 0 || row >= model()->rowCount()) break;
    const QModelIndex index = model()->index(row, columns[static_cast<std::size_t>(place)]);
    if (index.flags() & Qt::ItemIsEditable) return index;
  }
  return {};
}

bool CGridTable::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
  const auto kind = static_cast<EEditor>(index.data(CGridModel::EditorRole).toInt());
  if (kind == EEditor::Boolean && (trigger == AnyKeyPressed || trigger == DoubleClicked)) return false;
  if (!QTableView::edit(index, trigger, event)) return false;
  auto* const combo = qobject_cast<QComboBox*>(m_delegate.Editor());
  if (trigger == DoubleClicked && combo && !combo->isEditable()) combo->showPopup();
  return true;
}

void CGridTable::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  if (m_delegate.IsRefused()) return;
  m_delegate.Forget();
  QTableView::closeEditor(editor,
                          hint == QAbstractItemDelegate::RevertModelCache ? hint : QAbstractItemDelegate::NoHint);
  const bool isNext = hint == QAbstractItemDelegate::EditNextItem;
  if (!isNext && hint != QAbstractItemDelegate::EditPreviousItem) return;
  const QModelIndex next = NextEditable(currentIndex(), isNext ? 1 : -1);
  if (!next.isValid()) return;
  GoTo(next);
  QTableView::edit(next);
}

void CGridTable::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool isPageChange = key == Qt::Key_PageUp || key == Qt::Key_PageDown || key == Qt::Key_Tab;
  if (isPageChange && event->modifiers() & Qt::ControlModifier) {  // the sheet's
    event->ignore();
    return;
  }
  if (onKey && onKey(*event)) {
    event->accept();
    return;
  }
  static constexpr int kMoves[] = {Qt::Key_Up,   Qt::Key_Down, Qt::Key_Left,   Qt::Key_Right,
                                   Qt::Key_Home, Qt::Key_End,  Qt::Key_PageUp, Qt::Key_PageDown};
  const bool isMove = std::find(std::begin(kMoves), std::end(kMoves), key) != std::end(kMoves);
  if (isMove && !m_delegate.Finish()) {
    event->accept();
  } else if ((key == Qt::Key_Home || key == Qt::Key_End) && event->modifiers() == Qt::ControlModifier) {
    GoTo(moveCursor(key == Qt::Key_Home ? MoveHome : MoveEnd, Qt::ControlModifier));
  } else if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_F2) {
    edit(currentIndex(), EditKeyPressed, event);
    event->accept();  // never the dialog's OK
  } else {
    QTableView::keyPressEvent(event);
  }
}

void CGridTable::GoTo(const QModelIndex& index) {
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
  scrollTo(index);
}

QPoint CGridTable::MenuPlace() const { return viewport()->mapToGlobal(visualRect(currentIndex()).center()); }

void CGridTable::contextMenuEvent(QContextMenuEvent* event) {
  if (onMenu) onMenu(event->reason() == QContextMenuEvent::Keyboard ? MenuPlace() : event->globalPos());
}

void CGridTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (onMoved) onMoved();
}

void CGridTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  if (onMoved) onMoved();
}
