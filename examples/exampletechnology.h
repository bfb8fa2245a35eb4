// The technology that the example boards and libraries have in common.
#pragma once
#include "model/design/technology.h"

// Places and lengths of drawings in design units.
constexpr int Um(int micrometres) { return micrometres * 1'000; }
constexpr int Mil(int mils) { return mils * 25'400; }
constexpr CPoint At(int xUm, int yUm) { return {Um(xUm), Um(yUm)}; }

/// Adds layers, styles, rules and attributes of a four-layer board to a technology as it is when new.
void AddTechnology(CTechnology& tech);
