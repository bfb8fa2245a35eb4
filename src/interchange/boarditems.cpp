// Tracks, vias, areas, texts and shapes of a board.
#include "interchange/boardcontext.h"
#include "model/base/decimal.h"

void SBoardContext::LeaveOut(CSNode owner, CSNode value) {
  CString what(value.IsList() ? value.Tag() : value.IsQuoted() ? "text" : value.Text());
  if (what == "uuid" || what == "tstamp") return summary.LeaveOut(what);  // whose it is tells nobody anything
  summary.LeaveOut(what.append(" of ").append(owner.Tag()));
}

const SBoardContext::SNet& SBoardContext::Net(CSNode list) const {
  const auto found = nets.find(Integer(Word(list)));
  if (found == nets.end()) Fault(list, "there is no net " + CString(Word(list).Text()));
  return found->second;
}

namespace {
/// The width of a shape: (width 0.1), or within (stroke (width 0.1) (type solid)).
int StrokeWidth(SBoardContext& context, CSNode stroke) {
  int width = 0;
  for (const CSNode value : stroke) {
    if (value.Tag() == "width") {
      width = SizeOf(value);
    } else if (value.Tag() != "type" || (Word(value).Text() != "solid" && Word(value).Text() != "default")) {
      context.LeaveOut(stroke, value);
    }
  }
  return width;
}

/// How a text looks: (font (size height width) (thickness ...) (face ...)).
STextStyleFields ReadFont(SBoardContext& context, CSNode font) {
  STextStyleFields look;
  look.lineWidth.value = 0;
  bool bold = false;
  for (const CSNode value : font) {
    if (value.Tag() == "size") {
      look.size.value = Size(Word(value, 0));
      const std::int64_t width = Size(Word(value, 1)), height = look.size.value;
      if (height == 0) Fault(value, "a text cannot have the size 0");
      look.charWidthPercent = static_cast<int>(std::min<std::int64_t>((200 * width + height) / (2 * height), 100'000));
    } else if (value.Tag() == "thickness") {
      look.lineWidth.value = SizeOf(value);
    } else if (value.Tag() == "face") {
      look.font = Word(value).Text();
    } else if (value.Tag() == "line_spacing") {
      if (!ScaleDecimal(Word(value).Text(), 100, look.interlineHeightPercent))
        Fault(value, "the spacing of lines is a number");
    } else {
      bold |= (value.IsList() ? value.Tag() : value.Text()) == "bold" && IsYes(value);
      context.LeaveOut(font, value);
    }
  }
  if (look.lineWidth.value == 0) look.lineWidth.value = look.size.value / (bold ? 5 : 8);
  return look;
}

void ReadEffects(SBoardContext& context, CSNode effects, SBoardText& text) {
  for (const CSNode value : effects) {
    if (value.Tag() == "font") {
      text.style = context.styles.Text(ReadFont(context, value));
    } else if (value.Tag() == "justify") {
      for (const CSNode word : value) {
        if (word.Text() == "mirror") {
          text.mirrored = true;
        } else {
          context.LeaveOut(value, word);
        }
      }
    } else if (value.Tag() == "hide" || value.Text() == "hide") {
      text.hidden = IsYes(value);
    } else {
      context.LeaveOut(effects, value);
    }
  }
}

void AddSegment(SBoardContext& context, CSNode node) {
  STrackSegmentFields segment;
  int width = 0;
  CNet* net = nullptr;
  for (const CSNode value : node) {
    const std::string_view tag = value.Tag();
    if (tag == "start") segment.start = Point(value);
    else if (tag == "end") segment.end = Point(value);
    else if (tag == "width") width = SizeOf(value);
    else if (tag == "layer") segment.layer = context.layers->Find(Word(value));
    else if (tag == "net") net = context.Net(value).net;
    else context.LeaveOut(node, value);
  }
  if (!segment.layer) return context.summary.LeaveOut("segment on a layer that the board lacks");
  segment.style = context.styles.Track(width);
  if (!net) {  // a conductor of its own
    AddRecord(context.design.coppers,
              {segment.layer, nullptr, Dsu{width}, {segment.start, segment.end}, /*filled=*/false});
    return;
  }
  auto* track = static_cast<CTrack*>(net->Tracks().LastRecord());
  const auto* const last = track ? static_cast<const CTrackSegment*>(track->Segments().LastRecord()) : nullptr;
  if (!last || last->Values().end != segment.start || last->Values().layer != segment.layer)
    track = &AddRecord(net->Tracks(), {segment.style});
  AddRecord(track->Segments(), std::move(segment));
}

void AddVia(SBoardContext& context, CSNode node) {
  CPoint position;
  int size = 0;
  std::optional<int> drill;
  SBoardContext::SNet net;
  CSNode layers;
  bool isMicrovia = false;
  for (const CSNode value : node) {
    const std::string_view tag = value.Tag();
    if (tag == "at") position = Point(value);
    else if (tag == "size") size = SizeOf(value);
    else if (tag == "drill") drill = SizeOf(value);
    else if (tag == "layers") layers = value;
    else if (tag == "net") net = context.Net(value);
    else if (value.Text() == "micro") isMicrovia = true;
    else if (value.Text() != "blind" && value.Text() != "buried") context.LeaveOut(node, value);
  }
  if (!layers) Fault(node, "the via lacks its layers");
  if (!drill)
    drill = context.rules.Classes()[net.rule][isMicrovia ? EClassValue::MicroviaDrill : EClassValue::ViaDrill];
  CLayer* const from = context.layers->Find(Word(layers, 0));
  CLayer* const to = context.layers->Find(Word(layers, 1));
  if (!from || !to) return context.summary.LeaveOut("via to a layer that the board lacks");
  CPadStyle* const style = context.styles.Via(size, drill.value_or(0));
  CLayerSpan* const span = context.styles.Span(layers, from, to);
  if (net.net) {
    AddRecord(net.net->Vias(), {style, span, position});
  } else {
    AddRecord(context.design.freePads,
              {CName{context.names.TakeUnlisted("via", "Via")}, style, nullptr, position, {}, {ELayerSide::All}});
  }
}

void AddText(SBoardContext& context, CSNode node) {
  const SBoardText text = ReadText(context, node, 1);
  if (!text.layer || !text.at) return context.summary.LeaveOut("text on a layer that the board lacks");
  if (text.hidden) context.summary.LeaveOut("hide of gr_text");
  AddRecord(context.design.texts,
            {"", CString(Word(node).Text()), text.style, text.layer, text.position, text.angle, text.mirrored});
}
}  // namespace

SBoardText ReadText(SBoardContext& context, CSNode node, std::size_t words) {
  SBoardText text;
  for (const CSNode value : node) {
    if (words > 0) {
      --words;
    } else if (value.Tag() == "at") {
      text.at = value;
      text.position = Point(value);
      text.angle = Angle(value, 2);
    } else if (value.Tag() == "layer") {
      text.layer = context.layers->Find(Word(value));
    } else if (value.Tag() == "effects") {
      ReadEffects(context, value, text);
    } else if (value.Tag() == "hide" || value.Text() == "hide") {
      text.hidden = IsYes(value);
    } else {
      context.LeaveOut(node, value);
    }
  }
  if (!text.style) text.style = context.design.GetDefaults()->GetTextStyle();
  return text;
}

CPoints ReadPoints(SBoardContext& context, CSNode pts) {
  CPoints points;
  for (const CSNode value : pts) {
    if (value.Tag() == "xy") {
      points.push_back(Point(value));
    } else if (value.Tag() == "arc") {
      for (const char* const part : {"start", "mid", "end"}) points.push_back(Point(value.Find(part)));
      context.summary.LeaveOut("curve of an arc in an outline");
    } else {
      Fault(value, "points are written (xy ...)");
    }
  }
  return points;
}

bool ReadShape(SBoardContext& context, CSNode node, SShapeItemFields& shape) {
  const bool isLine = node.Tag().ends_with("_line"), isRectangle = node.Tag().ends_with("_rect");
  CPoint start, end;
  shape.closed = !isLine;
  shape.filled = !isLine && !isRectangle;
  for (const CSNode value : node) {
    const std::string_view tag = value.Tag();
    if (tag == "start") start = Point(value);
    else if (tag == "end") end = Point(value);
    else if (tag == "pts") shape.points = ReadPoints(context, value);
    else if (tag == "width") shape.width.value = SizeOf(value);
    else if (tag == "stroke") shape.width.value = StrokeWidth(context, value);
    else if (tag == "layer") shape.layer = context.layers->Find(Word(value));
    else if (tag == "fill") shape.filled = Word(value).Text() != "none" && Word(value).Text() != "no";
    else context.LeaveOut(node, value);
  }
  if (isLine) shape.points = {start, end};
  if (isRectangle) shape.points = {start, {end.x, start.y}, end, {start.x, end.y}};
  if (shape.layer) return true;
  context.summary.LeaveOut("shape on a layer that the board lacks");
  return false;
}

void AddZone(SBoardContext& context, CSNode node) {
  SAreaFields area;
  SPourTemplateFields pour;
  std::vector<CPoints> outlines;
  std::vector<CLayer*> layers;
  for (const CSNode value : node) {
    const std::string_view tag = value.Tag();
    if (tag == "net") {
      pour.net = context.Net(value).net;
    } else if (tag == "layer" || tag == "layers") {
      layers = context.layers->All(value);
    } else if (tag == "name") {
      area.name = Word(value).Text();
    } else if (tag == "min_thickness") {
      pour.minimumWidth.value = SizeOf(value);
    } else if (tag == "connect_pads" && value.Find("clearance")) {
      pour.clearance.value = SizeOf(value.Find("clearance"));
    } else if (tag == "polygon") {
      outlines.push_back(ReadPoints(context, value.Value(0)));
    } else if (tag != "net_name") {
      if (tag == "filled_polygon") pour.poured = true;
      context.LeaveOut(node, value);
    }
  }
  if (layers.empty()) return context.summary.LeaveOut("zone on layers that the board lacks");
  for (CLayer* const layer : layers) {
    for (const CPoints& outline : outlines) {
      area.layer = layer;
      area.points = outline;
      CArea& added = AddRecord(context.design.areas, area);
      if (pour.net) AddRecord(added.PourTemplates(), pour);
    }
  }
}

void AddBoardItem(SBoardContext& context, CSNode node) {
  const std::string_view tag = node.Tag();
  if (tag == "segment") return AddSegment(context, node);
  if (tag == "via") return AddVia(context, node);
  if (tag == "zone") return AddZone(context, node);
  if (tag == "gr_text") return AddText(context, node);
  if (tag == "gr_line" || tag == "gr_rect" || tag == "gr_poly") {
    SShapeItemFields shape;
    if (ReadShape(context, node, shape)) AddRecord(context.design.shapes, std::move(shape));
    return;
  }
  context.summary.LeaveOut(tag);
}
