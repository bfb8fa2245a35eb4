#include "model/base/catalogue.h"

#include <algorithm>
#include <functional>

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
}  // namespace

CString TextOf(CTextId id, std::span<const CString> args) {
  if (id == 0) return {};
  const auto* const at = std::ranges::lower_bound(kIds, unsigned{id});
  return at != std::end(kIds) && *at == id ? FormatText(kTexts[at - std::begin(kIds)], args) : "#" + IntText(id);
}
