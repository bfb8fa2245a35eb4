#include "model/design/items.h"

#include "model/design/fieldtypes.h"

namespace {
constexpr CField kPadFields[] = {
    Field<&SPadFields::name>("name"),   Field<&SPadFields::style>("style"), Field<&SPadFields::position>("position"),
    Field<&SPadFields::angle>("angle"), Field<&SPadFields::side>("side"),
};

constexpr CField kFreeTextFields[] = {
    Field<&SFreeTextFields::name>("name"),         Field<&SFreeTextFields::text>("text"),
    Field<&SFreeTextFields::style>("style"),       Field<&SFreeTextFields::layer>("layer", EOnDelete::DeleteOwner),
    Field<&SFreeTextFields::position>("position"), Field<&SFreeTextFields::angle>("angle"),
    Field<&SFreeTextFields::mirrored>("mirrored"),
};

constexpr CField kShapeItemFields[] = {
    Field<&SShapeItemFields::layer>("layer", EOnDelete::DeleteOwner),
    Field<&SShapeItemFields::lineStyle>("lineStyle"),
    Field<&SShapeItemFields::width>("width"),
    Field<&SShapeItemFields::points>("points"),
    Field<&SShapeItemFields::closed>("closed"),
    Field<&SShapeItemFields::filled>("filled"),
};

constexpr CField kSymbolFields[] = {
    Field<&SSymbolFields::name>("name"),
};

constexpr CField kComponentFields[] = {
    Field<&SComponentFields::name>("name"),
    Field<&SComponentFields::symbol>("symbol"),
    Field<&SComponentFields::description>("description"),
};

constexpr CField kPadInstanceFields[] = {
    Field<&SPadInstanceFields::name>("name"),
    Field<&SPadInstanceFields::style>("style"),
    Field<&SPadInstanceFields::net>("net", EOnDelete::Clear),
    Field<&SPadInstanceFields::position>("position"),
    Field<&SPadInstanceFields::angle>("angle"),
    Field<&SPadInstanceFields::side>("side"),
};

constexpr CField kValuePositionFields[] = {
    Field<&SValuePositionFields::value>("value"),
    Field<&SValuePositionFields::style>("style"),
    Field<&SValuePositionFields::layer>("layer", EOnDelete::DeleteOwner),
    Field<&SValuePositionFields::position>("position"),
    Field<&SValuePositionFields::angle>("angle"),
    Field<&SValuePositionFields::displayed>("displayed"),
};

constexpr CField kSymbolInstanceFields[] = {
    Field<&SSymbolInstanceFields::symbol>("symbol"),
    Field<&SSymbolInstanceFields::position>("position"),
    Field<&SSymbolInstanceFields::angle>("angle"),
    Field<&SSymbolInstanceFields::side>("side"),
};

constexpr CField kComponentInstanceFields[] = {
    Field<&SComponentInstanceFields::name>("name"),
    Field<&SComponentInstanceFields::component>("component"),
    Field<&SComponentInstanceFields::suppress>("suppress"),
};

constexpr CField kFreePadFields[] = {
    Field<&SFreePadFields::name>("name"),
    Field<&SFreePadFields::style>("style"),
    Field<&SFreePadFields::net>("net", EOnDelete::Clear),
    Field<&SFreePadFields::position>("position"),
    Field<&SFreePadFields::angle>("angle"),
    Field<&SFreePadFields::side>("side"),
};

constexpr CField kNetNameFields[] = {
    Field<&SNetNameFields::net>("net", EOnDelete::DeleteOwner),
    Field<&SNetNameFields::style>("style"),
    Field<&SNetNameFields::position>("position"),
};

constexpr CField kPourTemplateFields[] = {
    Field<&SPourTemplateFields::net>("net"),
    Field<&SPourTemplateFields::clearance>("clearance"),
    Field<&SPourTemplateFields::minimumWidth>("minimumWidth"),
    Field<&SPourTemplateFields::poured>("poured"),
};

constexpr CField kAreaFields[] = {
    Field<&SAreaFields::name>("name"),
    Field<&SAreaFields::layer>("layer", EOnDelete::DeleteOwner),
    Field<&SAreaFields::points>("points"),
};

constexpr CField kBoardFields[] = {
    Field<&SBoardFields::width>("width"),
    Field<&SBoardFields::points>("points"),
    Field<&SBoardFields::closed>("closed"),
};

constexpr CField kCopperFields[] = {
    Field<&SCopperFields::layer>("layer", EOnDelete::DeleteOwner),
    Field<&SCopperFields::net>("net", EOnDelete::Clear),
    Field<&SCopperFields::width>("width"),
    Field<&SCopperFields::points>("points"),
    Field<&SCopperFields::filled>("filled"),
};

constexpr CField kBusFields[] = {
    Field<&SBusFields::name>("name"),
    Field<&SBusFields::open>("open"),
};
}  // namespace

const CKind& CPad::TheKind() {
  static constexpr CKind kKind{"CPad", Text::Pad, kPadFields, MakeRecord<CPad>, nullptr};
  return kKind;
}

const CKind& CFreeText::TheKind() {
  static constexpr CKind kKind{"CFreeText", Text::FreeText, kFreeTextFields, MakeRecord<CFreeText>, nullptr};
  return kKind;
}

const CKind& CShapeItem::TheKind() {
  static constexpr CKind kKind{"CShapeItem", Text::ShapeItem, kShapeItemFields, MakeRecord<CShapeItem>, nullptr};
  return kKind;
}

