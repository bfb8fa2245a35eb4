#include "ui/qt/padview.h"

#include <QPainter>
#include <algorithm>

#include "model/design/padstyle.h"
#include "ui/qt/padshape.h"
#include "ui/qt/text.h"

namespace {
constexpr int kEdge = 8;  // pixels
constexpr int kTick = 4;
}  // namespace

CPadView::CPadView(QWidget* parent) : QWidget(parent) {
  setAccessibleName(QtText(Text::PadToScale));
  setMinimumSize(160, 160);
}

void CPadView::SetPad(const SPadPreview& pad) {
  m_pad = pad;
  Describe();
  update();
}

void CPadView::SetUnits(const CUnits& units) {
  m_units = units;
  Describe();
  update();
}

QString CPadView::LengthOf(int dsu) const {
  return ToQt(LengthText(dsu, m_units, false) + ' ' + CUnits::Suffix(m_units.GetType()));
}

bool CPadView::HasLength() const { return CPadStyle::HasSecondDimension(m_pad.shape) && m_pad.length > 0; }

QString CPadView::HoleText() const {
  if (m_pad.drillWidth <= 0) return QtText(Text::NoHole);
  const bool isSlot = m_pad.drillShape == EDrillShape::Slot && m_pad.drillLength > 0;
  CString size = FromQt(LengthOf(m_pad.drillWidth));
  if (isSlot) size += " x " + FromQt(LengthOf(m_pad.drillLength));
  return ToQt(TextOf(m_pad.plated ? Text::HolePlated : Text::HoleNotPlated, CStringArray{size}));
}

void CPadView::Describe() {
  CString size = FromQt(LengthOf(m_pad.width));
  if (HasLength()) size += " x " + FromQt(LengthOf(m_pad.length));
  setAccessibleDescription(QtText(Text::ShapeAndSize, {CPadStyle::GetShapeName(m_pad.shape), size}) + "\n" +
                           HoleText());
}

void CPadView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), palette().base());
  const QColor text = palette().color(QPalette::Text);
  painter.setPen(text);
  const QFontMetrics metrics(font());
  const int line = metrics.height();
  const QString title = accessibleDescription().section('\n', 0, 0);
  const QPainterPath pad = PadPath(m_pad), hole = HolePath(m_pad);
  const QRect top(kEdge, kEdge, width() - 2 * kEdge, line);
  const int lines = metrics.horizontalAdvance(HoleText()) > top.width() ? 2 : 1;
  const QRect bottom(kEdge, height() - kEdge - lines * line, top.width(), lines * line);
  painter.drawText(top, Qt::AlignHCenter, metrics.elidedText(title, Qt::ElideRight, top.width()));
  painter.drawText(bottom, Qt::AlignHCenter | Qt::TextWordWrap, HoleText());
  const QRectF bounds = pad.boundingRect().united(hole.boundingRect());
  if (bounds.isEmpty()) return;

  // Below the pad stands its width, to its left, upright, its length.
  const QRectF room =
      QRectF(rect()).adjusted(2 * kEdge + line, 2 * kEdge + line, -2 * kEdge - line, -3 * kEdge - (1 + lines) * line);
  const double scale = std::min(room.width() / bounds.width(), room.height() / bounds.height());
  if (scale <= 0) return;
  const QTransform place = QTransform().translate(room.center().x(), room.center().y()).scale(scale, scale);
  QPainterPath copper = place.map(pad);
  painter.setBrush(palette().mid());
  painter.setPen(QPen(text, 1));
  painter.drawPath(copper);
  if (!hole.isEmpty()) {
    painter.setBrush(palette().base());
    painter.setPen(QPen(text, m_pad.plated ? 3 : 1, m_pad.plated ? Qt::SolidLine : Qt::DashLine));
    painter.drawPath(place.map(hole));
  }
  painter.setPen(QPen(text, 1, Qt::DashDotLine));
  const QPointF middle = room.center();
  painter.drawLine(middle - QPointF(kEdge, 0), middle + QPointF(kEdge, 0));
  painter.drawLine(middle - QPointF(0, kEdge), middle + QPointF(0, kEdge));

  painter.setPen(QPen(text, 1));
  painter.setBrush(Qt::NoBrush);
  const QRectF drawn = copper.boundingRect();
  if (drawn.isEmpty()) return;
  const double y = drawn.bottom() + kEdge, x = drawn.left() - kEdge;
  painter.drawLine(QPointF(drawn.left(), y), QPointF(drawn.right(), y));
  for (const double at : {drawn.left(), drawn.right()})
    painter.drawLine(QPointF(at, y - kTick), QPointF(at, y + kTick));
  painter.drawText(QRectF(0, y + 2, 2 * middle.x(), line), Qt::AlignHCenter, LengthOf(m_pad.width));
  if (!HasLength()) return;
  painter.drawLine(QPointF(x, drawn.top()), QPointF(x, drawn.bottom()));
  for (const double at : {drawn.top(), drawn.bottom()})
    painter.drawLine(QPointF(x - kTick, at), QPointF(x + kTick, at));
  painter.translate(x - 2, middle.y());
  painter.rotate(-90);
  painter.drawText(QRectF(-room.height(), -line, 2 * room.height(), line), Qt::AlignHCenter | Qt::AlignBottom,
                   LengthOf(m_pad.length));
}
