// The columns of the Pad styles page: of styles and of their exceptions, in the grid, in the forms and in files.
#pragma once
#include "technology/columns.h"

class CDesign;

/// Whether pads are more than marks: on boards and footprints.
bool HasPads(const CDesign& design);
bool HasExceptions(const CDesign& design);
bool HasThermal(const CDesign& design);

std::vector<CColumn> PadColumns(const CDesign& design);
std::vector<CColumn> PadFormColumns(const CDesign& design);
/// A round drill stands in one field, a slot in five others; without a drill all are empty.
std::vector<CColumn> PadFileColumns(const CDesign& design);
std::vector<CColumn> ExceptionColumns(const CDesign& design);
std::vector<CColumn> ExceptionFileColumns();
/// Fields of a file: that which only exceptions have, and those of a drill and of a slot.
inline constexpr int kPadLayerInFile = 1;
inline constexpr std::size_t kDrillInFile = 6, kSlotInFile = 8, kSlotWidthInFile = 9, kSlotLengthInFile = 10;
