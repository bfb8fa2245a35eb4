#include "ui/qt/drawingpainter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "ui/qt/drawingbuilder.h"

namespace {
constexpr double kThin = 1.5;      // pixels: thinner lines are painted one pixel wide
constexpr double kDot = 2.5;       // a pad smaller than this is a rectangle
constexpr double kReadable = 4;    // the least height of a text that is worth its letters
constexpr int kFewItems = 30'000;  // up to so many, edges are smoothed
constexpr double kLeastGrid = 8;   // pixels between the points of the grid
constexpr int kLightAlpha = 70;    // of areas: what lies below stays visible

int Limited(double value) {
  return static_cast<int>(
      std::clamp(value, double(std::numeric_limits<int>::min()), double(std::numeric_limits<int>::max())));
}
}  // namespace

CBox SDrawingPlace::BoxOf(const QRectF& device) const {
  const QPointF from = ToDesign(device.bottomLeft()), to = ToDesign(device.topRight());
  return {Limited(std::floor(from.x())), Limited(std::floor(from.y())), Limited(std::ceil(to.x())),
          Limited(std::ceil(to.y()))};
}

QColor CDrawingPainter::Contrast() const { return qGray(Background().rgb()) < 128 ? Qt::white : Qt::black; }

QColor CDrawingPainter::ColourOf(const SPlane& plane) const {
  if (plane.isHoles) return Background();
  if (plane.layer) return QColor::fromRgb(plane.layer->GetColour().rgb);
  if (plane.net && plane.net->Values().useOwnColour) return QColor::fromRgb(plane.net->Values().colour.rgb);
  return Contrast();
}

bool CDrawingPainter::IsVisible(const SDrawn& drawn) const {
  const CLayer* const layer = m_list.Planes()[drawn.plane].layer;
  return (!layer || layer->GetDisplayed()) && m_design.Colours().GetVisible(drawn.kind);
}

void CDrawingPainter::Paint(QPainter& painter, const QRect& area) {
  painter.setClipRect(area);
  painter.fillRect(area, Background());
  PaintGrid(painter, area);
  std::vector<std::uint32_t> found;
  m_list.Find(m_place.BoxOf(QRectF(area).adjusted(-2, -2, 2, 2)), found);
  // By what the whole window would show, so that parts painted later look like their surroundings.
  painter.setRenderHint(QPainter::Antialiasing, m_list.Items().size() <= kFewItems || m_place.scale > 4e-5);
  const std::uint32_t* at = found.data();
  const std::uint32_t* const end = at + found.size();
  for (const SPlane& plane : m_list.Planes()) {
    const std::uint32_t* const planeEnd = std::lower_bound(at, end, plane.end);
    if (at != planeEnd && (!plane.layer || plane.layer->GetDisplayed())) PaintPlane(painter, plane, at, planeEnd);
    if (plane.end > 0) at = planeEnd;
  }
  // A selected item is hatched and outlined, whatever its colour.
  QPen outline(Contrast(), 1, Qt::DashLine);
  outline.setCosmetic(true);
  for (const std::uint32_t i : found) {
    const SDrawn& drawn = m_list.Items()[i];
    if (!drawn.item->IsSelected() || !IsVisible(drawn)) continue;
    painter.setPen(outline);
    painter.setBrush(QBrush(Contrast(), Qt::BDiagPattern));
    painter.drawPath(OutlineOf(drawn));
  }
}

