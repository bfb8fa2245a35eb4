#include "technology/layers/layerspage.h"

#include <algorithm>

#include "model/services/application.h"
#include "technology/combos.h"

namespace {
using F = SLayerFields;

bool IsBuiltIn(const CRecordBase& values) { return FieldsOf<CLayer>(values).name.text.starts_with('['); }
bool HasNoType(const CRecordBase& values) { return !FieldsOf<CLayer>(values).type; }
std::int64_t EffectiveUsage(const CRecordBase& values) { return static_cast<const CLayer&>(values).GetUsage(); }
bool IsForAllLayers(const CRecordBase& values) { return FieldsOf<CLayer>(values).usage.value == ELayerUsage::All; }
const CLayer& AsLayer(const CRecordBase& record) { return static_cast<const CLayer&>(record); }

std::vector<CColumn> MakeColumns() {
  std::vector<CColumn> columns{
      UsedMark(),
      Column<CLayer>(Text::Name, &F::name).Width(160),
      Column<CLayer>(Text::Type, &F::type).ImportError(Text::RecordLayerTypeUnknown).Width(140),
      Column<CLayer>(Text::Side, &F::side).Offers(&CLayerSideComboBox::Items).ImportError(Text::RecordLayerCodeUnknown),
      Column<CLayer>(Text::Usage, &F::usage)
          .Offers(&CLayerUsageComboBox::Items)
          .Shows(EffectiveUsage)
          .EnabledWhen(HasNoType)
          .RefusedFromFileWhen(IsForAllLayers)
          .ImportError(Text::RecordLayerCodeUnknown)
          .Width(120),
      Column<CLayer>(Text::Bias, &F::bias).ImportError(Text::RecordLayerCodeUnknown),
  };
  if (!CApplication::IsCorvina())
    columns.push_back(Column<CLayer>(Text::PlaneNet, &F::net).ImportError(Text::RecordNetUnknown).Width(140));
  columns.push_back(Column<CLayer>(Text::Colour, &F::colour));
  for (CColumn& column : columns)
    if (column.field) column.ReadOnlyWhen(IsBuiltIn);
  return columns;
}
}  // namespace

void CEditLayerDialog::OnOk() {
  CRecordForm::OnOk();
  if (!IsOpen() && !(AsLayer(Draft()).GetColour() == m_colour)) CEvt::Send("ColoursChanged", 0, 0);
}

CLayersPage::CLayersPage(CDesign& design)
    : CRecordPage(design,
                  {.title = Text::Layers,
                   .settings = "Settings\\Styles\\Layers",
                   .nameError = Text::LayerNameInvalid,
                   .inUse = Text::InUseOrRequired,
                   .exportName = Text::LayersFile,
                   .validName = &ValidLayerName,
                   .ordered = true},
                  design.layers, MakeColumns()) {
  AddCommand("FocusSelection", [this] { FocusSelection(); });
}

// ---- Checks of a row

bool CLayersPage::RefuseBias(const SRowCheck& check, const CLayer& layer, int first, int second) {
  return Refuse(check, &F::bias, Text::BiasDoesNotSuit, layer.GetUsageString(), RowText(check),
                GetLayerBiasString(first), GetLayerBiasString(second));
}

bool CLayersPage::AcceptsPlane(const SRowCheck& check, const CLayer& layer) {
  if (!check.record || AsLayer(*check.record).GetBias() == ELayerBias::PowerPlane ||
      layer.GetBias() != ELayerBias::PowerPlane || m_planesAccepted.contains(check.record))
    return true;
  const bool poured = std::any_of(m_design.areas.begin(), m_design.areas.end(), [&](const CArea& area) {
    const CPourTemplate* const pour = area.GetPourTemplate(layer.GetNet());
    return pour && pour->HasPouredCopper();
  });
  if (poured && ShowMessage(Text::PouredLayerBecomesPlane, {}, EButtons::OkCancel) == EAnswer::Cancel) return false;
  m_planesAccepted.insert(check.record);
  return true;
}

