// Nets: what they connect, and the tracks, vias and points that make the connection.
#pragma once
#include "model/design/collection.h"
#include "model/design/item.h"
#include "model/design/layer.h"
#include "model/design/padstyle.h"
#include "model/design/rules.h"

class CComponentInstance;

/// One pad that a net connects.
struct SNodeFields {
  CRef<CComponentInstance> component;
  CString pad;  // the name of the pad
};
class CNode : public CRecord<SNodeFields> {
  TECHSHEET_RECORD(CNode, CRecordBase)
};

struct STrackSegmentFields {
  using RecordBase = CDesignItem;
  CRef<CLayer> layer;
  CRef<CTrackStyle> style;
  CPoint start;
  CPoint end;
};
class CTrackSegment : public CRecord<STrackSegmentFields> {
  TECHSHEET_RECORD(CTrackSegment, CDesignItem)
  void SetStyle(CTrackStyle* style) { Set(&Fields::style, style); }
};

/// A run of segments with one style for new ones.
struct STrackFields {
  using RecordBase = CDesignItem;
  CRef<CTrackStyle> defaultStyle;
};
class CTrack : public CRecord<STrackFields> {
  TECHSHEET_OWNING_RECORD(CTrack, CDesignItem)
  void SetDefaultStyle(CTrackStyle* style) { Set(&Fields::defaultStyle, style); }
  CCollection<CTrackSegment>& Segments() { return m_segments; }
  const CCollection<CTrackSegment>& Segments() const { return m_segments; }
  CCollectionBase* Child(std::size_t index) override { return index == 0 ? &m_segments : nullptr; }

 private:
  CCollection<CTrackSegment> m_segments{"segments", this};
};

struct SViaFields {
  using RecordBase = CDesignItem;
  CRef<CPadStyle> style;
  CRef<CLayerSpan> span;  // none: through the whole board
  CPoint position;
};
class CVia : public CRecord<SViaFields> {
  TECHSHEET_RECORD(CVia, CDesignItem)
};

/// A point of a connection that is neither a pad nor a via: a junction or the end of a track.
struct SConnectPointFields {
  using RecordBase = CDesignItem;
  CRef<CPadStyle> style;
  CRef<CLayer> layer;
  CPoint position;
  bool junction = false;
};
class CConnectPoint : public CRecord<SConnectPointFields> {
  TECHSHEET_RECORD(CConnectPoint, CDesignItem)
  void SetStyle(CPadStyle* style) { Set(&Fields::style, style); }
};

/// A connection that is not routed yet.
struct SConnectionFields {
  using RecordBase = CDesignItem;
  CPoint start;
  CPoint end;
};
class CConnection : public CRecord<SConnectionFields> {
  TECHSHEET_RECORD(CConnection, CDesignItem)
};

struct SNetFields {
  CName name;
  CFallbackRef<CNetClass> netClass;
  bool useOwnColour = false;
  CColour colour{0x808080};
  Dsu guardSpacing;
  bool displayConnections = true;
};
class CNet : public CRecord<SNetFields> {
  TECHSHEET_OWNING_RECORD(CNet, CRecordBase)
  const CString& GetName() const { return Values().name.text; }
  void SetName(const CString& name) { Set(&Fields::name, CName{name}); }
  CNetClass* GetNetClass() const { return Values().netClass.Get(); }

  bool IsOccupied() const override;
  bool OwnsValues() const override { return false; }  // what a net is routed with belongs to its design

  CCollection<CNode>& Nodes() { return m_nodes; }
  CCollection<CTrack>& Tracks() { return m_tracks; }
  CCollection<CVia>& Vias() { return m_vias; }
  CCollection<CConnectPoint>& ConnectPoints() { return m_connectPoints; }
  CCollection<CConnection>& Connections() { return m_connections; }
  CCollectionBase* Child(std::size_t index) override;

 private:
  CCollection<CNode> m_nodes{"nodes", this};
  CCollection<CTrack> m_tracks{"tracks", this};
  CCollection<CVia> m_vias{"vias", this};
  CCollection<CConnectPoint> m_connectPoints{"connectPoints", this};
  CCollection<CConnection> m_connections{"connections", this};
};
