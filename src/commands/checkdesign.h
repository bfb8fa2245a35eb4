// The checks of the technology dialog over a design as it stands, without the dialog.
#pragma once
#include <vector>

#include "model/design/design.h"

struct SDesignCheck {
  struct SFinding {
    CString page;  // the title of the page that found it, or the name of the design's own check
    CString text;
  };
  std::vector<SFinding> violations;  // what Apply would refuse
  std::vector<SFinding> warnings;    // what Apply would ask or say, and then go on
};

/// Every check of every page that the design has in the editions that hold, names of all rows included, and of the
/// design as a whole. Nothing is written; nobody is asked.
SDesignCheck CheckDesign(CDesign& design);
