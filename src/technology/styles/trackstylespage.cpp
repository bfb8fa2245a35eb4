#include "technology/styles/trackstylespage.h"

#include "model/services/application.h"
#include "technology/styles/stylerules.h"

namespace {
using F = STrackStyleFields;
}

CEditTrackStyle::CEditTrackStyle(CRecordPage& page, int row, CTrackStyle& draft)
    : CRecordForm(page.Design().IsKindOf(CScmDesign::GetThisClass()) ? Text::LineStyle : Text::TrackStyle, page, row,
                  draft) {}

CTrackStylesPage::CTrackStylesPage(CDesign& design)
    : CRecordPage(design,
                  {.title = Text::TrackStyles,
                   .settings = "Settings\\Styles\\Tracks",
                   .nameError = Text::StyleNameInvalid,
                   .inUse = Text::InUse,
                   .exportName = Text::TrackStylesFile,
                   .validName = &ValidTrackStyleName,
                   .layout = ELayout::BeforeWriting,
                   .styles = true,
                   .redraws = true,
                   .nameErrorHasRow = false},
                  design.trackStyles,
                  {UsedMark(), Column<CTrackStyle>(Text::Name, &F::name).ReadOnlyWhen(&IsBuiltInStyle).Width(160),
                   Column<CTrackStyle>(Text::Size, &F::width).ImportError(Text::RecordLengthInvalid)}) {
  if (design.IsKindOf(CScmDesign::GetThisClass())) SetTitle(Text::LineStyles);
  if (CApplication::IsCorvina() || CApplication::IsTarvik())
    for (const char* command : {"Copy", "Merge", "Import", "Export"}) ShowCommand(command, false);
}

bool CTrackStylesPage::CheckRow(const SRowCheck& check) {
  return IsValidDimension(FieldsOf<CTrackStyle>(check.values).width.value, &m_design) || FailAt(check, &F::width);
}

bool CTrackStylesPage::MayDelete(int row) {
  const CRecordBase& style = *m_grid.GetItemData(row);
  return !RefuseBuiltInStyle(style) && !IsInUse(style);
}

void CTrackStylesPage::InitNew(CRecordBase& draft) { CopyDefaultStyle(m_design.GetDefaults()->GetTrackStyle(), draft); }

const CRecordBase* CTrackStylesPage::UsedBy(const CDesignItem& item) const {
  if (const auto* const segment = DynamicDowncast<CTrackSegment>(static_cast<const CObject*>(&item)))
    return segment->Values().style.Get();
  if (!item.IsKindOf(CConnection::GetThisClass())) return nullptr;
  // A connection becomes a track in the nominal style of its net.
  const auto* const net = DynamicDowncast<CNet>(static_cast<const CObject*>(item.Owner()));
  return net && net->GetNetClass() ? net->GetNetClass()->GetNominalStyle() : nullptr;
}

bool CTrackStylesPage::EditDraft(int row, CRecordBase& draft) {
  return CEditTrackStyle(*this, row, static_cast<CTrackStyle&>(draft)).DoModal() == CDialog::kOk;
}
