#include "cli/texttable.h"

#include <algorithm>
#include <iterator>

namespace {
struct SRange {
  char32_t first, last;
  std::size_t width;
};
/// Characters that do not take one column, sorted.
constexpr SRange kRanges[] = {
    {0x0300, 0x036F, 0},   {0x0483, 0x0489, 0},   {0x0591, 0x05BD, 0},   {0x0610, 0x061A, 0},   {0x064B, 0x065F, 0},
    {0x1100, 0x115F, 2},   {0x1AB0, 0x1AFF, 0},   {0x1DC0, 0x1DFF, 0},   {0x200B, 0x200F, 0},   {0x202A, 0x202E, 0},
    {0x2060, 0x2064, 0},   {0x20D0, 0x20FF, 0},   {0x2E80, 0x303E, 2},   {0x3041, 0x3098, 2},   {0x3099, 0x309A, 0},
    {0x309B, 0x33FF, 2},   {0x3400, 0x4DBF, 2},   {0x4E00, 0x9FFF, 2},   {0xA000, 0xA4CF, 2},   {0xAC00, 0xD7A3, 2},
    {0xF900, 0xFAFF, 2},   {0xFE00, 0xFE0F, 0},   {0xFE20, 0xFE2F, 0},   {0xFE30, 0xFE6F, 2},   {0xFEFF, 0xFEFF, 0},
    {0xFF01, 0xFF60, 2},   {0xFFE0, 0xFFE6, 2},   {0x1F300, 0x1F64F, 2}, {0x1F680, 0x1F6FF, 2}, {0x1F900, 0x1F9FF, 2},
    {0x20000, 0x3FFFD, 2}, {0xE0100, 0xE01EF, 0},
};

/// Takes the first character off `text`, which is not empty, and tells its columns.
std::size_t TakeCharacter(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t size = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  char32_t code = size == 1 ? lead : lead & (0xFFu >> (size + 1));
  for (std::size_t i = 1; i < size && i < text.size(); ++i)
    code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3Fu);
  text.remove_prefix(std::min(size, text.size()));
  const auto* const range = std::lower_bound(std::begin(kRanges), std::end(kRanges), code,
                                             [](const SRange& one, char32_t wanted) { return one.last < wanted; });
  return range != std::end(kRanges) && range->first <= code ? range->width : 1;
}

CString Cut(const CString& cell) {
  if (DisplayWidth(cell) <= CTextTable::kShortCellWidth) return cell;
  std::string_view rest = cell;
  std::size_t kept = 0;
  for (std::size_t width = 0; (width += TakeCharacter(rest)) < CTextTable::kShortCellWidth;)
    kept = cell.size() - rest.size();
  return cell.substr(0, kept) + "…";
}
}  // namespace

std::size_t DisplayWidth(std::string_view text) {
  std::size_t width = 0;
  while (!text.empty()) width += TakeCharacter(text);
  return width;
}

void CTextTable::AddRow(CStringArray cells) {
  for (CString& cell : cells) {
    cell = VisibleText(cell, true);
    if (m_cells == ECells::Short) cell = Cut(cell);
  }
  m_rows.push_back(std::move(cells));
}

CString CTextTable::Text(std::size_t indent) const {
  CStringArray headers;
  std::vector<std::size_t> widths;
  for (const SColumn& column : m_columns) {
    headers.push_back(column.header);
    widths.push_back(DisplayWidth(column.header));
  }
  for (const CStringArray& row : m_rows)
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], DisplayWidth(row[i]));

  CString text;
  const auto add = [&](const CStringArray& row) {
    text.append(indent, ' ');
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::size_t padding = widths[i] - DisplayWidth(row[i]);
      if (i > 0) text += "  ";
      if (m_columns[i].isNumber) text.append(padding, ' ');
      text += row[i];
      if (!m_columns[i].isNumber) text.append(padding, ' ');
    }
    text.erase(text.find_last_not_of(' ') + 1);
    text += '\n';
  };
  if (std::any_of(headers.begin(), headers.end(), [](const CString& header) { return !header.empty(); })) add(headers);
  for (const CStringArray& row : m_rows) add(row);
  return text;
}
