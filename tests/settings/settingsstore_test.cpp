#include "settings/settingsstore.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include <algorithm>
#include <limits>

#include "storage/checkedwriter.h"
#include "support/files.h"

namespace fs = std::filesystem;

namespace {

class SettingsStoreTest : public ::testing::Test {
 protected:
  CFileSettingsStore Store() {
    return CFileSettingsStore(m_folder, [this](const CString& text) { (m_reports += text) += '\n'; });
  }
  CString File(const CString& name = "settings.json") const {
    const CResult<CString> content = ReadFileLimited(m_folder + "/" + name, 1'000'000);
    return content ? *content : content.Error();
  }
  void PutFile(std::string_view content) {
    fs::create_directories(m_folder);
    const CResult<void> written = WriteFileChecked(m_folder + "/settings.json", content);
    ASSERT_TRUE(written) << written.Error();
  }
  static CString Text(const CSettingsStore& store, const CString& key, const CString& name) {
    CSettingValue value = "absent";
    store.Get(key, name, value);
    return std::holds_alternative<CString>(value) ? std::get<CString>(value) : IntText(std::get<std::int64_t>(value));
  }

  const CTemporaryFolder m_temporary;
  CString m_folder = m_temporary.Path() / "config" / "techsheet";
  CString m_reports;
};

TEST_F(SettingsStoreTest, ValuesOutliveTheStoreAndStandOneALine) {
  const CString odd = "a \"quoted\" \\ text\nwith \x01 and \xC3\xA9";
  {
    CFileSettingsStore store = Store();
    EXPECT_EQ(Text(store, "Preferences", "MRU"), "absent");
    EXPECT_TRUE(store.Set("Settings\\Styles\\Layers", "Columns", odd));
    EXPECT_TRUE(store.Set("Preferences", "MRU", std::numeric_limits<std::int64_t>::min()));
    EXPECT_TRUE(store.Set("Preferences", "Gone", 1));
    EXPECT_TRUE(store.Set("", "", ""));
    EXPECT_TRUE(store.Delete("Preferences", "Gone"));
    EXPECT_FALSE(store.Delete("Preferences", "Gone"));
    EXPECT_FALSE(store.Set("Preferences", "MRU", "\xFF"));
  }
  EXPECT_EQ(File(),
            "{\n\"format\": \"techsheet-settings\",\n\"version\": 1,\n\"keys\": {\n"
            "\"\": {\n  \"\": \"\"\n},\n"
            "\"Preferences\": {\n  \"MRU\": -9223372036854775808\n},\n"
            "\"Settings\\\\Styles\\\\Layers\": {\n"
            "  \"Columns\": \"a \\\"quoted\\\" \\\\ text\\nwith \\u0001 and \xC3\xA9\"\n}\n}\n}\n");
  const CFileSettingsStore store = Store();
  EXPECT_EQ(Text(store, "Settings\\Styles\\Layers", "Columns"), odd);
  EXPECT_EQ(Text(store, "Preferences", "MRU"), "-9223372036854775808");
  EXPECT_EQ(m_reports, "");
}

TEST_F(SettingsStoreTest, TwoProgramsLoseNothingOfEachOther) {
  CFileSettingsStore store = Store();
  ASSERT_TRUE(store.Set("Test", "before", 1));
  pid_t programs[2];
  for (const int program : {0, 1})
    programs[program] = StartProcess([&] {
      CFileSettingsStore own = Store();
      bool kept = true;
      for (int i = 0; i < 50; ++i) kept &= own.Set("Test", IntText(program) + "/" + IntText(i), i);
      return kept && own.Set("Test", "last", program);
    });
  for (const pid_t program : programs) EXPECT_TRUE(EndOfProcess(program));
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(Text(store, "Test", "0/" + IntText(i)), IntText(i));
    EXPECT_EQ(Text(store, "Test", "1/" + IntText(i)), IntText(i));
  }
  EXPECT_EQ(Text(store, "Test", "before"), "1");
  EXPECT_EQ(m_reports, "");
}

