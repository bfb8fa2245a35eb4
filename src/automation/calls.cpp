#include "automation/calls.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "commands/commands.h"
#include "model/base/textfault.h"
#include "model/design/fieldtext.h"
#include "model/services/application.h"

CResult<CDesignItem*> FindItem(const CDesign& design, const SArgument& named) {
  const SArgument* const kind = named.Member("kind");
  const SArgument* const index = named.Member("index");
  const SArgument* const name = named.Member("name");
  const bool isName = name && name->Text();
  if (!kind || !kind->Text() || isName == (index && index->Integer()) || named.members.size() != 2)
    return SFailure{"an item is given by its \"kind\" and either \"index\" or \"name\""};
  CDesignItem* found = nullptr;
  std::int64_t passed = 0;
  const auto look = [&](CRecordBase& record) {
    if (found || *kind->Text() != record.Kind().name || !record.IsKindOf(CDesignItem::GetThisClass())) return;
    if (isName) {
      const CField* const field = record.Kind().FindField("name");
      if (!field || !IsTextField(field->type->fieldClass) || !FieldHolds(*field, record, 0, *name->Text())) return;
    } else if (passed++ != *index->Integer()) {
      return;
    }
    found = static_cast<CDesignItem*>(&record);
  };
  // Kinds that symbols own too, such as texts, are walked where the design itself holds them.
  const auto& collections = design.Collections();
  const auto walk = std::find_if(collections.begin(), collections.end(),
                                 [&](const CCollectionBase* one) { return *kind->Text() == one->Kind().name; });
  if (walk == collections.end()) {
    design.ForEachRecord(look);
  } else {
    for (CRecordBase* record = (*walk)->FirstRecord(); record; record = record->Next()) look(*record);
  }
  if (found) return found;
  return SFailure{"there is no item " + *kind->Text() + ' ' +
                  (isName ? Quoted(*name->Text()) : IntText(*index->Integer()))};
}

namespace {
/// Hands out the parameters of one call; keeps the first reason why one cannot be had.
class CParameters {
 public:
  CParameters(CTechnology* technology, const std::vector<SArgument>& args) : m_technology(technology), m_args(args) {}

  template <class T>
  T Take() {
    if constexpr (std::is_same_v<T, CDesignDrawing*>) {
      CDesign* const design = Technology<CDesign>();
      return design ? &m_drawing.emplace(design) : nullptr;
    } else if constexpr (std::is_same_v<T, CDesign*> || std::is_same_v<T, CSymbolLibrary*>) {
      return Technology<std::remove_pointer_t<T>>();
    } else if constexpr (std::is_same_v<T, CDesignItem*>) {
      const CDesign* const design = Technology<CDesign>();
      const SArgument* const argument = Next();
      if (!design || !argument) return nullptr;
      const CResult<CDesignItem*> item = FindItem(*design, *argument);
      if (item) return *item;
      Fail(item.Error());
      return nullptr;
    } else if constexpr (std::is_same_v<T, int>) {
      const std::int64_t number = Scalar<std::int64_t>("a whole number");
      if (number != static_cast<int>(number)) Fail(IntText(number) + " does not fit into 32 bits");
      return static_cast<int>(number);
    } else {
      return Scalar<T>(std::is_same_v<T, bool> ? "true or false" : "a text");
    }
  }
  /// Empty, or why the call cannot be made.
  CString Why() {
    if (m_next < m_args.size()) Fail("the command takes fewer args");
    return m_why;
  }

 private:
  void Fail(const CString& why) {
    if (m_why.empty()) m_why = why;
  }
  const SArgument* Next() {
    if (m_next < m_args.size()) return &m_args[m_next++];
    Fail("the command takes more args");
    return nullptr;
  }
  template <class T>
  T* Technology() {
    T* const wanted = DynamicDowncast<T>(m_technology);
    if (!wanted)
      Fail(CString("the command needs a \"design\" that is a ") + (std::is_same_v<T, CDesign> ? "design" : "library"));
    return wanted;
  }
  template <class T>
  T Scalar(const char* what) {
    const SArgument* const argument = Next();
    const T* const value = argument ? std::get_if<T>(&argument->scalar) : nullptr;
    if (value) return *value;
    Fail("number " + IntText(static_cast<std::int64_t>(m_next)) + " of the args has to be " + what);
    return {};
  }

