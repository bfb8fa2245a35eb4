#include "technology/styles/padstylespage.h"

#include "model/services/application.h"
#include "technology/combos.h"
#include "technology/styles/stylerules.h"

namespace {
using F = SPadStyleFields;
using E = SPadStyleExceptionFields;

bool IsBoard(const CDesign& design) {
  return design.IsKindOf(CPcbDesign::GetThisClass()) || design.IsKindOf(CPcbSymDesign::GetThisClass());
}
bool HasExceptions(const CDesign& design) { return IsBoard(design) && CApplication::IsExtended(); }
bool HasThermal(const CDesign& design) {
  return (IsBoard(design) && CApplication::IsPellam()) || CApplication::IsCorvinaPro();
}

bool HasDrill(const CRecordBase& values) { return FieldsOf<CPadStyle>(values).drillWidth.value != 0; }
bool IsSlot(const CRecordBase& values) { return FieldsOf<CPadStyle>(values).drillShape.value != EDrillShape::Round; }
bool IsSlotted(const CRecordBase& values) { return HasDrill(values) && IsSlot(values); }
bool IsDrilledRound(const CRecordBase& values) { return HasDrill(values) && !IsSlot(values); }

template <class T>
int ShapeOf(const CRecordBase& values) {
  return FieldsOf<T>(values).shape.value;
}

constexpr int kLengthWidth = 58;  // pixels

/// A dimension that not every shape has, counted from 1; 0 is shown without it.
template <class T>
CColumn DimensionColumn(CTextId header, int dimension, Dsu T::Fields::* member) {
  const auto has = [=](const CRecordBase& values) { return CPadStyle::HasXDimension(ShapeOf<T>(values), dimension); };
  return Column<T>(header, member)
      .EnabledWhen(has)
      .Shows([=](const CRecordBase& values) { return has(values) ? (FieldsOf<T>(values).*member).value : 0; })
      .ImportError(Text::RecordLengthInvalid)
      .Width(dimension > 2 ? 70 : kLengthWidth);  // the titles of the later ones are longer
}

/// What a style and its exceptions have in common, in the order of grid, forms and files.
template <class T>
std::vector<CColumn> ShapeColumns(bool isBoard, bool hasFourth) {
  using V = typename T::Fields;
  std::vector<CColumn> columns{
      Column<T>(Text::Shape, &V::shape).Width(110),
      Column<T>(Text::Size, &V::size).ImportError(Text::RecordLengthInvalid).Width(kLengthWidth)};
  if (!isBoard) return columns;
  columns.push_back(DimensionColumn<T>(Text::Length, 2, &V::length));
  columns.push_back(
      DimensionColumn<T>(Text::Dimension3, 3, &V::dimension3).LabelledInForm([](const CRecordBase& values) {
        return CPadStyle::GetDimension3Desc(ShapeOf<T>(values));
      }));
  if (hasFourth)
    columns.push_back(
        DimensionColumn<T>(Text::Dimension4, 4, &V::dimension4).LabelledInForm([](const CRecordBase& values) {
          return CPadStyle::GetDimension4Desc(ShapeOf<T>(values));
        }));
  return columns;
}

template <class T>
CColumn ThermalColumn() {
  return Column<T>(Text::Thermal, &T::Fields::thermal).Width(kLengthWidth);
}
CColumn NameColumn() { return Column<CPadStyle>(Text::Name, &F::name).ReadOnlyWhen(&IsBuiltInStyle).Width(130); }
CColumn PlatedColumn() { return Column<CPadStyle>(Text::Plated, &F::plated).Width(50); }
CColumn LayerColumn() {
  constexpr long kUsages =
      ELayerUsage::Electrical | ELayerUsage::Documentation | ELayerUsage::SolderMask | ELayerUsage::PasteMask;
  return Column<CPadStyleException>(Text::Layer, &E::layer)
      .Offers([](const CTechnology& design, std::int64_t current) {
        return CLayerComboBox::Fill(design, reinterpret_cast<const CLayer*>(current), kUsages);
      })
      .ImportError(Text::RecordLayerUnknown)
      .Width(90);
}

void Append(std::vector<CColumn>& columns, std::vector<CColumn> more) {
  columns.insert(columns.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

std::vector<CColumn> StyleColumns(const CDesign& design) {
  std::vector<CColumn> columns{UsedMark(), NameColumn()};
  if (HasExceptions(design)) {
    const CLayer* const layer = design.FindLayer(ELayerUsage::All, ELayerSide::All, ELayerBias::Horizontal, nullptr);
    columns.push_back(
        FixedColumn(Text::Layer, {reinterpret_cast<std::int64_t>(layer), layer ? layer->GetName() : CString()})
            .Width(90));
  }
  Append(columns, ShapeColumns<CPadStyle>(IsBoard(design), true));
  if (IsBoard(design)) {
    columns.push_back(
        Column<CPadStyle>(Text::Drill, &F::drillWidth).EmptyWhen(&IsSlotted, Text::Slot).Width(kLengthWidth));
    columns.push_back(PlatedColumn());
  }
  if (HasThermal(design)) columns.push_back(ThermalColumn<CPadStyle>());
  return columns;
}

std::vector<CColumn> ExceptionColumns(const CDesign& design) {
  std::vector<CColumn> columns{FixedColumn(Text::Name), FixedColumn(Text::Name), LayerColumn()};
  Append(columns, ShapeColumns<CPadStyleException>(true, true));
  Append(columns, {FixedColumn(Text::Drill), FixedColumn(Text::Plated)});
  if (HasThermal(design)) columns.push_back(ThermalColumn<CPadStyleException>());
  return columns;
}

std::vector<CColumn> StyleFormColumns(const CDesign& design) {
  std::vector<CColumn> columns{NameColumn()};
  Append(columns, ShapeColumns<CPadStyle>(IsBoard(design), true));
  if (IsBoard(design)) {
    std::vector<CColumn> drill{Column<CPadStyle>(Text::DrillShape, &F::drillShape),
                               Column<CPadStyle>(Text::DrillWidth, &F::drillWidth),
                               Column<CPadStyle>(Text::DrillLength, &F::drillLength).EnabledWhen(&IsSlot),
                               Column<CPadStyle>(Text::DrillCornerRadius, &F::drillCornerRadius).EnabledWhen(&IsSlot),
                               Column<CPadStyle>(Text::DrillRotated, &F::drillRotated).EnabledWhen(&IsSlot)};
    const bool knowsSlots = !CApplication::IsCorvina() && !CApplication::IsTarvik();
    for (CColumn& column : drill)
      if (!knowsSlots && column.header != Text::DrillWidth) column.InFormWhen(&IsSlot);
    Append(columns, std::move(drill));
    columns.push_back(PlatedColumn());
  }
  if (HasThermal(design)) columns.push_back(ThermalColumn<CPadStyle>());
  return columns;
}

std::vector<CColumn> ExceptionFormColumns(const CDesign& design) {
  std::vector<CColumn> columns{LayerColumn()};
  Append(columns, ShapeColumns<CPadStyleException>(true, true));
  if (HasThermal(design)) columns.push_back(ThermalColumn<CPadStyleException>());
  return columns;
}

std::vector<CColumn> EmptyDrillColumns() {
  std::vector<CColumn> columns;
  for (const CTextId header : {Text::Drill, Text::Plated, Text::DrillShape, Text::DrillWidth, Text::DrillLength,
                               Text::DrillCornerRadius, Text::DrillRotated})
    columns.push_back(FixedColumn(header));
  return columns;
}

/// A round drill stands in one field, a slot in five others.
std::vector<CColumn> StyleFileColumns(const CDesign& design) {
  std::vector<CColumn> columns{NameColumn(), FixedColumn(Text::Layer)};
  Append(columns, ShapeColumns<CPadStyle>(IsBoard(design), false));
  if (!IsBoard(design)) {
    Append(columns, {FixedColumn(Text::Length), FixedColumn(Text::Dimension3)});
    Append(columns, EmptyDrillColumns());
    return columns;
  }
  Append(columns, {Column<CPadStyle>(Text::Drill, &F::drillWidth)
                       .WrittenWhen(&IsDrilledRound)
                       .ImportError(Text::RecordLengthInvalid),
                   PlatedColumn().WrittenWhen(&HasDrill),
                   Column<CPadStyle>(Text::DrillShape, &F::drillShape).WrittenWhen(&IsSlotted),
                   Column<CPadStyle>(Text::DrillWidth, &F::drillWidth)
                       .WrittenWhen(&IsSlotted)
                       .ImportError(Text::RecordLengthInvalid),
                   Column<CPadStyle>(Text::DrillLength, &F::drillLength)
                       .WrittenWhen(&IsSlotted)
                       .ImportError(Text::RecordLengthInvalid),
                   Column<CPadStyle>(Text::DrillCornerRadius, &F::drillCornerRadius)
                       .WrittenWhen(&IsSlotted)
                       .ImportError(Text::RecordLengthInvalid),
                   Column<CPadStyle>(Text::DrillRotated, &F::drillRotated).WrittenWhen(&IsSlotted)});
  return columns;
}

std::vector<CColumn> ExceptionFileColumns() {
  std::vector<CColumn> columns{FixedColumn(Text::Name), LayerColumn()};
  Append(columns, ShapeColumns<CPadStyleException>(true, false));
  Append(columns, EmptyDrillColumns());
  return columns;
}

/// Sets the dimensions that the shape lacks to those of `from`, or to 0. True when one was another before.
template <class T>
bool SetUnused(T& values, const T* from) {
  using V = typename T::Fields;
  const int shape = values.Values().shape.value;
  bool changed = false;
  int dimension = 2;
  for (Dsu V::* const member : {&V::length, &V::dimension3, &V::dimension4})
    if (!CPadStyle::HasXDimension(shape, dimension++))
      changed |= values.Set(member, from ? from->Values().*member : Dsu{});
  return changed;
}

/// By CPadStyle::EField.
template <class V>
constexpr Dsu V::* kShapeMembers[] = {&V::size, &V::size, &V::length, &V::dimension3};
constexpr Dsu F::* kDrillMembers[] = {&F::drillWidth, &F::drillLength, &F::drillCornerRadius};
template <class V>
Dsu V::* MemberOf(CPadStyle::EField field) {
  const auto at = static_cast<std::size_t>(field);
  if (at < std::size(kShapeMembers<V>)) return kShapeMembers<V>[at];
  if constexpr (std::is_same_v<V, F>)
    if (field != CPadStyle::EField::Thermal) return kDrillMembers[at - std::size(kShapeMembers<V>)];
  return &V::thermal;
}

SPadPreview InUnits(SPadPreview pad, const CUnits& units) {
  pad.unitType = units.GetType();
  pad.precision = units.GetPrecision();
  return pad;
}
}  // namespace

// ---- Forms

CEditPadStyle::CEditPadStyle(CRecordPage& page, int row, CPadStyle& draft)
    : CRecordForm(Text::PadStyle, page, row, draft), m_units(*page.Design().GetUnits()) {}

CPreview CEditPadStyle::GetPreview() const { return InUnits(PadOf(FieldsOf<CPadStyle>(Draft())), m_units); }

CEditPadStyleExceptionDialog::CEditPadStyleExceptionDialog(CRecordPage& page, int row, CPadStyleException& draft)
    : CRecordForm(Text::PadStyleException, page, row, draft), m_units(*page.Design().GetUnits()) {}

CPreview CEditPadStyleExceptionDialog::GetPreview() const {
  return InUnits(PadOf(FieldsOf<CPadStyleException>(Draft())), m_units);
}

// ---- Page

CPadStylesPage::CPadStylesPage(CDesign& design)
    : CRecordPage(design,
                  {.title = Text::PadStyles,
                   .settings = "Settings\\Styles\\Pads",
                   .nameError = Text::StyleNameInvalid,
                   .inUse = Text::InUse,
                   .exportName = Text::PadStylesFile,
                   .validName = &ValidPadStyleName,
                   .styles = true,
                   .keepsSort = true,
                   .importsToRows = true,
                   .redraws = true,
                   .nameErrorHasRow = false},
                  design.padStyles, StyleColumns(design)),
      m_isBoard(IsBoard(design)),
      m_hasThermal(HasThermal(design)) {
  SetFormColumns(StyleFormColumns(design));
  SetFileColumns(StyleFileColumns(design));
  AddCommand("AddException", [this] { OnAddException(); });
  AddCommand("DeleteException", [this] { OnDeleteException(); });
  if (HasExceptions(design)) {
    AddOwnedRows(CPadStyleException::TheKind(), ExceptionColumns(design));
    SetFormColumns(ExceptionFormColumns(design), 1);
    SetFileColumns(ExceptionFileColumns(), 1);
  } else {
    for (const char* command : {"AddException", "DeleteException"}) ShowCommand(command, false);
  }
  if (!CApplication::IsExtended())
    for (const char* command : {"Copy", "Merge", "Import", "Export"}) DisableCommand(command);
}

CPreview CPadStylesPage::GetPreview() const {
  const int row = CurrentRow();
  if (row == 0) return {};
  SPadPreview pad = PadOf(FieldsOf<CPadStyle>(ValuesOf(m_grid.OwnerRow(row))));
  if (m_grid.Row(row).IsOwned()) {
    const SPadPreview there = PadOf(FieldsOf<CPadStyleException>(ValuesOf(row)));
    pad.shape = there.shape;
    pad.width = there.width;
    pad.length = there.length;
    pad.dimension3 = there.dimension3;
    pad.dimension4 = there.dimension4;
  }
  return InUnits(pad, UserUnits());
}

// ---- Checks

bool CPadStylesPage::CheckRow(const SRowCheck& check) {
  if (check.pass == EPass::Write || (check.pass == EPass::Check && !m_grid.GetRowModified(check.row))) return true;
  return &check.kind == &CPadStyle::TheKind() ? CheckStyle(check) : CheckException(check);
}

template <class T, class V>
bool CPadStylesPage::FailPad(const SRowCheck& check, V T::* member, const CString& layer) {
  if (check.pass == EPass::Survey) {
    const CString style = RowName(m_grid.OwnerRow(check.row));
    const CString whose = layer.empty() ? style : TextOf(Text::WithDetail, CStringArray{style, layer});
    CAppError::SetLastError(Text::LabelAndValue, whose, CAppError::GetLastErrorString());
  }
  return FailAt(check, member);
}

bool CPadStylesPage::CheckStyle(const SRowCheck& check) {
  const F& style = FieldsOf<CPadStyle>(check.values);
  const int thermal = m_hasThermal ? style.thermal.value : 0;
  auto field = CPadStyle::EField::None;
  bool isGood = false;
  if (!m_isBoard) {  // shows no other dimension than the size
    isGood = CPadStyle::Validate(EPadShape::Round, style.size.value, 0, 0, 0, 0, thermal, field, &m_design, true);
  } else if (!IsSlotted(check.values)) {
    isGood = CPadStyle::Validate(style.shape.value, style.size.value, style.length.value, style.dimension3.value,
                                 style.dimension4.value, style.drillWidth.value, thermal, field, &m_design, true,
                                 style.plated);
  } else {
    isGood = ValidateSlot(style.shape.value, style.size.value, style.length.value, style.dimension3.value,
                          style.dimension4.value, style.drillCornerRadius.value, style.drillWidth.value,
                          style.drillLength.value, thermal, style.drillRotated, field, &m_design, true, style.plated);
  }
  if (!isGood) {
    const bool isOfSlot = field == CPadStyle::EField::DrillLength || field == CPadStyle::EField::DrillCornerRadius;
    return FailPad(check, isOfSlot && check.pass != EPass::Form ? &F::drillWidth : MemberOf<F>(field));  // in one cell
  }
  if (check.pass != EPass::Check) return true;
  if (m_isBoard && check.record && style.drillWidth.value == 0 && HasDrill(*check.record) && IsUsedByVia(*check.record))
    return Refuse(check, &F::drillWidth, Text::ViasNeedDrill, style.name.text);
  if (m_isBoard) ClearUnused<CPadStyle>(check);
  return true;
}

bool CPadStylesPage::CheckException(const SRowCheck& check) {
  const E& exception = FieldsOf<CPadStyleException>(check.values);
  const CLayer* const layer = exception.layer.Get();
  if (!layer || layer->IsBuiltIn()) return Refuse(check, &E::layer, Text::ChooseExceptionLayer);
  const int style = check.pass == EPass::Import ? 0 : check.row > 0 ? m_grid.OwnerRow(check.row) : m_styleRow;
  for (int row = style + 1; style > 0 && row < m_grid.OwnedEnd(style); ++row)
    if (row != check.row && m_grid.IsPresent(row) && FieldsOf<CPadStyleException>(ValuesOf(row)).layer.Get() == layer)
      return Refuse(check, &E::layer, Text::ExceptionExists, RowName(style), layer->GetName());
  auto field = CPadStyle::EField::None;
  if (!CPadStyle::Validate(exception.shape.value, exception.size.value, exception.length.value,
                           exception.dimension3.value, exception.dimension4.value, 0,
                           m_hasThermal ? exception.thermal.value : 0, field, &m_design, true))
    return FailPad(check, MemberOf<E>(field), layer->GetName());
  if (check.pass == EPass::Check) ClearUnused<CPadStyleException>(check);
  return true;
}

/// A file may have brought in a dimension that the shape lacks, and a shape may have been chosen since; it is gone when
/// the row is written. Replaces the draft, and with it the values of `check`.
template <class T>
void CPadStylesPage::ClearUnused(const SRowCheck& check) {
  std::unique_ptr<CRecordBase> draft = check.values.Clone();
  if (SetUnused(static_cast<T&>(*draft), static_cast<const T*>(nullptr))) TakeDraft(check.row, std::move(draft));
}

bool CPadStylesPage::IsUsedByVia(const CRecordBase& style) const {
  bool isUsed = false;
  m_design.ForEachReference([&](CRecordBase& owner, const CField&, CRecordBase& target) {
    isUsed |= &SurvivorOf(target) == &style && owner.IsKindOf(CVia::GetThisClass());
  });
  return isUsed;
}

/// A via keeps its drill, also where its style is merged into another one.
bool CPadStylesPage::CheckPage() {
  if (!m_isBoard || !HasMerged()) return true;
  std::set<const CRecordBase*> drilled;  // what drilled vias come to
  m_design.ForEachReference([&](CRecordBase& owner, const CField&, CRecordBase& target) {
    if (owner.IsKindOf(CVia::GetThisClass()) && target.IsKindOf(CPadStyle::GetThisClass()) && HasDrill(target))
      drilled.insert(&SurvivorOf(target));
  });
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!m_grid.IsPresent(row) || !drilled.contains(m_grid.GetItemData(row)) || HasDrill(ValuesOf(row))) continue;
    FailAt(row);
    return RefusePage(Text::ViasNeedDrill, RowName(row));
  }
  return true;
}

