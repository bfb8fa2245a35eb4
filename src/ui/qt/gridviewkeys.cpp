// Keys, menus, commands and the clipboard of a grid's view.
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <algorithm>

#include "model/services/application.h"
#include "ui/qt/commandtext.h"
#include "ui/qt/gridview.h"
#include "ui/qt/problemline.h"
#include "ui/qt/text.h"

namespace {
struct SCommandKey {
  int key;
  Qt::KeyboardModifiers modifiers;
  const char* command;
};
constexpr SCommandKey kCommandKeys[] = {{Qt::Key_Insert, Qt::NoModifier, "Add"},
                                        {Qt::Key_Delete, Qt::NoModifier, "Delete"},
                                        {Qt::Key_Up, Qt::AltModifier, "MoveUp"},
                                        {Qt::Key_Down, Qt::AltModifier, "MoveDown"},
                                        {Qt::Key_F4, Qt::NoModifier, "Calculator"}};
constexpr int kMostPasted = 1'000'000;  // characters
constexpr int kMostAdded = 10'000;      // rows by one paste
}  // namespace

bool CGridView::OnKey(QKeyEvent& event) {
  if (event.matches(QKeySequence::Copy)) return Copy(), true;
  if (event.matches(QKeySequence::Paste)) return Paste(), true;
  if (event.matches(QKeySequence::Find)) return OpenFilter(), true;
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
  if (event.key() == Qt::Key_Menu) return OpenMenu(m_table->MenuPlace()), true;
  if (event.key() == Qt::Key_Space && modifiers == Qt::NoModifier) return ToggleSelected();
  const auto at = std::find_if(std::begin(kCommandKeys), std::end(kCommandKeys), [&](const SCommandKey& one) {
    return one.key == event.key() && one.modifiers == modifiers;
  });
  if (at == std::end(kCommandKeys)) return false;
  return Command(at->command);
}

// ---- Commands

const SCommand* CGridView::Available(const char* name) const {
  const SCommand* const command = m_panel.FindCommand(name);
  return command && command->visible && command->IsEnabled() ? command : nullptr;
}

bool CGridView::Command(const char* name) {
  const SCommand* const command = m_panel.FindCommand(name);
  if (!command || !command->visible || !onCommand || !CommitEdit()) return true;
  if (!command->IsEnabled()) {
    CNoise::Beep(-1);
  } else {
    onCommand(name);
    Refresh();
  }
  return true;
}

/// Whether rows can be added without a word, as many as are wanted.
bool CGridView::CanAppend() const {
  const SCommand* const add = Available("Add");
  return add && !add->asks && onCommand;
}

// ---- Menus

void CGridView::OpenMenu(const QPoint& place) {
  if (QApplication::activePopupWidget() || !CommitEdit()) return;
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  CMnemonics letters;
  const auto add = [&](const QString& text, const QKeySequence& key, bool isEnabled, auto run) {
    QAction* const action = menu->addAction(letters.Assign(text));
    action->setShortcut(key);
    action->setEnabled(isEnabled);
    connect(action, &QAction::triggered, this, run);
  };
  const QModelIndex current = m_table->currentIndex();
  const bool isEditable = current.flags() & Qt::ItemIsEditable;
  // Commands first: their letters are those of the page's buttons.
  for (const SCommand& command : m_panel.Commands()) {
    if (!command.visible) continue;
    const auto key = std::find_if(std::begin(kCommandKeys), std::end(kCommandKeys), [&](const SCommandKey& one) {
      return std::string_view(one.command) == command.name;
    });
    const QKeySequence keys = key == std::end(kCommandKeys)
                                  ? QKeySequence()
                                  : QKeySequence(QKeyCombination(key->modifiers, static_cast<Qt::Key>(key->key)));
    add(CommandText(command.name), keys, command.IsEnabled(), [this, name = command.name] { Command(name); });
  }
  menu->addSeparator();
  add(QtText(Text::EditCell), QKeySequence(Qt::Key_F2), isEditable, [this] { m_table->edit(m_table->currentIndex()); });
  add(QtText(Text::CopyCells), QKeySequence::Copy, current.isValid(), [this] { Copy(); });
  add(QtText(Text::Paste), QKeySequence::Paste, current.isValid(), [this] { Paste(); });
  add(QtText(Text::SelectAll), QKeySequence::SelectAll, current.isValid(), [this] { m_table->selectAll(); });
  add(QtText(Text::FilterRows), QKeySequence::Find, true, [this] { OpenFilter(); });
  menu->popup(place);
}

void CGridView::OpenHeaderMenu(const QPoint& place) {
  if (!CommitEdit()) return;
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  m_columns.FillMenu(*menu);
  menu->popup(place);
}

// ---- The clipboard

CGridView::SBlock CGridView::SelectedBlock() const {
  const std::vector<int> columns = m_table->ShownColumns();
  const auto placeOf = [&columns](int col) {
    return static_cast<int>(std::find(columns.begin(), columns.end(), col) - columns.begin());
  };
  const QModelIndex current = m_table->currentIndex();
  QItemSelection cells = m_table->selectionModel()->selection();
  if (cells.isEmpty() && current.isValid()) cells.select(current, current);
  int top = m_filter.rowCount(), bottom = -1, left = static_cast<int>(columns.size()), right = -1;
  for (const QItemSelectionRange& range : cells) {
    top = std::min(top, range.top());
    bottom = std::max(bottom, range.bottom());
    for (int col = range.left(); col <= range.right(); ++col) {
      if (m_table->isColumnHidden(col)) continue;
      left = std::min(left, placeOf(col));
      right = std::max(right, placeOf(col));
    }
  }
  if (bottom < top || right < left) return {};
  return {top, left, bottom - top + 1, right - left + 1};
}

