#include "model/base/catalogue.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>

namespace {
constexpr unsigned kIds[] = {
#define TECHSHEET_TEXT(Name, number) number,
#include "model/base/textids.def"
#undef TECHSHEET_TEXT
};
constexpr std::string_view kTexts[] = {
// %1 to %9 stand for the values
#define TECHSHEET_TEXT(Name, text) text,
#include "model/base/texts.def"
#undef TECHSHEET_TEXT
};

constexpr std::string_view kNamesOfIds[] = {
#define TECHSHEET_TEXT(Name, number) #Name,
#include "model/base/textids.def"
#undef TECHSHEET_TEXT
};
constexpr std::string_view kNamesOfTexts[] = {
#define TECHSHEET_TEXT(Name, text) #Name,
#include "model/base/texts.def"
#undef TECHSHEET_TEXT
};
static_assert(std::ranges::equal(kNamesOfIds, kNamesOfTexts), "textids.def and texts.def have the same names in order");
static_assert(std::ranges::adjacent_find(kIds, std::greater_equal()) == std::end(kIds),
              "textids.def is sorted by number, each once");

/// The place of each identifier among the texts, plus 1; 0 for a number that is none. Grids ask for a text per cell.
constexpr auto kPlaces = [] {
  std::array<std::uint16_t, *std::ranges::rbegin(kIds) + 1> places{};
  for (std::size_t i = 0; i < std::size(kIds); ++i) places[kIds[i]] = static_cast<std::uint16_t>(i + 1);
  return places;
}();
}  // namespace

CString TextOf(CTextId id, std::span<const CString> args) {
  if (id == 0) return {};
  const unsigned place = id < kPlaces.size() ? kPlaces[id] : 0;
  return place > 0 ? FormatText(kTexts[place - 1], args) : "#" + IntText(id);
}
