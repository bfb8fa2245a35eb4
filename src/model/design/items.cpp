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

TECHSHEET_DEFINE_KIND(CPad, Text::Pad, kPadFields)
TECHSHEET_DEFINE_KIND(CFreeText, Text::FreeText, kFreeTextFields)
TECHSHEET_DEFINE_KIND(CShapeItem, Text::ShapeItem, kShapeItemFields)
TECHSHEET_DEFINE_KIND(CSymbol, Text::Symbol, kSymbolFields)
TECHSHEET_DEFINE_KIND(CComponent, Text::Component, kComponentFields)
TECHSHEET_DEFINE_KIND(CPadInstance, Text::PadInstance, kPadInstanceFields)
TECHSHEET_DEFINE_KIND(CValuePosition, Text::ValuePosition, kValuePositionFields)
TECHSHEET_DEFINE_KIND(CSymbolInstance, Text::SymbolInstance, kSymbolInstanceFields)
TECHSHEET_DEFINE_KIND(CComponentInstance, Text::ComponentInstance, kComponentInstanceFields)
TECHSHEET_DEFINE_KIND(CFreePad, Text::FreePad, kFreePadFields)
TECHSHEET_DEFINE_KIND(CNetName, Text::NetName, kNetNameFields)
TECHSHEET_DEFINE_KIND(CPourTemplate, Text::PourTemplate, kPourTemplateFields)
TECHSHEET_DEFINE_KIND(CArea, Text::Area, kAreaFields)
TECHSHEET_DEFINE_KIND(CBoard, Text::Board, kBoardFields)
TECHSHEET_DEFINE_KIND(CCopper, Text::Copper, kCopperFields)
TECHSHEET_DEFINE_KIND(CBus, Text::Bus, kBusFields)

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

TECHSHEET_DEFINE_KIND(CSymbolOrigin, Text::SymbolOrigin, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CDibInstance, Text::Picture, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CNote, Text::Note, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CError, Text::ErrorMarker, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CBlockOrigin, Text::Block, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CBlockPort, Text::BlockPort, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CCallout, Text::Callout, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CDimension, Text::Dimension, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CDrillTable, Text::DrillTable, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CInsertedFile, Text::InsertedFile, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CInsertedReport, Text::InsertedReport, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CPanelPcbOrigin, Text::PanelPcb, kPlacedItemFields)
TECHSHEET_DEFINE_KIND(CLayerStack, Text::LayerStack, kPlacedItemFields)

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
