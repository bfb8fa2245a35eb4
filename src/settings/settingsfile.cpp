#include "settings/settingsfile.h"

#include <simdjson.h>

#include "model/base/jsontext.h"

namespace {

constexpr std::string_view kFormat = "techsheet-settings";
constexpr std::int64_t kVersion = 1;

namespace dom = simdjson::dom;

bool ReadValue(dom::element element, CSettingValue& value) {
  std::int64_t number = 0;
  std::string_view text;
  if (element.get(number) == simdjson::SUCCESS) {
    value = number;
  } else if (element.get(text) == simdjson::SUCCESS) {
    value = CString(text);
  } else {
    return false;
  }
  return true;
}

CResult<std::optional<CSettingValues>> ReadKeys(dom::object keys) {
  CSettingValues values;
  for (const auto& [keyName, element] : keys) {
    const CString key(keyName);
    const auto [place, isNew] = values.try_emplace(key);
    dom::object members;
    if (!isNew || element.get(members) != simdjson::SUCCESS)
      return SFailure{"the key \"" + key + "\" " + (isNew ? "is no object" : "occurs twice")};
    for (const auto& [name, member] : members) {
      CSettingValue value;
      if (!ReadValue(member, value) || !place->second.try_emplace(CString(name), std::move(value)).second)
        return SFailure{"the value \"" + CString(name) + "\" of \"" + key + "\" is neither one integer nor one text"};
    }
  }
  return std::optional(std::move(values));
}

}  // namespace

CString SettingsText(const CSettingValues& values) {
  CString out = "{\n\"format\": ";
  AppendJsonText(out, kFormat);
  out += ",\n\"version\": ";
  AppendInt(out, kVersion);
  out += ",\n\"keys\": {";
  const char* separator = "\n";
  for (const auto& [key, members] : values) {
    if (members.empty()) continue;
    AppendJsonText(out += separator, key);
    out += ": {";
    separator = "\n  ";
    for (const auto& [name, value] : members) {
      AppendJsonText(out += separator, name);
      out += ": ";
      if (const auto* const text = std::get_if<CString>(&value)) {
        AppendJsonText(out, *text);
      } else {
        AppendInt(out, std::get<std::int64_t>(value));
      }
      separator = ",\n  ";
    }
    out += "\n}";
    separator = ",\n";
  }
  out += "\n}\n}\n";
  return out;
}

CResult<std::optional<CSettingValues>> ReadSettingsText(const CString& text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";  // as some editors leave it
  dom::parser parser;
  dom::object file, keys;
  std::string_view format;
  std::int64_t version = 0;
  const bool isMarked = text.starts_with(kByteOrderMark);
  const CString plain = isMarked ? text.substr(kByteOrderMark.size()) : CString();
  if (const auto error = parser.parse(isMarked ? plain : text).get(file); error != simdjson::SUCCESS)
    return SFailure{CString("it is no JSON object: ") + simdjson::error_message(error)};
  if (file["format"].get(format) != simdjson::SUCCESS || format != kFormat)
    return SFailure{"its \"format\" is not \"" + CString(kFormat) + "\""};
  if (file["version"].get(version) != simdjson::SUCCESS || version < 1)
    return SFailure{"its \"version\" is no positive integer"};
  if (version > kVersion) return std::optional<CSettingValues>();
  if (file["keys"].get(keys) != simdjson::SUCCESS) return SFailure{"its \"keys\" are no object"};
  if (file.size() != 3) return SFailure{"it holds more than \"format\", \"version\" and \"keys\""};
  return ReadKeys(keys);
}