void CDrawingPainter::PaintGrid(QPainter& painter, const QRect& area) {
  const CGrid* const grid = m_design.GetScreenGrid();
  if (!grid || !m_design.Colours().GetVisible(CDesignColours::kGridItem)) return;
  const double stepX = grid->Values().stepX.value, stepY = grid->Values().stepY.value;
  if (stepX * m_place.scale < kLeastGrid || stepY * m_place.scale < kLeastGrid) return;
  const CPoint origin = m_design.DesignValues().Values().coordOrigin;
  const CBox box = m_place.BoxOf(area);
  QList<QPointF> points;
  const auto first = [](double from, double about, double step) {
    return about + std::ceil((from - about) / step) * step;
  };
  for (double y = first(box.bottom, origin.y, stepY); y <= box.top; y += stepY)
    for (double x = first(box.left, origin.x, stepX); x <= box.right; x += stepX) points << m_place.ToDevice(x, y);
  QColor colour = Contrast();
  colour.setAlpha(110);
  painter.setPen(QPen(colour, 1));
  painter.drawPoints(points.data(), static_cast<int>(points.size()));
}

void CDrawingPainter::PaintPlane(QPainter& painter, const SPlane& plane, const std::uint32_t* begin,
                                 const std::uint32_t* end) {
  const QColor colour = ColourOf(plane);
  const bool isThin = plane.layer && !plane.layer->GetTrueWidth();
  QList<QLineF> lines;
  double width = 0;
  const auto flush = [&] {
    if (lines.isEmpty()) return;
    const bool isWide = width > kThin && !isThin;
    QPen pen(colour, isWide ? width : 1, plane.net ? Qt::DotLine : Qt::SolidLine, isWide ? Qt::RoundCap : Qt::FlatCap);
    painter.setPen(pen);
    painter.drawLines(lines);
    lines.clear();
  };
  for (; begin != end; ++begin) {
    const SDrawn& drawn = m_list.Items()[*begin];
    if (!m_design.Colours().GetVisible(drawn.kind)) continue;
    if (drawn.type == EDrawn::Line) {
      const SDrawnLine& line = m_list.Line(drawn);
      const double wanted = line.width * m_place.scale;
      if (wanted != width && (wanted > kThin || width > kThin)) flush();
      width = wanted;
      QLineF device(m_place.ToDevice(line.from), m_place.ToDevice(line.to));
      if (device.length() < 1) device.setP2(device.p1() + QPointF(width > kThin ? 0.01 : 1, 0));  // a dot
      lines << device;
      continue;
    }
    flush();
    if (drawn.type == EDrawn::Text) PaintText(painter, drawn, colour);
    else if (drawn.type == EDrawn::Pad || drawn.type == EDrawn::Hole) PaintPad(painter, drawn, colour);
    else PaintPolygon(painter, drawn, colour, isThin);
  }
  flush();
}

const QPolygonF& CDrawingPainter::ShapeOf(std::uint32_t shape) {
  m_shapes.resize(m_list.Shapes().size());
  QPolygonF& polygon = m_shapes[shape];
  if (polygon.isEmpty())
    polygon = QTransform::fromScale(m_place.scale, m_place.scale).map(m_list.Shapes()[shape]).toFillPolygon();
  return polygon;
}

void CDrawingPainter::PaintPad(QPainter& painter, const SDrawn& drawn, const QColor& colour) {
  const SDrawnPad& pad = m_list.Pad(drawn);
  const double width = (double(drawn.box.right) - drawn.box.left) * m_place.scale;
  const double height = (double(drawn.box.top) - drawn.box.bottom) * m_place.scale;
  const QPointF at = m_place.ToDevice(pad.at);
  if (width < kDot && height < kDot) {
    if (drawn.type == EDrawn::Pad)
      painter.fillRect(QRectF(at.x() - width / 2, at.y() - height / 2, std::max(width, 1.0), std::max(height, 1.0)),
                       colour);
    return;
  }
  const QPolygonF& shape = ShapeOf(pad.shape);
  painter.setBrush(colour);
  painter.setPen(Qt::NoPen);
  if (pad.angle == 0) return painter.drawConvexPolygon(shape.translated(at));
  painter.drawConvexPolygon(QTransform().translate(at.x(), at.y()).rotate(-pad.angle / 1000.0).map(shape));
}

