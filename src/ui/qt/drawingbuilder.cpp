#include "ui/qt/drawingbuilder.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <tuple>

#include "ui/qt/padshape.h"
#include "ui/qt/text.h"

namespace {
using C = CDesignColours;
constexpr int kTurn = 360'000;  // thousandths of a degree

int Limited(double value) {
  return static_cast<int>(
      std::clamp(std::round(value), double(std::numeric_limits<int>::min()), double(std::numeric_limits<int>::max())));
}

CPoint Rotated(double x, double y, int angle, CPoint around) {
  if (angle % kTurn == 0) return {Limited(around.x + x), Limited(around.y + y)};
  const double radians = angle / 180'000.0 * std::numbers::pi;
  const double sine = std::sin(radians), cosine = std::cos(radians);
  return {Limited(around.x + x * cosine - y * sine), Limited(around.y + x * sine + y * cosine)};
}

/// Around a rectangle that is turned around its middle `at`.
CBox TurnedBox(CPoint at, double halfWidth, double halfHeight, int angle) {
  CBox box;
  for (const double x : {-halfWidth, halfWidth})
    for (const double y : {-halfHeight, halfHeight}) box.Include(Rotated(x, y, angle, at));
  return box;
}

CBox Grown(const CBox& box, int by) {
  return {Limited(double(box.left) - by), Limited(double(box.bottom) - by), Limited(double(box.right) + by),
          Limited(double(box.top) + by)};
}
}  // namespace

CPoint CDrawingBuilder::SPlacement::Place(CPoint point) const {
  return Rotated(point.x, isBack ? -double(point.y) : point.y, angle, position);
}

namespace {
/// A font in the size in which its capitals are as high as drawn texts count on.
struct SFont {
  QFont font;
  QFontMetricsF metrics;
  explicit SFont(const QFont& sized) : font(sized), metrics(sized) {}
};
QFont Sized(QFont font, double capHeight) {
  constexpr int kPixels = 100;
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setPixelSize(kPixels);
  font.setPixelSize(static_cast<int>(std::round(kPixels * capHeight / std::max(QFontMetricsF(font).capHeight(), 1.0))));
  return font;
}
const SFont& FontOf(const CString& name) {
  static std::map<CString, SFont> fonts;
  const auto at = fonts.find(name);
  if (at != fonts.end()) return at->second;
  const QFont font = name.empty() || name == STextStyleFields().font ? QGuiApplication::font() : QFont(ToQt(name));
  return fonts.emplace(name, SFont(Sized(font, CDrawingBuilder::kCapHeight))).first->second;
}
}  // namespace

namespace {
constexpr double kLinePitch = 1.6;  // of the capitals' height, from one line of a text to the next
}

QRectF CDrawingBuilder::BoundsOf(const SDrawnText& text) {
  constexpr double kBeyond = 0.5;  // of the capitals' height, above and below together
  const QStringList lines = text.text.split('\n');
  double width = 0;
  for (const QString& line : lines) width = std::max(width, FontOf(text.font).metrics.horizontalAdvance(line));
  const double height = kCapHeight * (1 + kBeyond + double(lines.size() - 1) * kLinePitch);
  return {-width / 2, -height / 2, width, height};
}

QPainterPath CDrawingBuilder::PathOf(const SDrawnText& text) {
  QPainterPath path;
  const QStringList lines = text.text.split('\n');
  const SFont& font = FontOf(text.font);
  double baseline = kCapHeight / 2 - kCapHeight * kLinePitch * double(lines.size() - 1) / 2;
  for (const QString& line : lines) {
    path.addText(-font.metrics.horizontalAdvance(line) / 2, baseline, font.font, line);
    baseline += kCapHeight * kLinePitch;
  }
  return path;
}

// ---- Planes

void CDrawingBuilder::MakePlanes() {
  m_list.m_planes.emplace_back();  // what stands on no layer: board outlines, schematics
  std::vector<std::tuple<int, int, int, CLayer*>> order;
  int place = 0;
  for (CLayer& layer : m_design.layers) {
    const int usage = layer.GetUsage(), side = layer.GetSide();
    const bool isElectrical = usage == ELayerUsage::Electrical;
    if (isElectrical && (side == ELayerSide::Top || side == ELayerSide::Bottom)) m_electrical[side].push_back(&layer);
    const int height = side == ELayerSide::Top ? 3 : side == ELayerSide::Inner ? 2 : side == ELayerSide::Bottom ? 1 : 0;
    const int use = isElectrical ? 1 : usage == ELayerUsage::Documentation ? 2 : 0;  // masks lie below the copper
    if (!layer.IsBuiltIn()) order.emplace_back(height, use, --place, &layer);
  }
  std::sort(order.begin(), order.end());
  const auto add = [&](const CLayer* layer) {
    m_planeOf.emplace(layer, static_cast<std::uint16_t>(m_list.m_planes.size()));
    m_list.m_planes.push_back({layer});
  };
  for (const auto& [height, use, at, layer] : order) add(layer);
  for (const CLayerSpan& span : m_design.layerSpans) add(&span);
  if (const CLayer* const all = m_design.FindBuiltInLayer()) add(all);
  m_holes = static_cast<std::uint16_t>(m_list.m_planes.size());
  m_list.m_planes.emplace_back().isHoles = true;
}

