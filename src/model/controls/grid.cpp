#include "model/controls/grid.h"

#include <algorithm>
#include <cassert>

#include "model/base/catalogue.h"
#include "model/design/units.h"
#include "model/services/registry.h"

CGridCtrl::CGridCtrl() { m_rows.push_back(std::make_unique<SGridRow>()); }

void CGridCtrl::SetColumns(std::vector<SGridColumn> columns) {
  m_columns = std::move(columns);
  for (SGridColumn& column : m_columns) {
    column.title = TextOf(column.header);
    column.usualWidth = column.width;
  }
  for (const auto& row : m_rows) row->cells.resize(m_columns.size());
}

void CGridCtrl::SetFocusCell(int row, int col) {
  if (IsValid(row, col)) m_focus = {row, col};
}

namespace {
/// What a row is sorted by, gathered beforehand: a number, or a text led by its first bytes as a number.
struct SSortKey {
  std::uint64_t number;
  std::string_view text;
  int row;
  bool operator<(const SSortKey& other) const {
    return number != other.number ? number < other.number : text < other.text;
  }
};

constexpr std::uint64_t kSign = std::uint64_t{1} << 63;

SSortKey NumberKey(std::int64_t value, int row) { return {static_cast<std::uint64_t>(value) ^ kSign, {}, row}; }
SSortKey TextKey(std::string_view text, int row) {
  SSortKey key{0, text, row};
  for (std::size_t i = 0; i < sizeof(key.number); ++i)
    key.number = key.number << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0);
  return key;
}
}  // namespace

void CGridCtrl::SortItems(int col, bool ascending, ECompare compare) {
  std::vector<SSortKey> keys;
  keys.reserve(m_rows.size());
  for (int row = 1; row < GetRowCount(); ++row) {
    if (Row(row).IsOwned()) continue;
    const SCell& cell = Cell(row, col);
    keys.push_back(compare == CellNumericCompare ? NumberKey(cell.value, row) : TextKey(cell.text, row));
  }
  std::stable_sort(keys.begin(), keys.end(),
                   [=](const SSortKey& a, const SSortKey& b) { return ascending ? a < b : b < a; });
  std::vector<int> order;
  order.reserve(m_rows.size());
  for (const SSortKey& key : keys) {
    int row = key.row;
    do {
      order.push_back(row++);
    } while (row < GetRowCount() && Row(row).IsOwned());
  }
  Reorder(order);
}

void CGridCtrl::Reorder(const std::vector<int>& rows) {
  std::vector<std::unique_ptr<SGridRow>> ordered;
  ordered.reserve(m_rows.size());
  ordered.push_back(std::move(m_rows.front()));
  int focus = m_focus.row;
  for (const int row : rows) {
    if (row == m_focus.row) focus = static_cast<int>(ordered.size());
    ordered.push_back(std::move(m_rows[static_cast<std::size_t>(row)]));
  }
  m_rows = std::move(ordered);
  m_focus.row = focus;
}

int CFlexGrid::PresentNumber(int row) const {
  int number = 0;
  for (int other = 1; other <= row; ++other) number += IsPresent(other);
  return number;
}

int CFlexGrid::PresentRows() const {
  return static_cast<int>(
      std::count_if(m_rows.begin() + 1, m_rows.end(), [](const auto& row) { return row->height > 0; }));
}

int CFlexGrid::InsertRow(int at) {
  if (at < 1 || at > GetRowCount()) at = GetRowCount();
  auto row = std::make_unique<SGridRow>();
  row->cells.resize(m_columns.size());
  m_rows.insert(m_rows.begin() + at, std::move(row));
  if (m_focus.row >= at) ++m_focus.row;
  return at;
}

void CFlexGrid::DeleteAllRows() {
  m_rows.resize(1);
  m_focus = {};
}

void CFlexGrid::SwapRows(int a, int b) {
  std::swap(m_rows[static_cast<std::size_t>(a)], m_rows[static_cast<std::size_t>(b)]);
  if (m_focus.row == a || m_focus.row == b) m_focus.row = m_focus.row == a ? b : a;
}

int CFlexGrid::NeighbourRow(int row, int step) const {
  for (row += step; row >= 1 && row < GetRowCount(); row += step)
    if (IsPresent(row)) return row;
  return 0;
}

int CFlexGrid::OwnerRow(int row) const {
  while (Row(row).IsOwned()) --row;
  return row;
}

int CFlexGrid::OwnedEnd(int row) const {
  do {
    ++row;
  } while (row < GetRowCount() && Row(row).IsOwned());
  return row;
}

bool CFlexGrid::IsStringUniqueInColumn(int row, int col, const CString& text) const {
  for (int other = 1; other < GetRowCount(); ++other)
    if (other != row && IsPresent(other) && GetItemText(other, col) == text) return false;
  return true;
}

namespace {
constexpr std::string_view kSizeValue = "cell_size_value";
}

bool CFlexGrid::GetCellData(int row, int col, const CString& key, int& value) const {
  const SCell& cell = Cell(row, col);
  if (key != kSizeValue || !cell.hasValue) return false;
  value = static_cast<int>(cell.value);
  return true;
}

void CFlexGrid::SetCellData(int row, int col, [[maybe_unused]] const CString& key, int value) {
  assert(key == kSizeValue);
  Cell(row, col).value = value;
  Cell(row, col).hasValue = true;
}

void CFlexGrid::DeleteCellData(int row, int col, [[maybe_unused]] const CString& key) {
  assert(key == kSizeValue);
  Cell(row, col).value = 0;
  Cell(row, col).hasValue = false;
}

