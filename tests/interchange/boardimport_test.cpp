#include "interchange/boardimport.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <stdexcept>

#include "support/files.h"
#include "support/statetext.h"

namespace {

/// Boards written for one question, brought in as a user does it: as files.
class BoardImportTest : public ::testing::Test {
 protected:
  void Write(const char* name, const CString& text) {
    std::ofstream(m_folder.Path() / name, std::ios::binary)
        .write(text.data(), static_cast<std::streamsize>(text.size()));
  }
  /// Imports a board of this text. What it says when that fails, without the folder.
  CString Import(const CString& boardText) {
    Write("board.kicad_pcb", boardText);
    const CString folder = m_folder.Path().string() + '/';
    CResult<SImportedBoard, SImportError> board = ImportBoard(folder + "board.kicad_pcb");
    m_summary = board ? std::move(board->summary) : CImportSummary();
    m_lines = m_summary.Lines(/*verbose=*/true);
    m_design = board ? std::move(board->design) : nullptr;
    if (board) return "";
    CString text = board.Error().Text();
    if (const std::size_t at = text.find(folder); at != text.npos) text.erase(at, folder.size());
    return text;
  }
  void MustImport(const CString& board) {
    if (const CString error = Import(board); !error.empty()) throw std::runtime_error(error);
  }

  CString Layers() const {
    CString text;
    for (const CLayer& layer : m_design->layers) {
      text += layer.GetName() + ": side " + IntText(layer.GetSide()) + ", usage " + IntText(layer.GetUsage()) +
              ", bias " + IntText(layer.GetBias());
      if (layer.GetType()) text += ", " + layer.GetType()->GetName();
      text += layer.GetDisplayed() ? "\n" : ", hidden\n";
    }
    return text;
  }
  template <class T>
  static CString Names(const CCollection<T>& records) {
    CString text;
    for (const T& record : records) text += (text.empty() ? "" : "; ") + record.RecordName();
    return text;
  }
  /// What the summary says of `what`: the lines that begin so.
  CString Said(const char* what) const {
    CString text;
    for (const CString& line : m_lines)
      if (line.starts_with(what)) text += line + '\n';
    return text;
  }

