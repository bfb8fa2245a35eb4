// Paints a drawing list: the planes one above the other, in the colours and with the visibility that the design has
// now.
#pragma once
#include <QPainter>
#include <QRect>

#include "ui/qt/drawinglist.h"

/// Where a drawing stands on a device: pixels are device pixels, y down; the design's y goes up.
struct SDrawingPlace {
  double left = 0, top = 0;  // design units at the device's corner
  double scale = 1e-4;       // pixels a design unit
  QPointF ToDevice(double x, double y) const { return {(x - left) * scale, (top - y) * scale}; }
  QPointF ToDevice(CPoint point) const { return ToDevice(point.x, point.y); }
  QPointF ToDesign(QPointF device) const { return {left + device.x() / scale, top - device.y() / scale}; }
  /// The part of the design in a rectangle of the device, limited to what designs can hold.
  CBox BoxOf(const QRectF& device) const;
};

class CDrawingPainter {
 public:
  CDrawingPainter(const CDesign& design, const CDrawingList& list, const SDrawingPlace& place)
      : m_design(design), m_list(list), m_place(place) {}

  /// Paints what lies in `area` (pixels), background included.
  void Paint(QPainter& painter, const QRect& area);
  /// Whether an item is shown now: its layer and its kind are visible.
  bool IsVisible(const SDrawn& drawn) const;
  QColor ColourOf(const SPlane& plane) const;
  /// The colour that stands out from the background: black or white.
  QColor Contrast() const;
  QColor Background() const { return QColor::fromRgb(m_design.Colours().Values().background.rgb); }
  /// Whether anything painted of an item lies in a rectangle of the device.
  bool Touches(const SDrawn& drawn, const QRectF& device) const;
  /// The outline of an item on the device, for marking it.
  QPainterPath OutlineOf(const SDrawn& drawn) const;

 private:
  void PaintGrid(QPainter& painter, const QRect& area);
  void PaintPlane(QPainter& painter, const SPlane& plane, const std::uint32_t* begin, const std::uint32_t* end);
  void PaintPad(QPainter& painter, const SDrawn& drawn, const QColor& colour);
  void PaintPolygon(QPainter& painter, const SDrawn& drawn, const QColor& colour, bool isThin);
  void PaintText(QPainter& painter, const SDrawn& drawn, const QColor& colour);
  const QPolygonF& ShapeOf(std::uint32_t shape);
  QTransform TransformOf(const SDrawnText& text) const;

  const CDesign& m_design;
  const CDrawingList& m_list;
  const SDrawingPlace& m_place;
  std::vector<QPolygonF> m_shapes;  // the list's, in pixels
};
