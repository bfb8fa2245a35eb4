#include "ui/qt/gridcolumns.h"

#include <QHeaderView>
#include <QMenu>
#include <algorithm>

#include "model/services/registry.h"
#include "ui/qt/text.h"

namespace {
constexpr const char* kValue = "View";
constexpr int kLeastWidth = 16;  // pixels
constexpr int kMostWidth = 10'000;
}  // namespace

CGridColumns::CGridColumns(CGridModel& model, CGridTable& table) : m_model(model), m_table(table) {
  QHeaderView* const header = table.horizontalHeader();
  header->setSectionsMovable(true);
  header->setSectionsClickable(true);
  header->setHighlightSections(false);
  header->setMinimumSectionSize(kLeastWidth);
  // A title that is wider than its column goes on in a second line.
  constexpr int kPadding = 12;  // pixels beside a title
  const QFontMetrics metrics = header->fontMetrics();
  for (int col = 0; col < model.columnCount(); ++col) {
    const QString title = model.headerData(col, Qt::Horizontal).toString();
    if (metrics.horizontalAdvance(title) + kPadding <= model.Grid().Column(col).usualWidth) continue;
    header->setDefaultAlignment(Qt::AlignCenter | static_cast<Qt::Alignment>(Qt::TextWordWrap));
    header->setMinimumHeight(2 * metrics.lineSpacing() + kPadding / 2);
  }
  Load();
  connect(header, &QHeaderView::sectionMoved, this, [this] { m_changed = true; });
  connect(header, &QHeaderView::sectionResized, this, [this](int col, int, int width) {
    if (width == 0) return;  // hidden
    m_model.Grid().Column(col).width = width;
    m_changed = true;
  });
}

/// "2:160,0:20,1:140-": the columns from left to right with their widths, hidden ones marked.
bool CGridColumns::Read(std::string_view text, int count, std::vector<SColumn>& columns) {
  std::vector<SColumn> read;
  std::vector<bool> isKnown(static_cast<std::size_t>(count));
  for (bool more = true; more;) {
    const std::size_t comma = text.find(',');
    std::string_view part = text.substr(0, comma);
    more = comma != std::string_view::npos;
    if (more) text.remove_prefix(comma + 1);
    const bool isHidden = part.ends_with('-');
    if (isHidden) part.remove_suffix(1);
    const std::size_t colon = part.find(':');
    std::int64_t col = 0;
    std::int64_t width = 0;
    if (colon == std::string_view::npos || !ParseInt(part.substr(0, colon), col) ||
        !ParseInt(part.substr(colon + 1), width))
      return false;
    if (col < 0 || col >= count || width < kLeastWidth || width > kMostWidth) return false;
    if (isKnown[static_cast<std::size_t>(col)]) return false;
    isKnown[static_cast<std::size_t>(col)] = true;
    read.push_back({static_cast<int>(col), static_cast<int>(width), isHidden});
  }
  const bool isShown = std::any_of(read.begin(), read.end(), [](const SColumn& one) { return !one.isHidden; });
  if (!isShown || static_cast<int>(read.size()) != count) return false;
  columns = std::move(read);
  return true;
}

CString CGridColumns::Write() const {
  const QHeaderView& header = *m_table.horizontalHeader();
  CString text;
  for (int place = 0; place < header.count(); ++place) {
    const int col = header.logicalIndex(place);
    if (place > 0) text += ',';
    AppendInt(text, col);
    text += ':';
    AppendInt(text, std::clamp(m_model.Grid().Column(col).width, kLeastWidth, kMostWidth));
    if (header.isSectionHidden(col)) text += '-';
  }
  return text;
}

void CGridColumns::Apply(const std::vector<SColumn>& columns) {
  QHeaderView& header = *m_table.horizontalHeader();
  for (std::size_t place = 0; place < columns.size(); ++place) {
    const SColumn& column = columns[place];
    header.moveSection(header.visualIndex(column.col), static_cast<int>(place));
    header.setSectionHidden(column.col, column.isHidden);
    m_model.Grid().Column(column.col).width = column.width;
    if (!column.isHidden) header.resizeSection(column.col, column.width);
  }
}

void CGridColumns::Load() {
  CEditGrid& grid = m_model.Grid();
  std::vector<SColumn> columns;
  for (int col = 0; col < grid.GetColumnCount(); ++col) columns.push_back({col, grid.Column(col).width, false});
  CString text;
  if (!grid.GetRegistryKey().empty() && CAppRegistry(grid.GetRegistryKey()).GetValue(kValue, text))
    Read(text, grid.GetColumnCount(), columns);
  Apply(columns);
  m_changed = false;
}

void CGridColumns::Save() {
  const CString& key = m_model.Grid().GetRegistryKey();
  if (m_changed && !key.empty()) CAppRegistry(key).SetValue(kValue, Write());
  m_changed = false;
}

void CGridColumns::Reset() {
  std::vector<SColumn> columns;
  for (int col = 0; col < m_model.Grid().GetColumnCount(); ++col)
    columns.push_back({col, m_model.Grid().Column(col).usualWidth, false});
  Apply(columns);
  m_changed = true;
}

void CGridColumns::Show(int col) {
  if (!m_table.isColumnHidden(col)) return;
  m_table.showColumn(col);
  m_table.setColumnWidth(col, m_model.Grid().Column(col).width);
  m_changed = true;
}

void CGridColumns::FillMenu(QMenu& menu) {
  const std::vector<int> shown = m_table.ShownColumns();
  for (int col = 0; col < m_model.columnCount(); ++col) {
    QAction* const action = menu.addAction(m_model.ColumnName(col).replace(u'&', QStringLiteral("&&")));
    action->setCheckable(true);
    action->setChecked(!m_table.isColumnHidden(col));
    action->setEnabled(shown.size() > 1 || !action->isChecked());
    connect(action, &QAction::toggled, this, [this, col](bool isShown) {
      if (isShown) return Show(col);
      m_table.hideColumn(col);
      m_changed = true;
    });
  }
  menu.addSeparator();
  connect(menu.addAction(QtText(Text::ResetColumns)), &QAction::triggered, this, [this] { Reset(); });
}
