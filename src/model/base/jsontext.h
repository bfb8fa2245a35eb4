// JSON written by hand: the one part of it that is easily got wrong.
#pragma once
#include "model/base/text.h"

/// Appends `text`, which must be valid UTF-8, as a JSON string with its quotation marks. Only what must be escaped is.
void AppendJsonText(CString& out, std::string_view text);

/// The same JSON without control characters other than the line ends between its values, for terminals.
CString JsonOfVisibleText(std::string_view json);