std::uint16_t CDrawingBuilder::PlaneOf(const CRecordBase* layer) const {
  const auto at = m_planeOf.find(layer);
  return at == m_planeOf.end() ? std::uint16_t{0} : at->second;
}

// ---- Items

void CDrawingBuilder::Build() {
  MakePlanes();
  const CDesign& design = m_design;
  for (CBoard& board : design.boards) {
    const SBoardFields& values = board.Values();
    AddPolygon({0, C::kBoardItem}, board, {values.points, values.width.value, values.closed, false});
  }
  for (CArea& area : design.areas)
    AddPolygon({PlaneOf(area.Values().layer.Get()), C::kAreaItem}, area, {area.Values().points, 0, true, true},
               EDrawn::Area);
  for (CCopper& copper : design.coppers) {
    const SCopperFields& values = copper.Values();
    AddPolygon({PlaneOf(values.layer.Get()), C::kCopperItem}, copper,
               {values.points, values.width.value, values.filled, values.filled},
               values.filled ? EDrawn::Area : EDrawn::Polygon);
  }
  for (CShapeItem& shape : design.shapes) AddShape(shape.Values(), {}, shape);
  for (CFreeText& text : design.texts) AddFreeText(text.Values(), {}, text);
  AddValues(const_cast<CDesign&>(design).valuePositions);
  for (CNetName& name : design.netNames) {
    const SNetNameFields& values = name.Values();
    if (values.net)
      AddText({0, C::kTextItem}, name, values.net.Get()->GetName(), values.style.Get(), values.position, 0, false);
  }
  for (CFreePad& pad : design.freePads) {
    const SFreePadFields& values = pad.Values();
    AddPad(pad, values.style.Get(), values.position, values.angle, values.side.value);
    AddValues(pad.ValuePositions());
  }
  for (CVia& via : design.freeVias) AddVia(via);
  AddComponents();
  for (CNet& net : design.nets) AddNet(net);
  const auto addAll = [this](auto& items) {
    for (auto& item : items) AddPlacedItem(item);
  };
  addAll(design.symbolOrigins), addAll(design.dibInstances), addAll(design.notes), addAll(design.errors);
  addAll(design.blockOrigins), addAll(design.blockPorts), addAll(design.callouts), addAll(design.dimensions);
  addAll(design.drillTables), addAll(design.insertedFiles), addAll(design.insertedReports);
  addAll(design.panelPcbs), addAll(design.layerStacks);
}

void CDrawingBuilder::AddComponents() {
  const bool isSymbol =
      m_design.IsKindOf(CPcbSymDesign::GetThisClass()) || m_design.IsKindOf(CScmSymDesign::GetThisClass());
  for (CSymbol& symbol : m_design.symbols)
    if (isSymbol) AddSymbol(symbol, {}, nullptr, true);
  for (CComponentInstance& component : m_design.componentInstances) {
    for (CSymbolInstance& instance : component.SymbolInstances()) {
      const SSymbolInstanceFields& values = instance.Values();
      const SPlacement placement{values.position, values.angle.GetMilliDegrees(),
                                 values.side.value == ELayerSide::Bottom};
      if (values.symbol) AddSymbol(*values.symbol.Get(), placement, &instance, instance.PadInstances().Count() == 0);
      for (CPadInstance& pad : instance.PadInstances()) {
        const SPadInstanceFields& at = pad.Values();
        AddPad(pad, at.style.Get(), at.position, at.angle, at.side.value);
      }
      AddValues(instance.ValuePositions());
    }
  }
}

/// With an instance, its parts are selected as that; without one, each by itself.
void CDrawingBuilder::AddSymbol(CSymbol& symbol, const SPlacement& placement, CDesignItem* instance, bool withPads) {
  for (CShapeItem& shape : symbol.Shapes()) AddShape(shape.Values(), placement, instance ? *instance : shape);
  for (CFreeText& text : symbol.Texts()) AddFreeText(text.Values(), placement, instance ? *instance : text);
  if (!withPads) return;
  for (CPad& pad : symbol.Pads()) {
    const SPadFields& values = pad.Values();
    const int own = values.angle.GetMilliDegrees();
    AddPad(instance ? *instance : pad, values.style.Get(), placement.Place(values.position),
           CAngle(placement.angle + (placement.isBack ? -own : own)), values.side.value);
  }
}

