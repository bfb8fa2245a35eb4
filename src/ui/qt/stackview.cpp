#include "ui/qt/stackview.h"

#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "model/design/choices.h"
#include "ui/qt/text.h"

namespace {
constexpr int kEdge = 8;       // pixels around the picture
constexpr int kLeastBar = 60;  // the least width of the layers
constexpr int kMostBar = 420;  // and the most
constexpr int kThinShare = 3;  // a mask or a print is a third as thick as copper
constexpr int kArrowHead = 4;  // half its width
}  // namespace

CStackView::CStackView(QWidget* parent) : QAbstractScrollArea(parent) {
  setAccessibleName(QtText(Text::StackCrossSection));
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::StyledPanel);
}

bool CStackView::IsPhysical(std::size_t layer) const { return m_stack.layers[layer].side != ELayerSide::All; }
bool CStackView::IsCopper(std::size_t layer) const {
  return m_stack.layers[layer].usage == ELayerUsage::Electrical && IsPhysical(layer);
}

// ---- Texts

QString CStackView::LayerText(std::size_t layer) const {
  const auto& [name, side, usage, bias, colour, current] = m_stack.layers[layer];
  QStringList parts{ToQt(GetLayerSideString(side)), ToQt(GetLayerUsageString(usage))};
  if (bias != ELayerBias::None) parts << ToQt(GetLayerBiasString(bias));
  parts.removeAll(QString());
  return parts.join(", ");
}

QString CStackView::SpanText(std::size_t span) const {
  const SStackPreview::SSpan& one = m_stack.spans[span];
  const auto nameOf = [this](int layer) {
    return layer < 0 ? CString("-") : m_stack.layers[static_cast<std::size_t>(layer)].name;
  };
  return QtText(Text::SpanFromTo, {one.name, nameOf(one.top), nameOf(one.bottom)});
}

QString CStackView::Described() const {
  QStringList lines;
  for (std::size_t i = 0; i < m_stack.layers.size(); ++i) {
    const QString line = ToQt(m_stack.layers[i].name) + ": " + LayerText(i);
    lines << (m_stack.layers[i].current ? QtText(Text::IsCurrent, {FromQt(line)}) : line);
  }
  for (std::size_t i = 0; i < m_stack.spans.size(); ++i)
    lines << (m_stack.spans[i].current ? QtText(Text::IsCurrent, {FromQt(SpanText(i))}) : SpanText(i));
  return lines.join("\n");
}

// ---- Where everything stands

void CStackView::SetStack(SStackPreview stack) {
  m_stack = std::move(stack);
  Place();
  setAccessibleDescription(Described());
  updateGeometry();
  viewport()->update();
}

