#include "ui/qt/gridmodel.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <unordered_map>

#include "ui/qt/text.h"

CGridModel::CGridModel(CEditGrid& grid, QObject* parent)
    : QAbstractTableModel(parent), m_grid(grid), m_rows(PresentRows()) {
  RefreshHeader();
}

int CGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CGridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_grid.GetColumnCount(); }

QModelIndex CGridModel::IndexOf(int row, int col) const {
  const auto at = std::lower_bound(m_rows.begin(), m_rows.end(), row,
                                   [](const SShownRow& one, int wanted) { return one.number < wanted; });
  if (at == m_rows.end() || at->number != row || col < 0 || col >= m_grid.GetColumnCount()) return {};
  return index(static_cast<int>(at - m_rows.begin()), col);
}

// ---- What a cell is

namespace {
Qt::Alignment AlignmentOf(EAlign align) {
  if (align == EAlign::Right) return Qt::AlignRight | Qt::AlignVCenter;
  return (align == EAlign::Centre ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter;
}

bool IsEditable(const SCell& cell) { return cell.editor != EEditor::None && cell.enabled; }
}  // namespace

const SCell& CGridModel::Cell(const QModelIndex& index) const {
  static const SCell kNone;
  const int row = GridRow(index);
  return m_grid.IsValid(row, index.column()) ? m_grid.Cell(row, index.column()) : kNone;
}

QString CGridModel::ProblemOf(const QModelIndex& index) const {
  const SCell& cell = Cell(index);
  if (m_problemRow && index.column() == m_problemCol &&
      m_rows[static_cast<std::size_t>(index.row())].row == m_problemRow)
    return m_problem;
  if (const int row = GridRow(index); m_grid.IsValid(row, index.column())) {
    const std::map<int, CString>& problems = m_grid.Row(row).problems;
    if (const auto at = problems.find(index.column()); at != problems.end()) return ToQt(at->second);
  }
  return cell.wrong ? QtText(Text::LengthInvalid, CStringArray{cell.text}) : QString();
}

QString CGridModel::AccessibleText(const QModelIndex& index) const {
  const QString text = ToQt(Cell(index).text);
  const CString shown = text.isEmpty() ? TextOf(Text::Empty) : FromQt(text);
  return QtText(Text::LabelAndValue, CStringArray{FromQt(ColumnName(index.column())), shown});
}

QString CGridModel::AccessibleDescription(const QModelIndex& index) const {
  const QString problem = ProblemOf(index);
  if (!problem.isEmpty()) return problem;
  return IsEditable(Cell(index)) ? QString() : QtText(Text::ThisCellNotEditable);
}

QVariant CGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const SCell& cell = Cell(index);
  const bool isCheck = cell.editor == EEditor::Boolean;
  const int row = GridRow(index);
  const bool isThere = m_grid.IsValid(row, index.column());  // the grid may have fewer rows than were shown last
  switch (role) {
    case Qt::DisplayRole: return isCheck ? QString() : ToQt(cell.text);
    case Qt::EditRole:
    case FilterRole: return ToQt(cell.text);
    case Qt::CheckStateRole:
      return isCheck ? QVariant(static_cast<int>(cell.value ? Qt::Checked : Qt::Unchecked)) : QVariant();
    case Qt::BackgroundRole:  // owned rows are set off from those that they belong to
      return isThere && m_grid.Row(row).IsOwned() ? QVariant(QGuiApplication::palette().alternateBase()) : QVariant();
    case Qt::DecorationRole: return cell.hasBackground ? QVariant(QColor(cell.background)) : QVariant();
    case Qt::TextAlignmentRole: return QVariant::fromValue(AlignmentOf(m_grid.Column(index.column()).align));
    case Qt::ToolTipRole: {
      const QString problem = ProblemOf(index);
      return ToolTip(problem.isEmpty() && isThere ? ToQt(m_grid.HintText(row, index.column())) : problem);
    }
    case Qt::AccessibleTextRole: return AccessibleText(index);
    case Qt::AccessibleDescriptionRole: return AccessibleDescription(index);
    case EditorRole: return static_cast<int>(cell.editor);
    case ProblemRole: return ProblemOf(index);
    default: return {};
  }
}

