#include "model/services/hostsettings.h"

#include <cstddef>

namespace {
bool theOnlineDrc = true;
bool theNeckTracks = true;
bool theInstances = true;

template <class Array, class T>
void SetAt(Array& values, int index, T value) {
  if (index >= 0 && static_cast<std::size_t>(index) < values.size()) values[static_cast<std::size_t>(index)] = value;
}
}  // namespace

SHostSettings& HostSettings() {
  static SHostSettings settings;
  return settings;
}

void SetComponentEditGrid(bool enabled) { HostSettings().componentEditGrid = enabled; }
void SetCopySetting(int index, int value) { SetAt(HostSettings().copySettings, index, value); }
void SetHeadupDisplayVisible(bool visible) { HostSettings().headupDisplayVisible = visible; }
void SetSingleClickFinish(int context, bool enabled) { SetAt(HostSettings().singleClickFinish, context, enabled); }
void SetEditSegMoveCursor(int context, bool enabled) { SetAt(HostSettings().editSegMoveCursor, context, enabled); }
void SetEditTowardsNearest(int context, bool enabled) { SetAt(HostSettings().editTowardsNearest, context, enabled); }
void SetDeleteAllGates(bool enabled) { HostSettings().deleteAllGates = enabled; }
void SetOnlySelectIfCompletelyFramed(int context, bool enabled) {
  SetAt(HostSettings().onlySelectIfCompletelyFramed, context, enabled);
}
void SetSelectFramedRightToLeft(int context, bool enabled) {
  SetAt(HostSettings().selectFramedRightToLeft, context, enabled);
}
void SetAddConDisplaysCompNetNames(bool enabled) { HostSettings().addConDisplaysCompNetNames = enabled; }
void SetPlacementPushAside(int value) { HostSettings().placementPushAside = value; }

bool COnlineDRC::GetEnabled() { return theOnlineDrc; }
void COnlineDRC::SetEnabled(bool enabled) { theOnlineDrc = enabled; }
bool COnlineDRC::GetNeckTracks() { return theNeckTracks; }
void COnlineDRC::SetNeckTracks(bool enabled) { theNeckTracks = enabled; }
bool CAppInstance::GetEnabled() { return theInstances; }
void CAppInstance::SetEnabled(bool enabled) { theInstances = enabled; }
