// The items of a design beside nets. Pages read them: where a record is used, what is selected, what must be redrawn.
#pragma once
#include "model/design/collection.h"
#include "model/design/item.h"
#include "model/design/layer.h"
#include "model/design/nets.h"
#include "model/design/padstyle.h"
#include "model/design/styles.h"

// ---- Symbols: the pads, texts and shapes that component instances repeat

struct SPadFields {
  using RecordBase = CDesignItem;
  CString name;
  CRef<CPadStyle> style;
  CPoint position;
  CAngle angle;
  CCode<ELayerSide> side{ELayerSide::All};
};
class CPad : public CRecord<SPadFields> {
  TECHSHEET_RECORD(CPad, CDesignItem)
};

struct SFreeTextFields {
  using RecordBase = CDesignItem;
  CString name;
  CString text;
  CRef<CTextStyle> style;
  CRef<CLayer> layer;
  CPoint position;
  CAngle angle;
  bool mirrored = false;
};
class CFreeText : public CRecord<SFreeTextFields> {
  TECHSHEET_RECORD(CFreeText, CDesignItem)
};

struct SShapeItemFields {
  using RecordBase = CDesignItem;
  CRef<CLayer> layer;
  CRef<CLineStyle> lineStyle;
  Dsu width;  // counts while there is no line style
  CPoints points;
  bool closed = false;
  bool filled = false;
};
class CShapeItem : public CRecord<SShapeItemFields> {
  TECHSHEET_RECORD(CShapeItem, CDesignItem)
};

struct SSymbolFields {
  using RecordBase = CDesignItem;
  CName name;
};
class CSymbol : public CRecord<SSymbolFields> {
  TECHSHEET_OWNING_RECORD(CSymbol, CDesignItem)
  CCollection<CPad>& Pads() { return m_pads; }
  TECHSHEET_WALK(Pad, CPad, m_pads)
  CCollection<CFreeText>& Texts() { return m_texts; }
  CCollection<CShapeItem>& Shapes() { return m_shapes; }
  CCollectionBase* Child(std::size_t index) override;

 private:
  CCollection<CPad> m_pads{"pads", this};
  CCollection<CFreeText> m_texts{"texts", this};
  CCollection<CShapeItem> m_shapes{"shapes", this};
};

/// A part that component instances stand for.
struct SComponentFields {
  using RecordBase = CDesignItem;
  CName name;
  CRef<CSymbol> symbol;
  CString description;
};
class CComponent : public CRecord<SComponentFields> {
  TECHSHEET_RECORD(CComponent, CDesignItem)
};

/// One pad of a placed symbol: where it stands in the design, and its style there.
struct SPadInstanceFields {
  using RecordBase = CDesignItem;
  CString name;
  CRef<CPadStyle> style;
  CRef<CNet> net;
  CPoint position;
  CAngle angle;
  CCode<ELayerSide> side{ELayerSide::All};
};
class CPadInstance : public CRecord<SPadInstanceFields> {
  TECHSHEET_RECORD(CPadInstance, CDesignItem)
  void SetStyle(CPadStyle* style) { Set(&Fields::style, style); }
};

/// The place of a name or value beside a symbol.
struct SValuePositionFields {
  using RecordBase = CDesignItem;
  CString value;  // what is shown there
  CRef<CTextStyle> style;
  CRef<CLayer> layer;
  CPoint position;
  CAngle angle;
  bool displayed = true;
};
class CValuePosition : public CRecord<SValuePositionFields> {
  TECHSHEET_RECORD(CValuePosition, CDesignItem)
};

struct SSymbolInstanceFields {
  using RecordBase = CDesignItem;
  CRef<CSymbol> symbol;
  CPoint position;
  CAngle angle;
  CCode<ELayerSide> side{ELayerSide::Top};
};
class CSymbolInstance : public CRecord<SSymbolInstanceFields> {
  TECHSHEET_OWNING_RECORD(CSymbolInstance, CDesignItem)
  CCollection<CPadInstance>& PadInstances() { return m_padInstances; }
  CCollection<CValuePosition>& ValuePositions() { return m_valuePositions; }
  TECHSHEET_WALK(ValuePosition, CValuePosition, m_valuePositions)
  CCollectionBase* Child(std::size_t index) override;

 private:
  CCollection<CPadInstance> m_padInstances{"padInstances", this};
  CCollection<CValuePosition> m_valuePositions{"valuePositions", this};
};

struct SComponentInstanceFields {
  using RecordBase = CDesignItem;
  CName name;
  CRef<CComponent> component;
  int suppress = 0;  // a set of bits: 1 L, 2 A, 4 E, 8 S, 16 T, 32 P, 64 I, 128
};
class CComponentInstance : public CRecord<SComponentInstanceFields> {
  TECHSHEET_OWNING_RECORD(CComponentInstance, CDesignItem)
  const CString& GetName() const { return Values().name.text; }
  int GetSuppress() const { return Values().suppress; }
  void SetSuppress(int flags) { Set(&Fields::suppress, flags); }
  bool IsSuppressed(int bit) const { return (Values().suppress & bit) != 0; }
  void SetSuppressed(int bit, bool suppressed) {
    SetSuppress(suppressed ? Values().suppress | bit : Values().suppress & ~bit);
  }
  CCollection<CSymbolInstance>& SymbolInstances() { return m_symbolInstances; }
  TECHSHEET_WALK(SymbolInstance, CSymbolInstance, m_symbolInstances)
  CCollectionBase* Child(std::size_t index) override { return index == 0 ? &m_symbolInstances : nullptr; }

