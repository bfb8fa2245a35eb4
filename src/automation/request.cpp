#include "automation/request.h"

#include <simdjson.h>

#include <algorithm>
#include <limits>

#include "model/base/textfault.h"

namespace {
using simdjson::dom::element;
constexpr std::size_t kMaxDepth = 64;

bool IsInt(const SArgument& argument) {
  const std::int64_t* const number = argument.Integer();
  return number && *number >= std::numeric_limits<int>::min() && *number <= std::numeric_limits<int>::max();
}
bool IsText(const SArgument& argument) { return argument.Text() != nullptr; }
bool IsBoolean(const SArgument& argument) { return std::get_if<bool>(&argument.scalar) != nullptr; }
bool IsScalar(const SArgument& argument) { return argument.form == SArgument::EForm::Scalar; }
bool IsList(const SArgument& argument) { return argument.form == SArgument::EForm::List; }
template <bool (*IsElement)(const SArgument&)>
bool IsListOf(const SArgument& argument) {
  return IsList(argument) && std::all_of(argument.list.begin(), argument.list.end(), IsElement);
}

struct SType {
  const char* what;
  bool (*holds)(const SArgument& argument);
};
constexpr SType kText{"a text", IsText};
constexpr SType kInteger{"a whole number", IsInt};
constexpr SType kBoolean{"true or false", IsBoolean};
constexpr SType kScalar{"null, true or false, a whole number or a text", IsScalar};
constexpr SType kTexts{"a list of texts", IsListOf<IsText>};
constexpr SType kIntegers{"a list of whole numbers", IsListOf<IsInt>};
constexpr SType kList{"a list", IsList};

/// An argument has the same type wherever it occurs.
const SType& TypeOf(std::string_view argument) {
  static const std::map<std::string_view, SType> kTypes = {
      {"row", kInteger}, {"col", kInteger}, {"value", kScalar},     {"with", kTexts},    {"names", kTexts},
      {"args", kList},   {"items", kList},  {"indexes", kIntegers}, {"rows", kIntegers}, {"overwrite", kBoolean}};
  const auto found = kTypes.find(argument);
  return found == kTypes.end() ? kText : found->second;
}

/// Empty, or what is wrong.
CString Convert(element from, SArgument& to) {
  switch (from.type()) {
    case simdjson::dom::element_type::NULL_VALUE: return {};
    case simdjson::dom::element_type::BOOL: to.scalar = from.get_bool().value_unsafe(); return {};
    case simdjson::dom::element_type::INT64: to.scalar = from.get_int64().value_unsafe(); return {};
    case simdjson::dom::element_type::STRING: to.scalar = CString(from.get_string().value_unsafe()); return {};
    case simdjson::dom::element_type::ARRAY: {
      to.form = SArgument::EForm::List;
      const simdjson::dom::array items =
          from.get_array().value_unsafe();  // outlives the loop, as a temporary would not
      for (const element item : items)
        if (CString why = Convert(item, to.list.emplace_back()); !why.empty()) return why;
      return {};
    }
    case simdjson::dom::element_type::OBJECT: {
      to.form = SArgument::EForm::Object;
      const simdjson::dom::object members = from.get_object().value_unsafe();
      for (const auto& [name, value] : members) {
        const auto [place, isNew] = to.members.try_emplace(CString(name));
        if (!isNew) return Quoted(name) + " stands in the request twice";
        if (CString why = Convert(value, place->second); !why.empty()) return why;
      }
      return {};
    }
    default: return "a number has to be whole and fit into 64 bits";
  }
}

/// Empty, or what is wrong with the arguments.
CString CheckArguments(const SOperation& operation, const std::map<CString, SArgument>& arguments) {
  std::size_t known = 0;
  for (std::string_view name : operation.arguments) {
    const bool optional = name.ends_with('?');
    if (optional) name.remove_suffix(1);
    const auto found = arguments.find(CString(name));
    if (found == arguments.end()) {
      if (!optional) return CString(operation.name) + " needs " + Quoted(name);
      continue;
    }
    ++known;
    if (!TypeOf(name).holds(found->second)) return Quoted(name) + " has to be " + TypeOf(name).what;
  }
  if (known == arguments.size()) return {};
  for (const auto& [name, value] : arguments)
    if (std::none_of(operation.arguments.begin(), operation.arguments.end(),
                     [&](std::string_view one) { return one.substr(0, one.find('?')) == name; }))
      return CString(operation.name) + " does not know " + Quoted(name);
  return {};
}
}  // namespace

const SArgument* SArgument::Member(const CString& name) const {
  const auto found = members.find(name);
  return found == members.end() ? nullptr : &found->second;
}

CStringArray CRequest::Texts(const CString& name) const {
  CStringArray texts;
  for (const SArgument& one : Argument(name).list) texts.push_back(*one.Text());
  return texts;
}

std::vector<int> CRequest::Integers(const CString& name) const {
  std::vector<int> numbers;
  for (const SArgument& one : Argument(name).list) numbers.push_back(static_cast<int>(*one.Integer()));
  return numbers;
}

CResult<CRequest> CRequest::Read(const CString& line, std::span<const SOperation> operations) {
  simdjson::dom::parser parser(kMaxLength);
  element root;
  simdjson::error_code error = parser.allocate(std::max<std::size_t>(line.size(), 64), kMaxDepth);
  if (!error) error = parser.parse(line).get(root);
  if (error) return SFailure{CString("this is no JSON object: ") + simdjson::error_message(error)};
  if (!root.is_object()) return SFailure{"a request is one JSON object"};
  SArgument whole;
  if (CString why = Convert(root, whole); !why.empty()) return SFailure{std::move(why)};

  const SArgument* const op = whole.Member("op");
  if (!op || !op->Text()) return SFailure{"a request names its operation in \"op\""};
  const auto operation = std::find_if(operations.begin(), operations.end(),
                                      [&](const SOperation& one) { return *op->Text() == one.name; });
  if (operation == operations.end()) return SFailure{"there is no operation " + Quoted(*op->Text())};
  whole.members.erase("op");
  if (CString why = CheckArguments(*operation, whole.members); !why.empty()) return SFailure{std::move(why)};
  CRequest request;
  request.m_operation = &*operation;
  request.m_arguments = std::move(whole.members);
  return request;
}
