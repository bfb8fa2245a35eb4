// Boards of another tool (.kicad_pcb, formats 4 to 9, newer ones as far as they are like those) read into a design.
//
// Layers come with the names users gave them, in the order of the stack; rules from the board or from the project file
// (.kicad_pro) beside it; styles and spans from what is in use. Lengths are read exactly. What a design cannot hold is
// counted and named, and names that cannot stand in a design are mended.
#pragma once
#include <memory>

#include "interchange/importsummary.h"
#include "model/base/result.h"
#include "model/base/textfault.h"
#include "model/design/design.h"

struct SImportError {
  CString file;
  STextPlace place{0, 0};  // line 0: the fault lies in no single place
  CString reason;

  /// "board.kicad_pcb:7:3: ..."
  CString Text() const;
};

struct SImportedBoard {
  std::unique_ptr<CPcbDesign> design;
  CImportSummary summary;
};

/// Reads a board from its text alone, which errors call `name`.
CResult<SImportedBoard, SImportError> ImportBoardText(const CString& text, const CString& name);

/// Reads the board `path` and the project file beside it, if there is one. Progress goes to the user interface. Fails
/// when one of the files cannot be read, is no board, is broken or holds values that do not fit a design.
CResult<SImportedBoard, SImportError> ImportBoard(const CString& path);