// ---- Editing

/// Where there is no drill, the grid takes a round one.
bool CPadStylesPage::CellEntered(int row, int col, const SInput& input, const SComboItem* item, CString& why) {
  static const F kSample;
  static const CField& kWidth = *FieldAt(CPadStyle::TheKind(), &kSample, &kSample.drillWidth);
  static const CField& kShape = *FieldAt(CPadStyle::TheKind(), &kSample, &kSample.drillShape);
  if (!m_grid.Row(row).IsOwned() && col == ColumnOf(kWidth) && !HasDrill(ValuesOf(row)) && IsSlot(ValuesOf(row))) {
    static_cast<CPadStyle&>(Draft(row)).SetDrillShape(EDrillShape::Round);
    m_grid.Row(row).editedInForm.insert(&kShape);
  }
  return CRecordPage::CellEntered(row, col, input, item, why);
}

bool CPadStylesPage::MayDelete(int row) {
  const CRecordBase& record = *m_grid.GetItemData(row);
  return !RefuseBuiltInStyle(record) && !IsInUse(record);
}

void CPadStylesPage::InitNew(CRecordBase& draft) { CopyDefaultStyle(m_design.GetDefaults()->GetPadStyle(), draft); }

const CRecordBase* CPadStylesPage::UsedBy(const CDesignItem& item) const {
  const auto* const object = static_cast<const CObject*>(&item);
  if (const auto* const via = DynamicDowncast<CVia>(object)) return via->Values().style.Get();
  if (const auto* const pad = DynamicDowncast<CPadInstance>(object)) return pad->Values().style.Get();
  if (const auto* const pad = DynamicDowncast<CFreePad>(object)) return pad->Values().style.Get();
  return nullptr;
}

