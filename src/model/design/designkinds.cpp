#include "model/design/designkinds.h"

#include "model/design/project.h"

namespace {
struct SKindOfTechnology {
  const CRuntimeClass* (*theClass)();
  std::unique_ptr<CTechnology> (*make)(EContent);
  const char* extension;
  const char* technologyExtension;
};
template <class T>
std::unique_ptr<CTechnology> Make(EContent content) {
  return std::make_unique<T>(content);
}
constexpr SKindOfTechnology kKinds[] = {
    {&CPcbDesign::GetThisClass, &Make<CPcbDesign>, "tspcb", "tspcbt"},
    {&CScmDesign::GetThisClass, &Make<CScmDesign>, "tsscm", "tsscmt"},
    {&CPcbSymDesign::GetThisClass, &Make<CPcbSymDesign>, "tsfpt", "tsfptt"},
    {&CScmSymDesign::GetThisClass, &Make<CScmSymDesign>, "tssym", "tssymt"},
    {&CProject::GetThisClass, &Make<CProject>, "tsprj", "tsprjt"},
    // Libraries share the technology files of what they hold.
    {&CPcbSymbolLibrary::GetThisClass, &Make<CPcbSymbolLibrary>, "tspcblib", "tsfptt"},
    {&CScmSymbolLibrary::GetThisClass, &Make<CScmSymbolLibrary>, "tsscmlib", "tssymt"},
};
}  // namespace

std::unique_ptr<CTechnology> MakeTechnology(std::string_view className, EContent content) {
  for (const SKindOfTechnology& kind : kKinds)
    if (className == kind.theClass()->name) return kind.make(content);
  return nullptr;
}

CStringArray TechnologyClassNames() {
  CStringArray names;
  for (const SKindOfTechnology& kind : kKinds) names.emplace_back(kind.theClass()->name);
  return names;
}

CString CDesign::GetFileExtension(const CRuntimeClass* wanted) {
  for (const SKindOfTechnology& kind : kKinds)
    if (kind.theClass() == wanted) return kind.extension;
  return {};
}

CString CDesign::GetTechnologyFileExtension(const CRuntimeClass* kind) {
  for (const SKindOfTechnology& one : kKinds)
    if (one.theClass() == kind) return one.technologyExtension;
  return {};
}

CPcbDesign::CPcbDesign(EContent content) {
  if (content == EContent::DefaultTechnology) SetDefaultTechnology(true);
}
CScmDesign::CScmDesign(EContent content) {
  if (content == EContent::DefaultTechnology) SetDefaultTechnology(false);
}
CPcbSymDesign::CPcbSymDesign(EContent content) {
  if (content == EContent::DefaultTechnology) SetDefaultTechnology(true);
}
CScmSymDesign::CScmSymDesign(EContent content) {
  if (content == EContent::DefaultTechnology) SetDefaultTechnology(false);
}
CSymbolLibrary::CSymbolLibrary() {
  AddSingle("design", m_values);
  AddCollection(symbols);
}
CSymbolLibrary::~CSymbolLibrary() { Journal().Discard(); }
CPcbSymbolLibrary::CPcbSymbolLibrary(EContent content) {
  if (content == EContent::DefaultTechnology) SetDefaultTechnology(true);
}
CScmSymbolLibrary::CScmSymbolLibrary(EContent content) {
  if (content == EContent::DefaultTechnology) SetDefaultTechnology(false);
}
