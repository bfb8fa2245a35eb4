#include "interchange/json.h"

#include <simdjson.h>

#include <algorithm>
#include <unordered_set>

namespace {
constexpr int kMaxDepth = 64;
using simdjson::ondemand::json_type;

class CJsonReader {
 public:
  explicit CJsonReader(const CString& text) : m_padded(text) {}

  SJson Read() {
    if (m_parser.iterate(m_padded).get(m_document)) throw STextFault{0, "this is no JSON"};
    simdjson::ondemand::object object;
    if (m_document.get_object().get(object))
      throw STextFault{0, "a project file is one complete JSON object in braces"};
    SJson root;
    ReadObject(object, root, 0);
    if (!m_document.current_location().error())
      throw STextFault{Here(root.at), "nothing may stand behind the closing brace"};
    return root;
  }

 private:
  std::size_t Here(std::size_t otherwise) {
    const char* here = nullptr;
    if (m_document.current_location().get(here)) return otherwise;
    return static_cast<std::size_t>(here - m_padded.data());
  }
  [[noreturn]] void Fail(simdjson::error_code error, std::size_t otherwise) {
    if (error == simdjson::INCORRECT_TYPE) throw STextFault{otherwise, "this is no JSON value"};
    throw STextFault{Here(otherwise), CString("this is no JSON: ") + simdjson::error_message(error)};
  }
  template <class T>
  T Take(simdjson::simdjson_result<T> result, std::size_t at) {
    T value;
    if (const auto error = std::move(result).get(value)) Fail(error, at);
    return value;
  }

  void ReadValue(simdjson::ondemand::value value, SJson& out, int depth) {
    const std::string_view token = value.raw_json_token();
    out.at = static_cast<std::size_t>(token.data() - m_padded.data());
    if (depth > kMaxDepth) throw STextFault{out.at, "values stand in values more than 64 deep"};
    switch (Take(value.type(), out.at)) {
      case json_type::object: return ReadObject(Take(value.get_object(), out.at), out, depth);
      case json_type::array:
        out.kind = SJson::EKind::Array;
        for (auto item : Take(value.get_array(), out.at))
          ReadValue(Take(std::move(item), out.at), out.items.emplace_back(), depth + 1);
        return;
      case json_type::string:
        out.kind = SJson::EKind::Text;
        out.text = Take(value.get_string(), out.at);
        return;
      case json_type::number:
        Take(value.get_double(), out.at);  // says whether it is a number; the digits are what counts
        out.kind = SJson::EKind::Number;
        out.text = Trim(token);
        return;
      case json_type::boolean:
        out.kind = SJson::EKind::Boolean;
        out.text = Take(value.get_bool(), out.at) ? "true" : "false";
        return;
      case json_type::null:
        if (!Take(value.is_null(), out.at)) throw STextFault{out.at, "this is no JSON value"};
        return;
    }
  }

  void ReadObject(simdjson::ondemand::object object, SJson& out, int depth) {
    out.kind = SJson::EKind::Object;
    std::unordered_set<CString> names;
    for (auto member : object) {
      simdjson::ondemand::field field = Take(std::move(member), out.at);
      SJson& item = out.items.emplace_back();
      item.name = Take(field.unescaped_key(), out.at);
      const bool isNew = names.insert(item.name).second;
      ReadValue(field.value(), item, depth + 1);
      if (!isNew) throw STextFault{item.at, Quoted(item.name) + " stands in this object twice"};
    }
  }

  simdjson::padded_string m_padded;
  simdjson::ondemand::parser m_parser;
  simdjson::ondemand::document m_document;
};
}  // namespace

const SJson& SJson::operator[](std::string_view member) const {
  static const SJson kNone;
  const auto found = std::find_if(items.begin(), items.end(), [&](const SJson& item) { return item.name == member; });
  return kind == EKind::Object && found != items.end() ? *found : kNone;
}

SJson ReadJson(const CString& text) {
  RequireText(text);
  return CJsonReader(text).Read();
}