void CFlexGrid::ShowLengths(const CUnits& units, bool anew) {
  for (int col = 0; col < GetColumnCount(); ++col) {
    if (!Column(col).hasLengths) continue;
    Column(col).unit = CUnits::Suffix(units.GetType());
    if (anew) ShowLengthsOf(col, units);
  }
}

/// Rows and cells lie apart in memory, and each is fetched while those before it are written.
void CFlexGrid::ShowLengthsOf(int col, const CUnits& units) {
  constexpr int kAhead = 12;
  for (int row = 1; row < GetRowCount(); ++row) {
    if (row + 2 * kAhead < GetRowCount()) __builtin_prefetch(&Row(row + 2 * kAhead).cells);
    if (row + kAhead < GetRowCount()) {
      __builtin_prefetch(&Cell(row + kAhead, col).text, 1);
      __builtin_prefetch(&Cell(row + kAhead, col).editor, 1);
    }
    SCell& cell = Cell(row, col);
    if (cell.editor != EEditor::Length) continue;
    if (!cell.hasValue && !cell.wrong) continue;  // emptied, or a word in the place of a length
    cell.wrong = false;
    cell.text.clear();
    if (cell.hasValue) AppendLength(cell.text, static_cast<int>(cell.value), units, false);
  }
}

void CFlexGrid::SetRowSel(int row, bool selected) { Row(row).selected = selected; }

void CFlexGrid::ClearSelection() {
  for (const auto& row : m_rows) row->selected = false;
}

std::vector<int> CFlexGrid::SelectedRows() const {
  std::vector<int> rows;
  for (int row = 1; row < GetRowCount(); ++row)
    if (Row(row).selected && IsPresent(row)) rows.push_back(row);
  return rows;
}

void CFlexGrid::LoadSettings(bool* found) {
  if (found) *found = false;
  CString text;
  if (m_registryKey.empty() || !CAppRegistry(m_registryKey).GetValue("Columns", text)) return;
  std::vector<int> widths;
  std::string_view rest = text;
  for (bool more = true; more;) {
    const std::size_t comma = rest.find(',');
    std::int64_t width = 0;
    if (!ParseInt(rest.substr(0, comma), width) || width < 1 || width > 10'000) return;
    widths.push_back(static_cast<int>(width));
    more = comma != std::string_view::npos;
    if (more) rest.remove_prefix(comma + 1);
  }
  if (widths.size() != m_columns.size()) return;
  for (std::size_t col = 0; col < widths.size(); ++col) m_columns[col].width = widths[col];
  if (found) *found = true;
}

void CFlexGrid::SaveSettings() const {
  if (m_registryKey.empty()) return;
  CString text;
  for (const SGridColumn& column : m_columns) {
    if (!text.empty()) text += ',';
    AppendInt(text, column.width);
  }
  CAppRegistry(m_registryKey).SetValue("Columns", text);
}

void CEditGrid::SetCellModified(int row, int col, bool modified) {
  Cell(row, col).modified = modified;
  if (modified) Row(row).modified = true;
}

void CEditGrid::ClearModified() {
  for (const auto& row : m_rows) {
    if (!row->modified) continue;  // nor is any of its cells
    row->modified = false;
    for (SCell& cell : row->cells) cell.modified = false;
  }
}

bool CEditGrid::FindOffered(int row, int col, const SInput& input, CComboItems& items, const SComboItem*& item) const {
  const EEditor editor = GetCellEditClass(row, col);
  if (editor != EEditor::Choice && editor != EEditor::Object) return true;
  items = Items(row, col);
  item = FindItem(items, editor, input);
  return item != nullptr;
}

bool CEditGrid::Fits(int row, int col, const SInput& input) const {
  if (!IsValid(row, col) || GetCellEditClass(row, col) == EEditor::None || !m_owner) return false;
  CComboItems items;
  const SComboItem* item = nullptr;
  return FindOffered(row, col, input, items, item) && m_owner->CellFits(row, col, input, item);
}

bool CEditGrid::Enter(int row, int col, const SInput& input, CString& why) {
  if (!IsValid(row, col) || !IsPresent(row)) {
    why = TextOf(Text::NoSuchCell, CStringArray{IntText(row), IntText(col)});
    return false;
  }
  const EEditor editor = GetCellEditClass(row, col);
  if (editor == EEditor::None || !IsCellEnabled(row, col)) {
    why = TextOf(Text::CellNotEditable, CStringArray{IntText(row), Column(col).title});
    return false;
  }
  CComboItems items;
  const SComboItem* item = nullptr;
  if (!FindOffered(row, col, input, items, item)) {
    why = TextOf(Text::CellDoesNotOffer, CStringArray{IntText(row), Column(col).title});
    return false;
  }
  const bool taken = !m_owner || m_owner->CellEntered(row, col, input, item, why);
  if (taken) {
    SetCellModified(row, col, true);
    SendEditChangeMessage(row, col);
  }
  return taken;
}

CValue CEditGrid::OuterValue(int row, int col) const {
  const SCell& cell = Cell(row, col);
  switch (cell.editor) {
    case EEditor::Boolean: return cell.value != 0;
    case EEditor::Length: return cell.hasValue ? CValue(cell.value) : CValue();
    case EEditor::Integer:
    case EEditor::Choice: return cell.value;
    case EEditor::Object: return cell.value ? CValue(cell.text) : CValue();
    case EEditor::Colour: return ColourText(CColour{static_cast<std::uint32_t>(cell.value)});
    default: return cell.text;
  }
}
