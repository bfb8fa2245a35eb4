#include "ui/qt/designview.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>

#include "ui/qt/text.h"

namespace {
constexpr double kLeastScale = 2e-8;  // pixels a design unit: the whole range of designs on a small screen
constexpr double kMostScale = 0.05;
constexpr double kStep = 1.25;    // of a zoom by key or by one notch of the wheel
constexpr double kMargin = 0.04;  // of the widget, around what Fit shows
constexpr double kTolerance = 4;  // pixels beside an item that still count as on it
constexpr int kPanShare = 8;      // an arrow key pans by this part of the widget

enum ECursor { kSmallCross, kFullCross, kDiagonalCross, kSmallDiagonal };  // as the settings number them

/// A diagonal cross that is seen on every background: light within dark.
QCursor DiagonalCross(int side) {
  QPixmap cross(side, side);
  cross.fill(Qt::transparent);
  QPainter painter(&cross);
  painter.setRenderHint(QPainter::Antialiasing);
  for (const QPen& pen : {QPen(Qt::black, 3), QPen(Qt::white, 1)}) {
    painter.setPen(pen);
    painter.drawLine(1, 1, side - 2, side - 2);
    painter.drawLine(1, side - 2, side - 2, 1);
  }
  return QCursor(cross);
}

QCursor CursorOf(int style) {
  switch (style) {
    case kDiagonalCross: return DiagonalCross(31);
    case kSmallDiagonal: return DiagonalCross(13);
    default: return Qt::CrossCursor;
  }
}
}  // namespace

CDesignView::CDesignView(CDesignDrawing& drawing, QWidget* parent)
    : QWidget(parent), m_drawing(drawing), m_settings([this](const SEvent& event) {
        if (event.name == "View.RegistryChanged") ShowCursor();
      }) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(160, 120);
  setAccessibleName(QtText(Text::Drawing));
  ShowCursor();
}

CDesignView::~CDesignView() = default;

// ---- What there is to paint

const CDrawingList& CDesignView::List() {
  const std::uint64_t now = Design().Journal().Revision();
  if (!m_list || now != m_builtAt) {
    if (m_list) PaintAll();
    m_list = std::make_unique<CDrawingList>(Design());
    m_builtAt = now;
  }
  return *m_list;
}

std::size_t CDesignView::DrawnCount() { return List().Items().size(); }

void CDesignView::Invalidate(const CBox* area) {
  m_list.reset();
  if (!area) return PaintAll();
  if (area->IsEmpty()) return;
  constexpr int kBeyond = 2;  // pixels: smoothed edges
  const QPointF from = m_place.ToDevice(area->left, area->top), to = m_place.ToDevice(area->right, area->bottom);
  const QRectF whole(m_painted.rect());
  const QRectF hit = QRectF(from, to).adjusted(-kBeyond, -kBeyond, kBeyond, kBeyond).intersected(whole);
  if (hit.isEmpty()) return;
  m_dirty += hit.toAlignedRect();
  update();
}

void CDesignView::PaintAll() {
  m_dirty = m_painted.rect();
  update();
}

// ---- Places

QPointF CDesignView::PlaceOf(CPoint point) const { return m_place.ToDevice(point) / devicePixelRatioF(); }

CPoint CDesignView::PointAt(QPointF place) const {
  const QPointF point = m_place.ToDesign(place * devicePixelRatioF());
  constexpr double kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();
  return {static_cast<int>(std::clamp(std::round(point.x()), kLeast, kMost)),
          static_cast<int>(std::clamp(std::round(point.y()), kLeast, kMost))};
}

QRectF CDesignView::FrameOf(const QRectF& inWidget) const {
  const double ratio = devicePixelRatioF();
  return {inWidget.topLeft() * ratio, inWidget.size() * ratio};
}

void CDesignView::PlaceChanged() {
  CDesignWindow& window = m_drawing.GetWindow();
  window.origin = PointAt({});
  window.scale = std::max(1, static_cast<int>(std::round(1 / m_place.scale)));
  PaintAll();
}

void CDesignView::Fit() {
  CBox box = List().Shown();
  if (box.IsEmpty()) {
    const auto& values = Design().DesignValues().Values();
    box.Include(values.areaFrom);
    box.Include(values.areaTo);
  }
  const double ratio = devicePixelRatioF(), width = this->width() * ratio, height = this->height() * ratio;
  const double wide = std::max(double(box.right) - box.left, 1e6), high = std::max(double(box.top) - box.bottom, 1e6);
  m_place.scale = std::clamp(std::min(width / wide, height / high) * (1 - 2 * kMargin), kLeastScale, kMostScale);
  m_place.left = (double(box.left) + box.right) / 2 - width / 2 / m_place.scale;
  m_place.top = (double(box.top) + box.bottom) / 2 + height / 2 / m_place.scale;
  m_isPlaced = true;
  PlaceChanged();
}

