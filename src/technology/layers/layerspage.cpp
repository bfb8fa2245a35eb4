#include "technology/layers/layerspage.h"

#include <algorithm>
#include <map>

#include "model/services/application.h"
#include "technology/combos.h"

namespace {
using F = SLayerFields;

bool HasNoType(const CRecordBase& values) { return !FieldsOf<CLayer>(values).type; }
bool IsForAllLayers(const CRecordBase& values) { return FieldsOf<CLayer>(values).usage.value == ELayerUsage::All; }
const CLayer& AsLayer(const CRecordBase& record) { return static_cast<const CLayer&>(record); }

void AnnounceColour(const CRecordBase& before, const CRecordBase& after) {
  if (!(AsLayer(before).GetColour() == AsLayer(after).GetColour())) CEvt::Send("ColoursChanged", 0, 0);
}
}  // namespace

CLayersPage::CLayersPage(CDesign& design)
    : CRecordPage(design, design.layers,
                  {.title = Text::Layers,
                   .settings = "Settings\\Styles\\Layers",
                   .nameError = Text::LayerNameInvalid,
                   .inUse = Text::InUseOrRequired,
                   .exportName = Text::LayersFile,
                   .validName = &ValidLayerName,
                   .builtIn = EBuiltIn::RowLocked,
                   .ordered = true}) {
  Columns({
      UsedMark(),
      Column(&F::name).Width(160),
      Column(&F::type).ImportError(Text::RecordLayerTypeUnknown).Width(140),
      Column(&F::side).Offers(&CLayerSideComboBox::Items).ImportError(Text::RecordLayerCodeUnknown),
      Column(&F::usage)
          .Offers(&CLayerUsageComboBox::Items)
          .EnabledWhen(HasNoType)
          .RefusedFromFileWhen(IsForAllLayers)
          .ImportError(Text::RecordLayerCodeUnknown)
          .Width(120),
      Column(&F::bias).ImportError(Text::RecordLayerCodeUnknown),
      Group(!CApplication::IsCorvina()).Of({Column(&F::net).ImportError(Text::RecordNetUnknown).Width(140)}),
      Column(&F::colour),
  });
  SRecordForm form = RecordForm<CEditLayerDialog>(Text::Layer);
  form.announce = &AnnounceColour;
  AddForm(form);
  AddCommand("FocusSelection", [this] { FocusSelection(); });
}

// ---- Checks of a row

void CLayersPage::CheckPlane(const SCheckedRow& row, CFindings& findings) const {
  const CLayer& layer = row.As<CLayer>();
  const CLayer* const before = row.Before<CLayer>();
  if (!before || before->GetBias() == ELayerBias::PowerPlane || layer.GetBias() != ELayerBias::PowerPlane) return;
  const bool isPoured = std::any_of(m_design.areas.begin(), m_design.areas.end(), [&](const CArea& area) {
    const CPourTemplate* const pour = area.GetPourTemplate(layer.GetNet());
    return pour && pour->HasPouredCopper();
  });
  if (isPoured) findings.Ask(row, &F::bias, Text::PouredLayerBecomesPlane);
}

void CLayersPage::Check(const SCheckedRow& row, CFindings& findings) const {
  const CLayer& layer = row.As<CLayer>();
  const int usage = layer.GetUsage();
  const int bias = layer.GetBias();
  const auto refuseBias = [&](int first, int second) {
    findings.Add(row, &F::bias, Text::BiasDoesNotSuit, layer.GetUsageString(), row.Number(), GetLayerBiasString(first),
                 GetLayerBiasString(second));
  };
  const bool isMask = usage == ELayerUsage::SolderMask || usage == ELayerUsage::PasteMask;
  const bool isDocumentation = usage == ELayerUsage::Documentation;
  if (isDocumentation && bias != ELayerBias::None && bias != ELayerBias::Any)
    refuseBias(ELayerBias::None, ELayerBias::Any);
  if (isMask && (bias == ELayerBias::SplitPlane || bias == ELayerBias::PowerPlane))
    refuseBias(ELayerBias::PowerPlane, ELayerBias::SplitPlane);
  if (isMask && layer.GetSide() == ELayerSide::Inner)
    findings.Add(row, &F::side, Text::InnerSideDoesNotSuit, layer.GetUsageString(), row.Number());
  if ((isMask || isDocumentation) && layer.GetNet()) {
    findings.Add(row, &F::net, Text::PlaneNetDoesNotSuit, layer.GetUsageString(), row.Number());
  } else if (layer.GetNet() && bias != ELayerBias::PowerPlane) {
    findings.Tell(row, &F::net, Text::PlaneNetWithoutEffect, layer.GetName());
  }
  CheckPlane(row, findings);
  const CLayer* const before = row.Before<CLayer>();
  if (before && before->GetUsage() != usage && CTechnology::IsUsed(*before))
    findings.Add(row, &F::usage, Text::LayerUsageFixed, before->GetName(), before->GetUsageString(),
                 layer.GetUsageString());
}