void CStackView::Place() {
  const QFontMetrics metrics(font());
  const int row = metrics.height() + 4;
  const int gap = row * 2 / 3;
  int textWidth = 0;
  for (std::size_t i = 0; i < m_stack.layers.size(); ++i)
    textWidth = std::max({textWidth, metrics.horizontalAdvance(ToQt(m_stack.layers[i].name)) + metrics.height(),
                          metrics.horizontalAdvance(LayerText(i))});
  m_rows.clear();
  m_gaps.clear();
  int y = kEdge, lastCopper = -1;
  const int height = metrics.height() * 2 + 2;
  for (std::size_t i = 0; i < m_stack.layers.size(); ++i) {
    if (i > 0 && !IsPhysical(i) && IsPhysical(i - 1)) y += gap;
    if (IsCopper(i) && lastCopper >= 0) {
      m_gaps.emplace_back(0, y, 0, gap);
      y += gap;
    }
    if (IsCopper(i)) lastCopper = static_cast<int>(i);
    m_rows.emplace_back(0, y, 0, height);
    y += height;
  }
  m_height = y + kEdge;

  // Spans share a column when two layers lie between them, so that their names have room.
  m_arrows.clear();
  for (std::size_t i = 0; i < m_stack.spans.size(); ++i) {
    const auto& span = m_stack.spans[i];
    const int layers = static_cast<int>(m_stack.layers.size());
    if (span.top < 0 || span.bottom < 0 || span.top >= layers || span.bottom >= layers) continue;
    m_arrows.push_back({i, std::min(span.top, span.bottom), std::max(span.top, span.bottom), 0});
  }
  std::stable_sort(m_arrows.begin(), m_arrows.end(), [](const SArrow& a, const SArrow& b) { return a.from < b.from; });
  std::vector<int> ends;  // the last layer of each column
  for (SArrow& arrow : m_arrows) {
    const auto free = std::find_if(ends.begin(), ends.end(), [&](int end) { return end + 2 < arrow.from; });
    arrow.column = static_cast<int>(free - ends.begin());
    if (free == ends.end()) ends.push_back(arrow.to);
    else *free = arrow.to;
  }
  m_columns = static_cast<int>(ends.size());

  const int columns = m_columns * ColumnWidth();
  const int room = viewport()->width() - 2 * kEdge - columns - (columns > 0 ? kEdge : 0);
  m_nameWidth = std::min(textWidth, std::max(room - kLeastBar, room / 2));
  m_barLeft = kEdge + m_nameWidth + kEdge;
  m_barWidth = std::clamp(room - m_nameWidth - kEdge, kLeastBar / 2, kMostBar);
  verticalScrollBar()->setRange(0, std::max(0, m_height - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(height);
}

QSize CStackView::sizeHint() const {
  const QFontMetrics metrics(font());
  return {std::max(m_nameWidth, 120) + 180 + m_columns * ColumnWidth() + 4 * kEdge, std::clamp(m_height, 120, 600)};
}

int CStackView::ColumnWidth() const { return QFontMetrics(font()).height() + 3 * kArrowHead + 6; }

int CStackView::ColumnLeft(int column) const { return m_barLeft + m_barWidth + kEdge + column * ColumnWidth(); }

void CStackView::resizeEvent(QResizeEvent*) { Place(); }

void CStackView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::FontChange) Place();
}

bool CStackView::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QAbstractScrollArea::viewportEvent(event);
  const QPoint at = static_cast<QHelpEvent*>(event)->pos() + QPoint(0, verticalScrollBar()->value());
  QString text;
  for (std::size_t i = 0; i < m_rows.size(); ++i)
    if (at.y() >= m_rows[i].top() && at.y() <= m_rows[i].bottom())
      text = ToQt(m_stack.layers[i].name) + "\n" + LayerText(i);
  for (const SArrow& arrow : m_arrows)
    if (at.x() >= ColumnLeft(arrow.column) && at.x() < ColumnLeft(arrow.column + 1) && at.y() >= Middle(arrow.from) &&
        at.y() <= Middle(arrow.to))
      text = SpanText(arrow.span);
  viewport()->setToolTip(ToolTip(text));
  return QAbstractScrollArea::viewportEvent(event);
}

// ---- Painting

void CStackView::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), palette().base());
  if (m_stack.layers.empty()) {
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(viewport()->rect().adjusted(kEdge, kEdge, -kEdge, -kEdge), Qt::TextWordWrap,
                     QtText(Text::NoLayers));
  } else {
    PaintStack(painter);
  }
  if (!hasFocus()) return;
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
}

void CStackView::PaintStack(QPainter& painter) const {
  painter.save();
  painter.translate(0, -verticalScrollBar()->value());
  // The insulation runs from the first copper to the last, behind masks as well as between.
  for (std::size_t i = 0; i < m_gaps.size(); ++i) {
    const QRect gap(m_barLeft, m_gaps[i].top(), m_barWidth, m_gaps[i].height());
    painter.fillRect(gap, palette().alternateBase());
    painter.fillRect(gap, QBrush(palette().color(QPalette::Mid), Qt::BDiagPattern));
  }
  for (std::size_t i = 0; i < m_stack.layers.size(); ++i) PaintLayer(painter, i);
  for (const SArrow& arrow : m_arrows) PaintArrow(painter, arrow);
  painter.restore();
}