TEST_F(SettingsStoreTest, StoresSeeEachOthersChangesAtTheNextLook) {
  CFileSettingsStore one = Store(), other = Store();
  for (int i = 0; i < 20; ++i) {  // texts of one length, so that only the file's identity tells
    CFileSettingsStore& writer = i / 5 % 2 == 0 ? one : other;
    CFileSettingsStore& reader = i / 5 % 2 == 0 ? other : one;
    ASSERT_TRUE(writer.Set("Test", "turn", 100 + i));
    ASSERT_EQ(Text(reader, "Test", "turn"), IntText(100 + i));
  }
  ASSERT_TRUE(one.Delete("Test", "turn"));
  EXPECT_EQ(Text(other, "Test", "turn"), "absent");
}

TEST_F(SettingsStoreTest, ADamagedFileIsMovedAsideAndReportedOnce) {
  const CString head = "{\"format\": \"techsheet-settings\", \"version\": 1, \"keys\": ";
  struct SCase {
    const char* why;
    CString content;
  };
  const SCase cases[] = {
      {"empty", ""},
      {"cut off", head + "{\"a\": {\"b\": 1"},
      {"not UTF-8", head + "{\"a\": {\"b\": \"\xFF\"}}}"},
      {"another file", "{\"format\": \"other\", \"version\": 1, \"keys\": {}}"},
      {"a real number", head + "{\"a\": {\"b\": 1.5}}}"},
      {"too large a number", head + "{\"a\": {\"b\": 9223372036854775808}}}"},
      {"a key twice", head + "{\"a\": {}, \"a\": {}}}"},
      {"a value twice", head + "{\"a\": {\"b\": 1, \"b\": 2}}}"},
      {"deeply nested", head + CString(100'000, '[')},
      {"more than known", head + "{}, \"other\": 1}"},
  };
  int number = 0;
  for (const SCase& c : cases) {
    PutFile(c.content);
    m_reports.clear();
    CFileSettingsStore store = Store();
    const bool looksFirst = number % 2 == 0;  // else the change meets the damage
    EXPECT_TRUE(!looksFirst || Text(store, "a", "b") == "absent") << c.why;
    EXPECT_TRUE(store.Set("a", "b", 7)) << c.why;
    EXPECT_EQ(Text(store, "a", "b"), "7") << c.why;
    EXPECT_EQ(std::count(m_reports.begin(), m_reports.end(), '\n'), 1) << c.why << ": " << m_reports;
    const CString aside = "settings.json.damaged-" + IntText(++number);
    EXPECT_EQ(File(aside), c.content) << c.why;
    EXPECT_NE(m_reports.find("It is now \"" + m_folder + "/" + aside), CString::npos) << m_reports;
  }
}

TEST_F(SettingsStoreTest, TheFileOfANewerVersionIsLeftAlone) {
  const CString newer = "{\"format\": \"techsheet-settings\", \"version\": 2, \"more\": [1.5]}";
  PutFile(newer);
  CFileSettingsStore store = Store();
  EXPECT_EQ(Text(store, "a", "b"), "absent");
  EXPECT_FALSE(store.Set("a", "b", 1));
  EXPECT_FALSE(store.Set("a", "b", 1));
  EXPECT_EQ(File(), newer);
  EXPECT_EQ(m_reports,
            "\"" + m_folder + "/settings.json\" was written by a newer version of this program. It is not used.\n");
}

TEST_F(SettingsStoreTest, WhereNothingCanBeKeptSetSaysSo) {
  ASSERT_TRUE(Store().Set("a", "b", 1));
  const CString before = File();
  fs::permissions(m_temporary.Path(), fs::perms(0755));
  fs::permissions(m_temporary.Path() / "config", fs::perms(0755));
  fs::permissions(m_folder, fs::perms(0555));
  fs::permissions(m_folder + "/settings.json", fs::perms(0644));
  fs::permissions(m_folder + "/settings.lock", fs::perms(0666));
  EXPECT_TRUE(AsOrdinaryUser([&] {
    CFileSettingsStore store = Store();
    return !store.Set("a", "b", 2) && !store.Delete("a", "b") && Text(store, "a", "b") == "1" && !m_reports.empty();
  }));
  fs::permissions(m_folder + "/settings.json", fs::perms(0));
  EXPECT_TRUE(AsOrdinaryUser([&] {
    CFileSettingsStore store = Store();
    return !store.Set("a", "b", 2) && Text(store, "a", "b") == "absent" && !m_reports.empty();
  }));
  fs::permissions(m_folder, fs::perms(0700));
  fs::permissions(m_folder + "/settings.json", fs::perms(0600));
  EXPECT_EQ(File(), before);

  m_reports.clear();
  CFileSettingsStore nowhere("", [this](const CString& text) { (m_reports += text) += '\n'; });
  EXPECT_FALSE(nowhere.Set("a", "b", 1));
  EXPECT_FALSE(nowhere.Set("a", "b", "kept by the program"));
  EXPECT_EQ(Text(nowhere, "a", "b"), "kept by the program");
  EXPECT_EQ(std::count(m_reports.begin(), m_reports.end(), '\n'), 1) << m_reports;
  EXPECT_FALSE(CFileSettingsStore(m_folder + "/settings.json", nullptr).Set("a", "b", 1));
  EXPECT_EQ(File(), before);
}

TEST_F(SettingsStoreTest, AProgramThatHoldsTheLockIsWaitedForOnce) {
  ASSERT_TRUE(Store().Set("a", "b", 1));
  const int other = ::open((m_folder + "/settings.lock").c_str(), O_RDWR);
  ASSERT_EQ(::flock(other, LOCK_EX), 0);
  using namespace std::chrono;
  constexpr milliseconds kWait(100);
  CFileSettingsStore store(m_folder, [this](const CString& text) { (m_reports += text) += '\n'; }, kWait);
  const auto start = steady_clock::now();
  for (int i = 0; i < 10; ++i) EXPECT_FALSE(store.Set("a", "b", 2));
  EXPECT_LT(steady_clock::now() - start, 5 * kWait);
  EXPECT_GE(steady_clock::now() - start, kWait);
  EXPECT_EQ(std::count(m_reports.begin(), m_reports.end(), '\n'), 1) << m_reports;
  ::close(other);
  EXPECT_TRUE(store.Set("a", "b", 2));
}

TEST_F(SettingsStoreTest, AByteOrderMarkBeforeTheFileIsNoDamage) {
  PutFile("\xEF\xBB\xBF{\"format\": \"techsheet-settings\", \"version\": 1, \"keys\": {\"a\": {\"b\": \"c\"}}}");
  EXPECT_EQ(Text(Store(), "a", "b"), "c");
  EXPECT_EQ(m_reports, "");
}

TEST(SettingsFolderTest, TheEnvironmentChoosesTheFolder) {
  struct SCase {
    const char *own, *config, *home, *folder;
  };
  const SCase cases[] = {
      {"/own", "/config", "/home/u", "/own"},
      {"", "/config", "/home/u", "/config/techsheet"},
      {"", "relative", "/home/u", "/home/u/.config/techsheet"},
      {"", "", "/home/u", "/home/u/.config/techsheet"},
      {"", "", "", ""},
  };
  for (const SCase& c : cases)
    EXPECT_TRUE(InProcess([&] {
      return ::setenv("TECHSHEET_SETTINGS", c.own, 1) == 0 && ::setenv("XDG_CONFIG_HOME", c.config, 1) == 0 &&
             ::setenv("HOME", c.home, 1) == 0 && SettingsFolder() == c.folder;
    })) << c.folder;
}

}  // namespace
