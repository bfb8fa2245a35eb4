#include "model/services/registry.h"

#include <charconv>
#include <limits>
#include <map>
#include <utility>

namespace {
class CMemoryStore final : public CSettingsStore {
 public:
  bool Get(const CString& key, const CString& name, CSettingValue& value) const override {
    const auto at = m_values.find({key, name});
    if (at == m_values.end()) return false;
    value = at->second;
    return true;
  }
  bool Set(const CString& key, const CString& name, const CSettingValue& value) override {
    m_values.insert_or_assign({key, name}, value);
    return true;
  }
  bool Delete(const CString& key, const CString& name) override { return m_values.erase({key, name}) > 0; }

 private:
  std::map<std::pair<CString, CString>, CSettingValue> m_values;
};

std::unique_ptr<CSettingsStore>& Installed() {
  static std::unique_ptr<CSettingsStore> store = MakeMemoryStore();
  return store;
}

template <class T>
bool ReadInteger(const CString& key, const CString& name, T& value) {
  CSettingValue found;
  if (!SettingsStore().Get(key, name, found)) return false;
  const auto* const number = std::get_if<std::int64_t>(&found);
  if (!number || *number < std::int64_t{std::numeric_limits<T>::min()}) return false;
  if (*number > 0 && static_cast<std::uint64_t>(*number) > std::uint64_t{std::numeric_limits<T>::max()}) return false;
  value = static_cast<T>(*number);
  return true;
}

template <>
bool ReadInteger(const CString& key, const CString& name, unsigned long& value) {
  CSettingValue found;
  if (!SettingsStore().Get(key, name, found)) return false;
  const auto* const number = std::get_if<std::int64_t>(&found);
  if (number) value = static_cast<unsigned long>(*number);  // negative values keep their 64 bits
  return number != nullptr;
}
}  // namespace

std::unique_ptr<CSettingsStore> MakeMemoryStore() { return std::make_unique<CMemoryStore>(); }

std::unique_ptr<CSettingsStore> InstallSettingsStore(std::unique_ptr<CSettingsStore> store) {
  return std::exchange(Installed(), store ? std::move(store) : MakeMemoryStore());
}

CSettingsStore& SettingsStore() { return *Installed(); }

bool CRegistry::GetValue(const CString& name, CString& value) const {
  CSettingValue found;
  if (!SettingsStore().Get(m_key, name, found)) return false;
  const auto* const text = std::get_if<CString>(&found);
  if (text) value = *text;
  return text != nullptr;
}

bool CRegistry::GetValue(const CString& name, unsigned long& value) const { return ReadInteger(m_key, name, value); }
bool CRegistry::GetValue(const CString& name, int& value) const { return ReadInteger(m_key, name, value); }

bool CRegistry::GetValue(const CString& name, double& value) const {
  CString text;
  double number = 0;
  if (!GetValue(name, text)) return false;
  const auto end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end) return false;
  value = number;
  return true;
}

bool CRegistry::GetValue(const CString& name, CPoint& value) const {
  CString text;
  if (!GetValue(name, text)) return false;
  const std::size_t comma = text.find(',');
  std::int64_t x = 0;
  std::int64_t y = 0;
  if (comma == CString::npos || !ParseInt(std::string_view(text).substr(0, comma), x) ||
      !ParseInt(std::string_view(text).substr(comma + 1), y) || x != static_cast<int>(x) || y != static_cast<int>(y))
    return false;
  value = {static_cast<int>(x), static_cast<int>(y)};
  return true;
}

bool CRegistry::SetValue(const CString& name, const CString& value) { return SettingsStore().Set(m_key, name, value); }

bool CRegistry::SetValue(const CString& name, unsigned long value) {
  return SettingsStore().Set(m_key, name, static_cast<std::int64_t>(value));
}

bool CRegistry::SetValue(const CString& name, int value) {
  return SettingsStore().Set(m_key, name, std::int64_t{value});
}

bool CRegistry::SetValue(const CString& name, double value) {
  char buffer[64];
  const auto written = std::to_chars(std::begin(buffer), std::end(buffer), value);
  return SetValue(name, CString(std::begin(buffer), written.ptr));
}

bool CRegistry::SetValue(const CString& name, CPoint value) {
  return SetValue(name, IntText(value.x) + "," + IntText(value.y));
}

bool CRegistry::DeleteValue(const CString& name) { return SettingsStore().Delete(m_key, name); }

int CWorkspaceSettings::GetInt(const CString& name, int whenAbsent) const {
  int value = whenAbsent;
  CAppRegistry("Workspace").GetValue(name, value);
  return value;
}

void CWorkspaceSettings::WriteInt(const CString& name, int value) { CAppRegistry("Workspace").SetValue(name, value); }

CWorkspaceSettings* GetWorkspace() {
  static CWorkspaceSettings workspace;
  return &workspace;
}