bool CLayersPage::CheckRow(const SRowCheck& check) {
  const CLayer& layer = AsLayer(check.values);
  const int usage = layer.GetUsage();
  const int bias = layer.GetBias();
  const CString row = RowText(check);
  if (usage == ELayerUsage::Documentation) {
    if (bias != ELayerBias::None && bias != ELayerBias::Any)
      return RefuseBias(check, layer, ELayerBias::None, ELayerBias::Any);
    if (layer.GetNet()) return Refuse(check, &F::net, Text::PlaneNetDoesNotSuit, layer.GetUsageString(), row);
  } else if (usage == ELayerUsage::SolderMask || usage == ELayerUsage::PasteMask) {
    if (bias == ELayerBias::SplitPlane || bias == ELayerBias::PowerPlane)
      return RefuseBias(check, layer, ELayerBias::PowerPlane, ELayerBias::SplitPlane);
    if (layer.GetSide() == ELayerSide::Inner)
      return Refuse(check, &F::side, Text::InnerSideDoesNotSuit, layer.GetUsageString(), row);
    if (layer.GetNet()) return Refuse(check, &F::net, Text::PlaneNetDoesNotSuit, layer.GetUsageString(), row);
  } else if ((check.pass == EPass::Write || check.pass == EPass::Survey) && layer.GetNet() &&
             bias != ELayerBias::PowerPlane) {
    ShowMessage(Text::PlaneNetWithoutEffect, {layer.GetName()});
  }
  if (!AcceptsPlane(check, layer)) return false;
  if (!check.record || AsLayer(*check.record).GetUsage() == usage || !CTechnology::IsUsed(*check.record)) return true;
  const CLayer& before = AsLayer(*check.record);
  return Refuse(check, &F::usage, Text::LayerUsageFixed, before.GetName(), before.GetUsageString(),
                layer.GetUsageString());
}

// ---- Checks of the stack

std::vector<CLayersPage::SStackEntry> CLayersPage::Stack() const {
  std::vector<SStackEntry> stack;
  for (int row = 1; row < m_grid.GetRowCount(); ++row)
    if (m_grid.IsPresent(row)) stack.push_back({row, &AsLayer(ValuesOf(row))});
  return stack;
}

bool CLayersPage::CheckOrder(const std::vector<SStackEntry>& stack) {
  const auto ofSide = [](int side) {
    return [side](const SStackEntry& entry) { return entry.layer->GetSide() == side; };
  };
  static constexpr std::pair<int, int> kAbove[] = {{ELayerSide::Top, ELayerSide::Inner},
                                                   {ELayerSide::Top, ELayerSide::Bottom},
                                                   {ELayerSide::Inner, ELayerSide::Bottom}};
  for (const auto& [above, below] : kAbove) {
    const auto first = std::find_if(stack.begin(), stack.end(), ofSide(below));
    const auto last = std::find_if(stack.rbegin(), stack.rend(), ofSide(above));
    if (first == stack.end() || last == stack.rend() || last->row < first->row) continue;
    FailAt(first->row);
    if (!RefusePage(Text::LayersOutOfOrder, first->layer->GetName(), last->layer->GetName())) return false;
  }
  return true;
}

bool CLayersPage::CheckPairs(const std::vector<SStackEntry>& stack, int side) {
  using Same = bool (*)(const CLayer&, const CLayer&);
  const Same sameUsage = [](const CLayer& a, const CLayer& b) {
    constexpr int kOnePerSide = ELayerUsage::Electrical | ELayerUsage::SolderMask | ELayerUsage::PasteMask;
    return a.GetUsage() == b.GetUsage() && (a.GetUsage() & kOnePerSide) != 0;
  };
  const Same sameType = [](const CLayer& a, const CLayer& b) { return a.GetType() && a.GetType() == b.GetType(); };
  for (const Same same : {sameUsage, sameType}) {
    for (std::size_t i = 0; i < stack.size(); ++i) {
      for (std::size_t j = i + 1; stack[i].layer->GetSide() == side && j < stack.size(); ++j) {
        const CLayer& a = *stack[i].layer;
        const CLayer& b = *stack[j].layer;
        if (b.GetSide() != side || !same(a, b)) continue;
        FailAt(stack[j].row);
        CAppError::Set(same == sameUsage ? Text::LayerUsageShared : Text::LayerTypeShared,
                       {a.GetName(), b.GetName(), a.GetSideString(), a.GetUsageString()});
        if (!Refused()) return false;
      }
    }
  }
  return true;
}

bool CLayersPage::CheckPage() {
  const std::vector<SStackEntry> stack = Stack();
  if (!CheckOrder(stack) || !CheckPairs(stack, ELayerSide::Top) || !CheckPairs(stack, ELayerSide::Bottom)) return false;
  const bool hasOuter = std::any_of(stack.begin(), stack.end(), [](const SStackEntry& entry) {
    const int side = entry.layer->GetSide();
    return entry.layer->GetUsage() == ELayerUsage::Electrical &&
           (side == ELayerSide::Top || side == ELayerSide::Bottom);
  });
  return hasOuter || ShowMessage(Text::NoOuterElectricalLayer, {}, EButtons::OkCancel) != EAnswer::Cancel;
}

