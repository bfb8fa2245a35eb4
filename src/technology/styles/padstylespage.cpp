#include "technology/styles/padstylespage.h"

#include <algorithm>
#include <set>

#include "model/services/application.h"
#include "technology/styles/padcolumns.h"
#include "technology/styles/stylerules.h"

namespace {
using F = SPadStyleFields;
using E = SPadStyleExceptionFields;

bool HasDrill(const CRecordBase& values) { return FieldsOf<CPadStyle>(values).drillWidth.value != 0; }

/// Dimensions that the shape lacks are 0.
template <class T>
void ClearMissing(CRecordBase& values) {
  using V = typename T::Fields;
  auto& pad = static_cast<T&>(values);
  int dimension = 2;
  for (Dsu V::* const member : {&V::length, &V::dimension3, &V::dimension4})
    if (!CPadStyle::HasXDimension(pad.Values().shape.value, dimension++)) pad.Set(member, Dsu{});
}

/// By CPadStyle::EField.
template <class V>
constexpr Dsu V::* kShapeMembers[] = {&V::size, &V::size, &V::length, &V::dimension3, &V::dimension4};
constexpr Dsu F::* kDrillMembers[] = {&F::drillWidth, &F::drillLength, &F::drillCornerRadius};
template <class V>
Dsu V::* FieldMember(CPadStyle::EField field) {
  const auto at = static_cast<std::size_t>(field);
  if (at < std::size(kShapeMembers<V>)) return kShapeMembers<V>[at];
  if constexpr (std::is_same_v<V, F>)
    if (field != CPadStyle::EField::Thermal) return kDrillMembers[at - std::size(kShapeMembers<V>)];
  return &V::thermal;
}

template <class T>
SRecordForm PadForm(SRecordForm form, bool isBoard) {
  form.preview = [](const CRecordBase& values) -> CPreview { return PadOf(FieldsOf<T>(values)); };
  if (isBoard) form.handBack = &ClearMissing<T>;
  return form;
}
}  // namespace

CPadStylesPage::CPadStylesPage(CDesign& design)
    : CRecordPage(design, design.padStyles,
                  {.title = Text::PadStyles,
                   .settings = "Settings\\Styles\\Pads",
                   .nameError = Text::StyleNameInvalid,
                   .inUse = Text::InUse,
                   .builtInStays = Text::BuiltIn,
                   .exportName = Text::PadStylesFile,
                   .validName = &ValidPadStyleName,
                   .builtIn = EBuiltIn::NameLocked,
                   .settled = ESettled::Edited,
                   .silentInUse = true,
                   .nameErrorHasRow = false,
                   .checksEditedRows = true,
                   .styles = true,
                   .keepsSort = true,
                   .importsToRows = true,
                   .redraws = true,
                   .ownedInFile = kPadLayerInFile}),
      m_isBoard(HasPads(design)),
      m_hasThermal(HasThermal(design)) {
  Columns(PadColumns(design));
  Rows().Kinds().SetForm(CPadStyle::TheKind(), PadFormColumns(design));
  Rows().Kinds().SetFile(CPadStyle::TheKind(), PadFileColumns(design));
  AddForm(PadForm<CPadStyle>(RecordForm<CEditPadStyle>(Text::PadStyle), m_isBoard));
  AddCommand("AddException", [this] { AddException(); });
  AddCommand("DeleteException", [this] { DeleteException(); });
  if (HasExceptions(design)) {
    OwnedColumns(CPadStyleException::TheKind(), ExceptionColumns(design));
    Rows().Kinds().SetFile(CPadStyleException::TheKind(), ExceptionFileColumns());
    AddForm(PadForm<CPadStyleException>(RecordForm<CEditPadStyleExceptionDialog>(Text::PadStyleException), m_isBoard));
  } else {
    for (const char* command : {"AddException", "DeleteException"}) ShowCommand(command, false);
  }
  if (!CApplication::IsExtended())
    for (const char* command : {"Copy", "Merge", "Import", "Export"}) DisableCommand(command);
}