void CDrawingBuilder::AddNet(CNet& net) {
  for (CTrack& track : net.Tracks()) {
    for (CTrackSegment& segment : track.Segments()) {
      const STrackSegmentFields& values = segment.Values();
      const CTrackStyle* const style = values.style ? values.style.Get() : track.Values().defaultStyle.Get();
      AddLine({PlaneOf(values.layer.Get()), C::kTrackItem}, segment, values.start, values.end,
              style ? style->GetWidth() : 0);
    }
  }
  for (CVia& via : net.Vias()) AddVia(via);
  for (CConnectPoint& point : net.ConnectPoints()) {
    const SConnectPointFields& values = point.Values();
    if (values.style && values.junction)
      AddStyle({PlaneOf(values.layer.Get()), C::kTrackItem}, point, *values.style.Get(), values.position, 0, nullptr);
  }
  if (!net.Values().displayConnections || net.Connections().Count() == 0) return;
  const auto plane = static_cast<std::uint16_t>(m_list.m_planes.size());
  m_list.m_planes.emplace_back().net = &net;
  for (CConnection& one : net.Connections())
    AddLine({plane, C::kConnectionItem}, one, one.Values().start, one.Values().end, 0);
}

template <class Item>
void CDrawingBuilder::AddPlacedItem(Item& item) {
  const SPlacedItemFields& values = item.Values();
  const std::uint16_t plane = PlaneOf(values.layer.Get());
  for (CShapeItem& shape : item.Shapes()) AddShape(shape.Values(), {}, shape);
  for (CFreeText& text : item.Texts()) AddFreeText(text.Values(), {}, text);
  const CPoint at = values.position;
  const int width = values.width.value, height = values.height.value;
  CPoint middle = at;
  if (width > 0 && height > 0) {
    middle = Rotated(width / 2.0, height / 2.0, 0, at);
    const CPoint far = Rotated(width, height, 0, at);
    AddPolygon({plane, C::kShapeItem}, item, {{at, {far.x, at.y}, far, {at.x, far.y}}, 0, true, false});
  }
  AddText({plane, C::kTextItem}, item, values.text, m_design.GetDefaults()->GetTextStyle(), middle, 0, false);
}

void CDrawingBuilder::AddShape(const SShapeItemFields& shape, const SPlacement& placement, CDesignItem& item) {
  const CLayer* layer = shape.layer.Get();
  if (placement.isBack && layer) {  // on the like layer of the other side
    for (const CLayer& other : m_design.layers)
      if (other.GetSide() == (layer->GetSide() == ELayerSide::Top      ? ELayerSide::Bottom
                              : layer->GetSide() == ELayerSide::Bottom ? ELayerSide::Top
                                                                       : -1) &&
          other.GetUsage() == layer->GetUsage() && other.GetType() == layer->GetType()) {
        layer = &other;
        break;
      }
  }
  CPoints points = shape.points;
  for (CPoint& point : points) point = placement.Place(point);
  const int width = shape.lineStyle ? shape.lineStyle.Get()->GetWidth() : shape.width.value;
  const SLook look{PlaneOf(layer), C::kShapeItem};
  if (points.size() == 2) AddLine(look, item, points[0], points[1], width);
  else AddPolygon(look, item, {std::move(points), width, shape.closed, shape.filled});
}

void CDrawingBuilder::AddFreeText(const SFreeTextFields& text, const SPlacement& placement, CDesignItem& item) {
  AddText({PlaneOf(text.layer.Get()), C::kTextItem}, item, text.text, text.style.Get(), placement.Place(text.position),
          placement.angle + text.angle.GetMilliDegrees(), text.mirrored != placement.isBack);
}

void CDrawingBuilder::AddValues(CCollection<CValuePosition>& values) {
  for (CValuePosition& value : values) {
    const SValuePositionFields& at = value.Values();
    const CLayer* const layer = at.layer.Get();
    if (at.displayed)
      AddText({PlaneOf(layer), C::kValueItem}, value, at.value, at.style.Get(), at.position, at.angle.GetMilliDegrees(),
              layer && layer->GetSide() == ELayerSide::Bottom);
  }
}

// ---- Forms

void CDrawingBuilder::AddPolygon(SLook look, CDesignItem& item, SDrawnPolygon polygon, EDrawn type) {
  CBox box;
  for (const CPoint point : polygon.points) box.Include(point);
  if (box.IsEmpty()) return;
  Add({Grown(box, polygon.width / 2 + 1), &item, look.plane, type, look.kind,
       static_cast<std::uint32_t>(m_list.m_polygons.size())});
  m_list.m_polygons.push_back(std::move(polygon));
}

