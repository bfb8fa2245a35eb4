// The commands that scripts can call, by the names of their functions.
#pragma once
#include "automation/request.h"
#include "model/base/result.h"
#include "model/design/design.h"

/// The item that a script names: {"kind": "CVia", "index": 0}, counted in the order of that kind's walk, or {"kind":
/// "CFreeText", "name": "..."} where the kind has names.
CResult<CDesignItem*> FindItem(const CDesign& design, const SArgument& named);

/// Calls the command of that name on `technology`, which may be null for commands that work on no design. `args` are
/// its other parameters in order. A failure, with nothing called, when there is no such command or its parameters are
/// others. Returns when the dialogs that the command opens are closed; the result is none for a function that returns
/// nothing.
CResult<CValue> CallCommand(const CString& command, CTechnology* technology, const std::vector<SArgument>& args);
