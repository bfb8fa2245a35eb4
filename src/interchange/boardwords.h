// What the words of board and project files mean that no design has a place for.
//
// A setting is told in plain words with its value, an item is counted by its kind; every other word is none of the
// board's settings (a view, an identifier, what the other tool remembers) and counted by itself. Where a file writes
// out what holds anyway, nothing is lost and nothing told.
#pragma once
#include "interchange/importsummary.h"
#include "interchange/json.h"
#include "interchange/sexpression.h"

/// Tells that `value`, a word or list of `owner` ("setup", "footprint", "" for the board), is left out.
void LeaveOut(CImportSummary& summary, std::string_view owner, CSNode value);
/// The same for a member of the object `owner` ("rules") of a project file.
void LeaveOut(CImportSummary& summary, std::string_view owner, const SJson& value);