void CLayersPage::CheckDeletion(const SCheckedRow& row, CFindings& findings) const {
  findings.Append(Rows().JudgeRow(row.row));
  const CLayer& layer = *row.Before<CLayer>();
  const CString& name = row.values.RecordName();  // as the row reads by now
  if (layer.GetUsage() == ELayerUsage::Electrical || layer.IsBuiltIn())
    return findings.Refuse(row, Text::InUseOrRequired, name);
  CStringArray uses;
  m_design.GetLayerUsed(&layer, uses);
  CString list;
  for (const CString& use : uses) list += "  " + use + "\r\n";
  findings.AskYesNo(row, Text::DeleteLayerWithItems, name, row.Number(), list);
}

// ---- Checks of the stack

void CLayersPage::CheckOrder(const std::vector<SCheckedRow>& stack, CFindings& findings) const {
  const auto ofSide = [](int side) {
    return [side](const SCheckedRow& row) { return row.As<CLayer>().GetSide() == side; };
  };
  static constexpr std::pair<int, int> kAbove[] = {{ELayerSide::Top, ELayerSide::Inner},
                                                   {ELayerSide::Top, ELayerSide::Bottom},
                                                   {ELayerSide::Inner, ELayerSide::Bottom}};
  for (const auto& [above, below] : kAbove) {
    const auto first = std::find_if(stack.begin(), stack.end(), ofSide(below));
    const auto last = std::find_if(stack.rbegin(), stack.rend(), ofSide(above));
    if (first == stack.end() || last == stack.rend() || last->row < first->row || findings.IsDecided()) continue;
    findings.Refuse(*first, Text::LayersOutOfOrder, first->As<CLayer>().GetName(), last->As<CLayer>().GetName());
    findings.AlsoAt(*last);
    findings.GoOn();
  }
}

void CLayersPage::CheckPairs(const std::vector<SCheckedRow>& stack, int side, CFindings& findings) const {
  using Shared = std::intptr_t (*)(const CLayer&);  // what no two layers of a side may share; 0 for none
  const Shared usage = [](const CLayer& layer) -> std::intptr_t {
    return layer.GetUsage() & (ELayerUsage::Electrical | ELayerUsage::SolderMask | ELayerUsage::PasteMask);
  };
  const Shared type = [](const CLayer& layer) { return reinterpret_cast<std::intptr_t>(layer.GetType()); };
  for (const Shared shared : {usage, type}) {
    std::vector<std::vector<const SCheckedRow*>> groups;  // by their first layers
    std::map<std::intptr_t, std::size_t> known;
    for (const SCheckedRow& row : stack) {
      const auto& layer = row.As<CLayer>();
      if (layer.GetSide() != side || shared(layer) == 0) continue;
      const auto [at, isNew] = known.try_emplace(shared(layer), groups.size());
      if (isNew) groups.emplace_back();
      groups[at->second].push_back(&row);
    }
    for (const std::vector<const SCheckedRow*>& group : groups) {
      if (group.size() < 2 || findings.IsDecided()) continue;
      const auto &a = group[0]->As<CLayer>(), &b = group[1]->As<CLayer>();
      findings.Refuse(*group[1], shared == usage ? Text::LayerUsageShared : Text::LayerTypeShared, a.GetName(),
                      b.GetName(), a.GetSideString(), a.GetUsageString());
      for (const SCheckedRow* other : group) findings.AlsoAt(*other);
      findings.HoldsForMore(group.size() - 2);
      findings.GoOn();
    }
  }
}

