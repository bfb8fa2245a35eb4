#include "ui/qt/gridview.h"

#include <QAccessible>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/qt/problemline.h"
#include "ui/qt/text.h"

CGridView::CGridView(CPanel& panel, CEditGrid& grid, QWidget* parent)
    : QWidget(parent),
      m_panel(panel),
      m_grid(grid),
      m_model(grid),
      m_filter(m_model),
      m_table(new CGridTable(m_filter, this)),
      m_filterBar(MakeFilterBar()),
      m_problem(new CProblemLine(this)),
      m_notice(new QLabel(this)),
      m_columns(m_model, *m_table) {
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(m_filterBar);
  layout->addWidget(m_table, 1);
  layout->addWidget(m_problem);
  layout->addWidget(m_notice);
  m_notice->setWordWrap(true);
  m_notice->setTextFormat(Qt::PlainText);
  m_notice->hide();
  m_filterBar->hide();
  m_table->setAccessibleName(ToQt(panel.GetTitle()));

  m_table->onKey = [this](QKeyEvent& event) { return OnKey(event); };
  m_table->onMenu = [this](const QPoint& place) { OpenMenu(place); };
  m_table->onMoved = [this] { Moved(); };
  m_table->Delegate().onEnter = [this](const QModelIndex& index, const SInput& input) {
    return EnterInto(index, input);
  };
  m_table->Delegate().onToggle = [this](const QModelIndex& index) { Toggle(index); };
  m_table->Delegate().onEdited = [this] {
    if (onEdited) onEdited();
  };
  m_model.onEntered = [this] {
    if (onChanged) onChanged();
  };
  QHeaderView* const header = m_table->horizontalHeader();
  header->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(header, &QWidget::customContextMenuRequested, this,
          [this, header](const QPoint& place) { OpenHeaderMenu(header->mapToGlobal(place)); });
  connect(header, &QHeaderView::sectionClicked, this, [this](int col) { SortBy(col); });
  TakeFocusFromGrid();
  ShowSort();
}

CGridView::~CGridView() {
  m_busy = true;
  m_columns.Save();
}

QWidget* CGridView::MakeFilterBar() {
  auto* const bar = new QWidget(this);
  auto* const layout = new QHBoxLayout(bar);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* const label = new QLabel(QtText(Text::Filter), bar);
  m_filterText = new QLineEdit(bar);
  m_filterText->setPlaceholderText(QtText(Text::FilterHint));
  m_filterText->setAccessibleName(QtText(Text::Filter));
  m_filterText->setClearButtonEnabled(true);
  m_filterText->installEventFilter(this);
  label->setBuddy(m_filterText);
  m_filterCount = new QLabel(bar);
  auto* const close = new QToolButton(bar);
  close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  close->setAutoRaise(true);
  close->setToolTip(QtText(Text::EndFilter));
  close->setAccessibleName(QtText(Text::EndFilter));
  layout->addWidget(label);
  layout->addWidget(m_filterText, 1);
  layout->addWidget(m_filterCount);
  layout->addWidget(close);
  connect(m_filterText, &QLineEdit::textChanged, this, [this](const QString& text) { SetFilter(text); });
  connect(close, &QToolButton::clicked, this, [this] { CloseFilter(); });
  return bar;
}

// ---- Following the grid

void CGridView::Refresh() {
  if (m_busy) return;
  {
    const QScopedValueRollback<bool> busy(m_busy, true);
    m_model.Refresh();
  }
  TakeFocusFromGrid();
  ShowSort();
  ShowCount();
  if (!m_model.HasProblem() && m_isOfCell) Say({}, false);
}