CPreview CPadStylesPage::GetPreview() const {
  const int row = Rows().CurrentRow();
  if (row == 0) return {};
  SPadPreview pad = PadOf(FieldsOf<CPadStyle>(Rows().Values(Grid().OwnerRow(row))));
  if (Grid().Row(row).IsOwned()) {
    const SPadPreview there = PadOf(FieldsOf<CPadStyleException>(Rows().Values(row)));
    pad.shape = there.shape;
    pad.width = there.width;
    pad.length = there.length;
    pad.dimension3 = there.dimension3;
    pad.dimension4 = there.dimension4;
  }
  pad.unitType = UserUnits().GetType();
  pad.precision = UserUnits().GetPrecision();
  return pad;
}

// ---- Checks

void CPadStylesPage::CheckValues(const SCheckedRow& row, CFindings& findings) const {
  row.Is<CPadStyle>() ? CheckStyle(row, findings) : CheckException(row, findings);
}

void CPadStylesPage::CheckStyle(const SCheckedRow& row, CFindings& findings) const {
  const F& style = row.As<CPadStyle>().Values();
  const int thermal = m_hasThermal ? style.thermal.value : 0;
  auto field = CPadStyle::EField::None;
  bool isGood = false;
  if (!m_isBoard) {  // shows no other dimension than the size
    isGood = CPadStyle::Validate(EPadShape::Round, style.size.value, 0, 0, 0, 0, thermal, field, &m_design, true);
  } else if (style.drillWidth.value == 0 || style.drillShape.value == EDrillShape::Round) {
    isGood = CPadStyle::Validate(style.shape.value, style.size.value, style.length.value, style.dimension3.value,
                                 style.dimension4.value, style.drillWidth.value, thermal, field, &m_design, true,
                                 style.plated);
  } else {
    isGood = ValidateSlot(style.shape.value, style.size.value, style.length.value, style.dimension3.value,
                          style.dimension4.value, style.drillCornerRadius.value, style.drillWidth.value,
                          style.drillLength.value, thermal, style.drillRotated, field, &m_design, true, style.plated);
  }
  if (!isGood) findings.AddLastError(row, FieldMember<F>(field));
}

void CPadStylesPage::CheckException(const SCheckedRow& row, CFindings& findings) const {
  const E& exception = row.As<CPadStyleException>().Values();
  const CLayer* const layer = exception.layer.Get();
  if (!layer || layer->IsBuiltIn()) return findings.Add(row, &E::layer, Text::ChooseExceptionLayer);
  for (const CRecordBase& other : row.Others())
    if (FieldsOf<CPadStyleException>(other).layer.Get() == layer)
      return findings.Add(row, &E::layer, Text::ExceptionExists, row.Owner()->RecordName(), layer->GetName());
  auto field = CPadStyle::EField::None;
  if (!CPadStyle::Validate(exception.shape.value, exception.size.value, exception.length.value,
                           exception.dimension3.value, exception.dimension4.value, 0,
                           m_hasThermal ? exception.thermal.value : 0, field, &m_design, true))
    findings.AddLastError(row, FieldMember<E>(field));
}

namespace {
/// Calls `visit` for the pad styles that vias will have once merged styles have moved.
template <class Visit>
void ForEachViaStyle(const CDesign& design, const Visit& visit) {
  design.ForEachReference([&](CRecordBase& owner, const CField&, CRecordBase& target) {
    if (owner.IsKindOf(CVia::GetThisClass()) && target.IsKindOf(CPadStyle::GetThisClass())) visit(target);
  });
}
}  // namespace

/// A via keeps its drill.
void CPadStylesPage::Check(const SCheckedRow& row, CFindings& findings) const {
  CheckValues(row, findings);
  const bool losesDrill =
      m_isBoard && row.Is<CPadStyle>() && row.record && HasDrill(*row.record) && !HasDrill(row.values);
  if (!losesDrill || findings.IsDecided()) return;
  bool isUsed = false;
  ForEachViaStyle(m_design, [&](const CRecordBase& style) { isUsed |= &row.among.SurvivorOf(style) == row.record; });
  if (isUsed) findings.Add(row, &F::drillWidth, Text::ViasNeedDrill, row.values.RecordName());
}

