// The per-user settings store: named integers and texts under keys such as "Settings\\Styles\\Layers".
#pragma once
#include <memory>
#include <variant>

#include "model/base/geometry.h"
#include "model/base/text.h"

using CSettingValue = std::variant<std::int64_t, CString>;

/// What keeps the values. The program installs one; until then values live as long as the process.
class CSettingsStore {
 public:
  virtual ~CSettingsStore() = default;
  /// False, with `value` untouched, when it is absent or the store cannot be read.
  virtual bool Get(const CString& key, const CString& name, CSettingValue& value) const = 0;
  /// False when the value could not be kept.
  virtual bool Set(const CString& key, const CString& name, const CSettingValue& value) = 0;
  virtual bool Delete(const CString& key, const CString& name) = 0;
};
/// A store in memory, for programs and tests without one of their own.
std::unique_ptr<CSettingsStore> MakeMemoryStore();
/// Installs a store; null installs a new empty one in memory. Returns the one before.
std::unique_ptr<CSettingsStore> InstallSettingsStore(std::unique_ptr<CSettingsStore> store);
CSettingsStore& SettingsStore();

class CRegistry {
 public:
  explicit CRegistry(const CString& key) : m_key(key) {}
  void SetKey(const CString& key) { m_key = key; }
  const CString& GetKey() const { return m_key; }

  /// False, with `value` untouched, when the value is absent or of another type.
  bool GetValue(const CString& name, CString& value) const;
  bool GetValue(const CString& name, unsigned long& value) const;
  bool GetValue(const CString& name, int& value) const;
  bool GetValue(const CString& name, double& value) const;
  bool GetValue(const CString& name, CPoint& value) const;
  bool SetValue(const CString& name, const CString& value);
  bool SetValue(const CString& name, const char* value) { return SetValue(name, CString(value)); }
  bool SetValue(const CString& name, unsigned long value);
  bool SetValue(const CString& name, int value);
  bool SetValue(const CString& name, double value);  // kept as the shortest text that reads back
  bool SetValue(const CString& name, CPoint value);  // kept as "x,y"
  bool DeleteValue(const CString& name);

 private:
  CString m_key;
};

/// A key of this application; `subKey` as the code names it, such as "Preferences".
class CAppRegistry : public CRegistry {
 public:
  explicit CAppRegistry(const CString& subKey) : CRegistry(subKey) {}
};

/// Small integers of the workspace, kept under the key "Workspace".
class CWorkspaceSettings {
 public:
  int GetInt(const CString& name, int whenAbsent) const;
  void WriteInt(const CString& name, int value);
};
CWorkspaceSettings* GetWorkspace();