QString CGridModel::ColumnName(int col) const {
  const CString& title = m_grid.Column(col).title;
  return title.empty() ? QtText(Text::UsedMark) : ToQt(title);
}

QVariant CGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool isText = role == Qt::DisplayRole || role == Qt::AccessibleTextRole || role == Qt::ToolTipRole;
  if (!isText || section < 0) return {};
  if (orientation == Qt::Vertical) {
    if (section >= rowCount()) return {};
    const CString number = IntText(section + 1);  // as messages count rows
    return role == Qt::DisplayRole ? ToQt(number) : QtText(Text::Row, CStringArray{number});
  }
  if (section >= columnCount()) return {};
  const SGridColumn& column = m_grid.Column(section);
  if (role == Qt::DisplayRole && column.title.empty()) return QString();
  const QString name = ColumnName(section);
  return column.unit.empty() ? name : QtText(Text::WithDetail, CStringArray{FromQt(name), column.unit});
}

Qt::ItemFlags CGridModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  // A cell that cannot be edited is still read, selected and copied.
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (!IsEditable(Cell(index))) return flags;
  flags |= Qt::ItemIsEditable;
  return Cell(index).editor == EEditor::Boolean ? flags | Qt::ItemIsUserCheckable : flags;
}

// ---- Entering

bool CGridModel::Enter(const QModelIndex& index, const SInput& input, CString& why) {
  const auto row = static_cast<std::size_t>(index.row());
  if (!m_grid.Enter(m_rows[row].number, index.column(), input, why)) return false;
  if (&m_grid.Row(m_rows[row].number) == m_problemRow && index.column() == m_problemCol) ClearProblem();
  m_rows[row].print = PrintOf(m_grid.Row(m_rows[row].number));
  TellChanged(row, row);
  return true;
}

bool CGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid()) return false;
  CString why;
  const bool isCheck = role == Qt::CheckStateRole;
  if (!isCheck && role != Qt::EditRole) return false;
  if (isCheck && Cell(index).editor != EEditor::Boolean) return false;
  const SInput input = isCheck ? SInput::Value(value.toInt() == Qt::Checked) : SInput::Text(FromQt(value.toString()));
  if (!Enter(index, input, why)) return false;
  if (onEntered) onEntered();
  return true;
}

// ---- Following the grid

std::size_t CGridModel::PrintOf(const SGridRow& row) {
  std::size_t print = row.cells.size();
  const auto mix = [&print](std::size_t part) {
    constexpr std::size_t kSpread = 0x9E3779B97F4A7C15;  // of the golden ratio: neighbouring values end up far apart
    print = (print ^ part) * kSpread;
    print ^= print >> 32;
  };
  for (const SCell& cell : row.cells) {
    mix(std::hash<std::string_view>()(cell.text));
    mix(static_cast<std::size_t>(cell.value));
    mix(cell.background);
    mix(static_cast<std::size_t>(cell.editor) << 8 | std::size_t{cell.enabled} << 2 | std::size_t{cell.wrong} << 1 |
        std::size_t{cell.hasBackground});
  }
  for (const auto& [col, problem] : row.problems) {
    mix(static_cast<std::size_t>(col));
    mix(std::hash<std::string_view>()(problem));
  }
  return print;
}

std::vector<CGridModel::SShownRow> CGridModel::PresentRows() const {
  std::vector<SShownRow> rows;
  rows.reserve(static_cast<std::size_t>(m_grid.GetRowCount()));
  for (int row = 1; row < m_grid.GetRowCount(); ++row)
    if (m_grid.IsPresent(row)) rows.push_back({&m_grid.Row(row), row, PrintOf(m_grid.Row(row))});
  return rows;
}

void CGridModel::Refresh() {
  RefreshHeader();
  std::vector<SShownRow> now = PresentRows();
  const auto same = [](const SShownRow& a, const SShownRow& b) { return a.row == b.row; };
  const std::size_t shorter = std::min(m_rows.size(), now.size());
  std::size_t first = 0;
  while (first < shorter && same(m_rows[first], now[first])) ++first;
  std::size_t tail = 0;
  while (tail < shorter - first && same(m_rows[m_rows.size() - 1 - tail], now[now.size() - 1 - tail])) ++tail;
  const std::size_t oldEnd = m_rows.size() - tail;
  const std::size_t newEnd = now.size() - tail;
  if (first == oldEnd && first == newEnd) {
    TakeChanged(std::move(now));
  } else if (oldEnd == newEnd) {
    TakeMoved(std::move(now), first, newEnd);
  } else {
    TakeReplaced(std::move(now), first, oldEnd, newEnd);
  }
}

