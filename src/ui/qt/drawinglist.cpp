#include "ui/qt/drawinglist.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

#include "ui/qt/drawingbuilder.h"

namespace {
constexpr int kMostCells = 256;      // in each direction
constexpr int kItemsPerCell = 4;     // about
constexpr std::int64_t kLarge = 64;  // cells

bool Touch(const CBox& a, const CBox& b) {
  return a.left <= b.right && b.left <= a.right && a.bottom <= b.top && b.bottom <= a.top;
}
}  // namespace

CDrawingList::CDrawingList(const CDesign& design) {
  CDrawingBuilder(design, *this).Build();
  Sort();
  BuildCells();
}

void CDrawingList::Sort() {
  // Within a plane everything has one colour, so what is painted alike may stand together.
  const auto key = [this](const SDrawn& drawn) {
    return std::tuple(drawn.plane, drawn.type, drawn.type == EDrawn::Line ? m_lines[drawn.at].width : 0, drawn.at);
  };
  std::sort(m_items.begin(), m_items.end(), [&](const SDrawn& a, const SDrawn& b) { return key(a) < key(b); });
  for (std::uint32_t i = 0; i < m_items.size(); ++i) {
    SPlane& plane = m_planes[m_items[i].plane];
    if (plane.end == 0) plane.begin = i;
    plane.end = i + 1;
    m_extents.Include(m_items[i].box);
  }
}

CBox CDrawingList::Shown() const {
  CBox board;
  bool isBoard = false;
  const auto isBeside = [](const SDrawn& drawn) {
    return drawn.type == EDrawn::Text || drawn.item->IsKindOf(CShapeItem::GetThisClass());
  };
  for (const SDrawn& drawn : m_items) {
    isBoard = drawn.item->Technology()->IsKindOf(CPcbDesign::GetThisClass());
    if (!isBeside(drawn)) board.Include(drawn.box);
  }
  if (!isBoard || board.IsEmpty()) return m_extents;
  CBox shown = board;
  for (const SDrawn& drawn : m_items)
    if (isBeside(drawn) && Touch(drawn.box, board)) shown.Include(drawn.box);
  return shown;
}

std::map<const CDesignItem*, double> CDrawingList::SizesOf(std::vector<const CDesignItem*> items) const {
  struct SParts {
    CBox box;
    double strokes = 0;  // of a single line
    int count = 0;
  };
  std::map<const CDesignItem*, SParts> parts;
  for (const CDesignItem* const item : items) parts.try_emplace(item);
  for (const SDrawn& drawn : m_items) {
    const auto at = parts.find(drawn.item);
    if (at == parts.end()) continue;
    at->second.box.Include(drawn.box);
    ++at->second.count;
    if (drawn.type != EDrawn::Line) continue;
    const SDrawnLine& line = Line(drawn);
    at->second.strokes = (std::hypot(double(line.to.x) - line.from.x, double(line.to.y) - line.from.y) + line.width) *
                         std::max(line.width, 1);
  }
  std::map<const CDesignItem*, double> sizes;
  for (const auto& [item, part] : parts) {
    const bool isLine = part.count == 1 && part.strokes > 0;
    const double around = (double(part.box.right) - part.box.left) * (double(part.box.top) - part.box.bottom);
    sizes.emplace(item, isLine ? part.strokes : around);
  }
  return sizes;
}

CDrawingList::SSpan CDrawingList::CellsOf(const CBox& box) const {
  const auto column = [&](int x) {
    return static_cast<int>(std::clamp((double(x) - m_extents.left) / m_cellWidth, 0.0, m_columns - 1.0));
  };
  const auto row = [&](int y) {
    return static_cast<int>(std::clamp((double(y) - m_extents.bottom) / m_cellHeight, 0.0, m_rows - 1.0));
  };
  return {column(box.left), row(box.bottom), column(box.right), row(box.top)};
}

void CDrawingList::BuildCells() {
  m_seen.assign(m_items.size(), 0);
  const double side = std::sqrt(double(m_items.size()) / kItemsPerCell);
  m_columns = m_rows = std::clamp(static_cast<int>(side), 1, kMostCells);
  m_cellWidth = (double(m_extents.right) - m_extents.left + 1) / m_columns;
  m_cellHeight = (double(m_extents.top) - m_extents.bottom + 1) / m_rows;
  m_cellBegin.assign(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows) + 1, 0);
  const auto forEachCell = [&](const SSpan& span, auto visit) {
    for (int row = span.bottom; row <= span.top; ++row)
      for (int column = span.left; column <= span.right; ++column)
        visit(static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) + static_cast<std::size_t>(column));
  };
  const auto isLarge = [](const SSpan& span) {
    return std::int64_t{span.right - span.left + 1} * (span.top - span.bottom + 1) > kLarge;
  };
  // Counted, then laid out: the items of a cell stand in one run.
  for (std::uint32_t i = 0; i < m_items.size(); ++i) {
    const SSpan span = CellsOf(m_items[i].box);
    if (isLarge(span)) m_large.push_back(i);
    else forEachCell(span, [&](std::size_t cell) { ++m_cellBegin[cell + 1]; });
  }
  std::partial_sum(m_cellBegin.begin(), m_cellBegin.end(), m_cellBegin.begin());
  m_cellItems.resize(m_cellBegin.back());
  std::vector<std::uint32_t> next(m_cellBegin.begin(), m_cellBegin.end() - 1);
  for (std::uint32_t i = 0; i < m_items.size(); ++i) {
    const SSpan span = CellsOf(m_items[i].box);
    if (!isLarge(span)) forEachCell(span, [&](std::size_t cell) { m_cellItems[next[cell]++] = i; });
  }
}

void CDrawingList::Find(const CBox& box, std::vector<std::uint32_t>& found) const {
  found.clear();
  if (m_items.empty() || box.IsEmpty() || !Touch(box, m_extents)) return;
  if (box.left <= m_extents.left && box.bottom <= m_extents.bottom && box.right >= m_extents.right &&
      box.top >= m_extents.top) {
    found.resize(m_items.size());
    std::iota(found.begin(), found.end(), 0u);
    return;
  }
  if (++m_search == 0) {  // the numbers of searches have run out
    std::fill(m_seen.begin(), m_seen.end(), 0);
    m_search = 1;
  }
  const auto take = [&](std::uint32_t i) {
    if (m_seen[i] == m_search) return;
    m_seen[i] = m_search;
    if (Touch(m_items[i].box, box)) found.push_back(i);
  };
  std::for_each(m_large.begin(), m_large.end(), take);
  const SSpan span = CellsOf(box);
  for (int row = span.bottom; row <= span.top; ++row) {
    const std::size_t first = static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns);
    const std::uint32_t begin = m_cellBegin[first + static_cast<std::size_t>(span.left)];
    const std::uint32_t end = m_cellBegin[first + static_cast<std::size_t>(span.right) + 1];
    for (std::uint32_t i = begin; i < end; ++i) take(m_cellItems[i]);
  }
  std::sort(found.begin(), found.end());
}
