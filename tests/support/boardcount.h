// What stands in a board of another tool, counted over the text of its files by other means than the import's.
#pragma once
#include <map>

#include "model/base/text.h"

using BoardCounts = std::map<CString, std::size_t>;

/// How many there are of "layers", "nets", "components", "pad styles" and so on, each style once; what there is none of
/// is absent. `project` is the text of the project file beside the board, or empty.
BoardCounts CountBoard(const CString& boardText, const CString& project);