 private:
  CCollection<CSymbolInstance> m_symbolInstances{"symbolInstances", this};
};

// ---- Items of their own

struct SFreePadFields {
  using RecordBase = CDesignItem;
  CName name;
  CRef<CPadStyle> style;
  CRef<CNet> net;
  CPoint position;
  CAngle angle;
  CCode<ELayerSide> side{ELayerSide::All};
};
class CFreePad : public CRecord<SFreePadFields> {
  TECHSHEET_OWNING_RECORD(CFreePad, CDesignItem)
  CCollection<CValuePosition>& ValuePositions() { return m_valuePositions; }
  TECHSHEET_WALK(ValuePosition, CValuePosition, m_valuePositions)
  CCollectionBase* Child(std::size_t index) override { return index == 0 ? &m_valuePositions : nullptr; }

 private:
  CCollection<CValuePosition> m_valuePositions{"valuePositions", this};
};

/// The name of a net, shown in the design.
struct SNetNameFields {
  using RecordBase = CDesignItem;
  CRef<CNet> net;
  CRef<CTextStyle> style;
  CPoint position;
};
class CNetName : public CRecord<SNetNameFields> {
  TECHSHEET_RECORD(CNetName, CDesignItem)
};

/// How an area is filled with copper.
struct SPourTemplateFields {
  CRef<CNet> net;
  Dsu clearance;
  Dsu minimumWidth;
  bool poured = false;  // copper has been poured
};
class CPourTemplate : public CRecord<SPourTemplateFields> {
  TECHSHEET_RECORD(CPourTemplate, CRecordBase)
  bool HasPouredCopper() const { return Values().poured; }
};

struct SAreaFields {
  using RecordBase = CDesignItem;
  CString name;
  CRef<CLayer> layer;
  CPoints points;
};
class CArea : public CRecord<SAreaFields> {
  TECHSHEET_OWNING_RECORD(CArea, CDesignItem)
  CCollection<CPourTemplate>& PourTemplates() { return m_pourTemplates; }
  /// The template that pours copper of `net` here, or null.
  CPourTemplate* GetPourTemplate(const CNet* net) const;
  CCollectionBase* Child(std::size_t index) override { return index == 0 ? &m_pourTemplates : nullptr; }

 private:
  CCollection<CPourTemplate> m_pourTemplates{"pourTemplates", this};
};

/// The outline of the board, or a cut-out in it.
struct SBoardFields {
  using RecordBase = CDesignItem;
  Dsu width;
  CPoints points;
  bool closed = false;
};
class CBoard : public CRecord<SBoardFields> {
  TECHSHEET_RECORD(CBoard, CDesignItem)
};

struct SCopperFields {
  using RecordBase = CDesignItem;
  CRef<CLayer> layer;
  CRef<CNet> net;
  Dsu width;
  CPoints points;
  bool filled = true;
};
class CCopper : public CRecord<SCopperFields> {
  TECHSHEET_RECORD(CCopper, CDesignItem)
};

struct SBusFields {
  using RecordBase = CDesignItem;
  CName name;
  bool open = true;
};
class CBus : public CRecord<SBusFields> {
  TECHSHEET_RECORD(CBus, CDesignItem)
};

/// What the items that pages only need to know of have in common: a text, and where it stands.
struct SPlacedItemFields {
  using RecordBase = CDesignItem;
  CString text;  // a title, a path or a message
  CRef<CLayer> layer;
  CPoint position;
  Dsu width;
  Dsu height;
  int type = 0;  // of a dimension: linear, angular, radial
};
/// They own the shapes and texts that show them; selecting one of those selects a part of the item.
#define TECHSHEET_PLACED_ITEM(Class)                             \
  class Class : public CRecord<SPlacedItemFields> {              \
    TECHSHEET_OWNING_RECORD(Class, CDesignItem)                  \
    CCollection<CShapeItem>& Shapes() { return m_shapes; }       \
    CCollection<CFreeText>& Texts() { return m_texts; }          \
    CCollectionBase* Child(std::size_t index) override {         \
      CCollectionBase* const children[] = {&m_shapes, &m_texts}; \
      return index < 2 ? children[index] : nullptr;              \
    }                                                            \
                                                                 \
   private:                                                      \
    CCollection<CShapeItem> m_shapes{"shapes", this};            \
    CCollection<CFreeText> m_texts{"texts", this};               \
  }
TECHSHEET_PLACED_ITEM(CSymbolOrigin);
TECHSHEET_PLACED_ITEM(CDibInstance);
TECHSHEET_PLACED_ITEM(CNote);
TECHSHEET_PLACED_ITEM(CError);
TECHSHEET_PLACED_ITEM(CBlockOrigin);
TECHSHEET_PLACED_ITEM(CBlockPort);
TECHSHEET_PLACED_ITEM(CCallout);
TECHSHEET_PLACED_ITEM(CDimension);
TECHSHEET_PLACED_ITEM(CDrillTable);
TECHSHEET_PLACED_ITEM(CInsertedFile);
TECHSHEET_PLACED_ITEM(CInsertedReport);
TECHSHEET_PLACED_ITEM(CPanelPcbOrigin);
TECHSHEET_PLACED_ITEM(CLayerStack);
#undef TECHSHEET_PLACED_ITEM
