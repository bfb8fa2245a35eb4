#include "ui/qt/padshape.h"

#include <QLineF>
#include <QTransform>
#include <QtMath>
#include <algorithm>
#include <cmath>

#include "model/design/padstyle.h"

QSizeF PadSize(const SPadPreview& pad) {
  const bool isEven = !CPadStyle::HasSecondDimension(pad.shape) || pad.length <= 0;
  return {double(pad.width), double(isEven ? pad.width : pad.length)};
}

namespace {
/// A closed outline with its corners rounded, each as far as half of the sides beside it allows.
QPainterPath RoundedPolygon(const QPolygonF& corners, double radius) {
  QPainterPath path;
  const qsizetype count = corners.size();
  for (qsizetype i = 0; i < count; ++i) {
    const QPointF corner = corners[i];
    const QLineF back(corner, corners[(i + count - 1) % count]), ahead(corner, corners[(i + 1) % count]);
    const double turn = qDegreesToRadians(180 - back.angleTo(ahead));
    const double wanted = std::abs(radius * std::tan(turn / 2));
    const double reach = std::min({wanted, back.length() / 2, ahead.length() / 2});
    const QPointF from = back.length() > 0 ? back.pointAt(reach / back.length()) : corner;
    const QPointF to = ahead.length() > 0 ? ahead.pointAt(reach / ahead.length()) : corner;
    i == 0 ? path.moveTo(from) : path.lineTo(from);
    path.quadTo(corner, to);
  }
  path.closeSubpath();
  return path;
}

/// A box without its corners, cut off at 45 degrees.
QPolygonF CutBox(const QRectF& box, double cut) {
  return {{box.left() + cut, box.top()},     {box.right() - cut, box.top()},    {box.right(), box.top() + cut},
          {box.right(), box.bottom() - cut}, {box.right() - cut, box.bottom()}, {box.left() + cut, box.bottom()},
          {box.left(), box.bottom() - cut},  {box.left(), box.top() + cut}};
}
}  // namespace

QPainterPath PadPath(const SPadPreview& pad) {
  QPainterPath path;
  const QSizeF size = PadSize(pad);
  if (size.width() <= 0 || size.height() <= 0) return path;
  const QRectF box(-size.width() / 2, -size.height() / 2, size.width(), size.height());
  const double least = std::min(size.width(), size.height());
  const double radius = std::clamp(double(pad.dimension3), 0.0, least / 2);
  switch (pad.shape) {
    case EPadShape::Square:
    case EPadShape::Rectangle: path.addRect(box); break;
    case EPadShape::Oval: path.addRoundedRect(box, least / 2, least / 2); break;
    case EPadShape::RoundedRectangle: path.addRoundedRect(box, radius, radius); break;
    case EPadShape::Octagon: {
      constexpr double kRegular = 0.29289321881345254;  // of the side: 1 - 1 / sqrt(2)
      path.addPolygon(CutBox(box, least * kRegular));
      path.closeSubpath();
      break;
    }
    case EPadShape::ChamferedRectangle: {
      const double rounding = std::clamp(double(pad.dimension4), 0.0, least / 2 - radius);
      if (radius == 0) {
        path.addRoundedRect(box, rounding, rounding);
      } else {
        path = RoundedPolygon(CutBox(box, radius), rounding);
      }
      break;
    }
    case EPadShape::Finger: {  // the upper end is rounded, the lower one square
      path.addRoundedRect(box, radius, radius);
      QPainterPath lower;
      lower.addRect(QRectF(box.left(), 0, box.width(), box.height() / 2));
      path = path.united(lower);
      break;
    }
    default: path.addEllipse(QPointF(), size.width() / 2, size.width() / 2);
  }
  return path;
}

QPainterPath HolePath(const SPadPreview& pad) {
  QPainterPath path;
  if (pad.drillWidth <= 0) return path;
  const double width = pad.drillWidth;
  if (pad.drillShape != EDrillShape::Slot || pad.drillLength <= 0) {
    path.addEllipse(QPointF(), width / 2, width / 2);
    return path;
  }
  const double length = pad.drillLength;
  const double round = std::min(width, length) / 2;
  const double radius = pad.drillCornerRadius > 0 ? std::min(double(pad.drillCornerRadius), round) : round;
  path.addRoundedRect(QRectF(-width / 2, -length / 2, width, length), radius, radius);
  return pad.drillRotated ? QTransform().rotate(90).map(path) : path;
}
