#include "model/services/application.h"

#include <algorithm>
#include <array>

#include "model/base/version.h"
#include "model/services/userinterface.h"

namespace {
constexpr std::array kEditions = {"Pellam",          "Corvina", "CorvinaPro", "CorvinaCreator", "CorvinaEngineer",
                                  "CorvinaExplorer", "Tarvik",  "Brenlo",     "KTComponents",   "Kestrel"};
CStringArray& Holding() {
  static CStringArray names{"Pellam"};
  return names;
}
bool theNoise = true;
}  // namespace

bool CApplication::IsEdition(std::string_view name) {
  return std::find(Holding().begin(), Holding().end(), name) != Holding().end();
}

bool CApplication::IsEditionName(std::string_view name) {
  return std::find(kEditions.begin(), kEditions.end(), name) != kEditions.end();
}

bool CApplication::SetEditions(const CStringArray& names) {
  if (!std::all_of(names.begin(), names.end(), IsEditionName)) return false;
  Holding() = names;
  return true;
}

CStringArray CApplication::Editions() { return Holding(); }
CStringArray CApplication::AllEditions() { return {kEditions.begin(), kEditions.end()}; }

CString CApplication::GetVersion() { return kTechsheetVersion; }
CString CApplication::GetCompanyName(bool full) { return full ? "The Techsheet developers" : "Techsheet"; }
CString CApplication::GetProductFamilyRegistry() { return "techsheet"; }

CString CApplication::GetProductNameWithVersion(int parts, int digits) {
  CString text = "Techsheet ";
  std::string_view rest = kTechsheetVersion;
  for (int part = 0; part < std::clamp(parts, 1, 3) && !rest.empty(); ++part) {
    const std::string_view number = rest.substr(0, rest.find('.'));
    if (part > 0) text += '.';
    if (number.size() < static_cast<std::size_t>(std::max(digits, 0)))
      text.append(static_cast<std::size_t>(digits) - number.size(), '0');
    text += number;
    rest.remove_prefix(std::min(rest.size(), number.size() + 1));
  }
  return text;
}

void CNoise::Beep(int sound) {
  if (theNoise) UserInterface().Beep(sound);
}
bool CNoise::GetEnabled() { return theNoise; }
void CNoise::SetEnabled(bool enabled) { theNoise = enabled; }
