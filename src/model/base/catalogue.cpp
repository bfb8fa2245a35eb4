#include "model/base/catalogue.h"

CString TextOf(unsigned id, std::span<const CString> args) {
  if (id == 0) return {};
  const STextEntry* const entry = FindText(id);
  return entry ? FormatText(entry->text, args) : "#" + IntText(id);
}