bool CPadStylesPage::EditDraft(int row, CRecordBase& draft) {
  if (auto* const exception = DynamicDowncast<CPadStyleException>(static_cast<CObject*>(&draft))) {
    if (CEditPadStyleExceptionDialog(*this, row, *exception).DoModal() != CDialog::kOk) return false;
    SetUnused(*exception, static_cast<const CPadStyleException*>(nullptr));
    return true;
  }
  auto& style = static_cast<CPadStyle&>(draft);
  if (CEditPadStyle(*this, row, style).DoModal() != CDialog::kOk) return false;
  if (!m_isBoard) return true;
  SetUnused(style, static_cast<const CPadStyle*>(nullptr));
  if (!HasDrill(style)) style.SetDrillShape(EDrillShape::Round);
  return true;
}

void CPadStylesPage::OnAddException() {
  if (CurrentRow() == 0) {
    CNoise::Beep(-1);
    return;
  }
  m_styleRow = m_grid.OwnerRow(CurrentRow());
  const F& style = FieldsOf<CPadStyle>(ValuesOf(m_styleRow));
  auto exception = std::make_unique<CPadStyleException>();
  exception->SetShape(style.shape.value);
  exception->SetSize(style.size.value);
  exception->SetLength(style.length.value);
  exception->SetDimension3(style.dimension3.value);
  if (EditDraft(0, *exception)) AddDraft(std::move(exception), m_styleRow + 1);
}