void CDrawingBuilder::AddLine(SLook look, CDesignItem& item, CPoint from, CPoint to, int width) {
  CBox box;
  box.Include(from);
  box.Include(to);
  Add({Grown(box, width / 2 + 1), &item, look.plane, EDrawn::Line, look.kind,
       static_cast<std::uint32_t>(m_list.m_lines.size())});
  m_list.m_lines.push_back({from, to, width});
}

/// A pad of a side stands on that side's electrical layers; one of all layers is painted once, as the built-in layer.
void CDrawingBuilder::AddPad(CDesignItem& item, const CPadStyle* style, CPoint at, CAngle angle, int side) {
  if (!style) return;
  const int turned = angle.GetMilliDegrees();
  if (side != ELayerSide::Top && side != ELayerSide::Bottom)
    return AddStyle({PlaneOf(m_design.FindBuiltInLayer()), C::kPadItem}, item, *style, at, turned, nullptr);
  if (m_electrical[side].empty()) return AddStyle({0, C::kPadItem}, item, *style, at, turned, nullptr);
  for (const CLayer* const layer : m_electrical[side])
    AddStyle({PlaneOf(layer), C::kPadItem}, item, *style, at, turned, layer);
}

void CDrawingBuilder::AddVia(CVia& via) {
  const SViaFields& values = via.Values();
  if (!values.style) return;
  const CRecordBase* const span = values.span ? values.span.Get() : m_design.FindBuiltInLayer();
  AddStyle({PlaneOf(span), C::kViaItem}, via, *values.style.Get(), values.position, 0, nullptr);
}

/// The pad itself, its hole, and its exceptions: on the one layer `only` that of the layer takes the pad's place, and
/// those of the same side's other layers count; without it all of them do.
void CDrawingBuilder::AddStyle(SLook look, CDesignItem& item, const CPadStyle& style, CPoint at, int angle,
                               const CLayer* only) {
  const SPadPreview pad = PadOf(style.Values());
  bool isReplaced = false;
  for (const CPadStyleException& exception : style.Exceptions()) {
    const CLayer* const layer = exception.GetLayer();
    if (!layer || (only && layer->GetSide() != only->GetSide())) continue;
    AddPadShape({PlaneOf(layer), look.kind}, item, &exception, PadOf(exception.Values()), at, angle, EDrawn::Pad);
    isReplaced |= layer == only;
  }
  if (!isReplaced) AddPadShape(look, item, &style, pad, at, angle, EDrawn::Pad);
  if (pad.drillWidth > 0) AddPadShape({m_holes, look.kind}, item, &style, pad, at, angle, EDrawn::Hole);
}

void CDrawingBuilder::AddPadShape(SLook look, CDesignItem& item, const CRecordBase* key, const SPadPreview& pad,
                                  CPoint at, int angle, EDrawn type) {
  const auto [found, isNew] = m_shapeOf.try_emplace({key, type}, static_cast<std::uint32_t>(m_list.m_shapes.size()));
  if (isNew) m_list.m_shapes.push_back(type == EDrawn::Hole ? HolePath(pad) : PadPath(pad));
  const QRectF bounds = m_list.m_shapes[found->second].boundingRect();
  if (bounds.isEmpty()) return;
  Add({Grown(TurnedBox(at, bounds.width() / 2, bounds.height() / 2, angle), 1), &item, look.plane, type, look.kind,
       static_cast<std::uint32_t>(m_list.m_pads.size())});
  m_list.m_pads.push_back({found->second, at, angle});
}

void CDrawingBuilder::AddText(SLook look, CDesignItem& item, const CString& text, const CTextStyle* style, CPoint at,
                              int angle, bool mirrored) {
  if (text.empty()) return;
  if (!style) style = m_design.GetDefaults()->GetTextStyle();
  const STextStyleFields values = style ? style->Values() : STextStyleFields();
  QString shown = ToQt(text);
  shown.replace("\\n", "\n").remove('\r');  // boards write the end of a line as two characters
  SDrawnText drawn{std::move(shown), at, values.font, double(values.size.value), values.charWidthPercent / 100.0, angle,
                   mirrored};
  const QRectF bounds = BoundsOf(drawn);
  const double scale = drawn.height / kCapHeight;
  Add({TurnedBox(at, bounds.width() / 2 * scale * drawn.stretch, bounds.height() / 2 * scale, angle), &item, look.plane,
       EDrawn::Text, look.kind, static_cast<std::uint32_t>(m_list.m_texts.size())});
  m_list.m_texts.push_back(std::move(drawn));
}