  CTechnology* m_technology;
  std::optional<CDesignDrawing> m_drawing;
  const std::vector<SArgument>& m_args;
  std::size_t m_next = 0;
  CString m_why;
};

template <class R>
CValue ResultValue(const R& result) {
  if constexpr (std::is_same_v<R, int>) {
    return std::int64_t{result};
  } else {
    return result;
  }
}

template <auto Function, class R, class... P>
CResult<CValue> Invoke(R (*)(P...), CParameters& parameters) {
  std::tuple<std::decay_t<P>...> values{parameters.Take<std::decay_t<P>>()...};  // in order
  if (CString why = parameters.Why(); !why.empty()) return SFailure{std::move(why)};
  if constexpr (std::is_void_v<R>) {
    std::apply(Function, values);
    return CValue();
  } else {
    return ResultValue<R>(std::apply(Function, values));
  }
}

using CInvoker = CResult<CValue> (*)(CParameters& parameters);
template <auto Function>
constexpr CInvoker kInvoker = [](CParameters& parameters) { return Invoke<Function>(Function, parameters); };

#define TECHSHEET_CALL(Function) {#Function, kInvoker<&Function>}
const std::map<std::string_view, CInvoker>& Commands() {
  static const std::map<std::string_view, CInvoker> kCommands = {
      TECHSHEET_CALL(ChangeCursor),
      TECHSHEET_CALL(ChangeLayers),
      TECHSHEET_CALL(ChangeLayerSpans),
      TECHSHEET_CALL(ChangeLayerTypes),
      TECHSHEET_CALL(ChangeNetClasses),
      TECHSHEET_CALL(ChangeNets),
      TECHSHEET_CALL(ChangePadStyles),
      TECHSHEET_CALL(ChangeSizes),
      TECHSHEET_CALL(ChangeSpacings),
      TECHSHEET_CALL(ChangeTextStyles),
      TECHSHEET_CALL(ChangeTrackStyles),
      TECHSHEET_CALL(ChangeUnits),
      TECHSHEET_CALL(ChangeWireLinkLengths),
      TECHSHEET_CALL(ChooseGrid),
      TECHSHEET_CALL(GetMaxMRUCount),
      TECHSHEET_CALL(InitSetOpInterface),
      TECHSHEET_CALL(PropertiesEnabled),
      TECHSHEET_CALL(SetAllDisplayed),
      TECHSHEET_CALL(SetAllTrueWidth),
      TECHSHEET_CALL(SetBrenloHardwiredPrefs),
      TECHSHEET_CALL(SetMaxMRUCount),
      TECHSHEET_CALL(Set_RegisterIgnoreDesignChange),
      TECHSHEET_CALL(ToggleGridsVisible),
      TECHSHEET_CALL(CDesign::GetCopyAssociatedFiles),
      TECHSHEET_CALL(CDesign::GetDocNameFirst),
      TECHSHEET_CALL(CDesign::GetOverwriteAssociatedFiles),
      TECHSHEET_CALL(CNoise::GetEnabled),
      TECHSHEET_CALL(CProject::GetAllSheets),
      TECHSHEET_CALL(CProject::GetOpenAllSheets),
      TECHSHEET_CALL(CProject::GetSyncSheets),
  };
  return kCommands;
}
#undef TECHSHEET_CALL
}  // namespace

CResult<CValue> CallCommand(const CString& command, CTechnology* technology, const std::vector<SArgument>& args) {
  const auto found = Commands().find(command);
  if (found == Commands().end()) return SFailure{"there is no command " + Quoted(command)};
  CParameters parameters(technology, args);
  return found->second(parameters);
}
