// The design as a drawing: pan, zoom, and select.
//
// What has been painted is kept, so panning moves pixels and paints only what comes into view. The list of what there
// is to paint is built anew when the journal tells of a change or an area is invalidated.
//
// Mouse: the wheel zooms to the pointer; the middle button, or the left one while the space bar is held, pans; a click
// selects the smallest item under it, a frame selects what lies inside it and, drawn from right to left, what it
// touches; with Ctrl or Shift the selection grows. Keys: arrows pan, + and - zoom, F and Home show everything, Escape
// selects nothing.
#pragma once
#include <QPixmap>
#include <QWidget>
#include <optional>

#include "model/design/drawing.h"
#include "model/services/evt.h"
#include "ui/qt/drawingpainter.h"

class CDesignView : public QWidget {
  Q_OBJECT

 public:
  explicit CDesignView(CDesignDrawing& drawing, QWidget* parent = nullptr);
  ~CDesignView() override;

  CDesign& Design() const { return *m_drawing.GetDocument(); }
  /// Draws an area of the design anew, all of it without a box.
  void Invalidate(const CBox* area);
  /// Shows everything.
  void Fit();
  /// Zooms by `factor`; what lies under `about` (in the widget) stays there.
  void Zoom(double factor, QPointF about);
  /// Moves what is shown, in the widget's pixels.
  void Pan(QPoint by);
  /// The place in the widget of a place in the design, and the other way round.
  QPointF PlaceOf(CPoint point) const;
  CPoint PointAt(QPointF place) const;
  /// The item that a click there selects, or null: the smallest one that is seen there.
  CDesignItem* ItemAt(QPointF place);
  std::size_t DrawnCount();

 signals:
  void SelectionChanged();
  void CursorMoved(CPoint place);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  QSize sizeHint() const override { return {800, 600}; }

 private:
  const CDrawingList& List();
  void PaintAll();  // soon
  void PlaceChanged();
  void SelectIn(const QRect& frame, bool onlyInside, bool adding);
  void Select(const std::vector<CDesignItem*>& items, bool adding);
  void ShowCursor();
  QRectF FrameOf(const QRectF& inWidget) const;  // in device pixels

  CDesignDrawing& m_drawing;
  std::unique_ptr<CDrawingList> m_list;
  std::uint64_t m_builtAt = 0;  // revision of the journal
  SDrawingPlace m_place;
  bool m_isPlaced = false;  // false: everything is shown when it is first painted
  QPixmap m_painted;
  QRegion m_dirty;  // of m_painted, in device pixels
  enum class EDrag { None, Pan, Frame } m_drag = EDrag::None;
  QPoint m_pressed, m_last;  // in the widget
  bool m_spaceHeld = false;
  bool m_hasPointer = false;   // the mouse stands over the widget, at m_last
  bool m_isFullCross = false;  // the cursor's style
  CEvt::CSubscription m_settings;
};
