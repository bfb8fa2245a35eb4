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
/// The field of a file that only exceptions have.
inline constexpr int kPadLayerInFile = 1;
