// Standard error and signals, the same for every program.
#pragma once
#include "model/base/text.h"

/// What would end the program in the middle of a file shows as an error of writing instead: a reader that went away, a
/// file that may not grow any more.
void IgnoreSignalsOfWriting();

/// Writes lines to standard error. Nothing in them reaches a terminal as a command.
void TellOnStandardError(std::string_view text);
