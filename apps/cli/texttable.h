// Tables for terminals and text files.
#pragma once
#include <vector>

#include "model/base/text.h"

/// How many columns of a terminal a valid UTF-8 text takes: combining characters none, wide ones two.
std::size_t DisplayWidth(std::string_view text);

/// Rows of cells, aligned in columns; the first row is the header. Numbers stand to the right. A cell is one line:
/// control characters become visible ones.
class CTextTable {
 public:
  enum class ECells { Whole, Short };
  static constexpr std::size_t kShortCellWidth = 40;
  struct SColumn {
    CString header;
    bool isNumber = false;
  };
  /// Of short cells, those wider than kShortCellWidth are cut, with an ellipsis.
  explicit CTextTable(std::vector<SColumn> columns, ECells cells = ECells::Whole)
      : m_columns(std::move(columns)), m_cells(cells) {}
  void AddRow(CStringArray cells);
  /// Every line begins with `indent` blanks; the header is missing when all headers are empty.
  CString Text(std::size_t indent) const;

 private:
  std::vector<SColumn> m_columns;
  ECells m_cells;
  std::vector<CStringArray> m_rows;
};
