#include "model/design/items.h"

#include "model/design/fieldtypes.h"

namespace {
constexpr CField kPadFields[] = {
    Field<&SPadFields::name>("name", Text::Name),
    Field<&SPadFields::style>("style", Text::Style),
    Field<&SPadFields::position>("position", Text::Position),
    Field<&SPadFields::angle>("angle", Text::Angle),
    Field<&SPadFields::side>("side", Text::Side),
};

constexpr CField kFreeTextFields[] = {
    Field<&SFreeTextFields::name>("name", Text::Name),
    Field<&SFreeTextFields::text>("text", Text::TextOfItem),
    Field<&SFreeTextFields::style>("style", Text::Style),
    Field<&SFreeTextFields::layer>("layer", Text::Layer, EOnDelete::DeleteOwner),
    Field<&SFreeTextFields::position>("position", Text::Position),
    Field<&SFreeTextFields::angle>("angle", Text::Angle),
    Field<&SFreeTextFields::mirrored>("mirrored", Text::Mirrored),
};

constexpr CField kShapeItemFields[] = {
    Field<&SShapeItemFields::layer>("layer", Text::Layer, EOnDelete::DeleteOwner),
    Field<&SShapeItemFields::lineStyle>("lineStyle", Text::LineStyle),
    Field<&SShapeItemFields::width>("width", Text::Width),
    Field<&SShapeItemFields::points>("points", Text::Points),
    Field<&SShapeItemFields::closed>("closed", Text::Closed),
    Field<&SShapeItemFields::filled>("filled", Text::Filled),
};

constexpr CField kSymbolFields[] = {
    Field<&SSymbolFields::name>("name", Text::Name),
};

constexpr CField kComponentFields[] = {
    Field<&SComponentFields::name>("name", Text::Name),
    Field<&SComponentFields::symbol>("symbol", Text::Symbol),
    Field<&SComponentFields::description>("description", Text::Description),
};

constexpr CField kPadInstanceFields[] = {
    Field<&SPadInstanceFields::name>("name", Text::Name),
    Field<&SPadInstanceFields::style>("style", Text::Style),
    Field<&SPadInstanceFields::net>("net", Text::Net, EOnDelete::Clear),
    Field<&SPadInstanceFields::position>("position", Text::Position),
    Field<&SPadInstanceFields::angle>("angle", Text::Angle),
    Field<&SPadInstanceFields::side>("side", Text::Side),
};

constexpr CField kValuePositionFields[] = {
    Field<&SValuePositionFields::value>("value", Text::Value),
    Field<&SValuePositionFields::style>("style", Text::Style),
    Field<&SValuePositionFields::layer>("layer", Text::Layer, EOnDelete::DeleteOwner),
    Field<&SValuePositionFields::position>("position", Text::Position),
    Field<&SValuePositionFields::angle>("angle", Text::Angle),
    Field<&SValuePositionFields::displayed>("displayed", Text::Shown),
};

constexpr CField kSymbolInstanceFields[] = {
    Field<&SSymbolInstanceFields::symbol>("symbol", Text::Symbol),
    Field<&SSymbolInstanceFields::position>("position", Text::Position),
    Field<&SSymbolInstanceFields::angle>("angle", Text::Angle),
    Field<&SSymbolInstanceFields::side>("side", Text::Side),
};

constexpr CField kComponentInstanceFields[] = {
    Field<&SComponentInstanceFields::name>("name", Text::Name),
    Field<&SComponentInstanceFields::component>("component", Text::Component),
    Field<&SComponentInstanceFields::suppress>("suppress", Text::Suppress),
};

constexpr CField kFreePadFields[] = {
    Field<&SFreePadFields::name>("name", Text::Name),
    Field<&SFreePadFields::style>("style", Text::Style),
    Field<&SFreePadFields::net>("net", Text::Net, EOnDelete::Clear),
    Field<&SFreePadFields::position>("position", Text::Position),
    Field<&SFreePadFields::angle>("angle", Text::Angle),
    Field<&SFreePadFields::side>("side", Text::Side),
};

constexpr CField kNetNameFields[] = {
    Field<&SNetNameFields::net>("net", Text::Net, EOnDelete::DeleteOwner),
    Field<&SNetNameFields::style>("style", Text::Style),
    Field<&SNetNameFields::position>("position", Text::Position),
};

constexpr CField kPourTemplateFields[] = {
    Field<&SPourTemplateFields::net>("net", Text::Net),
    Field<&SPourTemplateFields::clearance>("clearance", Text::Clearance),
    Field<&SPourTemplateFields::minimumWidth>("minimumWidth", Text::MinimumWidth),
    Field<&SPourTemplateFields::poured>("poured", Text::Poured),
};

constexpr CField kAreaFields[] = {
    Field<&SAreaFields::name>("name", Text::Name),
    Field<&SAreaFields::layer>("layer", Text::Layer, EOnDelete::DeleteOwner),
    Field<&SAreaFields::points>("points", Text::Points),
};

constexpr CField kBoardFields[] = {
    Field<&SBoardFields::width>("width", Text::Width),
    Field<&SBoardFields::points>("points", Text::Points),
    Field<&SBoardFields::closed>("closed", Text::Closed),
};

constexpr CField kCopperFields[] = {
    Field<&SCopperFields::layer>("layer", Text::Layer, EOnDelete::DeleteOwner),
    Field<&SCopperFields::net>("net", Text::Net, EOnDelete::Clear),
    Field<&SCopperFields::width>("width", Text::Width),
    Field<&SCopperFields::points>("points", Text::Points),
    Field<&SCopperFields::filled>("filled", Text::Filled),
};

constexpr CField kBusFields[] = {
    Field<&SBusFields::name>("name", Text::Name),
    Field<&SBusFields::open>("open", Text::Open),
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
    Field<&SPlacedItemFields::text>("text", Text::TextOfItem),
    Field<&SPlacedItemFields::layer>("layer", Text::Layer, EOnDelete::DeleteOwner),
    Field<&SPlacedItemFields::position>("position", Text::Position),
    Field<&SPlacedItemFields::width>("width", Text::Width),
    Field<&SPlacedItemFields::height>("height", Text::Height),
    Field<&SPlacedItemFields::type>("type", Text::Type),
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