void CDesignView::Zoom(double factor, QPointF about) {
  const QPointF device = about * devicePixelRatioF();
  const QPointF fixed = m_place.ToDesign(device);
  m_place.scale = std::clamp(m_place.scale * factor, kLeastScale, kMostScale);
  m_place.left = fixed.x() - device.x() / m_place.scale;
  m_place.top = fixed.y() + device.y() / m_place.scale;
  m_isPlaced = true;
  PlaceChanged();
}

void CDesignView::Pan(QPoint by) {
  const double ratio = devicePixelRatioF();
  const QPoint device(static_cast<int>(std::lround(by.x() * ratio)), static_cast<int>(std::lround(by.y() * ratio)));
  m_place.left -= device.x() / m_place.scale;
  m_place.top += device.y() / m_place.scale;
  m_drawing.GetWindow().origin = PointAt({});
  QRegion exposed;
  m_painted.scroll(device.x(), device.y(), m_painted.rect(), &exposed);
  m_dirty = m_dirty.translated(device).intersected(m_painted.rect()) + exposed;
  update();
}

// ---- Painting

void CDesignView::resizeEvent(QResizeEvent*) {
  const QSize size = this->size() * devicePixelRatioF();
  if (size != m_painted.size()) {
    m_painted = QPixmap(size);
    PaintAll();
  }
}