void CGridView::Copy() {
  const SBlock block = SelectedBlock();
  const std::vector<int> columns = m_table->ShownColumns();
  const QString point = QLocale().decimalPoint();
  CTabLines lines;
  for (int row = block.top; row < block.top + block.rows; ++row) {
    lines.emplace_back();
    for (int place = block.left; place < block.left + block.cols; ++place) {
      const QModelIndex index = m_filter.index(row, columns[static_cast<std::size_t>(place)]);
      const bool isSelected = m_table->selectionModel()->isSelected(index) || index == m_table->currentIndex();
      const SGridPlace cell = m_filter.PlaceOf(index);
      QString text = isSelected ? ToQt(m_grid.CopyText(cell.row, cell.col)) : QString();
      // A spreadsheet reads numbers as its locale writes them.
      if (m_grid.GetCellEditClass(cell.row, cell.col) == EEditor::Length) text.replace(u'.', point);
      lines.back().push_back(text);
    }
  }
  if (!lines.empty()) QApplication::clipboard()->setText(ToTabText(lines));
}

bool CGridView::FitsBlock(const SBlock& block, int rows, int cols) {
  const int roomCols = static_cast<int>(m_table->ShownColumns().size()) - block.left;
  const int roomRows = m_filter.rowCount() - block.top;
  const CStringArray ofRows{IntText(rows), IntText(roomRows)};
  if (cols > roomCols) {
    Say(QtText(Text::PasteTooWide, CStringArray{IntText(cols), IntText(roomCols)}), true);
  } else if (rows > roomRows && m_filter.IsActive()) {
    Say(QtText(Text::PasteIntoFiltered, ofRows), true);
  } else if (rows > roomRows && (!CanAppend() || rows - roomRows > kMostAdded)) {
    Say(QtText(Text::PasteTooHigh, ofRows), true);
  } else {
    return true;
  }
  return false;
}

void CGridView::Paste() {
  if (!CommitEdit()) return;
  const QString text = QApplication::clipboard()->text();
  if (text.isEmpty()) return;
  if (text.size() > kMostPasted) return Say(QtText(Text::PasteTooLong, CStringArray{IntText(kMostPasted)}), true);
  const CTabLines lines = FromTabText(text);
  const bool isFirst = m_model.rowCount() == 0;  // a row shows what its cells take
  if (isFirst && (!CanAppend() || !AddRows(1)))
    return Say(QtText(Text::PasteTooHigh, CStringArray{IntText(static_cast<std::int64_t>(lines.size())), IntText(0)}),
               true);
  Refresh();
  if (PasteLines(lines) || !isFirst) return;
  const QString why = m_problem->Text();
  Command("Delete");  // which takes the reason away
  Say(why, true);
}

bool CGridView::PasteLines(const CTabLines& lines) {
  const auto height = static_cast<int>(lines.size());
  int width = 0;
  for (const QStringList& line : lines) width = std::max(width, static_cast<int>(line.size()));
  const SBlock block = SelectedBlock();
  // The text repeats to fill a selection that it divides; otherwise it goes in once from the upper left cell.
  const int rows = block.rows > height && block.rows % height == 0 ? block.rows : height;
  const int cols = block.cols > width && block.cols % width == 0 ? block.cols : width;
  if (block.rows == 0 || !FitsBlock(block, rows, cols)) return false;
  const std::vector<int> columns = m_table->ShownColumns();
  const int shown = m_filter.rowCount();
  const int like = m_filter.PlaceOf(m_filter.index(shown - 1, 0)).row;
  CGridEntries entries(m_grid);
  for (int row = 0; row < rows; ++row) {
    const int at = block.top + row;
    const QStringList& line = lines[static_cast<std::size_t>(row % height)];
    // Rows that are yet to be added go by the numbers that the grid will give them at its end.
    const int number = at < shown ? m_filter.PlaceOf(m_filter.index(at, 0)).row : m_grid.GetRowCount() + at - shown;
    std::vector<std::pair<int, const QString*>> cells;  // entered in the order of the grid's own columns
    for (int col = 0; col < cols; ++col)
      if (col % width < line.size())
        cells.emplace_back(columns[static_cast<std::size_t>(block.left + col)], &line[col % width]);
    std::sort(cells.begin(), cells.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [col, cell] : cells) entries.AddText(number, col, *cell, at < shown ? number : like);
  }
  QString why;
  const int missing = block.top + rows - shown;
  if (!entries.Fit(why)) {
    Say(why, true);
  } else if (missing > 0 && !AddRows(missing)) {
    Say(QtText(Text::PasteTooHigh, CStringArray{IntText(rows), IntText(shown - block.top)}), true);
  } else {
    return EnterAll(entries);
  }
  return false;
}

bool CGridView::AddRows(int rows) {
  const QScopedValueRollback<bool> busy(m_busy, true);
  const int first = m_grid.GetRowCount();
  for (int row = 0; row < rows; ++row) {
    onCommand("Add");
    // A command that adds elsewhere is no way to add many.
    if (m_grid.GetRowCount() != first + row + 1 || m_grid.GetFocusCell().row != first + row) return false;
  }
  return true;
}
