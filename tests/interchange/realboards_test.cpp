// Boards that nobody here drew. What an import makes of them is compared with a count over the text of the files, made
// by other means than the import's.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <regex>
#include <set>

#include "interchange/boardimport.h"
#include "storage/designfile.h"
#include "support/files.h"

namespace fs = std::filesystem;

namespace {

const fs::path kBoards = fs::path(TECHSHEET_SOURCE_DIR) / ".." / "shared" / "boards";

using BoardCounts = std::map<CString, std::size_t>;

/// A list of the file, read without regard for anything but brackets, quotation marks and blanks.
struct SItem {
  CString word;
  std::vector<SItem> items;
  const SItem* Find(const CString& tag) const {
    for (const SItem& item : items)
      if (item.Tag() == tag) return &item;
    return nullptr;
  }
  CString Tag() const { return items.empty() ? "" : items[0].word; }
  CString Word(std::size_t index) const { return index < items.size() ? items[index].word : ""; }
};

SItem Scan(const CString& text) {
  static const std::regex kTokens(R"re(\(|\)|"((?:[^"\\]|\\.)*)"|[^\s()"]+)re");
  std::vector<SItem> open(1);
  for (std::sregex_iterator at(text.begin(), text.end(), kTokens), end; at != end; ++at) {
    const CString token = at->str();
    if (token == "(") {
      open.emplace_back();
    } else if (token == ")") {
      SItem done = std::move(open.back());
      open.pop_back();
      open.back().items.push_back(std::move(done));
    } else {
      open.back().items.push_back({(*at)[1].matched ? (*at)[1].str() : token, {}});
    }
  }
  return open[0].items[0];
}

void ForEach(const SItem& item, const std::function<void(const SItem&)>& visit) {
  visit(item);
  for (const SItem& inner : item.items) ForEach(inner, visit);
}

/// The nets that project files or the classes of old boards name, by list or expression.
std::set<CString> NetsInClasses(const SItem& board, const std::set<CString>& nets, const CString& projectText) {
  std::set<CString> named;
  for (const SItem& item : board.items)
    for (const SItem& inner : item.items)
      if (item.Tag() == "net_class" && item.Word(1) != "Default" && inner.Tag() == "add_net")
        named.insert(inner.Word(1));
  const std::regex lists(R"re("nets": \[([^\]]*)\])re"), words(R"re("([^"]*)")re"),
      patterns(R"re("pattern": "([^"]*)")re");
  using Iterator = std::sregex_iterator;
  for (Iterator list(projectText.begin(), projectText.end(), lists), end; list != end; ++list) {
    const CString inner = (*list)[1];
    for (Iterator word(inner.begin(), inner.end(), words); word != end; ++word) named.insert((*word)[1]);
  }
  for (Iterator pattern(projectText.begin(), projectText.end(), patterns), end; pattern != end; ++pattern)
    for (const CString& net : nets)
      if (std::regex_match(net, std::regex((*pattern)[1].str()))) named.insert(net);
  std::erase_if(named, [&](const CString& net) { return !nets.contains(net); });
  return named;
}

/// How many there are of "layers", "nets", "components" and so on in the text of a board; what there is none of is
/// absent.
BoardCounts CountBoard(const CString& boardText, const CString& projectText) {
  const SItem board = Scan(boardText);
  BoardCounts counts;
  std::set<CString> spans, copperKinds, copperLayers, codes, names;
  for (const SItem& item : board.items) {
    const CString tag = item.Tag();
    if (tag == "net" && item.Word(1) != "0") codes.insert(item.Word(1)), names.insert(item.Word(2));
    if (tag == "gr_text") ++counts["texts"];
    if (tag == "gr_line" || tag == "gr_rect" || tag == "gr_poly") ++counts["shapes"];
  }
  const auto isCopper = [&](const SItem& layer) {
    return layer.word.ends_with(".Cu") || copperLayers.contains(layer.word);
  };
  ForEach(board, [&](const SItem& item) {
    const CString tag = item.Tag();
    if (const SItem* const name = item.Find("net_name"); name && !name->Word(1).empty())
      codes.insert(item.Find("net")->Word(1));  // where the table lacks the net
    if (tag == "layers" && !counts["layers"]) {
      counts["layers"] = item.items.size() - 1;
      for (const SItem& row : item.items) {
        const CString kind = row.Word(2);
        if (kind != "signal" && kind != "power" && kind != "mixed" && kind != "jumper") continue;
        copperKinds.insert(kind);
        copperLayers.insert(row.Word(1));
      }
    }
    if (tag == "module" || tag == "footprint") ++counts["components"];
    if (tag == "zone") {
      const SItem* const layers = item.Find("layers");
      for (const SItem& inner : item.items)
        if (inner.Tag() == "polygon") counts["areas"] += layers ? layers->items.size() - 1 : 1;
    }
    if (tag == "segment") ++counts["segments"];
    if (tag == "via") {
      ++counts["vias"];
      const SItem& layers = *item.Find("layers");
      spans.insert(std::min(layers.Word(1), layers.Word(2)) + '|' + std::max(layers.Word(1), layers.Word(2)));
    }
    if (tag == "pad") {
      const std::vector<SItem>& layers = item.Find("layers")->items;
      if (!item.Find("drill") && std::none_of(layers.begin(), layers.end(), isCopper)) return;
      ++counts["pads"];
      if (item.Find("net") && codes.contains(item.Find("net")->Word(1))) ++counts["nodes"];
    }
  });
  counts["nets"] = codes.size();
  counts["nets in classes"] = NetsInClasses(board, names, projectText).size();
  counts["spans"] = spans.size();
  counts["layer types"] = copperKinds.size();
  std::erase_if(counts, [](const auto& one) { return one.second == 0; });
  return counts;
}

/// The figures of CountBoard in a design, without what is in every new design.
BoardCounts CountsOf(CPcbDesign& design) {
  BoardCounts counts{{"layers", design.layers.Count() - 1},
                     {"layer types", design.layerTypes.Count()},
                     {"spans", design.layerSpans.Count()},
                     {"nets", design.nets.Count()},
                     {"components", design.componentInstances.Count()},
                     {"areas", design.areas.Count()},
                     {"texts", design.texts.Count()},
                     {"shapes", design.shapes.Count()},
                     {"segments", design.coppers.Count()},
                     {"vias", design.freeVias.Count()}};
  for (CNet& net : design.nets) {
    counts["nets in classes"] += net.GetNetClass() != design.GetDefaults()->GetNetClass();
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
    CResult<SImportedBoard, SImportError> board = ImportBoard(Path(".kicad_pcb").string());
    ASSERT_TRUE(board) << board.Error().Text();
    m_design = std::move(board->design);
  }
  fs::path Path(const char* extension) const { return kBoards / (CString(GetParam()) + extension); }

  std::unique_ptr<CPcbDesign> m_design;
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
  const CResult<std::unique_ptr<CTechnology>> opened = ReadDesignFile(first);
  ASSERT_TRUE(opened) << opened.Error();
  ASSERT_TRUE(WriteDesignFile(second, **opened));
  EXPECT_EQ(FileText(first), FileText(second));
}

INSTANTIATE_TEST_SUITE_P(Boards, RealBoards,
                         ::testing::Values("badge", "buck", "conn", "esp32", "picodvi", "red", "schoko", "stackup-16",
                                           "stackup-32", "ulx3s"),
                         [](const auto& board) {
                           return std::regex_replace(CString(board.param), std::regex("-"), "_");
                         });

}  // namespace