void CDesignView::paintEvent(QPaintEvent*) {
  if (m_painted.size() != size() * devicePixelRatioF()) resizeEvent(nullptr);
  const CDrawingList& list = List();
  if (!m_isPlaced) Fit();
  if (!m_dirty.isEmpty() && !m_painted.isNull()) {
    QPainter painter(&m_painted);
    CDrawingPainter drawing(Design(), list, m_place);
    for (const QRect& area : m_dirty) drawing.Paint(painter, area);
    m_dirty = QRegion();
  }
  QPainter painter(this);
  const double ratio = devicePixelRatioF();
  painter.save();
  painter.scale(1 / ratio, 1 / ratio);
  painter.drawPixmap(0, 0, m_painted);
  painter.restore();
  const QColor contrast = CDrawingPainter(Design(), list, m_place).Contrast();
  if (m_isFullCross && m_hasPointer) {
    painter.setPen(contrast);
    painter.drawLine(0, m_last.y(), width(), m_last.y());
    painter.drawLine(m_last.x(), 0, m_last.x(), height());
  }
  if (m_drag == EDrag::Frame) {
    painter.setPen(QPen(contrast, 1, m_last.x() < m_pressed.x() ? Qt::DashLine : Qt::SolidLine));
    painter.drawRect(QRect(m_pressed, m_last).normalized());
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

// ---- Selecting

CDesignItem* CDesignView::ItemAt(QPointF place) {
  const CDrawingList& list = List();
  const CDrawingPainter painter(Design(), list, m_place);
  const QPointF device = place * devicePixelRatioF();
  const QRectF around(device.x() - kTolerance, device.y() - kTolerance, 2 * kTolerance, 2 * kTolerance);
  std::vector<std::uint32_t> found;
  list.Find(m_place.BoxOf(around), found);
  std::vector<CDesignItem*> items;  // the uppermost first
  std::unordered_set<const CDesignItem*> seen;
  for (auto at = found.rbegin(); at != found.rend(); ++at) {
    const SDrawn& drawn = list.Items()[*at];
    const bool isMet = painter.IsVisible(drawn) && painter.Touches(drawn, around);
    if (isMet && seen.insert(drawn.item).second) items.push_back(drawn.item);
  }
  if (items.size() < 2) return items.empty() ? nullptr : items.front();
  const auto sizes = list.SizesOf({items.begin(), items.end()});
  return *std::ranges::min_element(items, {}, [&](const CDesignItem* item) { return sizes.at(item); });
}

void CDesignView::SelectIn(const QRect& frame, bool onlyInside, bool adding) {
  const CDrawingList& list = List();
  const CDrawingPainter painter(Design(), list, m_place);
  const QRectF device = FrameOf(frame);
  const CBox box = m_place.BoxOf(device);
  std::vector<std::uint32_t> found;
  list.Find(box, found);
  std::vector<CDesignItem*> items;
  for (const std::uint32_t i : found) {
    const SDrawn& drawn = list.Items()[i];
    if (!painter.IsVisible(drawn)) continue;
    const CBox& own = drawn.box;
    const bool isInside =
        own.left >= box.left && own.right <= box.right && own.bottom >= box.bottom && own.top <= box.top;
    if (isInside || (!onlyInside && painter.Touches(drawn, device))) items.push_back(drawn.item);
  }
  Select(items, adding);
}

void CDesignView::Select(const std::vector<CDesignItem*>& items, bool adding) {
  CSelectionOverview& selection = Design().Selection();
  if (!adding) selection.Clear();
  for (CDesignItem* const item : items) selection.Add(*item);
  const auto count = static_cast<std::int64_t>(selection.Items().size());
  setAccessibleDescription(QtText(Text::ItemsSelected, {IntText(count)}));
  PaintAll();
  emit SelectionChanged();
}

// ---- Mouse and keys

void CDesignView::ShowCursor() {
  const int style = CDesignDrawing::GetCursor();
  m_isFullCross = style == kFullCross;
  if (m_drag == EDrag::Pan) {
    setCursor(Qt::ClosedHandCursor);
  } else if (m_spaceHeld) {
    setCursor(Qt::OpenHandCursor);
  } else {
    setCursor(CursorOf(style));
  }
  update();
}

void CDesignView::wheelEvent(QWheelEvent* event) {
  constexpr double kNotch = 120;  // eighths of a degree
  const int turned = event->angleDelta().y();
  if (turned != 0) Zoom(std::pow(kStep, turned / kNotch), event->position());
  event->accept();
}

void CDesignView::mousePressEvent(QMouseEvent* event) {
  m_pressed = m_last = event->position().toPoint();
  const bool isLeft = event->button() == Qt::LeftButton;
  if (event->button() == Qt::MiddleButton || (isLeft && m_spaceHeld)) m_drag = EDrag::Pan;
  else if (isLeft) m_drag = EDrag::Frame;
  ShowCursor();
}

void CDesignView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (m_drag == EDrag::Pan) Pan(at - m_last);
  if (m_drag == EDrag::Frame || m_isFullCross) update();
  m_last = at;
  m_hasPointer = true;
  m_drawing.SetCursorPos(PointAt(event->position()));
  emit CursorMoved(m_drawing.GetCursorPos());
}

void CDesignView::leaveEvent(QEvent*) {
  m_hasPointer = false;
  if (m_isFullCross) update();
}

void CDesignView::mouseReleaseEvent(QMouseEvent* event) {
  const EDrag ended = std::exchange(m_drag, EDrag::None);
  ShowCursor();
  if (ended != EDrag::Frame) return;
  m_last = event->position().toPoint();
  const bool adding = event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
  if ((m_last - m_pressed).manhattanLength() >= QApplication::startDragDistance())
    return SelectIn(QRect(m_pressed, m_last).normalized(), m_last.x() >= m_pressed.x(), adding);
  CDesignItem* const item = ItemAt(event->position());
  Select(item ? std::vector<CDesignItem*>{item} : std::vector<CDesignItem*>(), adding);
}

void CDesignView::keyPressEvent(QKeyEvent* event) {
  const QPointF middle(width() / 2.0, height() / 2.0);
  switch (event->key()) {
    case Qt::Key_Left: return Pan({width() / kPanShare, 0});
    case Qt::Key_Right: return Pan({-width() / kPanShare, 0});
    case Qt::Key_Up: return Pan({0, height() / kPanShare});
    case Qt::Key_Down: return Pan({0, -height() / kPanShare});
    case Qt::Key_Plus:
    case Qt::Key_Equal: return Zoom(kStep, middle);
    case Qt::Key_Minus: return Zoom(1 / kStep, middle);
    case Qt::Key_F:
    case Qt::Key_Home: return Fit();
    case Qt::Key_Escape: return Select({}, false);
    case Qt::Key_Space: m_spaceHeld = true; return ShowCursor();
    default: QWidget::keyPressEvent(event);
  }
}

void CDesignView::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space || event->isAutoRepeat()) return QWidget::keyReleaseEvent(event);
  m_spaceHeld = false;
  ShowCursor();
}

void CDesignView::focusOutEvent(QFocusEvent* event) {
  m_spaceHeld = false;
  m_drag = EDrag::None;
  ShowCursor();
  QWidget::focusOutEvent(event);
}
