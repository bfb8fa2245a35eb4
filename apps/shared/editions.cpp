#include "shared/editions.h"

#include "model/base/textfault.h"
#include "model/services/application.h"
#include "model/services/registry.h"

namespace {
CResult<CStringArray> ReadNames(std::string_view list) {
  CStringArray names;
  for (std::size_t from = 0; from <= list.size(); from = list.find(',', from) + 1) {
    names.emplace_back(Trim(list.substr(from, list.find(',', from) - from)));
    if (!CApplication::IsEditionName(names.back())) {
      CString reason = Quoted(names.back()) + " is no edition. The editions are";
      for (const CString& name : CApplication::AllEditions()) reason += ' ' + name;
      return SFailure{reason + '.'};
    }
    if (list.find(',', from) == list.npos) break;
  }
  return names;
}
}  // namespace

CResult<void> ChooseEditions(const std::optional<CString>& given,
                             const std::function<void(const CString& text)>& trouble) {
  CString kept;
  if (!given && !CAppRegistry("Preferences").GetValue("Editions", kept)) return {};
  const CResult<CStringArray> names = ReadNames(given ? *given : kept);
  if (names) {
    CApplication::SetEditions(*names);
  } else if (given) {
    return SFailure{"--edition: " + names.Error()};
  } else {
    trouble("The setting \"Editions\" is not used: " + names.Error());
  }
  return {};
}
