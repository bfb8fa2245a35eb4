#include "model/design/colours.h"

#include "model/design/fieldtypes.h"

namespace {
constexpr CField kColoursFields[] = {
    Field<&SDesignColoursFields::visible>("visible", Text::VisibleItems),
    Field<&SDesignColoursFields::allVisible>("allVisible", Text::AllVisible),
    Field<&SDesignColoursFields::allTrueWidth>("allTrueWidth", Text::AllTrueWidth),
    Field<&SDesignColoursFields::background>("background", Text::Background),
};
}  // namespace

TECHSHEET_DEFINE_SINGLE(CDesignColours, Text::DesignColours, kColoursFields)

bool CDesignColours::GetVisible(int item) const {
  return item >= 0 && static_cast<std::size_t>(item) < CItemFlags().size() &&
         Values().visible[static_cast<std::size_t>(item)];
}

void CDesignColours::SetVisible(int item, bool visible) {
  if (item < 0 || static_cast<std::size_t>(item) >= CItemFlags().size()) return;
  CItemFlags flags = Values().visible;
  flags[static_cast<std::size_t>(item)] = visible;
  SetView(&Fields::visible, flags);
}
