#include "technology/layers/layerspanspage.h"

#include <algorithm>

#include "technology/combos.h"

namespace {
using F = SLayerFields;
constexpr long kUsages = ELayerUsage::Electrical;  // of the layers on which a span can end

CComboItems Ends(const CTechnology& design, std::int64_t current) {
  return CLayerComboBox::Fill(design, reinterpret_cast<const CLayer*>(current), kUsages);
}

std::vector<CColumn> MakeColumns() {
  return {
      UsedMark(),
      Column<CLayerSpan>(Text::Name, &F::name).Width(160),
      Column<CLayerSpan>(Text::TopLayer, &F::topLayer).Offers(&Ends).ImportError(Text::RecordLayerUnknown).Width(140),
      Column<CLayerSpan>(Text::BottomLayer, &F::bottomLayer)
          .Offers(&Ends)
          .ImportError(Text::RecordLayerUnknown)
          .Width(140),
      Column<CLayerSpan>(Text::Colour, &F::colour),
  };
}

void SwapEnds(CRecordBase& values) {
  auto& span = static_cast<CLayerSpan&>(values);
  CLayer* const top = span.GetTopLayer();
  span.SetTopLayer(span.GetBottomLayer());
  span.SetBottomLayer(top);
}

/// Whether a span has a layer in common with one layer of another.
bool HasInCommon(const F& span, CLayer* layer) {
  return span.topLayer.Get()->GetCommonLayer(layer) || span.bottomLayer.Get()->GetCommonLayer(layer);
}
}  // namespace

CLayerSpansPage::CLayerSpansPage(CDesign& design)
    : CRecordPage(design,
                  {.title = Text::LayerSpans,
                   .settings = "Settings\\Styles\\LayerSpans",
                   .nameError = Text::RowNameInvalid,
                   .inUse = Text::LayerSpanInUse,
                   .exportName = Text::LayerSpansFile,
                   .validName = &ValidLayerSpanName,
                   .ordered = true,
                   .writeLevel = Text::LayerSpans},
                  design.layerSpans, MakeColumns()) {}

// ---- Checks

/// The place in the stack, -1 for no layer and for one that has left the design.
int CLayerSpansPage::OrderOf(const CLayer* layer) const {
  return layer && layer->IsIn() ? m_design.GetLayerOrder(layer) : -1;
}

bool CLayerSpansPage::IsUpsideDown(const F& span) const {
  return OrderOf(span.bottomLayer.Get()) < OrderOf(span.topLayer.Get());
}

bool CLayerSpansPage::CheckPair(const SRowCheck& check, const F& span, const F& other) {
  const int top = OrderOf(span.topLayer.Get()), bottom = OrderOf(span.bottomLayer.Get());
  const int otherTop = OrderOf(other.topLayer.Get()), otherBottom = OrderOf(other.bottomLayer.Get());
  if (otherTop < 0 || otherBottom < 0) return true;  // fails by itself
  if (HasInCommon(span, other.topLayer.Get()) && HasInCommon(span, other.bottomLayer.Get()))
    return Refuse(check, &F::topLayer, Text::SpanOnAllLayers, span.name.text, other.name.text);
  const bool crosses = (top < otherTop && otherTop < bottom && bottom < otherBottom) ||
                       (otherTop < top && top < otherBottom && otherBottom < bottom);
  const bool touches = top == otherBottom || bottom == otherTop;
  return !(crosses || touches) || Refuse(check, &F::topLayer, Text::SpansCross, span.name.text, other.name.text);
}

bool CLayerSpansPage::CheckRow(const SRowCheck& check) {
  if (check.pass == EPass::Write) return true;  // every row has passed by now
  F span = FieldsOf<CLayerSpan>(check.values);
  if (!span.topLayer) return Refuse(check, &F::topLayer, Text::ChooseTwoLayers);
  if (!span.bottomLayer) return Refuse(check, &F::bottomLayer, Text::ChooseTwoLayers);
  if (span.topLayer == span.bottomLayer) {
    if (check.pass == EPass::Form) return Refuse(check, &F::bottomLayer, Text::ChooseTwoLayers);
    const CString& layer = span.topLayer.Get()->GetName();
    return Refuse(check, &F::bottomLayer, Text::SpanEndsEqual, span.name.text, layer, layer);
  }
  if (check.pass == EPass::Form) return true;
  if (check.pass == EPass::Import) {
    if (check.record && FieldsOf<CLayerSpan>(*check.record).topLayer == span.topLayer &&
        FieldsOf<CLayerSpan>(*check.record).bottomLayer == span.bottomLayer)
      return true;  // as it stood before
    return std::all_of(m_design.layerSpans.begin(), m_design.layerSpans.end(), [&](const CLayerSpan& other) {
      return &other == check.record || CheckPair(check, span, other.Values());
    });
  }
  if (IsUpsideDown(span)) {  // whoever chose the layers need not know which is the higher one
    std::swap(span.topLayer, span.bottomLayer);
    std::unique_ptr<CRecordBase> draft = check.values.Clone();
    SwapEnds(*draft);
    TakeDraft(check.row, std::move(draft));
  }
  for (int row = 1; row < m_grid.GetRowCount(); ++row)
    if (row != check.row && m_grid.IsPresent(row) && !CheckPair(check, span, FieldsOf<CLayerSpan>(ValuesOf(row))))
      return false;
  return true;
}

void CLayerSpansPage::AdjustImport(const CRecordBase*, CRecordBase& values) {
  if (IsUpsideDown(FieldsOf<CLayerSpan>(values))) SwapEnds(values);
}

// ---- Editing

bool CLayerSpansPage::SortsBefore(const SGridRow& a, const SGridRow& b) const {
  if (!a.record || !b.record) return a.record && !b.record;
  return !(static_cast<const CLayer&>(ValuesOf(a)) >= static_cast<const CLayer&>(ValuesOf(b)));
}

bool CLayerSpansPage::EditDraft(int row, CRecordBase& draft) {
  return CEditLayerSpanDialog(*this, row, static_cast<CLayerSpan&>(draft)).DoModal() == CDialog::kOk;
}

CPreview CLayerSpansPage::GetPreview() const {
  SStackPreview stack = StackOf(m_design);
  stack.spans.clear();
  const int first = m_design.FindBuiltInLayer() ? 1 : 0;  // the built-in layer stands before the stack
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!m_grid.IsPresent(row)) continue;
    const F& span = FieldsOf<CLayerSpan>(ValuesOf(row));
    const int top = OrderOf(span.topLayer.Get()), bottom = OrderOf(span.bottomLayer.Get());
    stack.spans.push_back({span.name.text, std::max(top - first, -1), std::max(bottom - first, -1), span.colour,
                           row == m_grid.GetFocusCell().row});
  }
  return stack;
}
