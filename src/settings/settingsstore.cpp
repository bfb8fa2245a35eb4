#include "settings/settingsstore.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <thread>

#include "storage/checkedwriter.h"

namespace {

constexpr std::size_t kLargestFile = 16 << 20;

bool SameFile(const struct stat& a, const struct stat& b) {
  const auto same = [](const timespec& x, const timespec& y) { return x.tv_sec == y.tv_sec && x.tv_nsec == y.tv_nsec; };
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size && same(a.st_mtim, b.st_mtim) &&
         same(a.st_ctim, b.st_ctim);
}

}  // namespace

CString SettingsFolder() {
  const auto variable = [](const char* name) {
    const char* const value = std::getenv(name);
    return CString(value ? value : "");
  };
  if (CString own = variable("TECHSHEET_SETTINGS"); !own.empty()) return own;
  if (const CString base = variable("XDG_CONFIG_HOME"); base.starts_with('/')) return base + "/techsheet";
  const CString home = variable("HOME");
  return home.empty() ? home : home + "/.config/techsheet";
}

/// Keeps other stores, of this program or another, from changing the file. It stands beside the file, which is replaced
/// at each change.
class CFileSettingsStore::CLock {
 public:
  /// Waits for another program as long as `wait`; after a wait in vain, which that notes, no more.
  CLock(const CString& folder, std::chrono::milliseconds& wait)
      : m_fd(::open((folder + "/settings.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    // A program stopped in the middle of a change must not stop this one too.
    const auto last = std::chrono::steady_clock::now() + wait;
    while (m_fd >= 0 && !m_holds) {
      m_holds = ::flock(m_fd, LOCK_EX | LOCK_NB) == 0;
      if (m_holds || (errno != EWOULDBLOCK && errno != EINTR)) break;
      if (std::chrono::steady_clock::now() >= last) wait = {};
      if (wait == wait.zero()) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }
  CLock(const CLock&) = delete;
  ~CLock() {
    if (m_fd >= 0) ::close(m_fd);
  }
  bool Holds() const { return m_holds; }

 private:
  int m_fd;
  bool m_holds = false;
};

CFileSettingsStore::CFileSettingsStore(CString folder, CReport report, std::chrono::milliseconds longestWait)
    : m_folder(std::move(folder)),
      m_path(m_folder + "/settings.json"),
      m_report(std::move(report)),
      m_wait(longestWait) {}

bool CFileSettingsStore::Get(const CString& key, const CString& name, CSettingValue& value) const {
  if (!Refresh(nullptr, false)) return false;
  const auto members = m_values.find(key);
  if (members == m_values.end()) return false;
  const auto found = members->second.find(name);
  if (found == members->second.end()) return false;
  value = found->second;
  return true;
}

bool CFileSettingsStore::Set(const CString& key, const CString& name, const CSettingValue& value) {
  const auto* const text = std::get_if<CString>(&value);
  if (!IsValidUtf8(key) || !IsValidUtf8(name) || (text && !IsValidUtf8(*text))) return false;
  return Change([&](CSettingValues& values) {
    values[key].insert_or_assign(name, value);
    return true;
  });
}

bool CFileSettingsStore::Delete(const CString& key, const CString& name) {
  return Change([&](CSettingValues& values) {
    const auto members = values.find(key);
    return members != values.end() && members->second.erase(name) > 0;
  });
}

bool CFileSettingsStore::Change(const std::function<bool(CSettingValues&)>& change) {
  if (m_folder.empty()) {
    if (!change(m_values)) return false;
    return Trouble(
        "There is no folder for the settings, so changes last as long as the program. Set HOME, XDG_CONFIG_HOME or "
        "TECHSHEET_SETTINGS.");
  }
  std::error_code ignored;  // what goes wrong here shows at once in the lock
  std::filesystem::create_directories(std::filesystem::path(m_folder).parent_path(), ignored);
  ::mkdir(m_folder.c_str(), 0700);  // a user's own, as others have no business in it
  const CLock lock(m_folder, m_wait);
  if (!lock.Holds()) return Trouble("The settings in \"" + m_folder + "\" cannot be locked, so changes are not kept.");
  if (!Refresh(&lock, true)) return false;
  CSettingValues values = m_values;
  if (!change(values)) return false;
  if (values == m_values) return true;
  const CString text = SettingsText(values);
  if (text.size() > kLargestFile)
    return Trouble("\"" + m_path + "\" would become too large, so this change is not kept.");
  m_known = false;
  const CResult<void> written = WriteFileChecked(m_path, text);
  return written || Trouble(written.Error());
}

/// Looks at the file again when it has changed, or `always`. False when its values are not known.
bool CFileSettingsStore::Refresh(const CLock* lock, bool always) const {
  if (m_folder.empty()) return true;
  struct stat now = {};
  if (::stat(m_path.c_str(), &now) != 0) {
    const int error = errno;
    m_values.clear();
    m_known = false;
    if (error == ENOENT || error == ENOTDIR) return true;
    return Trouble("\"" + m_path + "\" cannot be read: " + std::generic_category().message(error) + ".");
  }
  if (always || !m_known || !SameFile(now, m_seen)) {
    m_seen = now;
    m_known = true;
    m_usable = Load(lock);
  }
  return m_usable;
}

bool CFileSettingsStore::Load(const CLock* lock) const {
  m_values.clear();
  const CResult<CString> text = ReadFileLimited(m_path, kLargestFile);
  if (!text) return Trouble(text.Error());
  CResult<std::optional<CSettingValues>> values = ReadSettingsText(*text);
  if (values && !*values)
    return Trouble("\"" + m_path + "\" was written by a newer version of this program. It is not used.");
  if (values) {
    m_values = std::move(**values);
    return true;
  }
  if (lock) return MoveAside(values.Error());
  const CLock own(m_folder, m_wait);  // another program may have mended it meanwhile
  if (own.Holds()) return Refresh(&own, true);
  return Trouble("\"" + m_path + "\" is damaged and not used: " + values.Error() + ".");
}

bool CFileSettingsStore::MoveAside(const CString& reason) const {
  CString aside;
  struct stat taken = {};
  for (int number = 1; aside.empty() || ::lstat(aside.c_str(), &taken) == 0; ++number)
    aside = m_path + ".damaged-" + IntText(number);
  m_known = false;
  const CString what = "\"" + m_path + "\" is damaged: " + reason + ". ";
  if (::rename(m_path.c_str(), aside.c_str()) != 0)
    return Trouble(what + "It cannot be moved aside, so it is not used and changes are not kept.");
  Trouble(what + "It is now \"" + aside + "\", and the settings begin anew.");
  return true;
}

/// Reports what has not been reported yet. False always.
bool CFileSettingsStore::Trouble(const CString& text) const {
  if (m_reported.insert(text).second && m_report) m_report(text);
  return false;
}
