// The cross-section of a stack of layers: from top to bottom with side, usage, bias and colour, copper thicker than the
// rest, dielectric between copper, and the spans as drill arrows beside it.
#pragma once
#include <QAbstractScrollArea>

#include "model/controls/preview.h"

class CStackView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit CStackView(QWidget* parent = nullptr);
  void SetStack(SStackPreview stack);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent*) override { viewport()->update(); }
  void focusOutEvent(QFocusEvent*) override { viewport()->update(); }

 private:
  struct SArrow {
    std::size_t span;
    int from, to;  // layers, in order
    int column;
  };
  void Place();
  bool IsPhysical(std::size_t layer) const;
  bool IsCopper(std::size_t layer) const;
  int ColumnLeft(int column) const;
  int ColumnWidth() const;
  int Middle(int layer) const { return m_rows[static_cast<std::size_t>(layer)].center().y(); }
  void PaintStack(QPainter& painter) const;
  void PaintLayer(QPainter& painter, std::size_t layer) const;
  void PaintArrow(QPainter& painter, const SArrow& arrow) const;
  QString LayerText(std::size_t layer) const;
  QString SpanText(std::size_t span) const;
  QString Described() const;

  SStackPreview m_stack;
  std::vector<QRect> m_rows;  // of the layers, in the whole picture
  std::vector<QRect> m_gaps;  // dielectric
  std::vector<SArrow> m_arrows;
  int m_nameWidth = 0, m_barLeft = 0, m_barWidth = 0, m_height = 0, m_columns = 0;
};
