#include "model/design/drawing.h"

#include "model/services/registry.h"
#include "model/services/userinterface.h"

namespace {
constexpr const char* kViewKey = "Settings\\View";
}

int CDesignDrawing::GetCursor() {
  int style = 0;
  CAppRegistry(kViewKey).GetValue("Cursor", style);
  return style;
}

void CDesignDrawing::SetCursor(int style) { CAppRegistry(kViewKey).SetValue("Cursor", style); }

void InvalidateDesignRect(const CDesign* design, const CBox* box) { UserInterface().Redraw(*design, box); }
