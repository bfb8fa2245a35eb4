// The program as people and scripts run it: what it prints, and how it ends.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <simdjson.h>

#include <fstream>

#include "commands/checkdesign.h"
#include "storage/designfile.h"
#include "support/files.h"

namespace fs = std::filesystem;

namespace {

const fs::path kSource = TECHSHEET_SOURCE_DIR;

class Cli : public ::testing::Test {
 protected:
  struct SEnd {
    int status;
    CString out, error;
  };
  SEnd Run(CStringArray args, const CString& standardOutput = {}) {
    const CString out = standardOutput.empty() ? Path("stdout") : standardOutput, error = Path("stderr");
    const pid_t child = ::fork();
    if (child == 0) {
      ::setenv("TECHSHEET_SETTINGS", Path("settings").c_str(), 1);
      Redirect(STDOUT_FILENO, out, O_WRONLY | O_CREAT | O_TRUNC);
      Redirect(STDERR_FILENO, error, O_WRONLY | O_CREAT | O_TRUNC);
      args.insert(args.begin(), TECHSHEET_CLI);
      std::vector<char*> argv;
      for (CString& arg : args) argv.push_back(arg.data());
      argv.push_back(nullptr);
      ::execv(TECHSHEET_CLI, argv.data());
      ::_exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, standardOutput.empty() ? FileText(out) : "", FileText(error)};
  }
  static void Redirect(int descriptor, const CString& path, int flags) {
    ::dup2(::open(path.c_str(), flags, 0600), descriptor);
  }
  CString Path(const CString& name) const { return m_folder.Path() / name; }
  CString Save(const CTechnology& technology, const CString& name) const {
    EXPECT_TRUE(WriteDesignFile(Path(name), technology));
    return Path(name);
  }

