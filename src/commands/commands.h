// The functions that the host application calls, one for each command of its menus and toolbars.
//
// A command that opens a dialog brackets it in an undo level of its design, so that everything the dialog changed is
// one step for the user. The identifier of the level is also that of the dialog's caption. No command keeps state
// between calls, and nothing is thrown.
#pragma once
#include "model/design/drawing.h"

inline constexpr CTextId kTechnologyLevel = Text::Technology;

// ---- The technology dialog, opened on a page

void ChangeLayers(CDesign* design);
void ChangeLayerTypes(CDesign* design);  // opens on the Layers page, where types are assigned
void ChangeLayerSpans(CDesign* design);
void ChangeNetClasses(CDesign* design);
/// Without a default net class an error is reported, and no level is opened.
void ChangeNets(CDesign* design);
void ChangeSpacings(CDesign* design);
void ChangeWireLinkLengths(CDesign* design);
void ChangePadStyles(CDesign* design);
void ChangeTrackStyles(CDesign* design);
void ChangeTextStyles(CDesign* design);
/// Opens on the page that was last shown.
void ChangeSizes(CDesign* design);

// ---- Dialogs of their own

/// The two units of the design.
void ChangeUnits(CDesign* design);

// ---- Without a dialog

/// Whether the properties of the selection can be shown.
bool PropertiesEnabled(CDesign* design);
/// The length of the list of recent files: 10 unless one is stored; a stored value is returned as it is.
int GetMaxMRUCount();
void SetMaxMRUCount(int count);
/// Shows or hides all layers save the built-in one.
void SetAllDisplayed(bool displayed, CDesignDrawing* drawing);
void SetAllTrueWidth(bool trueWidth, CDesignDrawing* drawing);
/// Goes on to the next cursor style.
void ChangeCursor();
/// Makes the grid at `index`, counted from 0, the working grid; an index past the end does nothing.
void ChooseGrid(int index, CDesignDrawing* drawing);
void ToggleGridsVisible(CDesign* design);

// ---- Called once at start; calling again overwrites the same registration

/// Steps of colours, grids, ruler stops and units do not mark a design as changed.
void Set_RegisterIgnoreDesignChange();
/// Forces the preferences of the Brenlo edition.
void SetBrenloHardwiredPrefs();
/// Hands the callbacks below to the host.
void InitSetOpInterface();

class CListBox;

/// The host's table of design operations. A callback that this module does not offer is null.
class CSetOp {
 public:
  using ManageLibrary = bool (*)(CSymbolLibrary*, int);
  using ChangeItemValues = void (*)(CDesign*, CDesignItem*);
  using CanShowProperties = bool (*)(CDesign*);
  using EditNamePair = bool (*)(CDesign*, CString& first, CString& second, bool isNew, CListBox* list);
  using ChangeColoursOfComponents = bool (*)(CDesign*);

  struct SFunctions {
    ManageLibrary technologyManager = nullptr;
    ChangeItemValues changeValues = nullptr;
    CanShowProperties propertiesEnabled = nullptr;
    EditNamePair editNamePair = nullptr;
    ChangeColoursOfComponents changeComponentColours = nullptr;
  };
  static void InitSetOpFunctions(ManageLibrary technologyManager, ChangeItemValues changeValues,
                                 CanShowProperties propertiesEnabled, EditNamePair editNamePair,
                                 ChangeColoursOfComponents changeComponentColours);
  static const SFunctions& Functions();
};
