// The commands that change how designs are shown, and the list of recent files.
#include "commands/commands.h"
#include "model/services/evt.h"
#include "model/services/registry.h"

namespace {
constexpr const char* kPreferencesKey = "Preferences";
constexpr const char* kRecentFiles = "MRU";

struct SCursorStyle {
  int style = 0;
  CTextId label;
};
/// In the order in which the command goes through them.
constexpr SCursorStyle kCursors[] = {{0, Text::SmallCross},
                                     {1, Text::FullScreenCross},
                                     {2, Text::DiagonalCross},
                                     {3, Text::SmallDiagonalCross},
                                     {-1, {}}};

template <class Change>
void ForEachBoardLayer(CDesign& design, Change change) {
  for (CLayer& layer : design.layers)
    if (layer.GetUsage() != ELayerUsage::All) change(layer);
}
}  // namespace

int GetMaxMRUCount() {
  constexpr int kWhenAbsent = 10;
  int count = kWhenAbsent;
  CAppRegistry(kPreferencesKey).GetValue(kRecentFiles, count);
  return count;
}

void SetMaxMRUCount(int count) { CAppRegistry(kPreferencesKey).SetValue(kRecentFiles, count); }

void SetAllDisplayed(bool displayed, CDesignDrawing* drawing) {
  const CCommandScope scope(drawing->GetDocument(), "SetAllDisplayed");
  drawing->GetDocument()->Colours().SetAllVisible(displayed);
  ForEachBoardLayer(*drawing->GetDocument(), [=](CLayer& layer) { layer.SetDisplayed(displayed); });
}

void SetAllTrueWidth(bool trueWidth, CDesignDrawing* drawing) {
  const CCommandScope scope(drawing->GetDocument(), "SetAllTrueWidth");
  drawing->GetDocument()->Colours().SetAllTrueWidth(trueWidth);
  ForEachBoardLayer(*drawing->GetDocument(), [=](CLayer& layer) { layer.SetTrueWidth(trueWidth); });
}

void ChangeCursor() {
  const SCursorStyle* next = kCursors;  // an unknown style starts again
  for (const SCursorStyle* at = kCursors; at->style >= 0; ++at)
    if (at->style == CDesignDrawing::GetCursor() && at[1].style >= 0) next = at + 1;
  CDesignDrawing::SetCursor(next->style);
  CEvt::Send("View.RegistryChanged", 0, 0);
}

void ChooseGrid(int index, CDesignDrawing* drawing) {
  CDesign* const design = drawing->GetDocument();
  const CCommandScope scope(design, "ChooseGrid");
  POSITION position = nullptr;
  CGrid* grid = index < 0 ? nullptr : design->FirstGrid(position);
  for (; grid && index > 0; --index) grid = design->NextGrid(position);
  if (grid && design->MakeCurrentGrid(grid)) CEvt::Send("DesignColoursChanged", 0, 0);
}

void ToggleGridsVisible(CDesign* design) {
  const CCommandScope scope(design, "ToggleGridsVisible");
  CDesignColours& colours = design->Colours();
  colours.SetVisible(CDesignColours::kGridItem, !colours.GetVisible(CDesignColours::kGridItem));
}
