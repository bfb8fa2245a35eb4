// Folders and processes that tests need for a moment.
#pragma once
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// All bytes of a file; none without one.
inline std::string FileText(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// An empty folder of its own, removed at the end with all it holds.
class CTemporaryFolder {
 public:
  CTemporaryFolder() {
    std::string pattern = ::testing::TempDir() + "techsheet-XXXXXX";
    if (const char* const made = ::mkdtemp(pattern.data())) m_path = made;
  }
  CTemporaryFolder(const CTemporaryFolder&) = delete;
  ~CTemporaryFolder() {
    std::error_code ignored;
    if (m_path.empty()) return;
    std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(m_path, ignored);
  }
  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

/// Starts `work` in a process of its own. It takes no part in the test but by its result.
template <class F>
pid_t StartProcess(F work) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(work() ? 0 : 1);
  return child;
}
/// Waits for the end of a process: whether its work returned true.
inline bool EndOfProcess(pid_t child) {
  int status = 0;
  return ::waitpid(child, &status, 0) == child && status == 0;
}
template <class F>
bool InProcess(F work) {
  return EndOfProcess(StartProcess(work));
}
/// The same as a user who is no administrator, since permissions do not bind one.
template <class F>
bool AsOrdinaryUser(F work) {
  return InProcess([&] { return (::geteuid() != 0 || ::seteuid(65534) == 0) && work(); });
}
