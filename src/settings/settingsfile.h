// The text of the settings file: JSON, one value a line, keys and names in the order of their bytes.
#pragma once
#include <map>
#include <optional>

#include "model/base/result.h"
#include "model/services/registry.h"

using CSettingValues = std::map<CString, std::map<CString, CSettingValue>>;  // by key and name

CString SettingsText(const CSettingValues& values);
/// Reads what SettingsText writes, in any layout; no values for a text of a newer version. The failure says how the
/// text is damaged.
CResult<std::optional<CSettingValues>> ReadSettingsText(const CString& text);
