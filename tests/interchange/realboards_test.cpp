// Boards that nobody here drew. What an import makes of them is compared with a count over the text of the files, made
// by other means than the import's.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "interchange/boardimport.h"
#include "storage/designfile.h"
#include "support/boardcount.h"
#include "support/files.h"

namespace fs = std::filesystem;

namespace {

const fs::path kBoards = fs::path(TECHSHEET_SOURCE_DIR) / ".." / "shared" / "boards";

CString FileText(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

/// The figures of CountBoard in a design, without what is in every new design.
BoardCounts CountsOf(CPcbDesign& design) {
  BoardCounts counts{{"layers", design.layers.Count() - 1},
                     {"layer types", design.layerTypes.Count()},
                     {"spans", design.layerSpans.Count()},
                     {"classes", design.netClasses.Count()},
                     {"nets", design.nets.Count()},
                     {"track styles", design.trackStyles.Count() - 1},
                     {"pad styles", design.padStyles.Count() - 1},
                     {"text styles", design.textStyles.Count() - 2},
                     {"components", design.componentInstances.Count()},
                     {"areas", design.areas.Count()},
                     {"texts", design.texts.Count()},
                     {"shapes", design.shapes.Count()},
                     {"segments", design.coppers.Count()},
                     {"vias", design.freePads.Count()}};
  for (CNet& net : design.nets) {
    counts["nodes"] += net.Nodes().Count();
    counts["vias"] += net.Vias().Count();
    for (const CTrack& track : net.Tracks()) counts["segments"] += track.Segments().Count();
  }
  for (CComponentInstance& component : design.componentInstances)
    for (CSymbolInstance& symbol : component.SymbolInstances()) counts["pads"] += symbol.PadInstances().Count();
  std::erase_if(counts, [](const auto& one) { return one.second == 0; });
  return counts;
}

class RealBoards : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    if (!fs::exists(Path(".kicad_pcb"))) GTEST_SKIP() << "There is no " << Path(".kicad_pcb") << " on this machine.";
    SImportError error;
    ASSERT_TRUE(ImportBoard(Path(".kicad_pcb").string(), m_design, m_summary, error)) << error.Text();
  }
  fs::path Path(const char* extension) const { return kBoards / (CString(GetParam()) + extension); }

  std::unique_ptr<CPcbDesign> m_design;
  SImportSummary m_summary;
};

TEST_P(RealBoards, FiguresAreThoseOfTheFiles) {
  EXPECT_EQ(CountsOf(*m_design), CountBoard(FileText(Path(".kicad_pcb")), FileText(Path(".kicad_pro"))));
  EXPECT_EQ(m_design->CheckValid(), CStringArray());
}

TEST_P(RealBoards, StackIsInOrderAndNamesAreValid) {
  CString before = "", after = "";
  for (const CLayer& layer : m_design->layers) before += layer.GetName() + '\n';
  m_design->SetDefaultLayerOrder();
  for (const CLayer& layer : m_design->layers) {
    after += layer.GetName() + '\n';
    EXPECT_TRUE(layer.IsBuiltIn() || ValidLayerName(layer.GetName())) << layer.GetName();
  }
  EXPECT_EQ(after, before);
  for (const CPadStyle& style : m_design->padStyles) EXPECT_TRUE(ValidPadStyleName(style.GetName())) << style.GetName();
  for (const CTrackStyle& style : m_design->trackStyles)
    EXPECT_TRUE(ValidTrackStyleName(style.GetName())) << style.GetName();
  for (const CNetClass& one : m_design->netClasses) EXPECT_TRUE(ValidNetClassName(one.GetName())) << one.GetName();
}

TEST_P(RealBoards, SavedOpenedAndSavedAgainTheFileIsTheSame) {
  const CTemporaryFolder folder;
  const CString first = folder.Path() / "first.tspcb", second = folder.Path() / "second.tspcb";
  ASSERT_TRUE(WriteDesignFile(first, *m_design));
  const std::unique_ptr<CTechnology> opened = ReadDesignFile(first);
  ASSERT_TRUE(opened);
  ASSERT_TRUE(WriteDesignFile(second, *opened));
  EXPECT_EQ(FileText(first), FileText(second));
}

INSTANTIATE_TEST_SUITE_P(Boards, RealBoards, ::testing::Values("conn", "red", "schoko", "stackup-16", "stackup-32"),
                         [](const auto& board) {
                           return std::regex_replace(CString(board.param), std::regex("-"), "_");
                         });

}  // namespace
