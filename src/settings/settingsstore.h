// The settings of one user, kept in the file "settings.json" of one folder.
//
// Every change is one whole, locked step: read the file again, change the one value, replace the file. So programs that
// run side by side lose nothing of each other's, and see each other's changes at the next look. A file that cannot be
// understood is never overwritten: a damaged one is moved aside, that of a newer program version stays and is not used.
#pragma once
#include <sys/stat.h>

#include <chrono>
#include <functional>
#include <set>

#include "settings/settingsfile.h"

/// TECHSHEET_SETTINGS, or "techsheet" in XDG_CONFIG_HOME or in ~/.config; empty when the environment names none.
CString SettingsFolder();

class CFileSettingsStore final : public CSettingsStore {
 public:
  using CReport = std::function<void(const CString& text)>;

  /// `folder` is made when the first value is kept; with an empty one, values last as long as the store. `report` hears
  /// of each trouble once, such as a file moved aside. The first lock that another program holds is waited for.
  CFileSettingsStore(CString folder, CReport report, std::chrono::milliseconds longestWait = std::chrono::seconds(10));

  bool Get(const CString& key, const CString& name, CSettingValue& value) const override;
  /// False, with nothing changed, when the file cannot be read or written, another program keeps it locked for seconds,
  /// or a text is not valid UTF-8; without a folder false, too, though the value holds as long as the program.
  bool Set(const CString& key, const CString& name, const CSettingValue& value) override;
  /// False also when there is no such value.
  bool Delete(const CString& key, const CString& name) override;

 private:
  class CLock;

  bool Refresh(const CLock* lock, bool always) const;
  bool Load(const CLock* lock) const;
  bool MoveAside(const CString& reason) const;
  bool Change(const std::function<bool(CSettingValues&)>& change);
  bool Trouble(const CString& text) const;

  CString m_folder, m_path;
  CReport m_report;
  mutable std::chrono::milliseconds m_wait;  // for the next lock
  // What the file held when it looked like m_seen.
  mutable CSettingValues m_values;
  mutable bool m_usable = false;
  mutable bool m_known = false;
  mutable struct stat m_seen = {};
  mutable std::set<CString> m_reported;
};
