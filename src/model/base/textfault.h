// Why a text could not be read, and where.
//
// Readers throw a fault where the text stops making sense; the exported functions catch it, and nothing
// of a broken text is kept.
#pragma once
#include "model/base/text.h"

struct STextFault {
  std::size_t at;  // bytes from the start of the text
  CString reason;
};

/// A place as editors show it: both count from 1, columns are characters.
struct STextPlace {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// The place of a byte of `text`. Lines end with LF, CR LF or CR; `at` past the end means the end.
STextPlace PlaceIn(std::string_view text, std::size_t at);

/// Throws a fault when `text` is not text at all: a NUL or another control character than tab, CR and LF, or bytes that
/// are no UTF-8.
void RequireText(std::string_view text);

/// "FILE:LINE:COLUMN: REASON.", the form of every reader.
CString FaultText(const CString& file, STextPlace place, const CString& reason);

/// `text` in quotation marks, cut off when it is long, for messages.
CString Quoted(std::string_view text);
