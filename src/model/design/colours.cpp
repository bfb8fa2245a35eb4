#include "model/design/colours.h"

#include "model/design/fieldtypes.h"

namespace {
constexpr CField kColoursFields[] = {
    Field<&SDesignColoursFields::visible>("visible"),
    Field<&SDesignColoursFields::allVisible>("allVisible"),
    Field<&SDesignColoursFields::allTrueWidth>("allTrueWidth"),
    Field<&SDesignColoursFields::background>("background"),
};
}  // namespace

const CKind& CDesignColours::TheKind() {
  static constexpr CKind kKind{"CDesignColours", 20163, kColoursFields, nullptr, nullptr};
  return kKind;
}
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