void CGridModel::TakeMoved(std::vector<SShownRow> now, std::size_t first, std::size_t last) {
  std::unordered_map<const SGridRow*, int> places;
  for (std::size_t at = first; at < last; ++at) places[now[at].row] = static_cast<int>(at);
  const bool isOrder = std::all_of(m_rows.begin() + static_cast<std::ptrdiff_t>(first),
                                   m_rows.begin() + static_cast<std::ptrdiff_t>(last),
                                   [&](const SShownRow& row) { return places.contains(row.row); });
  if (!isOrder) {
    TakeReplaced(std::move(now), first, last, last);
    return;
  }
  emit layoutAboutToBeChanged({}, VerticalSortHint);
  const QModelIndexList before = persistentIndexList();
  QModelIndexList after = before;
  for (QModelIndex& one : after) {
    const auto at = places.find(m_rows[static_cast<std::size_t>(one.row())].row);
    if (at != places.end()) one = index(at->second, one.column());
  }
  m_rows = std::move(now);
  changePersistentIndexList(before, after);
  emit layoutChanged({}, VerticalSortHint);
}

void CGridModel::TakeReplaced(std::vector<SShownRow> now, std::size_t first, std::size_t oldEnd, std::size_t newEnd) {
  const auto at = [](std::vector<SShownRow>& rows, std::size_t place) {
    return rows.begin() + static_cast<std::ptrdiff_t>(place);
  };
  if (oldEnd > first) {
    beginRemoveRows({}, static_cast<int>(first), static_cast<int>(oldEnd) - 1);
    m_rows.erase(at(m_rows, first), at(m_rows, oldEnd));
    // What is left may have another number by now: the views must not meet one that the grid has no more.
    for (std::size_t row = first; row < m_rows.size(); ++row) m_rows[row].number = now[row + newEnd - first].number;
    endRemoveRows();
  }
  if (newEnd > first) {
    beginInsertRows({}, static_cast<int>(first), static_cast<int>(newEnd) - 1);
    m_rows.insert(at(m_rows, first), at(now, first), at(now, newEnd));
    endInsertRows();
  }
  TakeChanged(std::move(now));
}

void CGridModel::TakeChanged(std::vector<SShownRow> now) {
  now.swap(m_rows);  // `now` is what was shown
  std::size_t from = 0;
  bool isRenumbered = false;
  for (std::size_t row = 0; row < now.size(); ++row) {
    isRenumbered |= now[row].number != m_rows[row].number;
    if (now[row].print != m_rows[row].print) continue;
    if (from < row) TellChanged(from, row - 1);
    from = row + 1;
  }
  if (from < now.size()) TellChanged(from, now.size() - 1);
  if (isRenumbered) emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
}

void CGridModel::TellChanged(std::size_t first, std::size_t last) {
  if (columnCount() == 0) return;
  emit dataChanged(index(static_cast<int>(first), 0), index(static_cast<int>(last), columnCount() - 1));
}

void CGridModel::RefreshHeader() {
  std::vector<CString> units;
  for (int col = 0; col < m_grid.GetColumnCount(); ++col) units.push_back(m_grid.Column(col).unit);
  if (units == m_units) return;
  m_units = std::move(units);
  if (columnCount() > 0) emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

// ---- Refused cells

void CGridModel::SetProblem(int row, int col, const QString& reason) {
  ClearProblem();
  const QModelIndex at = IndexOf(row, col);
  if (!at.isValid() || reason.isEmpty()) return;
  m_problemRow = &m_grid.Row(row);
  m_problemCol = col;
  m_problem = reason;
  emit dataChanged(at, at);
}

void CGridModel::ClearProblem() {
  const auto at =
      std::find_if(m_rows.begin(), m_rows.end(), [this](const SShownRow& row) { return row.row == m_problemRow; });
  m_problemRow = nullptr;
  m_problem.clear();
  if (at == m_rows.end()) return;
  const QModelIndex cell = index(static_cast<int>(at - m_rows.begin()), m_problemCol);
  emit dataChanged(cell, cell);
}
