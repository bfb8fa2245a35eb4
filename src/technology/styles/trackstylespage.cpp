#include "technology/styles/trackstylespage.h"

#include "model/services/application.h"
#include "technology/styles/stylerules.h"

namespace {
using F = STrackStyleFields;
}

CTrackStylesPage::CTrackStylesPage(CDesign& design)
    : CRecordPage(design, design.trackStyles,
                  {.title = Text::TrackStyles,
                   .settings = "Settings\\Styles\\Tracks",
                   .nameError = Text::StyleNameInvalid,
                   .inUse = Text::InUse,
                   .builtInStays = Text::BuiltIn,
                   .exportName = Text::TrackStylesFile,
                   .validName = &ValidTrackStyleName,
                   .builtIn = EBuiltIn::NameLocked,
                   .silentInUse = true,
                   .nameErrorHasRow = false,
                   .layoutBeforeWriting = true,
                   .styles = true,
                   .reportsLines = true,
                   .redraws = true}) {
  Columns({UsedMark(), Column(&F::name).Width(160),
           Column(&F::width).Titled(Text::Size).ImportError(Text::RecordLengthInvalid)});
  const bool isSchematic = design.IsKindOf(CScmDesign::GetThisClass());
  AddForm(RecordForm<CEditTrackStyle>(isSchematic ? Text::WireStyle : Text::TrackStyle));
  if (isSchematic) SetTitle(Text::WireStyles);
  if (CApplication::IsCorvina() || CApplication::IsTarvik())
    for (const char* command : {"Copy", "Merge", "Import", "Export"}) ShowCommand(command, false);
}

void CTrackStylesPage::CheckValues(const SCheckedRow& row, CFindings& findings) const {
  if (!IsValidDimension(row.As<CTrackStyle>().GetWidth(), &m_design)) findings.AddLastError(row, &F::width);
}

void CTrackStylesPage::InitNew(CRecordBase& draft) const {
  CopyDefaultStyle(m_design.GetDefaults()->GetTrackStyle(), draft);
}

const CRecordBase* CTrackStylesPage::UsedBy(const CDesignItem& item) const {
  if (const auto* const segment = DynamicDowncast<CTrackSegment>(static_cast<const CObject*>(&item)))
    return segment->Values().style.Get();
  if (!item.IsKindOf(CConnection::GetThisClass())) return nullptr;
  // A connection becomes a track in the nominal style of its net.
  const auto* const net = DynamicDowncast<CNet>(static_cast<const CObject*>(item.Owner()));
  return net && net->GetNetClass() ? net->GetNetClass()->GetNominalStyle() : nullptr;
}
