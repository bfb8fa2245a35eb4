// The Layer spans page, driven as a person drives it.
#include "technology/layers/layerspanspage.h"

#include <random>
#include <set>

#include "support/pagetest.h"

namespace {
/// A stack of six electrical layers: 1 Top, 2, 3, 4, 5, 6 Bottom.
class LayerSpansPageTest : public CPageTest<CPcbDesign> {
 protected:
  LayerSpansPageTest() {
    for (const char* name : {"2", "3", "4", "5"}) {
      CLayer inner;
      inner.SetName(name);
      inner.SetSide(ELayerSide::Inner);
      inner.SetUsage(ELayerUsage::Electrical);
      design.AddLayer(&inner);
    }
    design.FindLayer("Top")->SetName("1");
    design.FindLayer("Bottom")->SetName("6");
    CLayer silk;
    silk.SetName("Silk");
    silk.SetSide(ELayerSide::Top);
    design.AddLayer(&silk);
    design.SetDefaultLayerOrder();
    design.layers.SetPlace(*design.FindLayer("Silk"), 1);
  }
  CLayer* Layer(int number) { return number == 0 ? design.FindBuiltInLayer() : design.FindLayer(IntText(number)); }
  void Add(const char* name, int top, int bottom) {
    design.AddLayerSpan(name, Layer(top), Layer(bottom));
    design.ResetUndoLevels();
  }
  void Use(const char* span) {
    CNet* const net = design.AddNet("N", design.GetDefaults()->GetNetClass());
    CVia via;
    via.Set(&SViaFields::span, design.FindLayerSpan(span));
    net->Vias().Add(via);
  }
  static void AddRow(CShownPanel& page, int row, const char* name, const char* top, const char* bottom) {
    page.Press("Add");
    page.Type(row, "Name", name);
    page.Type(row, "Top layer", top);
    page.Type(row, "Bottom layer", bottom);
  }
  /// "A: 1-3\n", in the order of the design.
  CString Spans() const {
    CString text;
    for (const CLayerSpan& span : design.layerSpans)
      text += span.GetName() + ": " + span.GetTopLayer()->GetName() + '-' + span.GetBottomLayer()->GetName() + '\n';
    return text;
  }
};

struct SPair {
  const char* why;
  int a, b, c, d;  // the ends of two spans, by the places of their layers; 0 is the built-in layer
  const char* shown;
};
class SpanPairs : public LayerSpansPageTest, public ::testing::WithParamInterface<SPair> {};

TEST_P(SpanPairs, PassOrAreRefusedBeforeAnythingIsWritten) {
  const SPair& pair = GetParam();
  Add("A", pair.a, pair.b);
  Add("B", pair.c, pair.d);
  const CString before = StateOf(design);
  Work<CLayerSpansPage>([](CShownPanel& page) { page.Type("B", "Colour", "#123456"); }, {"OK", "Cancel"});
  const CString shown = pair.shown;
  EXPECT_EQ(ui.Shown(), (shown.empty() ? shown : "error " + shown + "\n") + "event TechnologyChanged\n");
  EXPECT_EQ(StateOf(design) == before, !shown.empty());
}
INSTANTIATE_TEST_SUITE_P(
    Cases, SpanPairs,
    ::testing::Values(SPair{"Crossing", 1, 3, 2, 5, "7328: A, B"}, SPair{"CrossingFromBelow", 2, 5, 1, 3, "7328: A, B"},
                      SPair{"Touching", 1, 3, 3, 6, "7328: A, B"}, SPair{"TouchingFromBelow", 3, 6, 1, 3, "7328: A, B"},
                      SPair{"Nested", 1, 6, 2, 4, ""}, SPair{"Within", 3, 4, 2, 5, ""},
                      SPair{"SharedTop", 1, 3, 1, 5, ""}, SPair{"SharedBottom", 1, 5, 3, 5, ""},
                      SPair{"Equal", 2, 4, 2, 4, ""}, SPair{"Apart", 1, 3, 4, 6, ""},
                      SPair{"ApartUpwards", 4, 6, 1, 3, ""}, SPair{"OneLayer", 1, 3, 4, 4, "7326: B, 4, 4"},
                      SPair{"UpsideDownNested", 1, 6, 4, 2, ""}, SPair{"UpsideDownCrossing", 1, 3, 5, 2, "7328: B, A"},
                      SPair{"AllLayersFirst", 0, 3, 1, 2, "7327: A, B"},
                      SPair{"AllLayersSecond", 1, 2, 0, 3, "7327: B, A"}),
    [](const auto& given) { return given.param.why; });

TEST_F(LayerSpansPageTest, RowOrderIsTheDesignsOrderAndSortIsByTheStack) {
  Add("Deep", 4, 6);
  Add("Through", 1, 6);
  Add("Blind", 1, 2);
  Work<CLayerSpansPage>(
      [](CShownPanel& page) {
        EXPECT_EQ(page.Choices("Deep", "Top layer"), "1\n2\n3\n4\n5\n6\n");  // nothing but electrical layers
        Do(page, "Sort; Deep|Name; MoveUp; Apply; Blind|Name");
        page.Press("MoveUp");  // the first row stays
      },
      {"OK"});
  EXPECT_EQ(ui.Shown(), "beep -1\nevent TechnologyChanged\n");
  EXPECT_EQ(Spans(), "Blind: 1-2\nDeep: 4-6\nThrough: 1-6\n");
}

TEST_F(LayerSpansPageTest, TheFormRefusesOneLayerTwiceAndLeavesCrossingToThePage) {
  Add("A", 1, 3);
  Add("B", 4, 6);
  Work<CLayerSpansPage>(
      [&](CShownPanel& page) {
        page.Go("B", "Name");
        WorkInForm<CEditLayerSpanDialog>(page, "Edit", [](CShownDialog& form) {
          form.Fill("Name", "A");
          form.Fill("TopLayer", "6");
          form.Press("OK");
          EXPECT_EQ(form.Focus(), "Name");
          form.Fill("Name", "C");
          form.Press("OK");
          EXPECT_EQ(form.Focus(), "BottomLayer");
          form.Fill("TopLayer", "2");
          form.Press("OK");
        });
      },
      {"OK", "Cancel"});
  EXPECT_EQ(ui.Shown(), "error 7067: 2\nerror 7325\nerror 7328: A, C\nevent TechnologyChanged\n");
  EXPECT_EQ(Spans(), "A: 1-3\nB: 4-6\n");
}

TEST_F(LayerSpansPageTest, ThePreviewFollowsTheRows) {
  Add("A", 1, 3);
  CLayerSpansPage page(design);
  page.OnInitDialog();
  design.FindLayerSpan("A")->SetBottomLayer(nullptr);
  const auto stack = std::get<SStackPreview>(page.GetPreview());
  ASSERT_EQ(stack.spans.size(), 1u);
  EXPECT_EQ(stack.layers[static_cast<std::size_t>(stack.spans[0].top)].name, "1");
  EXPECT_EQ(stack.spans[0].bottom, -1);
}

TEST_F(LayerSpansPageTest, ASurveyTellsTheFirstSpansThatCrossAndHowManyMore) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    std::vector<std::pair<int, int>> spans(random() % 7);
    for (auto& [top, bottom] : spans)
      std::tie(top, bottom) = std::minmax({1 + static_cast<int>(random() % 6), 1 + static_cast<int>(random() % 6)});
    std::erase_if(spans, [](const auto& one) { return one.first == one.second; });
    const auto cross = [&](std::size_t i, std::size_t j) {
      const auto [T, B] = spans[i];
      const auto [t, b] = spans[j];
      return i != j && ((T < t && t < B && B < b) || (t < T && T < b && b < B) || T == b || B == t);
    };
    CString expected;
    std::set<std::size_t> crossing;
    for (std::size_t i = 0; i < spans.size(); ++i) {
      Add(IntText(static_cast<int>(i)).c_str(), round % 2 ? spans[i].first : spans[i].second,
          round % 2 ? spans[i].second : spans[i].first);
      for (std::size_t j = 0; j < spans.size(); ++j) {
        if (!cross(i, j)) continue;
        if (crossing.empty())
          expected = TextOf(Text::SpansCross, CStringArray{IntText(static_cast<int>(i)), IntText(static_cast<int>(j))});
        crossing.insert(i);
      }
    }
    if (crossing.size() > 2)
      expected = TextOf(Text::HoldsForMore, CStringArray{expected, IntText(static_cast<int>(crossing.size()) - 2)});
    const CString before = StateOf(design);
    CString told;
    CLayerSpansPage page(design);
    const CFindings findings = page.Survey();
    for (const SFinding& finding : findings.All()) told += finding.Message();
    EXPECT_EQ(told, expected) << round;
    EXPECT_EQ(StateOf(design), before);
    while (design.layerSpans.Count() > 0) design.DeleteRecord(*design.layerSpans.FirstRecord());
  }
}
}  // namespace
