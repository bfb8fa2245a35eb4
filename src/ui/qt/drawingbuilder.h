// Fills a drawing list from a design.
#pragma once
#include <map>

#include "ui/qt/drawinglist.h"

class CDrawingBuilder {
 public:
  CDrawingBuilder(const CDesign& design, CDrawingList& list) : m_design(design), m_list(list) {}
  void Build();

  /// The letters of a text around (0, 0), and the rectangle they take: capitals kCapHeight high, y down.
  static QPainterPath PathOf(const SDrawnText& text);
  static QRectF BoundsOf(const SDrawnText& text);
  static constexpr double kCapHeight = 100;

 private:
  /// Where the parts of a symbol stand in the design.
  struct SPlacement {
    CPoint position;
    int angle = 0;
    bool isBack = false;  // seen through the board: turned upside down before it is rotated
    CPoint Place(CPoint point) const;
  };
  struct SLook {
    std::uint16_t plane;
    std::uint8_t kind;
  };

  void MakePlanes();
  std::uint16_t PlaneOf(const CRecordBase* layer) const;
  void AddComponents();
  void AddNet(CNet& net);
  template <class Item>
  void AddPlacedItem(Item& item);
  void AddSymbol(CSymbol& symbol, const SPlacement& placement, CDesignItem* instance, bool withPads);
  void AddShape(const SShapeItemFields& shape, const SPlacement& placement, CDesignItem& item);
  void AddFreeText(const SFreeTextFields& text, const SPlacement& placement, CDesignItem& item);
  void AddValues(CCollection<CValuePosition>& values);
  void AddPolygon(SLook look, CDesignItem& item, SDrawnPolygon polygon, EDrawn type = EDrawn::Polygon);
  void AddLine(SLook look, CDesignItem& item, CPoint from, CPoint to, int width);
  void AddPad(CDesignItem& item, const CPadStyle* style, CPoint at, CAngle angle, int side);
  void AddVia(CVia& via);
  void AddStyle(SLook look, CDesignItem& item, const CPadStyle& style, CPoint at, int angle, const CLayer* through);
  void AddPadShape(SLook look, CDesignItem& item, const CRecordBase* key, const SPadPreview& pad, CPoint at, int angle,
                   EDrawn type);
  void AddText(SLook look, CDesignItem& item, const CString& text, const CTextStyle* style, CPoint at, int angle,
               bool mirrored);
  void Add(const SDrawn& drawn) { m_list.m_items.push_back(drawn); }

  const CDesign& m_design;
  CDrawingList& m_list;
  std::map<const CRecordBase*, std::uint16_t> m_planeOf;
  std::uint16_t m_holes = 0;
  std::vector<CLayer*> m_electrical[2];                                      // of the top and the bottom side
  std::map<std::pair<const CRecordBase*, EDrawn>, std::uint32_t> m_shapeOf;  // by style or exception
};