void CLayersPage::CheckAll(CFindings& findings) const {
  std::vector<SCheckedRow> stack;
  for (const SCheckedRow& row : Rows().PresentRecords()) stack.emplace_back(row);
  CheckOrder(stack, findings);
  CheckPairs(stack, ELayerSide::Top, findings);
  CheckPairs(stack, ELayerSide::Bottom, findings);
  const bool hasOuter = std::ranges::any_of(stack, [](const SCheckedRow& row) {
    const CLayer& layer = row.As<CLayer>();
    return layer.GetUsage() == ELayerUsage::Electrical &&
           (layer.GetSide() == ELayerSide::Top || layer.GetSide() == ELayerSide::Bottom);
  });
  if (!hasOuter) findings.AskOfPage(Text::NoOuterElectricalLayer);
}

CPreview CLayersPage::GetPreview() const {
  SStackPreview preview;
  std::map<const CLayer*, int> places;  // by the layer in the design: spans refer to those
  for (const SCheckedRow& row : Rows().PresentRecords()) {
    const CLayer& layer = row.As<CLayer>();
    if (layer.IsBuiltIn()) continue;
    places.emplace(row.Before<CLayer>(), static_cast<int>(preview.layers.size()));
    preview.layers.push_back(StackLayerOf(layer));
    preview.layers.back().current = Grid().GetFocusCell().row == row.row;
  }
  const auto placeOf = [&](const CLayer* layer) {
    const auto at = places.find(layer);
    return layer && at != places.end() ? at->second : -1;
  };
  for (const CLayerSpan& span : m_design.layerSpans)
    preview.spans.push_back(
        {span.GetName(), placeOf(span.GetTopLayer()), placeOf(span.GetBottomLayer()), span.GetColour()});
  return preview;
}

// ---- Editing

/// A layer takes its type's usage over, and keeps it when the type is taken away.
void CLayersPage::Follow(const CField& changed, const CRecordBase& before, CRecordBase& values) const {
  auto& layer = static_cast<CLayer&>(values);
  if (&changed == &FieldOf(CLayer::TheKind(), &F::type))
    layer.SetUsage(layer.GetType() ? layer.GetUsage() : AsLayer(before).GetUsage());
}

bool CLayersPage::StandsBefore(const SGridRow& a, const SGridRow& b) const {
  return !(AsLayer(*a.record) >= AsLayer(*b.record));
}

void CLayersPage::FocusSelection() {
  Grid().ClearSelection();
  std::vector<const CRecordBase*> layers;
  for (const CDesignItem* item : m_design.Selection().Items())
    if (const CField* const field = item->Kind().FindField("layer"))
      layers.push_back(field->As<CRefBase>(item->FieldsAddress()).target);
  Rows().SelectRecords(layers, true);
  Changed();
}

// ---- Writing

void CLayersPage::WriteField(CRecordBase& record, const CField& field, const CRecordBase& values) {
  auto& layer = static_cast<CLayer&>(record);
  const CString name = layer.GetName();
  const CColour colour = layer.GetColour();
  const bool leavesPlane = layer.GetBias() == ELayerBias::PowerPlane && layer.GetVisiblePlane();
  CRecordPage::WriteField(record, field, values);
  if (layer.GetName() != name) CEvt::Send("LayerRenamed", &layer);
  if (leavesPlane && layer.GetBias() != ELayerBias::PowerPlane) {
    layer.SetVisiblePlane(false);
    CEvt::Send("DesignColoursChanged", 0, 0);
  }
  if (!(layer.GetColour() == colour)) m_coloursChanged = true;
}

void CLayersPage::Added(CRecordBase& record) {
  CEvt::Send("LayerAdded", &record);
  m_coloursChanged = true;
}

void CLayersPage::Deleted(CRecordBase& record) {
  CEvt::Send("LayerDeleted", &record);
  m_coloursChanged = true;
}

void CLayersPage::Announce() {
  if (m_coloursChanged) CEvt::Send("DesignColoursChanged", 0, 0);
  m_coloursChanged = false;
}

/// Behind the last layer of its place in the stack, unless it stands in order.
void CLayersPage::PlaceImported(CRecordBase& record) {
  const int rank = StackRank(AsLayer(record));
  const auto isInOrder = [](const CRecordBase* above, const CRecordBase* below) {
    return !above || !below || StackRank(AsLayer(*above)) <= StackRank(AsLayer(*below));
  };
  if (isInOrder(record.Previous(), &record) && isInOrder(&record, record.Next())) return;
  std::size_t place = 0;
  std::size_t seen = 0;
  for (const CLayer& layer : m_design.layers) {
    if (&layer == &record) continue;
    ++seen;
    if (StackRank(layer) <= rank) place = seen;
  }
  m_design.layers.SetPlace(record, place);
}
