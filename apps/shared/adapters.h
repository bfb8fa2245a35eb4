// What every program of this project installs at its start.
#pragma once
#include <functional>

#include "model/base/text.h"

/// Gives the program the disk: design files, text files, and the settings in `settingsFolder` (empty: the user's own;
/// where the environment names none, settings live as long as the program). `trouble` hears of settings that cannot be
/// read or kept.
void InstallAdapters(const CString& settingsFolder, std::function<void(const CString& text)> trouble);
