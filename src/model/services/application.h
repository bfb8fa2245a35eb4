// Editions of the product, its names, and its noises.
#pragma once
#include "model/base/text.h"

/// Each test but IsExtended asks for its own name alone; which names hold is decided at start.
class CApplication {
 public:
  /// Pellam or CorvinaPro: the editions with mask layers, pad style exceptions, files of pad styles and every column of
  /// layer types and text styles. Lengths are typed into their pages as plain numbers.
  static bool IsExtended() { return IsPellam() || IsCorvinaPro(); }
  static bool IsPellam() { return IsEdition("Pellam"); }
  static bool IsCorvina() { return IsEdition("Corvina"); }
  static bool IsCorvinaPro() { return IsEdition("CorvinaPro"); }
  static bool IsCorvinaCreator() { return IsEdition("CorvinaCreator"); }
  static bool IsCorvinaEngineer() { return IsEdition("CorvinaEngineer"); }
  static bool IsCorvinaExplorer() { return IsEdition("CorvinaExplorer"); }
  static bool IsTarvik() { return IsEdition("Tarvik"); }
  static bool IsBrenlo() { return IsEdition("Brenlo"); }
  static bool IsKTComponents() { return IsEdition("KTComponents"); }
  static bool IsKestrel() { return IsEdition("Kestrel"); }

  /// Replaces the set of names that hold; false, and nothing changed, when one of them is none of those above.
  static bool SetEditions(const CStringArray& names);
  static bool IsEditionName(std::string_view name);
  static CStringArray Editions();
  static CStringArray AllEditions();

  static CString GetVersion();
  static CString GetCompanyName(bool full);
  static CString GetProductFamilyRegistry();
  /// "Techsheet 1.2.3", with as many parts of the version as `parts` (1 to 3) and at least `digits` digits in each.
  static CString GetProductNameWithVersion(int parts, int digits);

 private:
  static bool IsEdition(std::string_view name);
};

class CNoise {
 public:
  /// Beeps through the user interface, unless beeping is switched off; -1 is the plain system beep.
  static void Beep(int sound);
  static bool GetEnabled();
  static void SetEnabled(bool enabled);
};
