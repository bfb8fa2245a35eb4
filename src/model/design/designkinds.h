// The kinds of design, and the libraries.
#pragma once
#include "model/design/design.h"

class CPcbDesign : public CDesign {
  TECHSHEET_CLASS(CPcbDesign, CDesign)
  explicit CPcbDesign(EContent content = EContent::DefaultTechnology);
  bool NeedsBuiltInLayer() const override { return true; }
};
class CScmDesign : public CDesign {
  TECHSHEET_CLASS(CScmDesign, CDesign)
  explicit CScmDesign(EContent content = EContent::DefaultTechnology);
};
class CPcbSymDesign : public CDesign {
  TECHSHEET_CLASS(CPcbSymDesign, CDesign)
  explicit CPcbSymDesign(EContent content = EContent::DefaultTechnology);
  bool NeedsBuiltInLayer() const override { return true; }
};
class CScmSymDesign : public CDesign {
  TECHSHEET_CLASS(CScmSymDesign, CDesign)
  explicit CScmSymDesign(EContent content = EContent::DefaultTechnology);
};

/// A library of symbols with a technology of its own.
class CSymbolLibrary : public CTechnology {
  TECHSHEET_CLASS(CSymbolLibrary, CTechnology)
  ~CSymbolLibrary() override;
  CString GetObjectName() const override { return m_values.Values().name; }
  CCollection<CSymbol> symbols{"symbols"};
  const CString& GetStyleSheet() const { return m_values.Values().styleSheet; }
  void SetStyleSheet(const CString& path) { m_values.Set(&SDesignValuesFields::styleSheet, path); }
  const CString& GetName() const { return m_values.Values().name; }
  void SetName(const CString& name) { m_values.Set(&SDesignValuesFields::name, name); }

 protected:
  CSymbolLibrary();

 private:
  CDesignValues m_values;
};
class CPcbSymbolLibrary : public CSymbolLibrary {
  TECHSHEET_CLASS(CPcbSymbolLibrary, CSymbolLibrary)
  explicit CPcbSymbolLibrary(EContent content = EContent::DefaultTechnology);
  bool NeedsBuiltInLayer() const override { return true; }
};
class CScmSymbolLibrary : public CSymbolLibrary {
  TECHSHEET_CLASS(CScmSymbolLibrary, CSymbolLibrary)
  explicit CScmSymbolLibrary(EContent content = EContent::DefaultTechnology);
};

/// A new design or library by the name of its class ("CPcbDesign"); null for a name that is none.
std::unique_ptr<CTechnology> MakeTechnology(std::string_view className, EContent content);
/// The names of all kinds that MakeTechnology knows.
CStringArray TechnologyClassNames();
