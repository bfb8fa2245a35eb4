#include "technology/layers/layerspanspage.h"

#include <algorithm>
#include <bit>

#include "technology/combos.h"

namespace {
using F = SLayerFields;
constexpr long kUsages = ELayerUsage::Electrical;  // of the layers on which a span can end

CComboItems Ends(const CTechnology& design, std::int64_t current) {
  return CLayerComboBox::Fill(design, reinterpret_cast<const CLayer*>(current), kUsages);
}

/// Whether a span has a layer in common with one layer of another.
bool HasInCommon(const F& span, CLayer* layer) {
  return span.topLayer.Get()->GetCommonLayer(layer) || span.bottomLayer.Get()->GetCommonLayer(layer);
}
}  // namespace

CLayerSpansPage::CLayerSpansPage(CDesign& design)
    : CRecordPage(design, design.layerSpans,
                  {.title = Text::LayerSpans,
                   .settings = "Settings\\Styles\\LayerSpans",
                   .nameError = Text::RowNameInvalid,
                   .inUse = Text::LayerSpanInUse,
                   .exportName = Text::LayerSpansFile,
                   .validName = &ValidLayerSpanName,
                   .settled = ESettled::All,
                   .ordered = true,
                   .writeLevel = Text::LayerSpans}) {
  Columns({
      UsedMark(),
      Column(&F::name).Width(160),
      Column(&F::topLayer).Offers(&Ends).OnlyOffered().ImportErrorOfText(Text::RecordLayerUnknown).Width(140),
      Column(&F::bottomLayer).Offers(&Ends).OnlyOffered().ImportErrorOfText(Text::RecordLayerUnknown).Width(140),
      Column(&F::colour),
  });
  AddForm(RecordForm<CEditLayerSpanDialog>(Text::LayerSpan));
}

// ---- Checks

/// The place in the stack, -1 for no layer and for one that has left the design.
int CLayerSpansPage::OrderOf(const CLayer* layer) const {
  return layer && layer->IsIn() ? m_design.GetLayerOrder(layer) : -1;
}

/// The form leaves what spans do to each other to the page.
void CLayerSpansPage::CheckValues(const SCheckedRow& row, CFindings& findings) const {
  const F& span = row.As<CLayerSpan>().Values();
  if (!span.topLayer) return findings.Add(row, &F::topLayer, Text::ChooseTwoLayers);
  if (!span.bottomLayer || span.topLayer == span.bottomLayer) findings.Add(row, &F::bottomLayer, Text::ChooseTwoLayers);
}

void CLayerSpansPage::CheckAlone(const SCheckedRow& row, CFindings& findings) const {
  const F& span = row.As<CLayerSpan>().Values();
  if (!span.topLayer || !span.bottomLayer) return CheckValues(row, findings);
  if (span.topLayer != span.bottomLayer) return;
  const CString& layer = span.topLayer.Get()->GetName();
  findings.Add(row, &F::bottomLayer, Text::SpanEndsEqual, span.name, layer, layer);
}

void CLayerSpansPage::Check(const SCheckedRow& row, CFindings& findings) const {
  const F& span = row.As<CLayerSpan>().Values();
  CheckAlone(row, findings);
  if (!span.topLayer || !span.bottomLayer || span.topLayer == span.bottomLayer) return;
  for (const CRecordBase& other : row.Others()) {
    if (findings.IsDecided()) return;
    CheckPair(row, FieldsOf<CLayerSpan>(other), findings);
  }
}

namespace {
/// The greatest of any stretch of numbers, in a time that does not grow with its length.
class CGreatest {
 public:
  explicit CGreatest(std::vector<int> numbers) : m_powers{std::move(numbers)} {
    for (std::size_t length = 2; length <= m_powers[0].size(); length *= 2) {
      const std::vector<int>& half = m_powers.back();
      std::vector<int> whole(half.size() - length / 2);
      for (std::size_t i = 0; i < whole.size(); ++i) whole[i] = std::max(half[i], half[i + length / 2]);
      m_powers.push_back(std::move(whole));
    }
  }
  /// Of those from `first` to before `end`, which are one at least.
  int Of(int first, int end) const {
    const auto power = static_cast<std::size_t>(std::bit_width(static_cast<unsigned>(end - first)) - 1);
    const std::vector<int>& stretches = m_powers[power];
    return std::max(stretches[static_cast<std::size_t>(first)],
                    stretches[static_cast<std::size_t>(end - (1 << power))]);
  }

 private:
  std::vector<std::vector<int>> m_powers;  // of the stretches of 1, 2, 4, ... numbers, by where they begin
};
}  // namespace