 private:
  CTemporaryFolder m_folder;
};

TEST_F(Cli, ShowAlignsWhatEveryTerminalShows) {
  CPcbDesign design;
  design.SetName("Lötstopp");
  design.AddTrackStyle("配線 Ω", 123'456);
  design.AddTrackStyle("Signal", 2'540'000);
  POSITION at = nullptr;
  CTrackStyle* const usual = design.FirstTrackStyle(at);
  const CString path = Save(design, "a.tspcb");
  const CString expected = path +
                           ": PCB design \"Lötstopp\", lengths in mil\n"
                           "\n"
                           "trackStyles (3)\n"
                           "  Name       Size\n"
                           "  Default    9.84  default\n"
                           "  配線 Ω     4.86\n"
                           "  Signal   100.00\n";
  ASSERT_EQ(usual->GetName(), "Default");
  EXPECT_EQ(Run({"show", path, "trackstyles", "--units", "mil"}).out, expected);
}

TEST_F(Cli, ShowKeepsControlCharactersFromTheTerminal) {
  CPcbDesign design;
  design.SetName("\x1B]0;name\x07");
  design.DesignValues().Set(&SDesignValuesFields::title, "one\r\ntwo\x1B[2J\xC2\x9Bz");
  const CString path = Save(design, "a.tspcb");
  const SEnd end = Run({"show", path, "design"});
  EXPECT_NE(end.out.find("Title              one↵two\\x1B[2J\\x9Bz\n"), CString::npos) << end.out;
  EXPECT_TRUE(end.out.starts_with(path + ": PCB design \"\\x1B]0;name\\x07\"")) << end.out;
  EXPECT_EQ(Run({"show", "\x1B\n\xFF"}).error, "\"\\x1B↵\\xFF\" cannot be read: No such file or directory.\n");
  EXPECT_NE(Run({"show", path, "design", "--format", "json"}).out.find("[2J\\u009bz"), CString::npos);
}

TEST_F(Cli, ShowShortensTheOverviewAlone) {
  CPcbDesign design;
  const CString name(200, 'n');
  design.AddTrackStyle(name, 1);
  const CString path = Save(design, "a.tspcb");
  EXPECT_EQ(Run({"show", path}).out.find(name), CString::npos);
  EXPECT_NE(Run({"show", path, "trackStyles"}).out.find(name), CString::npos);
}

TEST_F(Cli, TheEditionsOfTheSettingsHoldUnlessOthersAreGiven) {
  std::filesystem::create_directory(Path("settings"));
  const auto keep = [&](const CString& editions) {
    std::ofstream(Path("settings/settings.json"))
        << R"({"format": "techsheet-settings", "version": 1, "keys": {"Preferences": {"Editions": ")" + editions +
               "\"}}}";
  };
  CPcbDesign design;  // of which Tarvik looks at no layers
  design.AddLayer("Note\nbook", nullptr, ELayerSide::Bottom, ELayerBias::None, nullptr);
  const CString path = Save(design, "a.tspcb");
  keep("Tarvik");
  EXPECT_EQ(Run({"check", path}).status, 0);
  EXPECT_EQ(Run({"check", path, "--edition", "Pellam"}).status, 5);
  keep("Nobody");
  const SEnd end = Run({"check", path});
  EXPECT_EQ(end.status, 5);
  EXPECT_NE(end.error.find("\"Nobody\" is no edition"), CString::npos);
}

TEST_F(Cli, ShowPrintsExactValuesAsJson) {
  CPcbDesign design;
  CNet* const net = design.AddNet("GND", design.GetDefaults()->GetNetClass());
  for (const int end : {1, -2'147'483'647}) {
    CVia via;
    via.Set(&SViaFields::style, design.GetDefaults()->GetPadStyle());
    via.Set(&SViaFields::position, CPoint{end, 7});
    net->Vias().Add(via);
  }
  design.AddTrackStyle("Fine", 1);
  const SEnd end = Run({"show", Save(design, "a.tspcb"), "trackStyles", "nets.vias", "--format", "json"});
  simdjson::dom::parser parser;
  simdjson::dom::element json;
  ASSERT_EQ(parser.parse(end.out).get(json), simdjson::SUCCESS) << end.out;
  EXPECT_EQ(std::int64_t(json["sections"]["trackStyles"].at(1)["width"]["value"]), 1);
  EXPECT_EQ(std::string_view(json["sections"]["trackStyles"].at(1)["width"]["text"]), "0.000");
  EXPECT_EQ(std::string_view(json["sections"]["trackStyles"].at(0)["marks"].at(0)), "default");
  EXPECT_EQ(std::int64_t(json["sections"]["nets.vias"].at(1)["position"]["value"].at(0)), -2'147'483'647);
  EXPECT_EQ(std::string_view(json["sections"]["nets.vias"].at(1)["owner"]), "GND");
}

TEST_F(Cli, EveryCollectionOfEveryKindIsASection) {
  for (const CString& kind : TechnologyClassNames()) {
    SCOPED_TRACE(kind);
    const auto technology = MakeTechnology(kind, EContent::DefaultTechnology);
    CStringArray args{"show", Save(*technology, "any"), "summary"};
    for (const CTechnology::SSingle& single : technology->Singles()) args.push_back(single.name);
    for (const CCollectionBase* collection : technology->Collections()) args.push_back(collection->Name());
    const SEnd text = Run(args);
    EXPECT_EQ(text.status, 0) << text.error;
    args.insert(args.end(), {"--format", "json"});
    const SEnd json = Run(args);
    simdjson::dom::parser parser;
    simdjson::dom::object sections;
    ASSERT_EQ(parser.parse(json.out)["sections"].get(sections), simdjson::SUCCESS) << json.error;
    EXPECT_EQ(sections.size(), args.size() - 4);
    for (const CCollectionBase* collection : technology->Collections())
      EXPECT_EQ(std::uint64_t(sections["summary"][collection->Name()]["count"]), collection->Count())
          << collection->Name();
  }
}

TEST_F(Cli, CheckNamesThePageAndTheRow) {
  CPcbDesign design;
  design.AddLayer("Note\nbook", nullptr, ELayerSide::Bottom, ELayerBias::None, nullptr);
  CNet* const net = design.AddNet("GND", design.GetDefaults()->GetNetClass());
  design.FindLayer("Top")->SetNet(net);
  const CString path = Save(design, "a.tspcb");
  const CString before = FileText(path);
  const SEnd end = Run({"check", path});
  EXPECT_EQ(end.status, 5);
  EXPECT_NE(end.out.find("Layers: Row 4: \"Note↵book\" cannot be a layer name."), CString::npos) << end.out;
  EXPECT_NE(end.out.find("Layers: warning: The layer \"Top\" has a plane net"), CString::npos) << end.out;
  EXPECT_NE(end.out.find(path + ": 1 violation, 1 warning\n"), CString::npos) << end.out;
  EXPECT_EQ(FileText(path), before);
}

TEST_F(Cli, CheckTellsHowManyShareWhatTheFirstDo) {
  CPcbDesign design;
  for (const char* const name : {"A", "B", "C"})
    design.AddLayer(name, nullptr, ELayerSide::Top, ELayerBias::None, nullptr)->SetUsage(ELayerUsage::SolderMask);
  design.SetDefaultLayerOrder();
  for (const char* const name : {"A", "B"}) design.AddLayerSpan(name, design.FindBuiltInLayer(), design.FindLayer("C"));
  const SDesignCheck check = CheckDesign(design);
  CString told;
  for (const SDesignCheck::SFinding& one : check.violations) told += one.text + '\n';
  EXPECT_EQ(
      told,
      "The layers \"A\" and \"B\" of the side Top have the same usage, Solder mask. A side holds one layer of this "
      "usage. The same holds for 1 more.\n"
      "The layer spans \"A\" and \"B\" have layers in common. A span cannot end on all layers.\n");
}

TEST_F(Cli, WhatPagesAskIsNoViolation) {
  CPcbDesign design;
  for (const char* const name : {"Top", "Bottom"}) design.FindLayer(name)->SetUsage(ELayerUsage::Documentation);
  for (const char* const name : {"Top", "Bottom"}) design.FindLayer(name)->SetBias(ELayerBias::None);
  CLayerType odd;
  odd.SetName("=Odd");
  odd.SetViasEnabled(false);
  design.layerTypes.Add(odd);
  const auto state = DesignText(design);
  const SDesignCheck check = CheckDesign(design);
  EXPECT_TRUE(check.violations.empty()) << check.violations.front().text;
  CString told;
  for (const SDesignCheck::SFinding& one : check.warnings) told += one.page + ": " + one.text + '\n';
  EXPECT_EQ(told,
            "Layers: No outer layer is electrical. Continue without one?\n"
            "Layer types: The layer type \"=Odd\" is electrical, which allows every kind of pad and via, and yet these "
            "are off: Vias. Choose another usage and then this one again.\n"
            "Layer type: \"=Odd\" begins like a formula: a spreadsheet that opens an exported file runs it.\n");
  EXPECT_EQ(DesignText(design), state);
  EXPECT_EQ(Run({"check", Save(design, "a.tspcb")}).status, 0);
}

TEST_F(Cli, ExitStatusSaysWhatWentWrong) {
  const CString design = Save(CPcbDesign(), "good.tspcb"), library = Save(CPcbSymbolLibrary(), "good.tspcblib");
  const CString board = Path("good.kicad_pcb"), cut = Path("cut.kicad_pcb"), noise = Path("noise.tspcb");
  const CString text =
      "(kicad_pcb (version 20211014) (generator x)\n  (layers (0 \"F.Cu\" signal) (31 \"B.Cu\" signal))";
  std::ofstream(board) << text << ")\n";
  std::ofstream(cut) << text << "\n";
  std::ofstream(noise, std::ios::binary) << "\x7F\x45\x4C\x46\0\x01";
  struct SCase {
    const char* why;
    CStringArray args;
    int status;
    CString says;
    CString out = {};  // where standard output goes
  };
  const SCase cases[] = {
      {"nothing", {}, 1, "subcommand"},
      {"unknown command", {"paint"}, 1, "paint"},
      {"no file", {"show"}, 1, "DESIGN"},
      {"unknown units", {"show", design, "--units", "cm"}, 1, "cm"},
      {"sections are named", {"show", design, "lairs"}, 1, "netClasses"},
      {"no output", {"import-board", board}, 1, "--output"},
      {"output of another kind", {"import-board", board, "-o", Path("new.tsscm")}, 1, "new.tspcb"},
      {"a board is no design", {"show", board}, 3, "import-board \"" + board + "\" -o \"" + Path("good.tspcb")},
      {"an edition without a name", {"show", design, "--edition", "Pellam,"}, 1, "\"\" is no edition"},
      {"board as output", {"import-board", board, "-o", board}, 1, "the board itself"},
      {"design is noise", {"check", noise}, 3, "noise.tspcb"},
      {"library cannot be checked", {"check", library}, 3, "library"},
      {"missing board", {"import-board", Path("none.kicad_pcb"), "-o", Path("new.tspcb")}, 3, "none.kicad_pcb"},
      {"broken board", {"import-board", cut, "-o", Path("new.tspcb")}, 3, cut + ":3:1: "},
      {"no such folder", {"import-board", board, "-o", Path("none/new.tspcb")}, 4, "none/new.tspcb"},
      {"full disk", {"show", design}, 4, "No space left", "/dev/full"},
      {"unknown help", {"help", "paint"}, 1, "paint"},
      {"check", {"check", design}, 0, ""},
      {"version", {"version"}, 0, ""},
      {"version as an option", {"-V"}, 0, ""},
      {"units in capitals", {"show", design, "--units", "MM"}, 0, ""},
      {"help", {"help"}, 0, ""},
      {"help of a command", {"help", "import-board"}, 0, ""},
      {"import", {"import-board", board, "-o", Path("new.tspcb")}, 0, ""},
  };
  for (const SCase& one : cases) {
    SCOPED_TRACE(one.why);
    EXPECT_FALSE(fs::exists(Path("new.tspcb")));
    const SEnd end = Run(one.args, one.out);
    EXPECT_EQ(end.status, one.status);
    EXPECT_NE(end.error.find(one.says), CString::npos) << end.error;
    EXPECT_EQ(end.error.empty(), one.status == 0) << end.error;
    EXPECT_EQ(end.out.empty(), one.status != 0) << end.out;
  }
  const CString limited = "ulimit -f 0; " + CString(TECHSHEET_CLI) + " import-board " + board + " -o " +
                          Path("limited.tspcb") + " 2> /dev/null";
  EXPECT_EQ(WEXITSTATUS(std::system(limited.c_str())), 4);
  const CString piped = CString(TECHSHEET_CLI) + " import-board - -o - < " + board + " 2> /dev/null | " + TECHSHEET_CLI;
  EXPECT_EQ(std::system((piped + " check - > " + Path("checked")).c_str()), 0);
  EXPECT_EQ(FileText(Path("checked")), "standard input: no violations, no warnings\n");
  EXPECT_EQ(FileText(board), text + ")\n");
  EXPECT_EQ(Run({"check", Path("new.tspcb")}).status, 0);
  CStringArray import = {"import-board", board, "-o", Path("new.tspcb")};
  EXPECT_TRUE(Run(import).out.ends_with("no settings (1)\nWith --verbose everything is listed\n"));
  import.push_back("--verbose");
  EXPECT_TRUE(Run(import).out.ends_with("no settings (1)\n  generator (1)\n"));
}

TEST_F(Cli, ExamplesPassTheirChecks) {
  std::size_t seen = 0;
  for (const fs::directory_entry& file : fs::directory_iterator(kSource / "examples")) {
    if (!file.path().extension().string().starts_with(".ts")) continue;
    SCOPED_TRACE(file.path());
    ++seen;
    EXPECT_EQ(Run({"show", file.path()}).status, 0);
    if (file.path().extension() == ".tspcblib") continue;
    const SEnd end = Run({"check", file.path()});
    EXPECT_EQ(end.status, 0) << end.out;
  }
  EXPECT_GE(seen, 5u);
}

}  // namespace
