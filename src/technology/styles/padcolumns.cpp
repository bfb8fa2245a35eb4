#include "technology/styles/padcolumns.h"

#include "model/design/design.h"
#include "model/services/application.h"
#include "technology/combos.h"

bool HasPads(const CDesign& design) {
  return design.IsKindOf(CPcbDesign::GetThisClass()) || design.IsKindOf(CPcbSymDesign::GetThisClass());
}
bool HasExceptions(const CDesign& design) { return HasPads(design) && CApplication::IsExtended(); }
bool HasThermal(const CDesign& design) {
  return (HasPads(design) && CApplication::IsPellam()) || CApplication::IsCorvinaPro();
}

namespace {
using F = SPadStyleFields;
using E = SPadStyleExceptionFields;

bool HasDrill(const CRecordBase& values) { return FieldsOf<CPadStyle>(values).drillWidth.value != 0; }
bool IsSlot(const CRecordBase& values) { return FieldsOf<CPadStyle>(values).drillShape.value != EDrillShape::Round; }
bool IsSlotted(const CRecordBase& values) { return HasDrill(values) && IsSlot(values); }
bool IsDrilledRound(const CRecordBase& values) { return HasDrill(values) && !IsSlot(values); }
void SetRound(CRecordBase& values) { static_cast<CPadStyle&>(values).SetDrillShape(EDrillShape::Round); }

template <class V>
int ShapeOf(const CRecordBase& values) {
  return static_cast<const V*>(values.FieldsAddress())->shape.value;
}
template <class V>
CTextId ThirdLabel(const CRecordBase& values) {
  return CPadStyle::GetDimension3Desc(ShapeOf<V>(values));
}
template <class V>
CTextId FourthLabel(const CRecordBase& values) {
  return CPadStyle::GetDimension4Desc(ShapeOf<V>(values));
}

constexpr int kLengthWidth = 58;  // pixels

/// A dimension that not every shape has, counted from 1; 0 is shown without it.
template <class V>
CColumn DimensionColumn(int dimension, Dsu V::* member) {
  const auto has = [=](const CRecordBase& values) { return CPadStyle::HasXDimension(ShapeOf<V>(values), dimension); };
  return Column(member)
      .EnabledWhen(has)
      .Shows([=](const CRecordBase& values) -> std::int64_t {
        return has(values) ? (static_cast<const V*>(values.FieldsAddress())->*member).value : 0;
      })
      .ImportError(Text::RecordLengthInvalid)
      .Width(dimension > 2 ? 70 : kLengthWidth);  // the titles of the later ones are longer
}

/// What a style and its exceptions have in common; files do not know the fourth dimension.
template <class V>
std::vector<CColumn> ShapeColumns(bool hasPads) {
  return Flat({Column(&V::shape).Width(135),
               Column(&V::size).ImportError(Text::RecordLengthInvalid).Width(kLengthWidth),
               Group(hasPads).Of({DimensionColumn(2, &V::length),
                                  DimensionColumn(3, &V::dimension3).LabelledInForm(&ThirdLabel<V>),
                                  DimensionColumn(4, &V::dimension4).LabelledInForm(&FourthLabel<V>).NotInFile()})});
}

CColumn NameColumn() { return Column(&F::name).Width(130); }
CColumn PlatedColumn() { return Column(&F::plated).Width(50); }
template <class V>
std::vector<CColumn> ThermalColumn(const CDesign& design) {
  return Group(HasThermal(design)).NotInFile().Of({Column(&V::thermal).Width(kLengthWidth)});
}

CColumn LayerColumn() {
  constexpr long kUsages =
      ELayerUsage::Electrical | ELayerUsage::Documentation | ELayerUsage::SolderMask | ELayerUsage::PasteMask;
  return Column(&E::layer)
      .Offers([](const CTechnology& design, std::int64_t current) {
        return CLayerComboBox::Fill(design, reinterpret_cast<const CLayer*>(current), kUsages);
      })
      .ImportErrorOfText(Text::RecordLayerUnknown)
      .Width(90);
}

/// The layer that every style shows.
CColumn StyleLayerColumn(const CDesign& design) {
  const CLayer* const layer = design.FindLayer(ELayerUsage::All, ELayerSide::All, ELayerBias::Horizontal, nullptr);
  return FixedColumn(Text::Layer, {reinterpret_cast<std::int64_t>(layer), layer ? layer->GetName() : CString()})
      .Width(90);
}

std::vector<CColumn> Fixed(std::initializer_list<CTextId> headers) {
  std::vector<CColumn> columns;
  for (const CTextId header : headers) columns.push_back(FixedColumn(header));
  return columns;
}
std::vector<CColumn> NoDrillInFile() {
  return Fixed({Text::Drill, Text::Plated, Text::DrillShape, Text::DrillWidth, Text::DrillLength,
                Text::DrillCornerRadius, Text::DrillRotated});
}
}  // namespace

