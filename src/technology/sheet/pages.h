// The table of the pages of the technology dialog.
#pragma once
#include <memory>
#include <span>

#include "technology/techpage.h"

struct SSheetPage {
  const CRuntimeClass* (*pageClass)();
  std::unique_ptr<CTechDialogPage> (*make)(CDesign&);
  unsigned full;      // kinds of design that have it in the full editions, a set of the bits below
  unsigned reduced;   // in the reduced editions
  unsigned narrowed;  // in the reduced editions when the dialog was opened for the layers
};

/// Kinds of design as bits.
enum ESheetKinds : unsigned { kProject = 1, kPcb = 2, kScm = 4, kPcbSym = 8, kScmSym = 16, kOtherKind = 32 };
unsigned SheetKindOf(const CDesign& design);

/// In the order of the tabs.
std::span<const SSheetPage> SheetPages();

/// Whether the dialog of this design has the page in the editions that hold; `initialPage` is the page it was opened
/// for, or null.
bool HasPage(const SSheetPage& page, const CDesign& design, const CRuntimeClass* initialPage);