void CGridView::TakeFocusFromGrid() {
  QItemSelectionModel& selection = *m_table->selectionModel();
  const SGridPlace focus = m_grid.GetFocusCell();
  const std::vector<int> rows = m_grid.SelectedRows();
  const bool isThere = m_grid.IsValid(focus.row, focus.col) && m_grid.IsPresent(focus.row);
  const bool isMoved = isThere && (m_filter.PlaceOf(m_table->currentIndex()) != focus || !selection.hasSelection());
  // Several rows that the panel selected are shown so; a cursor that it moved alone takes the selection along.
  const bool isSelected =
      rows.size() < 2 || std::all_of(
                             rows.begin(), rows.end(),
                             [&](int row) {
                               const QModelIndex first = m_filter.IndexOf({row, 0});
                               return !first.isValid() || selection.rowIntersectsSelection(first.row(), {});
                             });
  if (!isMoved && isSelected) return;
  {
    const QScopedValueRollback<bool> busy(m_busy, true);
    QItemSelection wanted;
    for (const int row : rows)
      if (const QModelIndex first = m_filter.IndexOf({row, 0}); !isSelected && first.isValid())
        wanted.select(first, first.siblingAtColumn(m_model.columnCount() - 1));
    if (!isSelected) selection.select(wanted, QItemSelectionModel::ClearAndSelect);
    const QModelIndex index = Reveal(focus);
    const bool isAmong = rows.size() > 1 && std::find(rows.begin(), rows.end(), focus.row) != rows.end();
    if (isMoved)
      selection.setCurrentIndex(index, isAmong ? QItemSelectionModel::NoUpdate : QItemSelectionModel::ClearAndSelect);
    m_table->scrollTo(index);
  }
  HandOver();
}

void CGridView::Moved() {
  if (m_busy) return;
  HandOver();
  if (onMoved) onMoved();
}

void CGridView::HandOver() {
  const SGridPlace place = m_filter.PlaceOf(m_table->currentIndex());
  m_grid.SetFocusCell(place.row, place.col);
  m_grid.ClearSelection();
  for (const QItemSelectionRange& range : m_table->selectionModel()->selection())
    for (int row = range.top(); row <= range.bottom(); ++row)
      m_grid.SetRowSel(m_filter.PlaceOf(m_filter.index(row, range.left())).row);
}

