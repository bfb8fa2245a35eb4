// The disk as the desktop sees it.
#pragma once
#include "ui/qt/desktopfiles.h"

/// Design files, boards, and the manual: beside the program in `programFolder`, in the folder of documents that belongs
/// to it, or in the source tree that it was built in.
SDesktopFiles DesktopFiles(const CString& programFolder);
