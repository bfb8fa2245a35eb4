#include "interchange/boardstyles.h"

#include "interchange/boardvalues.h"
#include "interchange/newrecord.h"

CTrackStyle* CBoardStyles::Track(int width) {
  CTrackStyle*& style = m_tracks[width];
  if (!style) style = m_design.AddTrackStyle(m_names.TakeUnlisted("track style", "Track " + Millimetres(width)), width);
  return style;
}

CPadStyle* CBoardStyles::Pad(SPadStyleFields fields) {
  const bool slotted = fields.drillShape.value == EDrillShape::Slot;
  CPadStyle*& style =
      m_pads[{fields.shape.value, fields.size.value, fields.length.value, fields.dimension3.value,
              fields.drillShape.value, fields.drillWidth.value, fields.drillLength.value, fields.plated}];
  if (style) return style;
  CString name = CPadStyle::GetShapeName(fields.shape.value) + ' ' + Millimetres(fields.size.value);
  if (CPadStyle::HasSecondDimension(fields.shape.value)) name += " x " + Millimetres(fields.length.value);
  const bool isChamfered = fields.shape.value == EPadShape::ChamferedRectangle;
  if (CPadStyle::HasThirdDimension(fields.shape.value))
    name += (isChamfered ? ", chamfer " : ", radius ") + Millimetres(fields.dimension3.value);
  if (fields.drillWidth.value > 0) name += (slotted ? ", slot " : ", drill ") + Millimetres(fields.drillWidth.value);
  if (slotted) name += " x " + Millimetres(fields.drillLength.value);
  if (!fields.plated) name += ", unplated";
  fields.name.text = m_names.TakeUnlisted("pad style", name);
  return style = &AddRecord(m_design.padStyles, std::move(fields));
}

CPadStyle* CBoardStyles::Via(int size, int drill) {
  SPadStyleFields fields;
  fields.size.value = size;
  fields.drillWidth.value = drill;
  return Pad(std::move(fields));
}

CTextStyle* CBoardStyles::Text(STextStyleFields fields) {
  CTextStyle*& style = m_texts[{fields.size.value, fields.lineWidth.value, fields.charWidthPercent,
                                fields.interlineHeightPercent, fields.font}];
  if (style) return style;
  CString name = "Text " + Millimetres(fields.size.value) + ", line " + Millimetres(fields.lineWidth.value);
  if (fields.charWidthPercent != 100) name += ", width " + IntText(fields.charWidthPercent) + '%';
  if (fields.interlineHeightPercent != 100) name += ", spacing " + IntText(fields.interlineHeightPercent) + '%';
  if (fields.font != STextStyleFields().font) name += ", " + fields.font;
  fields.name.text = m_names.TakeUnlisted("text style", name);
  return style = &AddRecord(m_design.textStyles, std::move(fields));
}

CLayerSpan* CBoardStyles::Span(CSNode node, CLayer* one, CLayer* other) {
  if (one == other) Fault(node, "a via runs between two different layers");
  if (m_design.GetLayerOrder(other) < m_design.GetLayerOrder(one)) std::swap(one, other);
  CLayerSpan*& span = m_spans[{one, other}];
  if (!span) {
    const CString name = m_names.TakeUnlisted("layer span", one->GetName() + " - " + other->GetName());
    span = m_design.AddLayerSpan(name, one, other);
  }
  return span;
}
