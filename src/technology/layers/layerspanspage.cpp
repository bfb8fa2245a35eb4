#include "technology/layers/layerspanspage.h"

#include <algorithm>

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

void CLayerSpansPage::Check(const SCheckedRow& row, CFindings& findings) const {
  const F& span = row.As<CLayerSpan>().Values();
  if (!span.topLayer || !span.bottomLayer) return CheckValues(row, findings);
  if (span.topLayer == span.bottomLayer) {
    const CString& layer = span.topLayer.Get()->GetName();
    return findings.Add(row, &F::bottomLayer, Text::SpanEndsEqual, span.name, layer, layer);
  }
  for (const CRecordBase& other : row.Others()) {
    if (findings.IsDecided()) return;
    CheckPair(row, FieldsOf<CLayerSpan>(other), findings);
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
