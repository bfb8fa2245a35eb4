// Tracks, vias, areas, texts and shapes of a board.
#include <limits>

#include "interchange/boardcontext.h"
#include "interchange/boardwords.h"
#include "model/base/decimal.h"

void SBoardContext::LeaveOut(CSNode owner, CSNode value) { ::LeaveOut(summary, owner.Tag(), value); }

int SBoardContext::Width(CSNode list) {
  const CSNode word = Word(list);
  const int width = Length(word);
  if (width >= 0) return width;
  if (width == std::numeric_limits<int>::min()) Fault(word, Quoted(word.Text()) + " is no width");
  summary.MendItem("negative widths count as their amount");
  return -width;
}

void SBoardContext::CountCopies(CSNode node, std::size_t count, std::size_t points) {
  constexpr std::size_t kMaxCopies = std::size_t{1} << 18, kPoints = 64;
  m_copies += (count - 1) * (1 + points / kPoints);
  if (m_copies > kMaxCopies)
    Fault(node, "what stands on several layers comes to more than 262144 items of up to 64 points");
}

namespace {
/// The width of a shape: (width 0.1), or within (stroke (width 0.1) (type solid)).
int StrokeWidth(SBoardContext& context, CSNode stroke) {
  int width = 0;
  for (const CSNode value : stroke) {
    if (value.Tag() == "width") {
      width = context.Width(value);
    } else if (value.Tag() != "type" || (Word(value).Text() != "solid" && Word(value).Text() != "default")) {
      context.LeaveOut(stroke, value);
    }
  }
  return width;
}

/// How a text looks: (font (size height width) (thickness ...) (face ...)).
/// None for a text of the size 0, which cannot be seen.
std::optional<STextStyleFields> ReadFont(SBoardContext& context, CSNode font) {
  STextStyleFields look;
  look.lineWidth.value = 0;
  bool bold = false, hasSize = true;
  for (const CSNode value : font) {
    if (value.Tag() == "size") {
      look.size.value = Size(Word(value, 0));
      const std::int64_t width = Size(Word(value, 1)), height = look.size.value;
      hasSize = width > 0 && height > 0;
      if (hasSize)
        look.charWidthPercent =
            static_cast<int>(std::min<std::int64_t>((200 * width + height) / (2 * height), 100'000));
    } else if (value.Tag() == "thickness") {
      look.lineWidth.value = context.Width(value);
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
  return hasSize ? std::optional(look) : std::nullopt;
}

void ReadEffects(SBoardContext& context, CSNode effects, SBoardText& text) {
  for (const CSNode value : effects) {
    if (value.Tag() == "font") {
      const std::optional<STextStyleFields> look = ReadFont(context, value);
      text.style = look ? context.styles.Text(*look) : context.design.GetDefaults()->GetTextStyle();
      if (!look) context.summary.MendItem("texts of the size 0 have the default text style");
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
  std::vector<CLayer*> layers;
  for (const CSNode value : node) {
    const std::string_view tag = value.Tag();
    if (tag == "start") segment.start = Point(value);
    else if (tag == "end") segment.end = Point(value);
    else if (tag == "width") width = context.Width(value);
    else if (tag == "layer" || tag == "layers") layers = context.layers->All(value);
    else if (tag == "net") net = context.nets.Find(value).net;
    else context.LeaveOut(node, value);
  }
  if (layers.empty()) return context.summary.LeaveOutItem("tracks on layers that the board lacks");
  // A track may also open the mask above it.
  segment.layer = *std::find_if(layers.begin(), layers.end() - 1, IsCopper);
  if (layers.size() > 1) context.summary.LeaveOutItem("mask openings of tracks");
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
  CBoardNets::SNet net;
  CSNode layers;
  bool isMicrovia = false;
  for (const CSNode value : node) {
    const std::string_view tag = value.Tag();
    if (tag == "at") position = Point(value);
    else if (tag == "size") size = SizeOf(value);
    else if (tag == "drill") drill = SizeOf(value);
    else if (tag == "layers") layers = value;
    else if (tag == "net") net = context.nets.Find(value);
    else if (value.Text() == "micro") isMicrovia = true;
    else if (value.Text() != "blind" && value.Text() != "buried") context.LeaveOut(node, value);
  }
  if (!layers) Fault(node, "the via lacks its layers");
  if (!drill)
    drill = context.rules.classes.All()[net.rule][isMicrovia ? EClassValue::MicroviaDrill : EClassValue::ViaDrill];
  CLayer* const from = context.layers->Find(Word(layers, 0));
  CLayer* const to = context.layers->Find(Word(layers, 1));
  if (!from || !to) return context.summary.LeaveOutItem("vias to layers that the board lacks");
  CPadStyle* const style = context.styles.Via(size, drill.value_or(0));
  CLayerSpan* const span = context.styles.Span(layers, from, to);
  AddRecord(net.net ? net.net->Vias() : context.design.freeVias, {style, span, position});
}

void AddText(SBoardContext& context, CSNode node) {
  const SBoardText text = ReadText(context, node, 1);
  if (!text.layer || !text.at) return context.summary.LeaveOutItem("texts on layers that the board lacks");
  if (text.hidden) context.summary.MendItem("hidden texts are shown");
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
      context.summary.MendItem("curves in outlines are straight between their ends and middle");
    } else {
      Fault(value, "points are written (xy ...)");
    }
  }
  return points;
}

std::vector<SShapeItemFields> ReadShapes(SBoardContext& context, CSNode node) {
  const bool isLine = node.Tag().ends_with("_line"), isRectangle = node.Tag().ends_with("_rect");
  SShapeItemFields shape;
  std::vector<CLayer*> layers;
  CPoint start, end;
  shape.closed = !isLine;
  shape.filled = !isLine && !isRectangle;
  for (const CSNode value : node) {
    const std::string_view tag = value.Tag();
    if (tag == "start") start = Point(value);
    else if (tag == "end") end = Point(value);
    else if (tag == "pts") shape.points = ReadPoints(context, value);
    else if (tag == "width") shape.width.value = context.Width(value);
    else if (tag == "stroke") shape.width.value = StrokeWidth(context, value);
    else if (tag == "layer" || tag == "layers") layers = context.layers->All(value);
    else if (tag == "fill") shape.filled = Word(value).Text() != "none" && Word(value).Text() != "no";
    else context.LeaveOut(node, value);
  }
  if (isLine) shape.points = {start, end};
  if (isRectangle) shape.points = {start, {end.x, start.y}, end, {start.x, end.y}};
  if (layers.empty()) {
    context.summary.LeaveOutItem("shapes on layers that the board lacks");
    return {};
  }
  context.CountCopies(node, layers.size(), shape.points.size());
  std::vector<SShapeItemFields> shapes(layers.size(), shape);
  for (std::size_t i = 0; i < layers.size(); ++i) shapes[i].layer = layers[i];
  return shapes;
}

void AddZone(SBoardContext& context, CSNode node) {
  SAreaFields area;
  SPourTemplateFields pour;
  std::vector<CPoints> outlines;
  std::vector<CLayer*> layers;
  for (const CSNode value : node) {
    const std::string_view tag = value.Tag();
    if (tag == "net") {
      pour.net = context.nets.Find(value).net;
    } else if (tag == "layer" || tag == "layers") {
      layers = context.layers->All(value);
    } else if (tag == "name") {
      area.name = Word(value).Text();
    } else if (tag == "min_thickness") {
      pour.minimumWidth.value = context.Width(value);
    } else if (tag == "connect_pads" && value.Find("clearance")) {
      pour.clearance.value = SizeOf(value.Find("clearance"));
    } else if (tag == "polygon") {
      outlines.push_back(ReadPoints(context, value.Value(0)));
    } else if (tag != "net_name") {
      if (tag == "filled_polygon") pour.poured = true;
      context.LeaveOut(node, value);
    }
  }
  if (layers.empty()) return context.summary.LeaveOutItem("zones on layers that the board lacks");
  for (const CPoints& outline : outlines)
    context.CountCopies(node, layers.size(), outline.size() + area.name.size() / 8);
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
    for (SShapeItemFields& shape : ReadShapes(context, node)) AddRecord(context.design.shapes, std::move(shape));
    return;
  }
  if (tag == "general") {
    for (const CSNode value : node) context.LeaveOut(node, value);
    return;
  }
  LeaveOut(context.summary, "", node);
}
