#include "model/design/fonts.h"

#include <algorithm>
#include <map>

#include "model/services/userinterface.h"

namespace {
struct STrueType {
  CTrueTypeFont font;
  bool exists;
};
std::map<CString, STrueType>& TrueTypes() {
  static std::map<CString, STrueType> fonts;
  return fonts;
}
}  // namespace

void CTypeFontList::Load() {
  for (auto& [name, one] : TrueTypes()) one.exists = false;
  for (const CString& name : UserInterface().TrueTypeFonts())
    if (!name.empty()) TrueTypes().try_emplace(name, STrueType{CTrueTypeFont(name), true}).first->second.exists = true;
}

const CTrueTypeFont* CTypeFontList::Find(const CString& name) {
  const auto at = TrueTypes().find(name);
  return at != TrueTypes().end() && at->second.exists ? &at->second.font : nullptr;
}

std::vector<const CTrueTypeFont*> CTypeFontList::All() {
  std::vector<const CTrueTypeFont*> fonts;
  for (const auto& [name, one] : TrueTypes())
    if (one.exists) fonts.push_back(&one.font);
  return fonts;
}

std::span<const CBaseFont* const> BuiltInFonts() {
  static const CStrokeFont kStandard("Standard"), kNarrow("Narrow");
  static const CBarcodeFont kCode39("Code 39"), kCode128("Code 128"), kInterleaved("Interleaved 2 of 5");
  static const CBaseFont* const kFonts[] = {&kStandard, &kNarrow, &kCode39, &kCode128, &kInterleaved};
  return kFonts;
}

const CBaseFont* FindFont(const CString& name) {
  if (const CTrueTypeFont* const font = CTypeFontList::Find(name)) return font;
  const auto builtIn = BuiltInFonts();
  const auto at = std::find_if(builtIn.begin(), builtIn.end(), [&](const auto* one) { return one->GetName() == name; });
  return at == builtIn.end() ? builtIn.front() : *at;
}