CPreview CLayersPage::GetPreview() const {
  SStackPreview preview;
  std::map<const CLayer*, int> places;  // by the layer in the design: spans refer to those
  for (const auto& [row, layer] : Stack()) {
    if (layer->IsBuiltIn()) continue;
    places.emplace(static_cast<const CLayer*>(m_grid.GetItemData(row)), static_cast<int>(preview.layers.size()));
    preview.layers.push_back(StackLayerOf(*layer));
    preview.layers.back().current = m_grid.GetFocusCell().row == row;
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

void CLayersPage::Derive(const CField& changed, const CRecordBase& before, CRecordBase& draft) {
  if (changed.type->fieldClass != EFieldClass::Reference || changed.type->target() != &CLayerType::TheKind()) return;
  // A layer takes its type's usage over, and keeps it when the type is taken away.
  auto& layer = static_cast<CLayer&>(draft);
  layer.SetUsage(layer.GetType() ? layer.GetUsage() : AsLayer(before).GetUsage());
}

bool CLayersPage::IsPinned(int row) const { return RowName(row).starts_with('['); }

bool CLayersPage::MayDelete(int row) {
  auto& layer = static_cast<CLayer&>(*m_grid.GetItemData(row));
  CAppError::SetLastError(0);
  if (!CheckPresentRow(row)) {
    CAppError::ReportLastError();
    return false;
  }
  if (layer.GetUsage() == ELayerUsage::Electrical || layer.IsBuiltIn()) {
    CAppError::ReportError(Text::InUseOrRequired, layer.GetName());
    return false;
  }
  CStringArray uses;
  m_design.GetLayerUsed(&layer, uses);
  CString list;
  for (const CString& use : uses) list += "  " + use + "\r\n";
  if (ShowMessage(Text::DeleteLayerWithItems, {layer.GetName(), RowText(row), list}, EButtons::YesNo) != EAnswer::Yes)
    return false;
  m_grid.SetItemText(row, 0, "U");
  return true;
}

CString CLayersPage::UsedMarkOf(int row) const {
  return m_grid.GetItemText(row, 0) == "U" && !m_grid.IsPresent(row) ? "U" : CRecordPage::UsedMarkOf(row);
}

bool CLayersPage::SortsBefore(const SGridRow& a, const SGridRow& b) const {
  if (!a.record || !b.record) return a.record && !b.record;
  return !(AsLayer(*a.record) >= AsLayer(*b.record));
}

bool CLayersPage::EditDraft(int row, CRecordBase& draft) {
  return CEditLayerDialog(*this, row, static_cast<CLayer&>(draft)).DoModal() == CDialog::kOk;
}

void CLayersPage::FocusSelection() {
  m_grid.ClearSelection();
  for (const CDesignItem* item : m_design.Selection().Items()) {
    const CField* const field = item->Kind().FindField("layer");
    if (!field) continue;
    const CRecordBase* const layer = field->As<CRefBase>(item->FieldsAddress()).target;
    for (int row = 1; layer && row < m_grid.GetRowCount(); ++row) {
      if (m_grid.GetItemData(row) != layer || !m_grid.IsPresent(row)) continue;
      m_grid.SetFocusCell(row, NameColumn());
      m_grid.SetRowSel(row);
    }
  }
  Changed();
}

// ---- Writing

bool CLayersPage::OnApply() {
  m_planesAccepted.clear();
  // A layer that cannot go takes part in every check, as a row that is shown again.
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    CRecordBase* const layer = m_grid.GetItemData(row);
    if (!layer || m_grid.IsPresent(row) || m_grid.GetItemText(row, 0) != "U") continue;
    if (m_design.CanDeleteUsedRecord(*layer)) continue;
    m_grid.SetRowHeight(row, 1);
    m_grid.SetItemText(row, 0, UsedMarkOf(row));
  }
  return CRecordPage::OnApply();
}

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

bool CLayersPage::Delete(int row) {
  auto& layer = static_cast<CLayer&>(*m_grid.GetItemData(row));
  if (m_grid.GetItemText(row, 0) == "U") {
    if (!m_design.DeleteUsedLayer(&layer)) {
      m_grid.SetRowHeight(row, 1);
      m_grid.SetItemText(row, 0, {});
      m_grid.Row(row).draft.reset();  // no check has seen what was typed
      return true;
    }
    m_grid.SetItemData(row, nullptr);
  } else if (!CRecordPage::Delete(row)) {
    return false;
  }
  CEvt::Send("LayerDeleted", &layer);
  m_coloursChanged = true;
  return true;
}

void CLayersPage::Written() {
  m_planesAccepted.clear();
  if (m_coloursChanged) CEvt::Send("DesignColoursChanged", 0, 0);
  m_coloursChanged = false;
}

// ---- Import

void CLayersPage::AdjustImport(const CRecordBase* record, CRecordBase& values) {
  auto& layer = static_cast<CLayer&>(values);
  if (!layer.GetType()) return;
  // The file's usage is that of the type: the layer keeps its own, a new one takes the type's.
  layer.SetUsage(record ? FieldsOf<CLayer>(*record).usage.value : layer.GetUsage());
}

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
