// What a design looks like: its items as lines, polygons, pads and texts in the order in which they are painted, found
// by place in a grid of cells. It is built from a design in one walk, and stays valid while the design does not change;
// visibility and colour are asked of the design when it is painted, so changing them needs no new list.
#pragma once
#include <QPainterPath>
#include <map>

#include "model/controls/preview.h"
#include "model/design/design.h"

enum class EDrawn : std::uint8_t { Area, Polygon, Line, Pad, Text, Hole };

struct SDrawn {
  CBox box;           // all that is painted of it
  CDesignItem* item;  // what a click on it selects
  std::uint16_t plane;
  EDrawn type;
  std::uint8_t kind;  // its item of the colour set
  std::uint32_t at;   // in the list of its type
};

/// What is painted in one colour, one plane above the other.
struct SPlane {
  const CLayer* layer = nullptr;  // null: of no layer
  const CNet* net = nullptr;      // of connections
  std::uint32_t begin = 0, end = 0;
  bool isHoles = false;
};

struct SDrawnLine {
  CPoint from, to;
  int width;
};
struct SDrawnPolygon {
  CPoints points;
  int width;
  bool closed, filled;
};
struct SDrawnPad {
  std::uint32_t shape;  // in Shapes()
  CPoint at;
  int angle;  // thousandths of a degree, counter-clockwise
};
struct SDrawnText {
  QString text;
  CPoint at;       // its middle
  CString font;    // as text styles name it
  double height;   // of capital letters
  double stretch;  // of the width
  int angle;
  bool mirrored;
};

class CDrawingList {
 public:
  explicit CDrawingList(const CDesign& design);

  const std::vector<SPlane>& Planes() const { return m_planes; }
  const std::vector<SDrawn>& Items() const { return m_items; }
  const SDrawnLine& Line(const SDrawn& drawn) const { return m_lines[drawn.at]; }
  const SDrawnPolygon& Polygon(const SDrawn& drawn) const { return m_polygons[drawn.at]; }
  const SDrawnPad& Pad(const SDrawn& drawn) const { return m_pads[drawn.at]; }
  const SDrawnText& Text(const SDrawn& drawn) const { return m_texts[drawn.at]; }
  /// The outlines of pads and holes, each once, centred on (0, 0).
  const std::vector<QPainterPath>& Shapes() const { return m_shapes; }
  /// Around everything, empty for a design without items.
  const CBox& Extents() const { return m_extents; }
  /// What "everything" means to somebody who looks: of a board not the texts and shapes that lie apart from all else.
  CBox Shown() const;
  /// How much of the plane each of these items takes, in square design units: the strokes of a line, otherwise the
  /// rectangle around all that is painted of it. In one walk over the list.
  std::map<const CDesignItem*, double> SizesOf(std::vector<const CDesignItem*> items) const;

  /// The places in Items(), rising, of what touches the box.
  void Find(const CBox& box, std::vector<std::uint32_t>& found) const;

 private:
  friend class CDrawingBuilder;
  void Sort();
  void BuildCells();
  struct SSpan {
    int left, bottom, right, top;  // cells
  };
  SSpan CellsOf(const CBox& box) const;

  std::vector<SPlane> m_planes;
  std::vector<SDrawn> m_items;
  std::vector<SDrawnLine> m_lines;
  std::vector<SDrawnPolygon> m_polygons;
  std::vector<SDrawnPad> m_pads;
  std::vector<SDrawnText> m_texts;
  std::vector<QPainterPath> m_shapes;
  CBox m_extents;

  int m_columns = 1, m_rows = 1;
  double m_cellWidth = 1, m_cellHeight = 1;
  std::vector<std::uint32_t> m_cellBegin;     // of each cell in m_cellItems, and the end of the last
  std::vector<std::uint32_t> m_cellItems;     // places in m_items
  std::vector<std::uint32_t> m_large;         // what covers many cells, rising
  mutable std::vector<std::uint32_t> m_seen;  // by item: the search that found it last
  mutable std::uint32_t m_search = 0;
};
