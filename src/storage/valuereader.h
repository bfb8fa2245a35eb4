// JSON values as a strict reader takes them: a value of another type, or out of range, is a fault at its place.
#pragma once
#include <simdjson.h>

#include <limits>

#include "model/base/textfault.h"

/// Takes values from one text that simdjson iterates over. All of it throws STextFault.
class CValueReader {
 public:
  explicit CValueReader(std::string_view text) : m_text(text) {}

  /// Bytes from the start of the text.
  std::size_t OffsetOf(const char* at) const { return static_cast<std::size_t>(at - m_text.data()); }
  std::size_t Here() {
    const char* here = nullptr;
    return m_document.current_location().get(here) ? m_text.size() : OffsetOf(here);
  }
  /// `wanted` is what the value should have been: "a text".
  template <class Value>
  [[noreturn]] void Fail(Value& value, const CString& wanted) {
    std::string_view token = value.raw_json_token();
    token = token.substr(0, Length(token));
    throw STextFault{OffsetOf(token.data()), "\"" + CString(m_key) + "\" must be " + wanted + ", not " + Shown(token)};
  }
  template <class T>
  T Take(simdjson::simdjson_result<T> result) {
    T value;
    const simdjson::error_code error = std::move(result).get(value);
    if (error) throw STextFault{Here(), CString("this is no JSON: ") + simdjson::error_message(error)};
    return value;
  }

  template <class Value>
  simdjson::ondemand::object TakeObject(Value& value) {
    simdjson::ondemand::object object;
    const simdjson::error_code error = value.get_object().get(object);
    if (error == simdjson::INCORRECT_TYPE) Fail(value, "an object in braces");
    return error ? Take(simdjson::simdjson_result<simdjson::ondemand::object>(error)) : object;
  }
  simdjson::ondemand::array TakeArray(simdjson::ondemand::value& value, const char* wanted) {
    simdjson::ondemand::array array;
    const simdjson::error_code error = value.get_array().get(array);
    if (error == simdjson::INCORRECT_TYPE) Fail(value, wanted);
    return error ? Take(simdjson::simdjson_result<simdjson::ondemand::array>(error)) : array;
  }
  int TakeInt(simdjson::ondemand::value& value, int least, int most) {
    std::int64_t number = 0;
    if (value.get_int64().get(number) || number < least || number > most)
      Fail(value, "a whole number from " + IntText(least) + " to " + IntText(most));
    return static_cast<int>(number);
  }
  int TakeInt(simdjson::ondemand::value& value) {
    return TakeInt(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
  }
  bool TakeBool(simdjson::ondemand::value& value) {
    bool flag = false;
    if (value.get_bool().get(flag)) Fail(value, "true or false");
    return flag;
  }
  /// Valid while the text and the parser are.
  std::string_view TakeText(simdjson::ondemand::value& value, const char* wanted = "a text") {
    const char* const token = value.raw_json_token().data();
    if (*token != '"') Fail(value, wanted);
    // The parser has found every string closed. One without escapes can stay where it is.
    const char* end = token + 1;
    while (*end != '"' && *end != '\\') ++end;
    std::string_view text(token + 1, static_cast<std::size_t>(end - token - 1));
    const bool isPlain = *end == '"';
    if (isPlain ? value.get_raw_json_string().error() : value.get_string().get(text))
      Fail(value, "a text with valid escapes");
    return text;
  }
  bool TakeNull(simdjson::ondemand::value& value) {
    if (*value.raw_json_token().data() != 'n') return false;
    bool isNull = false;
    if (value.is_null().get(isNull) || !isNull) Fail(value, "a name or null");
    return true;
  }

 protected:
  std::string_view m_text;
  std::string_view m_key;  // what the messages call the value that is taken next
  simdjson::ondemand::document m_document;

 private:
  static std::size_t Length(std::string_view token) {
    while (!token.empty() && IsBlank(token.back())) token.remove_suffix(1);
    return token.size();
  }
  static CString Shown(std::string_view token) {
    if (token.starts_with('{')) return "an object";
    if (token.starts_with('[')) return "a list";
    return token.starts_with('"') ? Quoted(token.substr(1, token.size() - 2)) : Quoted(token);
  }
};