void CGridView::ShowSort() {
  const SGridSort sort = m_panel.SortedBy(m_grid);
  QHeaderView* const header = m_table->horizontalHeader();
  header->setSortIndicatorShown(sort.col >= 0);
  if (sort.col >= 0) header->setSortIndicator(sort.col, sort.up ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void CGridView::SortBy(int col) {
  if (!CommitEdit()) return;
  m_panel.SortByColumn(m_grid, col);
  Refresh();
}

QModelIndex CGridView::Reveal(SGridPlace place) {
  if (m_filter.IsActive() && m_model.IndexOf(place.row, place.col).isValid() && !m_filter.IndexOf(place).isValid())
    CloseFilter();
  return m_filter.IndexOf(place);
}

int CGridView::WantedWidth() const {
  return m_table->horizontalHeader()->length() + m_table->verticalHeader()->sizeHint().width() +
         style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * m_table->frameWidth();
}

// ---- Editing

bool CGridView::CommitEdit() { return m_table->Delegate().Finish(); }

void CGridView::EditCell(int row, int col) {
  if (!CommitEdit()) return;
  Refresh();
  const QModelIndex index = Reveal({row, col});
  if (!index.isValid()) return;
  m_columns.Show(col);
  m_table->setFocus();
  m_table->GoTo(index);
  if (index.flags() & Qt::ItemIsEditable) m_table->edit(index);
}

bool CGridView::EnterInto(const QModelIndex& index, const SInput& input) {
  QModelIndexList cells;  // the column of the cell within the selection, when several rows are selected
  if (m_table->selectionModel()->isSelected(index)) {
    for (const QItemSelectionRange& range : m_table->selectionModel()->selection())
      for (int row = range.top(); row <= range.bottom(); ++row)
        if (range.left() <= index.column() && index.column() <= range.right()) cells.push_back(index.siblingAtRow(row));
  }
  if (cells.size() < 2) {
    const SGridPlace place = m_filter.PlaceOf(index);
    CString why;
    bool isTaken = false;
    {
      const QScopedValueRollback<bool> busy(m_busy, true);
      isTaken = m_model.Enter(m_filter.mapToSource(index), input, why);
    }
    Refresh();
    const bool isWrong = isTaken && m_grid.Cell(place.row, place.col).wrong;
    if (isWrong) {
      Say(index.data(CGridModel::ProblemRole).toString(), true);
    } else if (!isTaken || !m_model.HasProblem()) {
      Say(ToQt(why), !isTaken);
    }
    if (isTaken && onChanged) onChanged();
    return isTaken;
  }
  CGridEntries entries(m_grid);
  for (const QModelIndex& cell : cells) {
    const SGridPlace place = m_filter.PlaceOf(cell);
    entries.Add(place.row, place.col, input);
  }
  return EnterAll(entries);
}

bool CGridView::EnterAll(CGridEntries& entries) {
  QString why;
  if (!entries.Fit(why)) {
    Say(why, true);
    return false;
  }
  int left = 0;
  {
    const QScopedValueRollback<bool> busy(m_busy, true);
    left = entries.Enter();
  }
  m_model.ClearProblem();
  Refresh();
  Say(left > 0 ? QtText(Text::CellsLeft, CStringArray{IntText(left)}) : QString(), false);
  if (onChanged) onChanged();
  return true;
}

void CGridView::Toggle(const QModelIndex& index) {
  const bool isChecked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  if (index.flags() & Qt::ItemIsEditable) EnterInto(index, SInput::Value(!isChecked));
}

bool CGridView::ToggleSelected() {
  QModelIndexList checks;
  for (const QModelIndex& index : m_table->selectionModel()->selectedIndexes())
    if (index.flags() & Qt::ItemIsUserCheckable && !m_table->isColumnHidden(index.column())) checks.push_back(index);
  if (checks.isEmpty()) return false;
  // All become what the cursor's becomes, or else what the first one does.
  const QModelIndex current = m_table->currentIndex();
  const QModelIndex lead = checks.contains(current) ? current : checks.front();
  const bool isChecked = lead.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  CGridEntries entries(m_grid);
  for (const QModelIndex& index : checks) {
    const SGridPlace place = m_filter.PlaceOf(index);
    entries.Add(place.row, place.col, SInput::Value(!isChecked));
  }
  EnterAll(entries);
  return true;
}

// ---- What was refused

void CGridView::ShowProblem(int row, int col, const QString& reason) {
  Refresh();
  m_model.SetProblem(row, col, reason);
  Say(reason, true);
}

void CGridView::ClearProblem() {
  m_model.ClearProblem();
  Say({}, false);
}

void CGridView::Say(const QString& notice, bool isProblem) {
  m_isOfCell = isProblem && m_model.HasProblem();
  m_notice->setVisible(!isProblem && !notice.isEmpty());
  if (isProblem) return m_problem->Show(notice);
  m_problem->Clear();
  if (notice == m_notice->text()) return;
  m_notice->setText(notice);
  QAccessibleEvent alert(m_notice, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

// ---- The filter

void CGridView::OpenFilter() {
  if (!CommitEdit()) return;
  m_filterBar->show();
  m_filterText->setFocus();
  m_filterText->selectAll();
}

void CGridView::SetFilter(const QString& text) {
  {
    const QScopedValueRollback<bool> busy(m_busy, true);
    m_filter.SetText(text);
    if (!m_table->currentIndex().isValid() && m_filter.rowCount() > 0)
      m_table->GoTo(m_filter.index(0, std::max(m_grid.GetFocusCell().col, 0)));
  }
  ShowCount();
  if (m_table->currentIndex().isValid()) m_table->scrollTo(m_table->currentIndex());
  Moved();
}

void CGridView::ShowCount() {
  const CStringArray counts{IntText(m_filter.rowCount()), IntText(m_model.rowCount())};
  m_filterCount->setText(m_filter.IsActive() ? QtText(Text::RowsShown, counts) : QString());
}

void CGridView::CloseFilter() {
  m_filterText->clear();
  m_filterBar->hide();
  m_table->setFocus();
}

/// What was scrolled to before there was a size is in the wrong place.
void CGridView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  const auto scroll = [this] {
    m_table->horizontalScrollBar()->setValue(0);
    if (m_table->currentIndex().isValid()) m_table->scrollTo(m_table->currentIndex());
  };
  QMetaObject::invokeMethod(this, scroll, Qt::QueuedConnection);  // once everything has its place
}

bool CGridView::eventFilter(QObject* object, QEvent* event) {
  if (object != m_filterText || event->type() != QEvent::KeyPress) return QWidget::eventFilter(object, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape: CloseFilter(); return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down: m_table->setFocus(); return true;
    default: return false;
  }
}
