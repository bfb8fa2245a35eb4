// The text of the settings file: JSON, one value a line, keys and names in the order of their bytes.
#pragma once
#include <map>

#include "model/services/registry.h"

using CSettingValues = std::map<CString, std::map<CString, CSettingValue>>;  // by key and name

enum class ESettingsFile { Good, Damaged, Newer };

CString SettingsText(const CSettingValues& values);
/// Reads what SettingsText writes, in any layout. Unless Good, `values` is untouched; when Damaged, `reason` says why.
ESettingsFile ReadSettingsText(const CString& text, CSettingValues& values, CString& reason);