  const CTemporaryFolder m_folder;
  std::unique_ptr<CPcbDesign> m_design;
  CImportSummary m_summary;
  CStringArray m_lines;
};

constexpr const char* kTwoLayers = "(layers (0 F.Cu signal) (31 B.Cu signal) (36 B.SilkS user) (37 F.SilkS user))";
CString Board(const CString& items) {
  return CString("(kicad_pcb (version 20171130) ") + kTwoLayers + '\n' + items + ')';
}
CString Board9(const CString& items) {
  return "(kicad_pcb (version 20241229) (layers (0 \"F.Cu\" signal) (2 \"B.Cu\" signal))\n" + items + ')';
}

TEST_F(BoardImportTest, OldLayersAreToldByNumber) {
  MustImport(
      "(kicad_pcb (version 4) (layers (39 F.Mask user) (0 B.Cu signal hide) (2 Inner power) (1 F.Paste mixed)"
      " (31 \"F.Cu\" signal) (34 B.Paste user) (44 Edge.Cuts user) (37 F.SilkS user)))");
  EXPECT_EQ(Layers(),
            "[All layers]: side 3, usage 1, bias 1\n"
            "F.SilkS: side 0, usage 4, bias 0\n"
            "F.Mask: side 0, usage 8, bias 0\n"
            "B.Cu: side 0, usage 2, bias 3, Signal, hidden\n"
            "F.Paste: side 2, usage 2, bias 3, Mixed\n"
            "Inner: side 2, usage 2, bias 5, Power\n"
            "F.Cu: side 1, usage 2, bias 3, Signal\n"
            "B.Paste: side 1, usage 16, bias 0\n"
            "Edge.Cuts: side 3, usage 4, bias 0\n");
}

TEST_F(BoardImportTest, NewLayersAreToldByCanonicalNameAndCalledAsTheUserCallsThem) {
  MustImport(
      "(kicad_pcb (version 20241229) (layers (0 \"F.Cu\" signal \"Bauteile\") (6 \"In2.Cu\" power) (4 \"In1.Cu\" "
      "signal \"In2.Cu\")"
      " (2 \"B.Cu\" jumper \"[L\xC3\xB6t]\") (3 \"B.Mask\" user \" Mask \\\"B\\\" \") (1 \"F.Mask\" user \"Bauteile\") "
      "(39 \"User.1\" user)))");
  EXPECT_EQ(Layers(),
            "[All layers]: side 3, usage 1, bias 1\n"
            "Bauteile: side 0, usage 8, bias 0\n"
            "Bauteile 2: side 0, usage 2, bias 3, Signal\n"
            "In2.Cu: side 2, usage 2, bias 3, Signal\n"
            "In2.Cu 2: side 2, usage 2, bias 5, Power\n"
            "(L\xC3\xB6t]: side 1, usage 2, bias 3, Jumper\n"
            "Mask 'B': side 1, usage 8, bias 0\n"
            "User.1: side 3, usage 4, bias 0\n");
  EXPECT_EQ(Said("The layer"),
            "The layer \"Bauteile\" is called \"Bauteile 2\"\n"
            "The layer \"In2.Cu\" is called \"In2.Cu 2\"\n"
            "The layer \"[L\xC3\xB6t]\" is called \"(L\xC3\xB6t]\"\n"
            "The layer \" Mask \"B\" \" is called \"Mask 'B'\"\n");
}

TEST_F(BoardImportTest, ClassesInTheBoardHoldBeforeThoseOfAProject) {
  Write("board.kicad_pro", "this is not even JSON");
  MustImport(Board(
      "(setup (user_trace_width 0.45) (user_via 0.7 0.3) (trace_min 0.1) (aux_axis_origin 10 20) (grid_origin 1 1))"
      "(net 0 \"\") (net 1 GND) (net 2 VCC)"
      "(net_class Power \"supplies\" (clearance 0.3) (trace_width 0.5) (via_dia 0.8) (via_drill 0.4) (uvia_dia 0.3)"
      " (uvia_drill 0.1) (diff_pair_width 0.2) (diff_pair_gap 0.25) (add_net VCC) (add_net gone))"
      "(net_class Default \"usual\" (clearance 0.15) (trace_width 0.2) (via_dia 0.6) (via_drill 0.3) (add_net GND))"));
  const CNetClass* const power = m_design->FindNetClass("Power");
  ASSERT_TRUE(power);
  EXPECT_EQ(Names(m_design->netClasses), "Default; Power");
  EXPECT_EQ(power->Values().clearance.value, 300'000);
  EXPECT_EQ(power->GetNominalStyle()->GetWidth(), 500'000);
  EXPECT_EQ(power->Values().viaStyle.Get()->GetName(), "Round 0.8, drill 0.4");
  EXPECT_EQ(power->Values().microviaStyle.Get()->GetName(), "Round 0.3, drill 0.1");
  EXPECT_EQ(power->Values().diffPairStyle.Get()->GetWidth(), 200'000);
  EXPECT_EQ(power->Values().diffPairGap.value, 250'000);
  EXPECT_EQ(m_design->FindNet("VCC")->GetNetClass(), power);
  EXPECT_EQ(m_design->FindNet("GND")->GetNetClass()->GetName(), "Default");
  EXPECT_EQ(Names(m_design->trackStyles), "Default; Track 0.1; Track 0.2; Track 0.5; Track 0.45");
  EXPECT_EQ(m_design->GetDesignSpacings()->Values().minimumTrackWidth.value, 100'000);
  EXPECT_EQ(m_design->DesignValues().Values().coordOrigin, (CPoint{10'000'000, -20'000'000}));
  EXPECT_EQ(power->GetMinimumStyle()->GetWidth(), 100'000);
  EXPECT_EQ(Said("Left out: the ") + Said("The "),
            "Left out: the origin of the grid, \"1 1\"\n"
            "Left out: the description of the net class \"Power\", \"supplies\"\n"
            "The project file is not read, since the net classes stand in the board\n"
            "The board lacks the net \"gone\" of the net class \"Power\"\n");
}

TEST_F(BoardImportTest, NetsFindTheirClassByListAssignmentPatternAndPriority) {
  const CString nets =
      "(net 0 \"\") (net 1 \"/usb/D+\") (net 2 \"/usb/D-\") (net 3 \"VBUS\") (net 4 \"GND\") (net 5 \"A1\") (net 6 "
      "\"A12\") (net 7 \"\xC3\xA4\")";
  const auto classes = [&](const CString& settings) {
    Write("board.kicad_pro", R"({"board": {"design_settings": {}}, "net_settings": )" + settings + '}');
    const CString error = Import(Board9(nets));
    if (!error.empty()) return error;
    CString text;
    for (const CNet& net : m_design->nets) {
      const CString name = net.GetNetClass()->GetName();
      text += name.find('+') != name.npos ? '(' + name + ')' : name.substr(0, 1);
    }
    return text;
  };
  const CString four =
      R"("classes": [{"name": "W"}, {"name": "Default", "clearance": 0.2}, {"name": "X"}, {"name": "Y", "clearance": null}])";
  const CString ranked =
      R"("classes": [{"name": "Default"}, {"name": "W", "priority": 2}, {"name": "X", "priority": 1}])";
  const auto single = [](const CString& settings) { return R"({"meta": {"version": 3}, )" + settings + '}'; };
  const auto patterns = [](const CString& w, const CString& x) {
    return R"(, "netclass_patterns": [{"pattern": ")" + w + R"(", "netclass": "W"}, {"pattern": ")" + x +
           R"(", "netclass": "X"}])";
  };
  struct SCase {
    const char* why;
    CString settings, classes;
  };
  const SCase cases[] = {
      {"no project classes", "null", "DDDDDDD"},
      {"lists in the classes", R"({"classes": [{"name": "W", "nets": ["VBUS", "GND"]}]})", "DDWWDDD"},
      {"assignment of one and of several",
       single(four + R"(, "netclass_assignments": {"GND": "X", "VBUS": ["Y", "X"]})"), "DDYXDDD"},
      {"star and question mark", single(four + patterns("/usb/*", "A?")), "WWDDXDD"},
      {"one character of two bytes", single(four + patterns("?", "none")), "DDDDDDW"},
      {"the first pattern holds", single(four + patterns("*", "A*2")), "WWWWWWW"},
      {"an assignment goes before patterns",
       single(four + R"(, "netclass_assignments": {"GND": "X"})" + patterns("G*", "none")), "DDDXDDD"},
      {"the most prior of several", single(ranked + patterns("GND", "*D")), "DDDXDDD"},
      {"several together, the most prior first", '{' + ranked + patterns("GND", "*D") + '}', "DDD(X + W)DDD"},
      {"equally prior ones by name, each once",
       '{' + four + R"(, "netclass_assignments": {"GND": ["X", "W"]})" + patterns("none", "*D") + '}', "DDD(W + X)DDD"},
      {"a class and the default class", '{' + four + R"(, "netclass_assignments": {"GND": ["Default", "X"]}})",
       "DDDXDDD"},
      {"expressions match all of a name", single(four + patterns("/usb/D[+-]", "(A|GN|VBU)(1|D)")), "WWDXXDD"},
      {"what is no expression", single(four + patterns("*(", "[")), "DDDDDDD"},
      {"operators that names hold are themselves too", single(four + patterns("/usb/D+", "A1")), "WDDDXDD"},
      {"bus vectors stand for their members", single(four + patterns("A[2..0]", "A[012..12]")), "DDDDWXD"},
      {"too much work to make", single(four + patterns("A[0..4095](abcdefghij){240}", "(GND)")), "DDDDDDD"},
      {"too large", single(four + patterns("((A{200}){200}){200}|GND", "A[1..9999]")), "DDDDDDD"},
      {"a class that is not there", '{' + four + R"(, "netclass_assignments": {"GND": "Z"}})", "DDDDDDD"},
      {"a class twice", R"({"classes": [{"name": "W"}, {"name": "W"}]})",
       "board.kicad_pro:1:80: the net class \"W\" is there twice."},
      {"a class without a name", R"({"classes": [{"name": 7}]})", "board.kicad_pro:1:74: \"name\" must be a text."},
      {"classes that are none", R"({"classes": 7})", "board.kicad_pro:1:64: \"classes\" must be a list."},
  };
  for (const SCase& one : cases) EXPECT_EQ(classes(one.settings), one.classes) << one.why;
  classes(single(four + R"(, "netclass_assignments": {"GND": "Z", "VBUS": "Z", "no": "W"})" +
                 patterns("((A{200}){200}){200}", "A[1..9999]")));
  EXPECT_EQ(Said("The"),
            "The board lacks the net \"no\" of the net class \"W\"\n"
            "The pattern \"((A{200}){200}){200}\" of the net class \"W\" is too large and left out\n"
            "The pattern \"A[1..9999]\" of the net class \"X\" is too large and left out\n"
            "There is no net class \"Z\" for the nets \"GND\", \"VBUS\"\n");
  CString many;
  for (int i = 10; i <= 30; ++i) many += R"(, {"pattern": "x)" + IntText(i) + R"(", "netclass": "W"})";
  classes(R"({"classes": [], "netclass_patterns": [)" + many.substr(1) + "]}");
  EXPECT_EQ(m_lines.back(), "No net matches the pattern \"x30\" of the net class \"W\"");
  EXPECT_EQ(m_summary.Lines(/*verbose=*/false).back(), "... and 1 more patterns without a net");
  EXPECT_TRUE(m_summary.IsShortened());
}

TEST_F(BoardImportTest, ClassesOfANetMergeValueByValue) {
  Write("board.kicad_pro", R"json({"net_settings": {"meta": {"version": 4}, "net_colors": {"A": "rgb(1, 2, 3)"},
    "classes": [{"name": "Default", "track_width": 0.2, "clearance": 0.1, "via_diameter": 0.5, "via_drill": 0.2},
      {"name": "Thick", "priority": 1, "track_width": 0.5, "clearance": 0.3, "pcb_color": "rgb(255, 0, 0)"},
      {"name": "Far", "priority": 0, "track_width": null, "clearance": 0.9}],
    "netclass_patterns": [{"pattern": "[AB]", "netclass": "Thick"}, {"pattern": "*", "netclass": "Far"}]}})json");
  MustImport(Board9("(net 0 \"\") (net 1 \"A\") (net 2 \"B\") (net 3 \"C\")"));
  EXPECT_EQ(Names(m_design->netClasses), "Default; Thick; Far; Far + Thick");  // once, though two nets are in it
  const CNetClass* const both = m_design->FindNet("B")->GetNetClass();
  EXPECT_EQ(both->GetName(), "Far + Thick");
  EXPECT_EQ(both->Values().clearance.value, 900'000);
  EXPECT_EQ(both->GetNominalStyle()->GetWidth(), 500'000);
  EXPECT_EQ(both->GetMinimumStyle(), nullptr);  // the board has none
  EXPECT_EQ(both->Values().viaStyle.Get()->GetName(), "Round 0.5, drill 0.2");
  EXPECT_EQ(ColourText(both->Values().ownColour), "#FF0000");
  EXPECT_EQ(ColourText(m_design->FindNet("A")->Values().colour), "#010203");
}

TEST_F(BoardImportTest, ProjectSizesSkipWhatMeansTheClassAndKeepEveryNanometre) {
  Write("board.kicad_dru", "(version 1)");
  Write("board.kicad_pro", R"json({"board": {"design_settings": {
      "rules": {"min_track_width": 0.19999999999999998, "min_clearance": 0.1, "max_error": 0.005,
        "min_hole_clearance": 0.30000000000000004, "min_silk_clearance": 0.0, "min_text_height": 0.7999999999999999},
      "track_widths": [0.0, 0.1234567, 0.25], "via_dimensions": [{"diameter": 0.0, "drill": 0.0}, {"diameter": 0.6, "drill": 0.3}],
      "diff_pair_dimensions": [{"gap": 0.0, "via_gap": 0.0, "width": 0.0}, {"gap": 0.2, "via_gap": 0.0, "width": 0.11}]}},
    "net_settings": {"classes": [{"name": "Default", "track_width": 0.25, "pcb_color": "rgba(0, 0, 0, 0.000)"},
      {"name": "Red", "pcb_color": "rgb(255, 16, 0)"}]
}
})json");
  MustImport(Board9(""));
  EXPECT_EQ(Names(m_design->trackStyles), "Default; Track 0.2; Track 0.25; Track 0.123457; Track 0.11");
  EXPECT_EQ(Names(m_design->padStyles), "Default; Round 0.6, drill 0.3");
  EXPECT_EQ(m_design->GetDesignSpacings()->Values().minimumTrackWidth.value, 200'000);
  EXPECT_EQ(m_design->GetDesignSpacings()->Values().viaToVia.value, 100'000);
  EXPECT_EQ(Said(""),
            "Board format 20241229\n"
            "Left out: the design rules in \"board.kicad_dru\"\n"
            "Left out: the least clearance of holes, 0.3 mm\n"
            "Left out: the gap, 0.2 mm, of differential pairs of the width 0.11 mm\n"
            "Left out beside: words that are no settings (1)\n"
            "  max_error of rules (1)\n");
  const CNetClass* const red = m_design->FindNetClass("Red");
  ASSERT_TRUE(red);
  EXPECT_EQ(ColourText(red->Values().ownColour), "#FF1000");
  EXPECT_EQ(red->GetNominalStyle()->GetWidth(), 250'000);  // as the default class
  EXPECT_FALSE(m_design->FindNetClass("Default")->Values().useOwnColour);
}

TEST_F(BoardImportTest, PadsBecomeStylesByWhatTheyAre) {
  struct SCase {
    const char* pad;
    const char* style;
    int side;
  };
  const SCase cases[] = {
      {"smd rect (at 0 0) (size 1 2) (layers F.Cu B.SilkS)", "Rectangle 1 x 2", ELayerSide::Top},
      {"smd rect (at 0 0) (size 2 1) (layers B.Cu)", "Rectangle 2 x 1", ELayerSide::Bottom},
      {"thru_hole rect (at 0 0) (size 1.5 1.5) (drill 0.8) (layers *.Cu *.Mask)", "Square 1.5, drill 0.8",
       ELayerSide::All},
      {"thru_hole circle (at 0 0) (size 1 1) (drill 0.5 (offset 0.1 0)) (layers F&B.Cu)", "Round 1, drill 0.5",
       ELayerSide::All},
      {"np_thru_hole circle (at 0 0) (size 1 1) (drill 1) (layers *.Cu)", "Round 1, drill 1, unplated",
       ELayerSide::All},
      {"thru_hole oval (at 0 0) (size 1 3) (drill oval 0.6 2.2) (layers *.Cu)", "Oval 1 x 3, slot 0.6 x 2.2",
       ELayerSide::All},
      {"thru_hole oval (at 0 0) (size 2 2) (drill oval 0.6 0.6) (layers *.Cu)", "Round 2, drill 0.6", ELayerSide::All},
      {"smd roundrect (at 0 0) (size 1 0.5) (layers F.Cu) (roundrect_rratio 0.25)",
       "Rounded rectangle 1 x 0.5, radius 0.125", ELayerSide::Top},
      {"smd roundrect (at 0 0) (size 1 1) (layers F.Cu) (roundrect_rratio 0)", "Square 1", ELayerSide::Top},
      {"smd roundrect (at 0 0) (size 1 0.5) (layers F.Cu) (roundrect_rratio 0.1) (chamfer_ratio 0.2) (chamfer top_left "
       "top_right bottom_left bottom_right)",
       "Chamfered rectangle 1 x 0.5, chamfer 0.1", ELayerSide::Top},
      {"smd roundrect (at 0 0) (size 1 0.5) (layers F.Cu) (roundrect_rratio 0.1) (chamfer_ratio 0.2) (chamfer "
       "top_left)",
       "Rounded rectangle 1 x 0.5, radius 0.05", ELayerSide::Top},
      {"smd custom locked (at 0 0) (size 1 2) (layers F.Cu) (primitives)", "Rectangle 1 x 2", ELayerSide::Top},
  };
  for (const SCase& one : cases) {
    MustImport(Board(CString("(module M (layer F.Cu) (at 5 5) (pad 1 ") + one.pad + ") (pad 2 " + one.pad + "))"));
    CSymbolInstance& symbol = *m_design->componentInstances.First()->SymbolInstances().First();
    const SPadInstanceFields& pad = symbol.PadInstances().First()->Values();
    EXPECT_EQ(Names(m_design->padStyles), CString("Default; ") + one.style) << one.pad;
    EXPECT_EQ(pad.style.Get()->GetName(), one.style);
    EXPECT_EQ(pad.side.value, one.side) << one.pad;
  }
}

TEST_F(BoardImportTest, ATurnedFootprintAndItsMirrorImageShareASymbol) {
  const char* const front =
      "(at 10 20) (layer F.Cu) (fp_text reference R1 (at 1 -1) (layer F.SilkS) (effects (font (size 1 0.8) (thickness "
      "0.15))))"
      "(fp_line (start 0 -1) (end 2 -1) (layer F.SilkS) (width 0.1)) (fp_line (start 0 1) (end 2 1) (layer F.SilkS) "
      "(width 0.1))"
      "(pad 1 smd rect (at 0 -1) (size 1 2) (layers F.Cu) (net 1 GND)) (pad 2 smd rect (at 2 0 90) (size 1 2) (layers "
      "F.Cu))";
  const char* const back =  // turned by 90 degrees, its lines in another order
      "(at 30 20 90) (layer B.Cu) (fp_text reference R1 (at 0 0 90) (layer B.SilkS) hide (effects (font (size 1 0.8) "
      "(thickness 0.15)) (justify mirror)))"
      "(fp_line (start 0 -1) (end 2 -1) (layer B.SilkS) (width 0.1)) (fp_line (start 0 1) (end 2 1) (layer B.SilkS) "
      "(width 0.1))"
      "(pad 1 smd rect (at 0 1 90) (size 1 2) (layers B.Cu) (net 1 GND)) (pad 2 smd rect (at 2 0) (size 1 2) (layers "
      "B.Cu) (net 0 \"\"))";
  MustImport(Board(CString("(net 0 \"\") (net 1 GND) (module R ") + front + ") (module R " + back + ")"));
  EXPECT_EQ(Names(m_design->symbols), "R");
  EXPECT_EQ(Names(m_design->componentInstances), "R1; R1 2");
  EXPECT_EQ(Said("Mended"), "Mended: component names (1), such as \"R1\", now \"R1 2\"\n");
  EXPECT_EQ(Names(m_design->textStyles), "Default; [Drill Table]; Text 1, line 0.15, width 80%");

  CString nodes;
  for (const CNode& node : m_design->FindNet("GND")->Nodes())
    nodes += node.Values().component.Get()->GetName() + '.' + node.Values().pad + ' ';
  EXPECT_EQ(nodes, "R1.1 R1 2.1 ");
  const auto pads = [&](const char* name) {
    CString text;
    for (const CPadInstance& pad : m_design->FindComponentInstance(name)->SymbolInstances().First()->PadInstances())
      text += IntText(pad.Values().position.x) + ',' + IntText(pad.Values().position.y) + ' ';
    return text;
  };
  EXPECT_EQ(pads("R1"), "10000000,-19000000 12000000,-20000000 ");
  EXPECT_EQ(pads("R1 2"), "31000000,-20000000 30000000,-18000000 ");
}

TEST_F(BoardImportTest, ItemsKeepTheirNetsLayersAndStyles) {
  Write("board.kicad_pro", R"({"net_settings": {"classes": [{"name": "Default", "via_drill": 0.35}]}})");
  MustImport(
      Board9("(net 0 \"\") (net 1 \"GND\")"
             "(segment (start 0 0) (end 1 0) (width 0.2) (layer \"F.Cu\") (net 1) (uuid \"1\")) (segment (start 1 0) "
             "(end 2 0) (width 0.3) (layer \"F.Cu\") (net 1))"
             "(segment (start 5 0) (end 6 0) (width 0.2) (layer \"F.Cu\") (net 1)) (segment (start 0 0) (end 1 0) "
             "(width 0.4) (layer \"B.Cu\") (net 0))"
             "(arc (start 0 0) (mid 1 1) (end 2 0) (width 0.2) (layer \"F.Cu\") (net 1))"
             "(via (at 1 1) (size 0.6) (drill 0.3) (layers \"B.Cu\" \"F.Cu\") (net 1)) (via micro (at 1 1) (size 0.6) "
             "(layers \"F.Cu\" \"B.Cu\") (net 1))"
             "(via (at 2 1) (size 0.6) (layers \"F.Cu\" \"B.Cu\") (net 1)) (via (at 3 1) (size 0.6) (drill 0.3) "
             "(layers \"F.Cu\" \"B.Cu\") (net 0))"
             "(zone (net 1) (net_name \"GND\") (layers \"F&B.Cu\") (name \"ground\") (connect_pads (clearance 0.5)) "
             "(min_thickness 0.25)"
             " (polygon (pts (xy 0 0) (xy 1 0) (arc (start 1 0) (mid 2 1) (end 1 2)))) (filled_polygon (layer "
             "\"F.Cu\") (pts (xy 0 0))))"
             "(gr_text \"one\\ntwo\" (at 1 2 45) (layer \"F.Cu\") (effects (font (face \"Arial\") (size 2 2) (bold "
             "yes)) (justify left mirror)))"
             "(gr_line (start 0 0) (end 1 1) (stroke (width 0.1) (type dash)) (layer \"Edge.Cuts\")) (gr_rect (start 0 "
             "0) (end 2 1) (width 0.1) (fill none) (layer \"F.Cu\"))"));
  CNet& net = *m_design->FindNet("GND");
  EXPECT_EQ(net.Tracks().Count(), 2U);  // what meets end to end is one run
  EXPECT_EQ(net.Tracks().First()->Segments().Count(), 2U);
  EXPECT_EQ(m_design->coppers.Count(), 1U);
  EXPECT_EQ(net.Vias().Count(), 3U);
  EXPECT_EQ(m_design->freeVias.Count(), 1U);
  EXPECT_EQ(Names(m_design->padStyles), "Default; Round 0.6, drill 0.3; Round 0.6; Round 0.6, drill 0.35");
  EXPECT_EQ(Names(m_design->layerSpans), "F.Cu - B.Cu");
  EXPECT_EQ(m_design->areas.Count(), 2U);
  EXPECT_EQ(m_design->areas.First()->Values().points.size(), 5U);
  const CPourTemplate* const pour = m_design->areas.First()->GetPourTemplate(&net);
  ASSERT_TRUE(pour);
  EXPECT_TRUE(pour->HasPouredCopper());
  EXPECT_EQ(pour->Values().clearance.value, 500'000);
  const SFreeTextFields& text = m_design->texts.First()->Values();
  EXPECT_EQ(text.text, "one\ntwo");
  EXPECT_EQ(text.angle.GetMilliDegrees(), 45'000);
  EXPECT_TRUE(text.mirrored);
  EXPECT_EQ(text.style.Get()->GetName(), "Text 2, line 0.4, Arial");
  EXPECT_EQ(m_design->shapes.Count(), 1U);
  EXPECT_EQ(Said(""),
            "Board format 20241229\n"
            "Mended: bold texts have the line width alone (1)\n"
            "Mended: curves in outlines are straight between their ends and middle (1)\n"
            "Mended: dashed and dotted lines are solid (1)\n"
            "Mended: texts are aligned at their middle (1)\n"
            "Left out: curved tracks (1)\n"
            "Left out: poured copper of zones, which can be poured again (1)\n"
            "Left out: shapes on layers that the board lacks (1)\n"
            "Left out beside: words that are no settings (1)\n"
            "  uuid (1)\n");
}

TEST_F(BoardImportTest, WhatOtherProgramsWriteIsReadAndNamed) {
  MustImport(Board(
      "(net 0 \"\") (net 1 GND) (setup (pad_to_mask_clearance 0))"
      "(module M (at 0 0) (layer F.Cu) (fp_text user 0.96\" (at 1 2) (layer F.SilkS) (effects (font (size 0 1))))"
      " (fp_text user T (at 1 2) (layer F.SilkS) (effects (font (size 1 0))))"
      " (pad 1 smd rect (at 0 0) (size 1 1) (layers F.Cu) (net 7 VCC)))"
      "(gr_line (start 0 0) (end 1 1) (width -0.25) (layers F.Cu F.SilkS) (locked no))"
      "(segment (start 0 0) (end 1 1) (width -0.5) (layers F.SilkS F.Cu) (net 1))"
      "(via (at 1 1) (size 0.6) (layers F.Cu B.Cu) (net 9)) (via (at 2 1) (size 0.6) (layers F.Cu B.Cu) (net 0 no))"));
  EXPECT_EQ(Said(""),
            "Board format 20171130\n"
            "The table of nets lacks the net 7, which an item calls \"VCC\"\n"
            "Nothing declares the net 9, so items that are in it have no net (1)\n"
            "Mended: component names (1), such as \"\", now \"component\"\n"
            "Mended: negative widths count as their amount (2)\n"
            "Mended: quotation marks within words are read as they stand (1), such as \"0.96\"\"\n"
            "Mended: texts of the size 0 have the default text style (2)\n"
            "Left out: mask openings of tracks (1)\n");
  EXPECT_EQ(Names(m_design->nets), "GND; VCC");
  EXPECT_EQ(Names(m_design->trackStyles), "Default; Track 0.5");
  EXPECT_EQ(m_design->nets.First()->Tracks().First()->Segments().First()->Values().layer.Get()->GetName(), "F.Cu");
  EXPECT_EQ(m_design->shapes.Count(), 2U);
  EXPECT_EQ(m_design->shapes.First()->Values().width.value, 250'000);
  EXPECT_EQ(m_design->freeVias.Count(), 2U);
  EXPECT_EQ(m_design->freeVias.First()->Values().span.Get()->GetName(), "F.Cu - B.Cu");

  MustImport("(kicad_pcb (version 4) (host program \"dummy file\") )\n");
  EXPECT_EQ(m_lines[1], "The board lacks its table of layers and gets the usual two-layer stack");
  EXPECT_EQ(Names(m_design->layers).substr(0, 40), "[All layers]; F.Fab; F.CrtYd; F.Adhes; F");

  MustImport(
      "(kicad_pcb (version 20301231) (layers (0 \"F.Cu\" signal) (2 \"B.Cu\" signal hide)) (net \"\")"
      "(via (at 1 1) (size 0.6) (layers \"F.Cu\" \"B.Cu\") (net \"7\")) (via (at 1 1) (size 0.6) (layers \"F.Cu\" "
      "\"B.Cu\") (net \"\")))");
  EXPECT_EQ(
      m_lines[0],
      "Board format 20301231, newer than this program knows (20241229): what is new in it may be missing or wrong");
  EXPECT_EQ(Names(m_design->layers), "[All layers]; F.Cu; B.Cu");
  EXPECT_EQ(Names(m_design->nets), "7");
  EXPECT_EQ(m_design->nets.First()->Vias().Count(), 1U);
  EXPECT_EQ(m_design->freeVias.Count(), 1U);
}

TEST_F(BoardImportTest, PadsWithoutCopperAreShapes) {
  const struct {
    const char *pad, *shapes;
  } cases[] = {
      {"rect (at 1 0 90) (size 2 1) (layers F.Mask F.Paste)",
       "F.Paste 0: 0,-500000 2000000,-500000 2000000,500000 0,500000; "
       "F.Mask 0: 0,-500000 2000000,-500000 2000000,500000 0,500000; "},
      {"oval (at 0 1 180) (size 3 1) (layers F.SilkS)", "F.SilkS 1000000: 0,-2000000 0,0; "},
      {"circle (at 0 0 90) (size 1 1) (layers B.Paste)", "B.Paste 1000000: 0,0 0,0; "},
      {"roundrect (at 0 0 90) (size 4 2) (layers F.Mask) (roundrect_rratio 0.25)",
       "F.Mask 1000000: -1500000,-500000 1500000,-500000 1500000,500000 -1500000,500000; "},
      {"rect (at 1 0 90) (size 2 1) (layers F.Paste) (drill 0.5)", ""},
      {"rect (at 1 0 90) (size 2 1) (layers In5.Cu)", ""},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.pad);
    MustImport(CString("(kicad_pcb (version 20171130) (layers (0 F.Cu signal) (31 B.Cu signal) (34 B.Paste user)"
                       " (35 F.Paste user) (37 F.SilkS user) (39 F.Mask user))"
                       " (module M (at 9 9 90) (layer F.Cu) (pad \"\" smd ") +
               one.pad + ")))");
    CSymbol& symbol = *m_design->symbols.First();
    CString text;
    for (const CShapeItem& shape : symbol.Shapes()) {
      const SShapeItemFields& values = shape.Values();
      text += values.layer.Get()->GetName() + ' ' + IntText(values.width.value) + ':';
      for (const CPoint point : values.points) text += ' ' + IntText(point.x) + ',' + IntText(point.y);
      text += "; ";
    }
    EXPECT_EQ(text, one.shapes);
    EXPECT_EQ(symbol.Pads().Count(), CString(one.pad).ends_with("(drill 0.5)") ? 1U : 0U);
  }
  EXPECT_EQ(Said("Left"), "Left out: pads on layers that the board lacks (1)\n");
}

TEST_F(BoardImportTest, BrokenBoardsSayWhereAndWhatAndLeaveNothing) {
  const CString head = CString("(kicad_pcb (version 20171130) ") + kTwoLayers + '\n';
  const struct {
    CString board, error;
  } cases[] = {
      {"(kicad_sch (version 4))", "1:1: this is no board: it begins with \"kicad_sch\", not with \"kicad_pcb\""},
      {"(kicad_pcb)", "1:1: the board does not say its format: (version ...)"},
      {"(kicad_pcb (version 3))", "1:21: boards of formats before 4 cannot be read"},
      {"(kicad_pcb (version 4) (layers (F.Cu 0 signal)))", "1:32: a layer must begin with its number"},
      {"(kicad_pcb (version 4) (layers (77 X signal)))", "1:32: there is no layer of this number"},
      {"(kicad_pcb (version 4) (layers (0 X odd)))",
       "1:37: \"odd\" is no kind of copper layer: signal, power, mixed or jumper"},
      {"(kicad_pcb (version 4) (layers (0 X signal) (31 X signal)))",
       "1:45: the layer \"X\" stands in the table twice"},
      {head + "(net x GND))", "2:6: \"x\" is not a whole number"},
      {head + "(net 1 A) (net 1 B))", "2:11: the net 1 is there twice"},
      {head + "(segment (start 0 0) (end 1 1) (width 0.1) (layer Top) (net 0)))", "2:51: there is no layer \"Top\""},
      {head + "(segment (start 0)))", "2:10: the list \"start\" lacks its value 2"},
      {head + "(segment (start 0 1mm)))", "2:19: \"1mm\" is not a length in millimetres"},
      {head + "(segment (start 0 1e40)))", "2:19: \"1e40\" is beyond the range of a length in millimetres"},
      {head + "(segment (start 0 -2147.483648)))",
       "2:19: this lies beyond the range of a design, 2147 mm from its origin"},
      {head + "(via (size -0.1)))", "2:12: a size cannot be negative"},
      {head + "(segment (width -2147.483648)))", "2:17: \"-2147.483648\" is no width"},
      {head + "(via (at 0 0) (size 1) (layers F.Cu F.Cu)))", "2:24: a via runs between two different layers"},
      {head + "(via (at 0 0) (size 1)))", "2:1: the via lacks its layers"},
      {head + "(module M (layer F.Cu)))", "2:1: a footprint needs its place and its layer"},
      {head + "(module M (at 0 0) (layer F.Cu) (pad 1 smd blob)))",
       "2:44: \"blob\" is no shape of a pad: circle, rect, oval, roundrect, trapezoid or custom"},
      {head + "(module M (at 2100 0 45) (layer F.Cu) (pad 1 smd rect (at 200 0) (size 1 1) (layers F.Cu))))",
       "2:55: this lies beyond the range of a design, 2147 mm from its origin"},
      {head + "(module M (at 0 0 left) (layer F.Cu)))", "2:19: \"left\" is not an angle in degrees"},
      {head + "(net_class A \"\" (clearance huge)))", "2:28: \"huge\" is not a length in millimetres"},
      {head + "(net_class A \"\") (net_class A \"\"))", "2:18: the net class \"A\" is there twice"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(Import(one.board), "board.kicad_pcb:" + one.error + ".");
  }
  std::filesystem::create_symlink("nowhere", m_folder.Path() / "board.kicad_pro");
  EXPECT_EQ(Import(Board9("")).substr(0, 32), "\"board.kicad_pro\" cannot be read");
  const auto none = ImportBoard(m_folder.Path().string() + "/none.kicad_pcb");
  ASSERT_FALSE(none);
  EXPECT_NE(none.Error().Text().find("none.kicad_pcb"), CString::npos);
}

TEST_F(BoardImportTest, LayersAreBoundedAndSoIsWhatStandsOnMany) {
  const auto board = [](int layers, int outlines, int points) {
    CString text = "(kicad_pcb (version 20241229) (layers", outline = " (polygon (pts";
    for (int i = 1; i <= layers; ++i) text += "\n(" + IntText(i) + " \"In" + IntText(i) + ".Cu\" signal)";
    for (int i = 0; i < points; ++i) outline += "(xy 0 0)";
    text += ")\n(zone (layers *.Cu)";
    for (int i = 0; i < outlines; ++i) text += outline + "))";
    return text + "))";
  };
  const CString tooMany =
      "board.kicad_pcb:130:1: what stands on several layers comes to more than 262144 items of up to 64 "
      "points.";
  EXPECT_EQ(Import(board(129, 0, 0)), "board.kicad_pcb:130:1: a board has at most 128 layers.");
  EXPECT_EQ(Import(board(128, 2065, 1)), tooMany);
  EXPECT_EQ(Import(board(128, 2, 67000)), tooMany);
  EXPECT_EQ(Import(board(30, 1, 1)), "");
  std::set<CString> colours;
  for (const CLayer& layer : m_design->layers) colours.insert(ColourText(layer.GetColour()));
  EXPECT_EQ(colours.size(), 31U);
}

TEST_F(BoardImportTest, NoPartOfABoardAndNoDamagedBoardComesThroughHalf) {
  const CString board = Board(
      "(net 0 \"\") (net 1 GND) (net_class Default \"\" (trace_width 0.2) (add_net GND))"
      "(module R (at 1 2 30) (layer B.Cu) (pad 1 thru_hole oval (at 0 -1) (size 1 2) (drill oval 0.5 1) (layers *.Cu) "
      "(net 1 GND)))"
      "(segment (start 0 0) (end 1 0) (width 0.2) (layer F.Cu) (net 1)) (via (at 1 1) (size 0.6) (layers F.Cu B.Cu) "
      "(net 1))"
      "(zone (net 1) (layer F.Cu) (polygon (pts (xy 0 0) (xy 1 0)))) (gr_text T (at 1 2) (layer F.SilkS))");
  MustImport(board);
  for (std::size_t size = 0; size < board.size(); size += 3) {
    EXPECT_NE(Import(board.substr(0, size)), "") << size;
    EXPECT_FALSE(m_design);
  }
  for (const CString damage : {"(", ")", "\"", "9e9", CString(1, '\0').c_str(), "\xFF"}) {
    for (std::size_t at = 11; at < board.size(); at += 11) {
      CString damaged = board;
      const CString error = Import(damaged.replace(at, 1, damage));
      EXPECT_EQ(m_design == nullptr, !error.empty()) << damaged;
      if (m_design) {
        EXPECT_EQ(m_design->CheckValid(), CStringArray()) << damaged;
      }
    }
  }
}

TEST_F(BoardImportTest, AnImportIsAnUnsavedDesignWithoutHistory) {
  const CString board = Board("(net 0 \"\") (net 1 \"a\") (net 2 \"a\")");
  MustImport(board);
  EXPECT_TRUE(m_design->GetChanged());
  EXPECT_FALSE(m_design->Undo());
  EXPECT_EQ(m_design->GetName(), "board");
  const CString first = StateOf(*m_design);
  m_design->StartNestedUndoLevel(1);
  m_design->FindNet("a 2")->SetName("b");
  m_design->EndNestedUndoLevel(1);
  EXPECT_TRUE(m_design->Undo());
  EXPECT_EQ(StateOf(*m_design), first);
  MustImport(board);
  EXPECT_EQ(StateOf(*m_design), first);  // the same file gives the same design
}

}  // namespace
