// Preferences of the host application that belong to no design. They live as long as the process.
#pragma once
#include <array>

/// A value for schematics (context 0) and one for PCB designs (context 1).
template <class T>
using CByContext = std::array<T, 2>;

struct SHostSettings {
  bool componentEditGrid = false;
  std::array<int, 4> copySettings{};
  bool headupDisplayVisible = true;
  CByContext<bool> singleClickFinish{};
  CByContext<bool> editSegMoveCursor{true, true};
  CByContext<bool> editTowardsNearest{true, true};
  bool deleteAllGates = true;
  CByContext<bool> onlySelectIfCompletelyFramed{true, true};
  CByContext<bool> selectFramedRightToLeft{true, true};
  bool addConDisplaysCompNetNames = true;
  int placementPushAside = 0;
};
/// All of them, for those who read; the setters below are how commands write.
SHostSettings& HostSettings();

void SetComponentEditGrid(bool enabled);
/// `index` 0 to 3; another index changes nothing.
void SetCopySetting(int index, int value);
void SetHeadupDisplayVisible(bool visible);
// `context` is 0 for schematics and 1 for PCB designs; another one changes nothing.
void SetSingleClickFinish(int context, bool enabled);
void SetEditSegMoveCursor(int context, bool enabled);
void SetEditTowardsNearest(int context, bool enabled);
void SetDeleteAllGates(bool enabled);
void SetOnlySelectIfCompletelyFramed(int context, bool enabled);
void SetSelectFramedRightToLeft(int context, bool enabled);
void SetAddConDisplaysCompNetNames(bool enabled);
void SetPlacementPushAside(int value);

/// The design rule check that runs while one edits.
class COnlineDRC {
 public:
  static bool GetEnabled();
  static void SetEnabled(bool enabled);
  static bool GetNeckTracks();
  static void SetNeckTracks(bool enabled);
};

/// Whether further instances of the application may run.
class CAppInstance {
 public:
  static bool GetEnabled();
  static void SetEnabled(bool enabled);
};