const CKind& CSymbol::TheKind() {
  static constexpr CKind kKind{"CSymbol", Text::Symbol, kSymbolFields, MakeRecord<CSymbol>, &kSymbolFields[0]};
  return kKind;
}

const CKind& CComponent::TheKind() {
  static constexpr CKind kKind{"CComponent", Text::Component, kComponentFields, MakeRecord<CComponent>,
                               &kComponentFields[0]};
  return kKind;
}

const CKind& CPadInstance::TheKind() {
  static constexpr CKind kKind{"CPadInstance", Text::PadInstance, kPadInstanceFields, MakeRecord<CPadInstance>,
                               nullptr};
  return kKind;
}

const CKind& CValuePosition::TheKind() {
  static constexpr CKind kKind{"CValuePosition", Text::ValuePosition, kValuePositionFields, MakeRecord<CValuePosition>,
                               nullptr};
  return kKind;
}

const CKind& CSymbolInstance::TheKind() {
  static constexpr CKind kKind{"CSymbolInstance", Text::SymbolInstance, kSymbolInstanceFields,
                               MakeRecord<CSymbolInstance>, nullptr};
  return kKind;
}

const CKind& CComponentInstance::TheKind() {
  static constexpr CKind kKind{"CComponentInstance", Text::ComponentInstance, kComponentInstanceFields,
                               MakeRecord<CComponentInstance>, &kComponentInstanceFields[0]};
  return kKind;
}

const CKind& CFreePad::TheKind() {
  static constexpr CKind kKind{"CFreePad", Text::FreePad, kFreePadFields, MakeRecord<CFreePad>, &kFreePadFields[0]};
  return kKind;
}

const CKind& CNetName::TheKind() {
  static constexpr CKind kKind{"CNetName", Text::NetName, kNetNameFields, MakeRecord<CNetName>, nullptr};
  return kKind;
}

const CKind& CPourTemplate::TheKind() {
  static constexpr CKind kKind{"CPourTemplate", Text::PourTemplate, kPourTemplateFields, MakeRecord<CPourTemplate>,
                               nullptr};
  return kKind;
}

const CKind& CArea::TheKind() {
  static constexpr CKind kKind{"CArea", Text::Area, kAreaFields, MakeRecord<CArea>, nullptr};
  return kKind;
}

const CKind& CBoard::TheKind() {
  static constexpr CKind kKind{"CBoard", Text::Board, kBoardFields, MakeRecord<CBoard>, nullptr};
  return kKind;
}

const CKind& CCopper::TheKind() {
  static constexpr CKind kKind{"CCopper", Text::Copper, kCopperFields, MakeRecord<CCopper>, nullptr};
  return kKind;
}

const CKind& CBus::TheKind() {
  static constexpr CKind kKind{"CBus", Text::Bus, kBusFields, MakeRecord<CBus>, &kBusFields[0]};
  return kKind;
}

namespace {
constexpr CField kPlacedItemFields[] = {
    Field<&SPlacedItemFields::text>("text"),         Field<&SPlacedItemFields::layer>("layer", EOnDelete::DeleteOwner),
    Field<&SPlacedItemFields::position>("position"), Field<&SPlacedItemFields::width>("width"),
    Field<&SPlacedItemFields::height>("height"),     Field<&SPlacedItemFields::type>("type"),
};
}  // namespace

#define TECHSHEET_PLACED_ITEM(Class, title)                                                     \
  const CKind& Class::TheKind() {                                                               \
    static constexpr CKind kKind{#Class, title, kPlacedItemFields, MakeRecord<Class>, nullptr}; \
    return kKind;                                                                               \
  }
TECHSHEET_PLACED_ITEM(CSymbolOrigin, Text::SymbolOrigin)
TECHSHEET_PLACED_ITEM(CDibInstance, Text::Picture)
TECHSHEET_PLACED_ITEM(CNote, Text::Note)
TECHSHEET_PLACED_ITEM(CError, Text::ErrorMarker)
TECHSHEET_PLACED_ITEM(CBlockOrigin, Text::Block)
TECHSHEET_PLACED_ITEM(CBlockPort, Text::BlockPort)
TECHSHEET_PLACED_ITEM(CCallout, Text::Callout)
TECHSHEET_PLACED_ITEM(CDimension, Text::Dimension)
TECHSHEET_PLACED_ITEM(CDrillTable, Text::DrillTable)
TECHSHEET_PLACED_ITEM(CInsertedFile, Text::InsertedFile)
TECHSHEET_PLACED_ITEM(CInsertedReport, Text::InsertedReport)
TECHSHEET_PLACED_ITEM(CPanelPcbOrigin, Text::PanelPcb)
TECHSHEET_PLACED_ITEM(CLayerStack, Text::LayerStack)
#undef TECHSHEET_PLACED_ITEM

CCollectionBase* CSymbol::Child(std::size_t index) {
  CCollectionBase* const children[] = {&m_pads, &m_texts, &m_shapes};
  return index < std::size(children) ? children[index] : nullptr;
}

CCollectionBase* CSymbolInstance::Child(std::size_t index) {
  CCollectionBase* const children[] = {&m_padInstances, &m_valuePositions};
  return index < std::size(children) ? children[index] : nullptr;
}

CPourTemplate* CArea::GetPourTemplate(const CNet* net) const {
  for (CPourTemplate& one : m_pourTemplates)
    if (one.Values().net.Get() == net) return &one;
  return nullptr;
}