/// Also where its style is merged into another one.
void CPadStylesPage::CheckAll(CFindings& findings) const {
  const CMerges& merges = Rows().Merges();
  if (!m_isBoard || merges.IsEmpty()) return;
  std::set<const CRecordBase*> drilled;  // what drilled vias come to
  ForEachViaStyle(m_design, [&](const CRecordBase& style) {
    if (HasDrill(style)) drilled.insert(&merges.SurvivorOf(style));
  });
  for (const SCheckedRow& row : Rows().PresentRecords())
    if (drilled.contains(row.record) && !HasDrill(row.values))
      findings.Refuse(row, Text::ViasNeedDrill, row.values.RecordName());
}

/// A file may have brought in a dimension that the shape lacks, and a shape may have been chosen since. Where there is
/// no drill, the next one is round.
void CPadStylesPage::Settle(CRecordBase& values) const {
  if (!m_isBoard) return;
  if (&values.Kind() != &CPadStyle::TheKind()) return ClearMissing<CPadStyleException>(values);
  ClearMissing<CPadStyle>(values);
  if (!HasDrill(values)) static_cast<CPadStyle&>(values).SetDrillShape(EDrillShape::Round);
}

CTextId CPadStylesPage::WhyUnusable(const SRowKind& kind, const CFileFields& fields) const {
  if (&kind.kind != &CPadStyle::TheKind() || !m_isBoard) return {};
  const auto isNotZero = [](std::string_view field) { return field.find_first_not_of("0.+- ") != field.npos; };
  const auto isShape = [&](int shape) {
    return EqualNoCase(fields[kSlotInFile], ChoiceText(EDrillShape::Choices(), shape));
  };
  const std::string_view width = fields[kSlotWidthInFile], length = fields[kSlotLengthInFile];
  const bool isSlot = isShape(EDrillShape::Slot) || isNotZero(width) || isNotZero(length);
  // Even a width of 0 would take the round drill away.
  if (isNotZero(fields[kDrillInFile]) && (isSlot || !width.empty())) return Text::DrillAndSlot;
  if (!isSlot || isShape(EDrillShape::Round)) return {};
  return isNotZero(width) && isNotZero(length) ? CTextId() : Text::SlotNeedsSizes;
}

// ---- Editing

void CPadStylesPage::InitNew(CRecordBase& draft) const {
  CopyDefaultStyle(m_design.GetDefaults()->GetPadStyle(), draft);
}

const CRecordBase* CPadStylesPage::UsedBy(const CDesignItem& item) const {
  const auto* const object = static_cast<const CObject*>(&item);
  if (const auto* const via = DynamicDowncast<CVia>(object)) return via->Values().style.Get();
  if (const auto* const pad = DynamicDowncast<CPadInstance>(object)) return pad->Values().style.Get();
  if (const auto* const pad = DynamicDowncast<CFreePad>(object)) return pad->Values().style.Get();
  return nullptr;
}

/// The fourth dimension is not carried over: it begins with 0.
void CPadStylesPage::AddException() {
  if (RowOrBeep() == 0) return;
  const int owner = Grid().OwnerRow(Rows().CurrentRow());
  const F& style = FieldsOf<CPadStyle>(Rows().Values(owner));
  auto exception = std::make_unique<CPadStyleException>();
  exception->SetShape(style.shape.value);
  exception->SetSize(style.size.value);
  exception->SetLength(style.length.value);
  exception->SetDimension3(style.dimension3.value);
  EditInForm(0, std::move(exception), owner, owner + 1);
}

void CPadStylesPage::DeleteException() {
  const int row = Rows().CurrentRow();
  row > 0 && Grid().Row(row).IsOwned() ? HideRow(row) : CNoise::Beep(-1);
}