/// Finds for each span by the layers between its ends whether it gets on with all others. Of those that do not, the
/// first is told with the first that it meets, for either message.
void CLayerSpansPage::CheckTogether(CFindings& findings) const {
  struct SSpan {
    SCheckedRow row;
    int top, bottom;
  };
  std::vector<SSpan> spans;
  for (const SCheckedRow& row : Rows().PresentRecords()) {
    const F& span = row.As<CLayerSpan>().Values();
    const int top = OrderOf(span.topLayer.Get()), bottom = OrderOf(span.bottomLayer.Get());
    if (top >= 0 && bottom > top) spans.push_back({row, top, bottom});
  }
  const std::size_t layers = m_design.layers.Count();
  std::vector<int> lowestFrom(layers, -1), highestTo(layers, -static_cast<int>(layers));  // the latter negated
  for (const SSpan& one : spans) {
    int &lowest = lowestFrom[static_cast<std::size_t>(one.top)],
        &highest = highestTo[static_cast<std::size_t>(one.bottom)];
    lowest = std::max(lowest, one.bottom);
    highest = std::max(highest, -one.top);
  }
  const CGreatest lowest(std::move(lowestFrom)), highest(std::move(highestTo));
  const auto isOnAllLayers = [](const SSpan& one) {
    const F& span = one.row.As<CLayerSpan>().Values();
    return span.topLayer.Get()->IsBuiltIn() || span.bottomLayer.Get()->IsBuiltIn();
  };
  const auto crosses = [&](const SSpan& one) {  // or touches
    return lowest.Of(one.top + 1, one.bottom + 1) > one.bottom || highest.Of(one.top, one.bottom) > -one.top;
  };
  for (const bool onAllLayers : {true, false}) {
    const auto isRefused = [&](const SSpan& one) {
      return isOnAllLayers(one) == onAllLayers && (onAllLayers ? spans.size() > 1 : crosses(one));
    };
    const auto first = std::ranges::find_if(spans, isRefused);
    if (first == spans.end()) continue;
    const std::size_t found = findings.All().size();
    auto other = spans.begin();
    for (; findings.All().size() == found; ++other)
      if (other != first) CheckPair(first->row, other->row.As<CLayerSpan>().Values(), findings);
    const auto refused = static_cast<std::size_t>(std::ranges::count_if(spans, isRefused));
    findings.HoldsForMore(refused - 1 - (isRefused(*std::prev(other)) ? 1 : 0));
  }
}

void CLayerSpansPage::CheckPair(const SCheckedRow& row, const F& other, CFindings& findings) const {
  const F& span = row.As<CLayerSpan>().Values();
  const int top = OrderOf(span.topLayer.Get()), bottom = OrderOf(span.bottomLayer.Get());
  const int otherTop = OrderOf(other.topLayer.Get()), otherBottom = OrderOf(other.bottomLayer.Get());
  if (otherTop < 0 || otherBottom < 0) return;  // fails by itself
  const bool crosses = (top < otherTop && otherTop < bottom && bottom < otherBottom) ||
                       (otherTop < top && top < otherBottom && otherBottom < bottom);
  const bool touches = top == otherBottom || bottom == otherTop;
  if (HasInCommon(span, other.topLayer.Get()) && HasInCommon(span, other.bottomLayer.Get())) {
    findings.Add(row, &F::topLayer, Text::SpanOnAllLayers, span.name, other.name);
  } else if (crosses || touches) {
    findings.Add(row, &F::topLayer, Text::SpansCross, span.name, other.name);
  }
}

/// Whoever chose the layers need not know which is the higher one.
void CLayerSpansPage::Settle(CRecordBase& values) const {
  auto& span = static_cast<CLayerSpan&>(values);
  CLayer *const top = span.GetTopLayer(), *const bottom = span.GetBottomLayer();
  if (OrderOf(top) < 0 || OrderOf(bottom) < 0 || OrderOf(bottom) >= OrderOf(top)) return;
  span.SetTopLayer(bottom);
  span.SetBottomLayer(top);
}

// ---- Rows

bool CLayerSpansPage::StandsBefore(const SGridRow& a, const SGridRow& b) const {
  return !(static_cast<const CLayer&>(CRecordRows::Values(a)) >= static_cast<const CLayer&>(CRecordRows::Values(b)));
}

CPreview CLayerSpansPage::GetPreview() const {
  SStackPreview stack = StackOf(m_design);
  stack.spans.clear();
  const int first = m_design.FindBuiltInLayer() ? 1 : 0;  // the built-in layer stands before the stack
  for (const SCheckedRow& row : Rows().PresentRecords()) {
    const F& span = row.As<CLayerSpan>().Values();
    const int top = OrderOf(span.topLayer.Get()), bottom = OrderOf(span.bottomLayer.Get());
    stack.spans.push_back({span.name.text, std::max(top - first, -1), std::max(bottom - first, -1), span.colour,
                           row.row == Grid().GetFocusCell().row});
  }
  return stack;
}