void CDrawingPainter::PaintPolygon(QPainter& painter, const SDrawn& drawn, const QColor& colour, bool isThin) {
  const SDrawnPolygon& polygon = m_list.Polygon(drawn);
  QPolygonF device;
  device.reserve(static_cast<qsizetype>(polygon.points.size()));
  for (const CPoint point : polygon.points) device << m_place.ToDevice(point);
  const double width = polygon.width * m_place.scale;
  QPen pen(colour, width > kThin && !isThin ? width : 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  painter.setPen(pen);
  QColor fill = colour;
  if (drawn.type == EDrawn::Area) fill.setAlpha(kLightAlpha);
  painter.setBrush(polygon.filled ? QBrush(fill) : QBrush(Qt::NoBrush));
  if (polygon.closed) painter.drawPolygon(device);
  else painter.drawPolyline(device);
}

QTransform CDrawingPainter::TransformOf(const SDrawnText& text) const {
  const QPointF at = m_place.ToDevice(text.at);
  const double scale = text.height * m_place.scale / CDrawingBuilder::kCapHeight;
  return QTransform()
      .translate(at.x(), at.y())
      .rotate(-text.angle / 1000.0)
      .scale(scale * text.stretch * (text.mirrored ? -1 : 1), scale);
}

void CDrawingPainter::PaintText(QPainter& painter, const SDrawn& drawn, const QColor& colour) {
  const SDrawnText& text = m_list.Text(drawn);
  if (text.height * m_place.scale < kReadable) {  // its place alone
    QColor faint = colour;
    faint.setAlpha(120);
    painter.fillRect(OutlineOf(drawn).boundingRect(), faint);
    return;
  }
  painter.save();
  painter.setTransform(TransformOf(text), true);
  painter.fillPath(CDrawingBuilder::PathOf(text), colour);
  painter.restore();
}

QPainterPath CDrawingPainter::OutlineOf(const SDrawn& drawn) const {
  QPainterPath path;
  switch (drawn.type) {
    case EDrawn::Line: {
      const SDrawnLine& line = m_list.Line(drawn);
      path.moveTo(m_place.ToDevice(line.from));
      path.lineTo(m_place.ToDevice(line.to) + QPointF(0.01, 0));
      QPainterPathStroker stroker;
      stroker.setWidth(std::max(line.width * m_place.scale, 3.0));
      stroker.setCapStyle(Qt::RoundCap);
      return stroker.createStroke(path);
    }
    case EDrawn::Area:
    case EDrawn::Polygon: {
      QPolygonF device;
      for (const CPoint point : m_list.Polygon(drawn).points) device << m_place.ToDevice(point);
      path.addPolygon(device);
      if (m_list.Polygon(drawn).closed) path.closeSubpath();
      return path;
    }
    case EDrawn::Pad:
    case EDrawn::Hole: {
      const SDrawnPad& pad = m_list.Pad(drawn);
      const QPointF at = m_place.ToDevice(pad.at);
      return QTransform()
          .translate(at.x(), at.y())
          .rotate(-pad.angle / 1000.0)
          .scale(m_place.scale, m_place.scale)
          .map(m_list.Shapes()[pad.shape]);
    }
    case EDrawn::Text:
      path.addPolygon(TransformOf(m_list.Text(drawn)).map(QPolygonF(CDrawingBuilder::BoundsOf(m_list.Text(drawn)))));
      path.closeSubpath();
  }
  return path;
}

bool CDrawingPainter::Touches(const SDrawn& drawn, const QRectF& device) const {
  QPainterPath outline = OutlineOf(drawn);
  if (drawn.type == EDrawn::Polygon && !m_list.Polygon(drawn).filled) {  // its line alone
    QPainterPathStroker stroker;
    stroker.setWidth(std::max(m_list.Polygon(drawn).width * m_place.scale, 1.0));
    outline = stroker.createStroke(outline);
  }
  return outline.intersects(device);
}