std::vector<CColumn> PadColumns(const CDesign& design) {
  return Flat({UsedMark(), NameColumn(), Group(HasExceptions(design)).NotInFile().Of({StyleLayerColumn(design)}),
               ShapeColumns<F>(HasPads(design)),
               Group(HasPads(design))
                   .Of({Column(&F::drillWidth)
                            .Titled(Text::Drill)
                            .EmptyWhen(&IsSlotted, Text::Slot)
                            .AlsoSets(&SetRound)
                            .StandsFor(&F::drillShape, &F::drillLength, &F::drillCornerRadius, &F::drillRotated)
                            .Width(kLengthWidth),
                        PlatedColumn()}),
               ThermalColumn<F>(design)});
}

std::vector<CColumn> PadFormColumns(const CDesign& design) {
  const bool knowsSlots = !CApplication::IsCorvina() && !CApplication::IsTarvik();
  std::vector<CColumn> drill{
      Column(&F::drillShape), Column(&F::drillWidth), Column(&F::drillLength).EnabledWhen(&IsSlot),
      Column(&F::drillCornerRadius).EnabledWhen(&IsSlot), Column(&F::drillRotated).EnabledWhen(&IsSlot)};
  for (std::size_t i = 0; i < drill.size(); ++i)
    if (!knowsSlots && i != 1) drill[i].InFormWhen(&IsSlot);
  std::vector<CColumn> columns = Flat({NameColumn(), ShapeColumns<F>(HasPads(design))});
  if (HasPads(design)) columns = Flat({std::move(columns), std::move(drill), PlatedColumn()});
  return Flat({std::move(columns), ThermalColumn<F>(design)});
}

std::vector<CColumn> PadFileColumns(const CDesign& design) {
  std::vector<CColumn> columns = Flat({NameColumn(), FixedColumn(Text::Layer), ShapeColumns<F>(HasPads(design))});
  if (!HasPads(design)) return Flat({std::move(columns), Fixed({Text::Length, Text::Dimension3}), NoDrillInFile()});
  const auto slotColumn = [](auto member) {
    return Column(member).InFileWhen(&IsSlotted).ImportError(Text::RecordLengthInvalid);
  };
  return Flat({std::move(columns),
               Column(&F::drillWidth)
                   .Titled(Text::Drill)
                   .InFileWhen(&IsDrilledRound)
                   .EmptyInFileIsZero()
                   .AlsoSets(&SetRound)
                   .ImportError(Text::RecordLengthInvalid),
               PlatedColumn().InFileWhen(&HasDrill), Column(&F::drillShape).InFileWhen(&IsSlotted),
               slotColumn(&F::drillWidth), slotColumn(&F::drillLength), slotColumn(&F::drillCornerRadius),
               Column(&F::drillRotated).InFileWhen(&IsSlotted)});
}

std::vector<CColumn> ExceptionColumns(const CDesign& design) {
  return Flat({FixedColumn(Text::Name), FixedColumn(Text::Name), LayerColumn(), ShapeColumns<E>(true),
               FixedColumn(Text::Drill), FixedColumn(Text::Plated), ThermalColumn<E>(design)});
}

std::vector<CColumn> ExceptionFileColumns() {
  return Flat({FixedColumn(Text::Name), LayerColumn(), ShapeColumns<E>(true), NoDrillInFile()});
}
