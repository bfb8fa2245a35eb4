#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <regex>

#include "model/services/apperror.h"
#include "model/services/application.h"
#include "model/services/evt.h"
#include "model/services/registry.h"
#include "model/services/report.h"
#include "model/services/userinterface.h"

namespace {

TEST(EvtTest, ListenersMayComeAndGoWhileAnEventIsSent) {
  using CSubscription = CEvt::CSubscription;
  CString heard;
  std::optional<CSubscription> first;
  std::optional<CSubscription> third;
  std::optional<CSubscription> late;
  first.emplace([&](const SEvent& event) {
    heard += event.name + "1 ";
    first.reset();
    third.reset();
  });
  const CSubscription second([&](const SEvent& event) {
    heard += event.name + "2 ";
    if (!late) late.emplace([&](const SEvent& next) { heard += next.name + "late "; });
  });
  third.emplace([&](const SEvent&) { heard += "gone "; });
  EXPECT_EQ(CEvt::Send("A", 0, 0), 2);
  EXPECT_EQ(CEvt::Send("B", 0, 0), 2);
  EXPECT_EQ(heard, "A1 A2 B2 Blate ");
}

/// Notes what is shown.
class CNotes : public CNoUserInterface {
 public:
  EAnswer ShowMessage(const SMessage& message) override {
    shown += IntText(message.id) + ":" + message.text + "\n";
    return message.Default();
  }
  void ViewReport(const CReportFile& report) override {
    for (const SReportLine& line : report.Lines()) shown += "report:" + line.text + "\n";
  }
  CString shown;
};

class CField : public CFocusable {
 public:
  void SetFocus() override { ++focused; }
  int focused = 0;
};

TEST(AppErrorTest, TheLatestErrorIsShownOnceAndTheFieldAtFaultTakesTheFocus) {
  CNotes notes;
  const CUserInterfaceScope scope(notes);
  CAppError::SetLastError(Text::KindAndName, "Layer", "A");
  CAppError::SetLastError(Text::NoFileAccess, "b.tspcb");
  EXPECT_EQ(CAppError::GetLastErrorString(), "b.tspcb: this program has no access to files.");
  CAppError::ReportLastError();
  CAppError::ReportLastError();
  EXPECT_EQ(notes.shown, "20185:b.tspcb: this program has no access to files.\n");
  notes.shown.clear();
  CAppError::SetLastErrorText("The disk is full.");
  EXPECT_EQ(CAppError::GetLastError(), 0u);
  EXPECT_TRUE(CAppError::HasLastError());
  CAppError::ReportLastError();
  CField field;
  CAppError::ReportError(field, Text::LayerType);
  EXPECT_EQ(notes.shown, "0:The disk is full.\n20101:Layer type\n");
  EXPECT_EQ(field.focused, 1);
  CAppError::SetLastError(Text::LayerType);
  CAppError::SetLastError(0);
  EXPECT_FALSE(CAppError::HasLastError());
}

TEST(ReportTest, OnlyAReportWithProblemsIsShown) {
  CNotes notes;
  const CUserInterfaceScope scope(notes);
  CReportFile report(nullptr, Text::LayerTypes);
  report.Open();
  report.View();
  EXPECT_EQ(notes.shown, "");
  report.Write(Text::KindAndCount, "Track segment", "%1");
  report.WriteLine("%1 stays");
  report.Close();
  report.View();
  EXPECT_EQ(notes.shown, "report:Track segment: %1\nreport:%1 stays\n");
}

class RegistryTest : public ::testing::Test {
 protected:
  RegistryTest() : m_before(InstallSettingsStore(nullptr)) {}
  ~RegistryTest() override { InstallSettingsStore(std::move(m_before)); }

  /// Which types the value can be read as; each other one leaves its variable as it was.
  CString ReadableAs(const CString& name) const {
    CString types;
    const auto read = [&](auto untouched, const char* type) {
      auto value = untouched;
      if (key.GetValue(name, value)) types += type;
      else EXPECT_EQ(value, untouched) << name;
    };
    read(CString("default"), "text ");
    read(4711ul, "unsigned ");
    read(4711, "int ");
    read(0.25, "double ");
    read(CPoint{3, 4}, "point ");
    return types;
  }
  CAppRegistry key{"Settings\\Styles"};

