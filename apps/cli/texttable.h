// Tables for terminals and text files.
#pragma once
#include <vector>

#include "model/base/text.h"

/// How many columns of a terminal a valid UTF-8 text takes: combining characters none, wide ones two.
std::size_t DisplayWidth(std::string_view text);

/// The text on one line that no terminal takes for commands: control characters become visible ones.
CString OneLine(std::string_view text);

/// Rows of cells, aligned in columns; the first row is the header. Numbers stand to the right. A cell wider than
/// kMaxCellWidth is cut, with an ellipsis.
class CTextTable {
 public:
  static constexpr std::size_t kMaxCellWidth = 40;
  struct SColumn {
    CString header;
    bool isNumber = false;
  };
  explicit CTextTable(std::vector<SColumn> columns) : m_columns(std::move(columns)) {}
  void AddRow(CStringArray cells);
  /// Every line begins with `indent` blanks; the header is missing when all headers are empty.
  CString Text(std::size_t indent) const;

 private:
  std::vector<SColumn> m_columns;
  std::vector<CStringArray> m_rows;
};
