// Which editions hold while a program runs.
#pragma once
#include <functional>
#include <optional>

#include "model/base/result.h"

/// Switches on the editions in `given` ("NAME,NAME..."), as on a command line. Without it those of the setting
/// "Editions" under "Preferences" hold, without that Pellam; a setting that names no editions is told to `trouble` and
/// not used. Fails, with nothing changed, when `given` names none or an unknown one. Call it when settings are
/// installed.
CResult<void> ChooseEditions(const std::optional<CString>& given,
                             const std::function<void(const CString& text)>& trouble);