 private:
  std::unique_ptr<CSettingsStore> m_before;
};

TEST_F(RegistryTest, AbsentAndUnfitValuesLeaveTheCallersDefault) {
  key.SetValue("small", -5);
  key.SetValue("large", 5'000'000'000ul);
  key.SetValue("all bits", std::numeric_limits<unsigned long>::max());
  key.SetValue("word", "word");
  key.SetValue("real", 0.1);
  key.SetValue("point", CPoint{-2, std::numeric_limits<int>::max()});
  key.SetValue("far", "1,2147483648");
  key.SetValue("half", "1.5x");
  struct SCase {
    const char* name;
    const char* types;
  };
  constexpr SCase kCases[] = {
      {"absent", ""},    {"small", "unsigned int "}, {"large", "unsigned "},   {"all bits", "unsigned int "},
      {"word", "text "}, {"real", "text double "},   {"point", "text point "}, {"far", "text "},
      {"half", "text "},
  };
  for (const SCase& c : kCases) EXPECT_EQ(ReadableAs(c.name), c.types) << c.name;
  unsigned long bits = 0;
  double real = 0;
  EXPECT_TRUE(key.GetValue("all bits", bits) && bits == std::numeric_limits<unsigned long>::max());
  EXPECT_TRUE(key.GetValue("real", real) && real == 0.1);
}

TEST_F(RegistryTest, KeysAreApart) {
  key.SetValue("Columns", "1,2");
  key.SetKey("Settings\\Layers");
  EXPECT_EQ(ReadableAs("Columns"), "");
  EXPECT_FALSE(key.DeleteValue("Columns"));
  key.SetKey("Settings\\Styles");
  EXPECT_TRUE(key.DeleteValue("Columns"));
  EXPECT_EQ(ReadableAs("Columns"), "");
  GetWorkspace()->WriteInt("Docked", 7);
  EXPECT_EQ(GetWorkspace()->GetInt("Docked", 1), 7);
  EXPECT_EQ(GetWorkspace()->GetInt("Absent", 1), 1);
}

TEST(ApplicationTest, EveryEditionIsItsOwnNameAlone) {
  const CStringArray before = CApplication::Editions();
  EXPECT_EQ(before, CStringArray{"Pellam"});
  const auto holding = [] {
    return CString() + (CApplication::IsPellam() ? 'P' : '-') + (CApplication::IsCorvina() ? 'C' : '-') +
           (CApplication::IsCorvinaPro() ? 'p' : '-') + (CApplication::IsCorvinaCreator() ? 'c' : '-') +
           (CApplication::IsCorvinaEngineer() ? 'e' : '-') + (CApplication::IsCorvinaExplorer() ? 'x' : '-') +
           (CApplication::IsTarvik() ? 'T' : '-') + (CApplication::IsBrenlo() ? 'B' : '-') +
           (CApplication::IsKTComponents() ? 'K' : '-') + (CApplication::IsKestrel() ? 'k' : '-');
  };
  const char* const expected[] = {"P---------", "-C--------", "--p-------", "---c------", "----e-----",
                                  "-----x----", "------T---", "-------B--", "--------K-", "---------k"};
  const CStringArray all = CApplication::AllEditions();
  ASSERT_EQ(all.size(), std::size(expected));
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_TRUE(CApplication::SetEditions({all[i]}));
    EXPECT_EQ(holding(), expected[i]);
  }
  EXPECT_TRUE(CApplication::SetEditions({"Corvina", "CorvinaPro"}));
  EXPECT_FALSE(CApplication::SetEditions({"Pellam", "corvina"}));
  EXPECT_EQ(holding(), "-Cp-------");
  CApplication::SetEditions(before);
}

TEST(ApplicationTest, TheVersionIsShownInPartsOfAtLeastSoManyDigits) {
  const auto shown = [](int parts, int digits) { return CApplication::GetProductNameWithVersion(parts, digits); };
  EXPECT_EQ(shown(9, 0), "Techsheet " + CApplication::GetVersion());
  EXPECT_TRUE(std::regex_match(shown(2, 4), std::regex("Techsheet [0-9]{4}[.][0-9]{4}"))) << shown(2, 4);
  EXPECT_TRUE(std::regex_match(shown(0, -1), std::regex("Techsheet [0-9]+"))) << shown(0, -1);
}

}  // namespace
