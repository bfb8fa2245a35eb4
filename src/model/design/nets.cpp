#include "model/design/nets.h"

#include "model/design/fieldtypes.h"
#include "model/design/items.h"

namespace {
constexpr CField kNodeFields[] = {
    Field<&SNodeFields::component>("component", Text::Component, EOnDelete::DeleteOwner),
    Field<&SNodeFields::pad>("pad", Text::Pad),
};

constexpr CField kTrackSegmentFields[] = {
    Field<&STrackSegmentFields::layer>("layer", Text::Layer, EOnDelete::DeleteOwner),
    Field<&STrackSegmentFields::style>("style", Text::Style),
    Field<&STrackSegmentFields::start>("start", Text::Start),
    Field<&STrackSegmentFields::end>("end", Text::End),
};

constexpr CField kTrackFields[] = {
    Field<&STrackFields::defaultStyle>("defaultStyle", Text::DefaultStyle),
};

constexpr CField kViaFields[] = {
    Field<&SViaFields::style>("style", Text::Style),
    Field<&SViaFields::span>("span", Text::Span),
    Field<&SViaFields::position>("position", Text::Position),
};

constexpr CField kConnectPointFields[] = {
    Field<&SConnectPointFields::style>("style", Text::Style),
    Field<&SConnectPointFields::layer>("layer", Text::Layer, EOnDelete::DeleteOwner),
    Field<&SConnectPointFields::position>("position", Text::Position),
    Field<&SConnectPointFields::junction>("junction", Text::Junction),
};

constexpr CField kConnectionFields[] = {
    Field<&SConnectionFields::start>("start", Text::Start),
    Field<&SConnectionFields::end>("end", Text::End),
};

constexpr CField kNetFields[] = {
    Field<&SNetFields::name>("name", Text::Name),
    Field<&SNetFields::netClass>("netClass", Text::NetClass),
    Field<&SNetFields::useOwnColour>("useOwnColour", Text::UseOwnColour),
    Field<&SNetFields::colour>("colour", Text::Colour),
    Field<&SNetFields::guardSpacing>("guardSpacing", Text::GuardSpacing),
    Field<&SNetFields::displayConnections>("displayConnections", Text::DisplayConnections),
};
}  // namespace

TECHSHEET_DEFINE_KIND(CNode, Text::Node, kNodeFields)
TECHSHEET_DEFINE_KIND(CTrackSegment, Text::TrackSegment, kTrackSegmentFields)
TECHSHEET_DEFINE_KIND(CTrack, Text::Track, kTrackFields)
TECHSHEET_DEFINE_KIND(CVia, Text::Via, kViaFields)
TECHSHEET_DEFINE_KIND(CConnectPoint, Text::ConnectPoint, kConnectPointFields)
TECHSHEET_DEFINE_KIND(CConnection, Text::Connection, kConnectionFields)
TECHSHEET_DEFINE_KIND(CNet, Text::Net, kNetFields)

CCollectionBase* CNet::Child(std::size_t index) {
  CCollectionBase* const children[] = {&m_nodes, &m_tracks, &m_vias, &m_connectPoints, &m_connections};
  return index < std::size(children) ? children[index] : nullptr;
}

bool CNet::IsOccupied() const {
  for (std::size_t i = 0; const CCollectionBase* child = CRecordBase::Child(i); ++i)
    if (child->Count() > 0) return true;
  return false;
}