void CStackView::PaintLayer(QPainter& painter, std::size_t layer) const {
  const SStackPreview::SLayer& one = m_stack.layers[layer];
  const QFontMetrics metrics(font());
  QRect row(kEdge, m_rows[layer].top(), m_nameWidth, m_rows[layer].height());
  const QRect whole(2, row.top(), m_barLeft + m_barWidth, row.height());
  const bool current = one.current;
  if (current) painter.fillRect(whole, palette().highlight());
  const QColor text = palette().color(current ? QPalette::HighlightedText : QPalette::Text);
  painter.setPen(text);
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(current ? bold : font());
  const QString name = (current ? QString(QChar(0x25B6)) + ' ' : QString()) + ToQt(one.name);
  painter.drawText(QRect(row.topLeft(), QSize(row.width(), metrics.height())), Qt::AlignLeft | Qt::AlignVCenter,
                   QFontMetrics(painter.font()).elidedText(name, Qt::ElideRight, row.width()));
  QFont small = font();
  if (small.pointSizeF() > 0) small.setPointSizeF(small.pointSizeF() * 0.9);
  painter.setFont(small);
  painter.drawText(QRect(row.left(), row.top() + metrics.height(), row.width(), metrics.height()),
                   Qt::AlignLeft | Qt::AlignVCenter,
                   QFontMetrics(small).elidedText(LayerText(layer), Qt::ElideRight, row.width()));
  const int thick = IsCopper(layer) ? row.height() : row.height() / kThinShare;
  const QRect bar(m_barLeft, row.center().y() - thick / 2, m_barWidth, thick);
  painter.setPen(QPen(text, current ? 3 : 1));
  painter.setBrush(QColor::fromRgb(one.colour.rgb));
  painter.drawRect(bar.adjusted(0, 1, -1, -1));
}

void CStackView::PaintArrow(QPainter& painter, const SArrow& arrow) const {
  const SStackPreview::SSpan& span = m_stack.spans[arrow.span];
  const int left = ColumnLeft(arrow.column), x = left + kArrowHead + 2;
  const int top = Middle(arrow.from), bottom = Middle(arrow.to);
  const QColor text = palette().color(QPalette::Text);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  // The colour of the span inside a line of the text's colour: seen on every background.
  const int width = span.current ? 5 : 3;
  for (const auto& [colour, wide] : {std::pair{text, width + 2}, {QColor::fromRgb(span.colour.rgb), width}}) {
    painter.setPen(QPen(colour, wide, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(x, top + kArrowHead, x, bottom - kArrowHead);
  }
  painter.setPen(Qt::NoPen);
  painter.setBrush(text);
  const int head = kArrowHead + (span.current ? 2 : 0);
  painter.drawPolygon(QPolygon({{x - head, top + 2 * head}, {x + head, top + 2 * head}, {x, top}}));
  painter.drawPolygon(QPolygon({{x - head, bottom - 2 * head}, {x + head, bottom - 2 * head}, {x, bottom}}));
  QFont name = font();
  name.setBold(span.current);
  painter.setFont(name);
  painter.setPen(text);
  const int beyond =
      m_rows[static_cast<std::size_t>(arrow.from)].height() * 3 / 2;  // a name may be longer than its arrow
  painter.translate(left + 3 * kArrowHead + 4, bottom + beyond);
  painter.rotate(-90);
  const int length = bottom - top + 2 * beyond, high = QFontMetrics(font()).height();
  const QString shown = (span.current ? QString(QChar(0x25B6)) + ' ' : QString()) + ToQt(span.name);
  painter.drawText(QRect(0, -2, length, high), Qt::AlignCenter,
                   QFontMetrics(name).elidedText(shown, Qt::ElideRight, length));
  painter.restore();
}