void CPadStylesPage::OnDeleteException() {
  const int row = CurrentRow();
  if (row == 0 || !m_grid.Row(row).IsOwned()) {
    CNoise::Beep(-1);
  } else {
    DeleteRow(row);
  }
}

// ---- Files

bool CPadStylesPage::IsOwnedInFile(const CStringArray& fields) const { return fields.size() > 1 && !fields[1].empty(); }

/// A file says that there is no drill by leaving its fields empty.
void CPadStylesPage::PrepareImport(CRecordBase& values) {
  auto* const style = DynamicDowncast<CPadStyle>(static_cast<CObject*>(&values));
  if (!style || !m_isBoard) return;
  style->SetDrillShape(EDrillShape::Round);
  style->SetDrillWidth(0);
}

void CPadStylesPage::AdjustImport(const CRecordBase* record, CRecordBase& values) {
  if (!m_isBoard || !record) return;
  if (auto* const exception = DynamicDowncast<CPadStyleException>(static_cast<CObject*>(&values))) {
    SetUnused(*exception, static_cast<const CPadStyleException*>(record));
    return;
  }
  auto& style = static_cast<CPadStyle&>(values);
  SetUnused(style, static_cast<const CPadStyle*>(record));
  if (!HasDrill(style) && !HasDrill(*record)) style.SetDrillShape(FieldsOf<CPadStyle>(*record).drillShape.value);
}
