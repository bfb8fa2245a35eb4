#include "storage/checkedwriter.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <system_error>
#include <utility>

namespace {

CString Reason(int code) { return std::generic_category().message(code); }

/// A file descriptor that closes itself.
class CHandle {
 public:
  explicit CHandle(int fd = -1) : m_fd(fd) {}
  CHandle(CHandle&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
  CHandle& operator=(CHandle&& other) noexcept {
    std::swap(m_fd, other.m_fd);
    return *this;
  }
  ~CHandle() {
    if (m_fd >= 0) ::close(m_fd);
  }
  explicit operator bool() const { return m_fd >= 0; }
  int Get() const { return m_fd; }
  /// Closes and tells an error; an interrupted close has closed all the same.
  bool Close() { return ::close(std::exchange(m_fd, -1)) == 0 || errno == EINTR; }

 private:
  int m_fd;
};

template <class F>
auto Retry(F call) {
  decltype(call()) result;
  do result = call();
  while (result < 0 && errno == EINTR);
  return result;
}

/// Follows symbolic links, the last of which may lead to a file that is yet to be made. False with errno.
bool FollowLinks(CString& path) {
  for (int links = 0; links < 40; ++links) {
    char target[PATH_MAX];
    const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
    if (length < 0) return errno == EINVAL || errno == ENOENT;  // no link, or nothing yet
    if (length == sizeof target) return errno = ENAMETOOLONG, false;
    if (target[0] != '/') {
      path.resize(path.rfind('/') + 1);  // all of it when there is no slash
    } else {
      path.clear();
    }
    path.append(target, static_cast<std::size_t>(length));
  }
  return errno = ELOOP, false;
}

constexpr std::string_view kTemporaryStart = ".techsheet-", kTemporaryEnd = ".tmp";

/// Removes the temporary files of programs that ended in the middle of their work: who still writes one, holds its
/// lock.
void Sweep(const CHandle& folder) {
  const int listed = ::openat(folder.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  DIR* const entries = listed >= 0 ? ::fdopendir(listed) : nullptr;
  if (!entries) {
    if (listed >= 0) ::close(listed);
    return;
  }
  while (const dirent* const entry = ::readdir(entries)) {
    const std::string_view name = entry->d_name;
    if (!name.starts_with(kTemporaryStart) || !name.ends_with(kTemporaryEnd)) continue;
    const CHandle file(::openat(folder.Get(), entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file && ::flock(file.Get(), LOCK_EX | LOCK_NB) == 0) ::unlinkat(folder.Get(), entry->d_name, 0);
  }
  ::closedir(entries);
}

/// The names of the extended attributes of a file, each with a NUL behind it.
CString AttributeNames(const CHandle& file) {
  CString names;
  ssize_t size = 0;
  while ((size = ::flistxattr(file.Get(), nullptr, 0)) > 0) {
    names.resize(static_cast<std::size_t>(size));
    size = ::flistxattr(file.Get(), names.data(), names.size());
    if (size >= 0 || errno != ERANGE) break;
  }
  names.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
  return names;
}

/// Gives a file one extended attribute of another. An attribute that the file system does not have, or that an ordinary
/// user may not give, is none of the writer's business; other failures (false) lose something.
bool CopyAttribute(const CHandle& from, const CHandle& to, const char* name) {
  CString value;
  ssize_t size = 0;
  while ((size = ::fgetxattr(from.Get(), name, nullptr, 0)) >= 0) {
    value.resize(static_cast<std::size_t>(size));
    size = ::fgetxattr(from.Get(), name, value.data(), value.size());
    if (size >= 0 || errno != ERANGE) break;
  }
  if (size >= 0 && ::fsetxattr(to.Get(), name, value.data(), static_cast<std::size_t>(size), 0) == 0) return true;
  return errno == ENOTSUP || errno == EPERM || errno == EACCES || errno == ENODATA || errno == EINVAL;
}

/// Access control lists are attributes too; one that the folder gives to new files goes when the old file had none.
bool CopyAttributes(const CHandle& from, const CHandle& to) {
  constexpr const char* kAccessList = "system.posix_acl_access";
  const CString names = AttributeNames(from);
  bool hasList = false;
  for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
    const char* const name = names.c_str() + at;
    hasList |= std::string_view(name) == kAccessList;
    if (!CopyAttribute(from, to, name)) return false;
  }
  if (!hasList) ::fremovexattr(to.Get(), kAccessList);
  return true;
}

/// A temporary file in a folder, locked while it is written, removed unless it has become the target.
class CTemporary {
 public:
  explicit CTemporary(const CHandle& folder) : m_folder(folder.Get()) {}
  ~CTemporary() {
    if (!m_name.empty()) ::unlinkat(m_folder, m_name.c_str(), 0);
  }
  bool Create(mode_t mode) {
    static unsigned counter = 0;
    for (int attempt = 0; attempt < 1000; ++attempt) {
      const auto now = std::chrono::system_clock::now().time_since_epoch().count();
      CString name = CString(kTemporaryStart) + IntText(::getpid()) + "-" + IntText(now) + "-" + IntText(++counter);
      name += kTemporaryEnd;
      m_file = CHandle(Retry([&] {
        return ::openat(m_folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
      }));
      if (!m_file && errno == EEXIST) continue;
      if (!m_file) return false;
      struct stat made = {};
      Retry([&] { return ::flock(m_file.Get(), LOCK_EX); });  // a file system without locks has no sweeping either
      if (::fstat(m_file.Get(), &made) == 0 && made.st_nlink == 0) continue;  // swept before it was locked
      m_name = std::move(name);
      break;
    }
    return static_cast<bool>(m_file);
  }
  bool Write(std::string_view content) {
    while (!content.empty()) {
      const std::size_t part = std::min<std::size_t>(content.size(), 1U << 30);
      const ssize_t written = Retry([&] { return ::write(m_file.Get(), content.data(), part); });
      if (written < 0) return false;
      if (written == 0) return errno = ENOSPC, false;
      content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
  }
  /// Gives the file the mode, owner and extended attributes of the one it replaces. An ordinary user may not give files
  /// away, and a container does not know every owner (EINVAL): then the file is the writer's.
  bool Resemble(const struct stat& old, const CString& name) {
    struct stat own = {};
    if (::fstat(m_file.Get(), &own) != 0) return false;
    if ((own.st_uid != old.st_uid || own.st_gid != old.st_gid) && ::fchown(m_file.Get(), old.st_uid, old.st_gid) != 0 &&
        errno != EPERM && errno != EINVAL)
      return false;
    const CHandle source(
        Retry([&] { return ::openat(m_folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC); }));
    if (source && !CopyAttributes(source, m_file)) return false;
    return ::fchmod(m_file.Get(), old.st_mode & 07777) == 0;
  }
  /// A second handle keeps the lock until the file has its name: nobody sweeps it in between.
  bool Finish() {
    m_lock = CHandle(Retry([&] { return ::fcntl(m_file.Get(), F_DUPFD_CLOEXEC, 0); }));
    return Retry([&] { return ::fsync(m_file.Get()); }) == 0 && m_file.Close();
  }
  bool Become(const CString& name) {
    if (::renameat(m_folder, m_name.c_str(), m_folder, name.c_str()) != 0) return false;
    m_name.clear();
    return true;
  }

 private:
  int m_folder;
  CHandle m_file, m_lock;
  CString m_name;
};

}  // namespace

CResult<void> WriteFileChecked(const CString& path, std::string_view content) {
  const auto fail = [&](const CString& reason) {
    return SFailure{"\"" + path + "\" cannot be written: " + reason + "."};
  };
  CString target = path;
  if (target.find('\0') != CString::npos) return fail("the name holds a NUL byte");
  if (!FollowLinks(target)) return fail(Reason(errno));
  const std::size_t slash = target.rfind('/') + 1;
  const CString name = target.substr(slash), folderName = slash == 0 ? "." : target.substr(0, slash);
  if (name.empty()) return fail("this is no file name");
  const CHandle folder(Retry([&] { return ::open(folderName.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
  if (!folder) return fail(Reason(errno));

  struct stat old = {};
  const bool exists = ::fstatat(folder.Get(), name.c_str(), &old, AT_SYMLINK_NOFOLLOW) == 0;
  if (!exists && errno != ENOENT) return fail(Reason(errno));
  if (exists && !S_ISREG(old.st_mode)) return fail("it is no regular file");
  // A file that its owner protected would be replaced without a word: the folder alone decides about that.
  if (exists && ::faccessat(folder.Get(), name.c_str(), W_OK, AT_EACCESS) != 0) return fail(Reason(errno));

  Sweep(folder);
  CTemporary temporary(folder);
  if (!temporary.Create(exists ? 0600 : 0666) || !temporary.Write(content) ||
      (exists && !temporary.Resemble(old, name)) || !temporary.Finish() || !temporary.Become(name))
    return fail(Reason(errno));
  if (Retry([&] { return ::fsync(folder.Get()); }) != 0 && errno != EINVAL)  // some file systems have none for folders
    return SFailure{"\"" + path + "\" was written, but may not outlast a power failure: " + Reason(errno) + "."};
  return {};
}

CResult<CString> ReadFileLimited(const CString& path, std::size_t limit) {
  const auto fail = [&](const CString& reason) { return SFailure{"\"" + path + "\" cannot be read: " + reason + "."}; };
  if (path.find('\0') != CString::npos) return fail("the name holds a NUL byte");
  // Without O_NONBLOCK a pipe would wait here for somebody to write.
  const CHandle file(Retry([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
  struct stat found = {};
  if (!file || ::fstat(file.Get(), &found) != 0) return fail(Reason(errno));
  if (!S_ISREG(found.st_mode)) return fail("it is no regular file");
  const CString tooLarge = "it is larger than " + IntText(static_cast<std::int64_t>(limit)) + " bytes";
  if (static_cast<std::uint64_t>(found.st_size) > limit) return fail(tooLarge);

  CString read;
  std::size_t size = 0;
  for (;;) {  // one byte more than expected tells a growing file from a finished one
    if (size == read.size())
      read.resize(size == 0 ? static_cast<std::size_t>(found.st_size) + 1 : size + size / 2 + 4096);
    const ssize_t count = Retry([&] { return ::read(file.Get(), read.data() + size, read.size() - size); });
    if (count < 0) return fail(Reason(errno));
    if (count == 0) break;
    size += static_cast<std::size_t>(count);
    if (size > limit) return fail(tooLarge);
  }
  read.resize(size);
  return read;
}
