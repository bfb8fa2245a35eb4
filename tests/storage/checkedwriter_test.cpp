#include "storage/checkedwriter.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <thread>

#include "support/files.h"

namespace fs = std::filesystem;

namespace {

class CheckedWriterTest : public ::testing::Test {
 protected:
  CString Path(const char* name) const { return m_folder / name; }
  bool Write(const char* name, std::string_view content) {
    const CResult<void> written = WriteFileChecked(Path(name), content);
    if (!written) m_error = written.Error();
    return static_cast<bool>(written);
  }
  CString Read(const char* name) {
    const CResult<CString> content = ReadFileLimited(Path(name), 1'000'000);
    return content ? *content : content.Error();
  }
  std::ptrdiff_t Files() const { return std::distance(fs::directory_iterator(m_folder), {}); }

  const CTemporaryFolder m_temporary;
  const fs::path m_folder = m_temporary.Path();
  CString m_error;
};

TEST_F(CheckedWriterTest, ContentReplacesContentAndLeavesNothingElse) {
  ASSERT_TRUE(Write("a", CString(300'000, 'x'))) << m_error;
  ASSERT_TRUE(Write("a", std::string_view("new\0", 4))) << m_error;
  EXPECT_EQ(Read("a"), CString("new\0", 4));
  ASSERT_TRUE(Write("a", "")) << m_error;
  EXPECT_EQ(Read("a"), "");
  EXPECT_EQ(Files(), 1);
}

TEST_F(CheckedWriterTest, ModeAndOwnerAreKeptAndANewFileGetsTheUsualMode) {
  const auto mode = [&](const char* name) { return static_cast<unsigned>(fs::status(Path(name)).permissions()); };
  const mode_t mask = ::umask(027);
  ASSERT_TRUE(Write("a", "x"));
  ::umask(mask);
  EXPECT_EQ(mode("a"), 0640U);
  for (const unsigned wanted : {0600U, 0666U, 0755U}) {
    fs::permissions(Path("a"), static_cast<fs::perms>(wanted));
    ASSERT_TRUE(Write("a", "y"));
    EXPECT_EQ(mode("a"), wanted);
  }
  if (::geteuid() != 0) return;  // only an administrator gives files away
  for (const auto& [user, group] : {std::pair<uid_t, gid_t>{65534, 0}, {0, 65534}}) {
    ASSERT_EQ(::chown(Path("a").c_str(), user, group), 0);
    ASSERT_TRUE(Write("a", "z"));
    struct stat now{};
    ASSERT_EQ(::stat(Path("a").c_str(), &now), 0);
    EXPECT_TRUE(now.st_uid == user && now.st_gid == group) << now.st_uid << ':' << now.st_gid;
  }
}

TEST_F(CheckedWriterTest, ExtendedAttributesAndAccessListsAreKept) {
  ASSERT_TRUE(Write("a", "old"));
  // Access for the owner, user 65534, the group, at most read, and nobody else.
  const char list[] =
      "\2\0\0\0\1\0\6\0\xFF\xFF\xFF\xFF\2\0\4\0\xFE\xFF\0\0\4\0\4\0\xFF\xFF\xFF\xFF\x10\0\4\0\xFF\xFF\xFF\xFF"
      "\x20\0\0\0\xFF\xFF\xFF\xFF";
  const CString access(list, sizeof list - 1), note(3000, 'n');
  if (::setxattr(Path("a").c_str(), "user.note", note.data(), note.size(), 0) != 0 ||
      ::setxattr(Path("a").c_str(), "system.posix_acl_access", access.data(), access.size(), 0) != 0)
    GTEST_SKIP() << "this file system has no attributes";
  const auto attribute = [&](const char* name) {
    CString value(4000, '\0');
    value.resize(
        static_cast<std::size_t>(std::max<ssize_t>(::getxattr(Path("a").c_str(), name, value.data(), 4000), 0)));
    return value;
  };
  ASSERT_TRUE(Write("a", "new")) << m_error;
  EXPECT_EQ(attribute("user.note"), note);
  EXPECT_EQ(attribute("system.posix_acl_access"), access);
  // What the folder gives to new files is not for one that did without it.
  ASSERT_EQ(::removexattr(Path("a").c_str(), "system.posix_acl_access"), 0);
  ASSERT_EQ(::setxattr(m_folder.c_str(), "system.posix_acl_default", access.data(), access.size(), 0), 0);
  ASSERT_TRUE(Write("a", "newer")) << m_error;
  EXPECT_EQ(attribute("system.posix_acl_access"), "");
}

TEST_F(CheckedWriterTest, ASymbolicLinkStaysAndItsTargetIsReplaced) {
  fs::create_directory(m_folder / "sub");
  fs::create_symlink("sub/second", Path("first"));
  fs::create_symlink("../real", Path("sub/second"));
  ASSERT_TRUE(Write("first", "made through links")) << m_error;
  ASSERT_TRUE(Write("first", "replaced")) << m_error;
  EXPECT_TRUE(fs::is_symlink(Path("first")));
  EXPECT_TRUE(fs::is_symlink(Path("sub/second")));
  EXPECT_FALSE(fs::is_symlink(Path("real")));
  EXPECT_EQ(Read("real"), "replaced");

  fs::create_symlink("round", Path("round"));
  EXPECT_FALSE(Write("round", "x"));
  EXPECT_EQ(m_error, "\"" + Path("round") + "\" cannot be written: Too many levels of symbolic links.");
}

TEST_F(CheckedWriterTest, WhatMayNotBeWrittenStaysAsItWas) {
  fs::create_directory(m_folder / "sub");
  EXPECT_FALSE(Write("sub", "x"));
  EXPECT_EQ(m_error, "\"" + Path("sub") + "\" cannot be written: it is no regular file.");
  EXPECT_FALSE(Write("sub/", "x"));
  EXPECT_FALSE(Write("none/a", "x"));
  EXPECT_EQ(m_error, "\"" + Path("none/a") + "\" cannot be written: No such file or directory.");
  EXPECT_FALSE(WriteFileChecked("/dev/full", "x"));
  EXPECT_FALSE(WriteFileChecked(CString("a\0b", 3), "x"));
  EXPECT_FALSE(WriteFileChecked("", "x"));

  ASSERT_TRUE(Write("sub/a", "old"));
  fs::permissions(Path("sub/a"), fs::perms::all);
  fs::permissions(m_folder, fs::perms::owner_all | fs::perms::others_exec);
  fs::permissions(m_folder / "sub", fs::perms(0555));
  EXPECT_TRUE(AsOrdinaryUser([&] { return !Write("sub/a", "new") && m_error.ends_with(": Permission denied."); }))
      << "a folder that may not be written to";
  fs::permissions(m_folder / "sub", fs::perms(0777));
  fs::permissions(Path("sub/a"), fs::perms(0444));
  EXPECT_TRUE(AsOrdinaryUser([&] { return !Write("sub/a", "new") && m_error.ends_with(": Permission denied."); }))
      << "a file that may not be written to, in a folder that may";
  EXPECT_EQ(Read("sub/a"), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(m_folder / "sub"), {}), 1);
}

TEST_F(CheckedWriterTest, AFullDiskLeavesTheOldFileAndNoTemporaryOne) {
  ASSERT_TRUE(Write("a", "old"));
  EXPECT_TRUE(InProcess([&] {  // a limit of the process stands for the end of the disk: part of the content fits
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100'000, 100'000};
    return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 && !Write("a", CString(200'000, 'x')) &&
           m_error.ends_with(" cannot be written: File too large.");
  }));
  EXPECT_EQ(Read("a"), "old");
  EXPECT_EQ(Files(), 1);
}

/// A program that writes without end is killed at any moment: the file is one of its two contents, whole.
TEST_F(CheckedWriterTest, AKilledProgramLeavesOneWholeFile) {
  const CString contents[] = {CString(2'000'000, 'a'), CString(1'000'000, 'b')};
  ASSERT_TRUE(Write("a", contents[0]));
  for (int round = 0; round < 20; ++round) {
    const pid_t child = ::fork();
    if (child == 0)
      for (unsigned i = 0;; ++i) Write("a", contents[i % 2]);
    std::this_thread::sleep_for(std::chrono::milliseconds(2 + round));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    const CResult<CString> content = ReadFileLimited(Path("a"), 4'000'000);
    ASSERT_TRUE(content) << content.Error();
    ASSERT_TRUE(*content == contents[0] || *content == contents[1]) << content->size() << " bytes";
  }
  // What such programs leave is swept by the next one, but for what somebody is at work on.
  ASSERT_TRUE(Write("a", "left alone"));
  fs::copy(Path("a"), Path(".techsheet-1-2-3.tmp"));
  fs::copy(Path("a"), Path(".techsheet-4-5-6.tmp"));
  const int busy = ::open(Path(".techsheet-4-5-6.tmp").c_str(), O_RDONLY);
  ASSERT_EQ(::flock(busy, LOCK_EX), 0);
  ASSERT_TRUE(Write("a", "swept"));
  EXPECT_EQ(Files(), 2);
  ::close(busy);
}

TEST_F(CheckedWriterTest, OnlyRegularFilesWithinTheLimitAreRead) {
  ASSERT_TRUE(Write("a", "12345"));
  const CResult<CString> tooLarge = ReadFileLimited(Path("a"), 4);
  ASSERT_FALSE(tooLarge);
  EXPECT_EQ(tooLarge.Error(), "\"" + Path("a") + "\" cannot be read: it is larger than 4 bytes.");
  EXPECT_FALSE(ReadFileLimited(Path("none"), 4));
  EXPECT_FALSE(ReadFileLimited(m_folder, 4));
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(ReadFileLimited(Path("pipe"), 4));  // and does not wait for a writer
  EXPECT_FALSE(ReadFileLimited("/dev/zero", 4));
  EXPECT_FALSE(ReadFileLimited("/proc/self/status", 4));  // says of itself that it is empty
  const CResult<CString> whole = ReadFileLimited(Path("a"), 5);
  ASSERT_TRUE(whole) << whole.Error();
  EXPECT_EQ(*whole, "12345");
  const CResult<CString> growing = ReadFileLimited("/proc/self/status", 1'000'000);
  ASSERT_TRUE(growing) << growing.Error();
  EXPECT_TRUE(growing->starts_with("Name:"));
}

}  // namespace
