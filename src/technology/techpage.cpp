#include "technology/techpage.h"

#include <algorithm>
#include <map>

#include "model/controls/formatedit.h"
#include "model/design/drawing.h"
#include "model/services/application.h"
#include "model/services/files.h"
#include "model/services/report.h"
#include "technology/calculator.h"
#include "technology/importcsv.h"

CTechDialogPage::CTechDialogPage(CDesign& design, const STechPageOptions& options)
    : CPropertyPagePlus(options.title),
      m_design(design),
      m_options(options),
      m_units(*design.GetUnits()),
      m_units2(*design.GetUnits2()),
      m_subscription([this](const SEvent& event) {
        if (event.name == "UnitsChanged" && event.subject == &m_design) OnUnitsChanged();
      }) {}

void CTechDialogPage::AddRows(CGridRows& rows) {
  m_parts.push_back(&rows);
  AddGrid(rows.Name(), rows.Grid());
}

void CTechDialogPage::OnInitDialog() {
  for (CGridRows* const rows : m_parts) rows->Fill();
}

void CTechDialogPage::OnSetActive() {
  OnUnitsChanged();
  for (CGridRows* const rows : m_parts) rows->Refresh();
}

// ---- Checks

void CTechDialogPage::Judge(CFindings& findings, EJudged judged) {
  for (CGridRows* const rows : m_parts)
    if (!findings.IsDecided()) rows->Judge(findings, judged);
  const bool isOver = findings.IsDecided() || (m_options.rowByRow && judged == EJudged::Edits);
  if (!isOver) CheckAll(findings);
}

CFindings CTechDialogPage::Survey() {
  OnInitDialog();
  CFindings findings;
  CAppError::SetLastError(CTextId());
  Judge(findings, EJudged::Everything);
  return findings;
}

CString CTechDialogPage::SurveyText(const SFinding& finding) {
  if (!finding.isUnnamed || !finding.rows) return finding.Message();
  return TextOf(Text::LabelAndValue, CStringArray{finding.rows->NameOfRow(finding.row), finding.Message()});
}

std::vector<SAnswer>* CTechDialogPage::AnswersOfRow(const SFinding& question) const {
  const auto part = std::ranges::find(m_parts, question.rows);
  if (!question.field || question.row == 0 || part == m_parts.end()) return nullptr;
  return &(*part)->Grid().Row(question.row).answers;
}

const SFinding* CTechDialogPage::Accept(const CFindings& findings, const AnswersOf& answersOf) {
  for (const SFinding& finding : findings.All()) {
    if (finding.kind == EFinding::Refusal) return &finding;
    if (finding.kind != EFinding::Question) continue;
    std::vector<SAnswer>* const kept = answersOf(finding);
    const SAnswer given{finding.field, finding.id};
    if (kept && std::ranges::count(*kept, given) > 0) continue;
    const EAnswer answer = ShowMessage(finding.id, finding.args, finding.buttons);
    if (answer != EAnswer::Ok && answer != EAnswer::Yes) return &finding;
    if (kept) kept->push_back(given);
  }
  return nullptr;
}

void CTechDialogPage::Report(const SFinding& finding) {
  if (finding.kind != EFinding::Refusal) return;
  const CString text = finding.Message();
  if (!text.empty()) UserInterface().ShowMessage({finding.id, finding.args, text});
}

// ---- Wrong cells

void CTechDialogPage::ClearProblems() {
  for (CGridRows* const rows : m_parts)
    for (int row = 1; row < rows->Grid().GetRowCount(); ++row) rows->Grid().Row(row).problems.clear();
}

/// Every cell that Apply would refuse, not the first alone: a person mends them in one go.
void CTechDialogPage::MarkProblems() {
  CFindings findings(CFindings::EWants::Marks);
  Judge(findings, EJudged::Edits);
  for (const SFinding& finding : findings.All()) {
    if (finding.kind != EFinding::Refusal || !finding.rows) continue;
    const auto part = std::ranges::find(m_parts, finding.rows);
    const int col = finding.rows->ColumnFor(finding);
    std::vector<int> rows = finding.alsoRows;
    rows.push_back(finding.row);
    for (const int row : rows)
      if (row > 0) (*part)->Grid().Row(row).problems.try_emplace(col, finding.Message());
  }
}

// ---- Apply

bool CTechDialogPage::OnApply() {
  if (std::exchange(m_hasProblems, false)) ClearProblems();
  for (CGridRows* const rows : m_parts) rows->Prepare();
  CFindings findings(CFindings::EWants::UpToRefusal);
  Judge(findings, EJudged::Edits);
  const SFinding* const refused = Accept(findings, [this](const SFinding& one) { return AnswersOfRow(one); });
  if (refused && refused->kind == EFinding::Refusal) {
    m_hasProblems = true;
    MarkProblems();
  }
  if (refused && !m_options.rowByRow) return Refuse(*refused);
  if (m_options.layout == ELayout::BeforeWriting) SaveLayout();
  const std::uint64_t before = m_design.Journal().Revision();
  const std::optional<SFinding> failed = Write(findings, refused);
  const bool isTakenBack = failed && !refused && m_options.writeLevel;
  if (m_design.Journal().Revision() != before && !isTakenBack) CancelToClose();
  if (failed) return Refuse(*failed);
  if (refused) return Refuse(*refused);
  for (CGridRows* const rows : m_parts) rows->AfterWriting();
  if (m_options.layout == ELayout::AfterWriting) SaveLayout();
  FinishWriting();
  SetModified(false);
  return true;
}

bool CTechDialogPage::Refuse(const SFinding& finding) {
  Report(finding);
  for (CGridRows* const rows : m_parts) {
    if (rows == finding.rows && finding.row > 0) rows->Grid().SetFocusCell(finding.row, rows->ColumnFor(finding));
    rows->Refresh();
  }
  Changed();
  return false;
}

/// Up to the row of `stop`, where there is one.
std::optional<SFinding> CTechDialogPage::Write(const CFindings& findings, const SFinding* stop) {
  if (!stop) return WriteInLevel(findings);
  for (CGridRows* const rows : m_parts) {
    const bool isLast = rows == stop->rows;
    if (auto failed = isLast ? rows->Write(findings, stop->row) : rows->Write(findings)) return failed;
    if (isLast) break;
  }
  return {};
}

std::optional<SFinding> CTechDialogPage::WriteParts(const CFindings& findings) {
  std::optional<SFinding> failed;
  for (std::size_t i = 0; i < m_parts.size() && !failed; ++i) failed = m_parts[i]->Write(findings);
  return failed;
}

std::optional<SFinding> CTechDialogPage::WriteInLevel(const CFindings& findings) {
  if (!m_options.writeLevel) return WriteParts(findings);
  std::vector<std::unique_ptr<CGridRows::CKept>> kept;
  kept.reserve(m_parts.size());
  for (const CGridRows* const rows : m_parts) kept.push_back(rows->Keep());
  CUndoLevel level(m_design, m_options.writeLevel);
  const auto takeBack = [&] {
    level.Revert();
    for (std::size_t i = 0; i < m_parts.size(); ++i) m_parts[i]->Restore(std::move(kept[i]));
  };
  try {
    std::optional<SFinding> failed = WriteParts(findings);
    if (failed) takeBack();
    return failed;
  } catch (...) {
    takeBack();
    throw;
  }
}

void CTechDialogPage::FinishWriting() {
  Announce();
  if (m_options.redraws) InvalidateDesignRect(&m_design);
}

void CTechDialogPage::SaveLayout() const {
  for (const CGridRows* const rows : m_parts) rows->SaveLayout();
}

// ---- Files

void CTechDialogPage::OnExport(CGridRows& rows, CTextId proposedName) {
  static std::map<unsigned, CString> lastUsed;  // by page, for the life of the program
  CString& proposed = lastUsed.try_emplace(proposedName, TextOf(proposedName)).first->second;
  const auto path = UserInterface().ChooseFile(
      {SFileChooser::EKind::Save, proposed, TextOf(Text::CsvExtension), TextOf(Text::CsvFilter)});
  if (!path) return;
  proposed = *path;
  CCsvWriter file(CImportCSV::GetCSVSeparator());
  rows.Export(file);
  if (const CResult<void> written = WriteTextFile(*path, file.Text()); !written) {
    FailCommand(written.Error());
    return;
  }
  UserInterface().OpenFile(*path);
}

void CTechDialogPage::OnImport(CGridRows& rows) {
  CReportFile report(&m_design, Text::ImportProblems);
  report.Open();
  std::optional<CUndoLevel> level;
  if (m_options.writeLevel) level.emplace(m_design, m_options.writeLevel);
  const bool hasWritten = rows.Import(report);
  level.reset();
  CAppError::SetLastError(CTextId());
  if (hasWritten) {
    FinishWriting();
    CancelToClose();
  }
  Changed();
  report.Close();
  report.View();
}

// ---- Lengths

bool CTechDialogPage::ParseLength(const CString& text, int& dsu) const {
  bool ok = false;
  int value = 0;
  if (CApplication::IsExtended()) {
    value = CFormatEdit::PlainStringToDsu(text, m_units.GetType(), ok);
  } else {
    value = CFormatEdit::StringToDsu(text, &m_design, ok);
  }
  if (ok) dsu = value;
  return ok;
}

bool CTechDialogPage::EditCell(CGridRows& rows, int row, int col, const SInput& input) {
  CString why;
  return rows.Grid().Enter(row, col, input, why);
}

bool CTechDialogPage::IsLengthFocused(const CGridRows& rows) {
  const CEditGrid& grid = rows.Grid();
  const SGridPlace focus = grid.GetFocusCell();
  return grid.IsValid(focus.row, focus.col) && grid.IsPresent(focus.row) &&
         grid.GetCellEditClass(focus.row, focus.col) == EEditor::Length && grid.IsCellEnabled(focus.row, focus.col);
}

void CTechDialogPage::OnCalculator(CGridRows& rows) {
  const SGridPlace focus = rows.Grid().GetFocusCell();
  int dsu = 0;
  rows.Grid().GetCellData(focus.row, focus.col, "cell_size_value", dsu);
  CCalcDialog calculator(&m_design, true, m_design.DsuToUserUnits(dsu));
  if (calculator.DoModal() != CDialog::kOk) return;
  const int result = CDesign::DsuFromUserUnits(calculator.GetResult(), m_units);
  EditCell(rows, focus.row, focus.col, SInput::Value(std::int64_t{result}));
}

void CTechDialogPage::OnUnitsChanged() {
  // While they are the same, a text that does not parse must not give way, unseen, to the old value.
  const bool isSame = m_units.EqualValues(*m_design.GetUnits());
  m_units = *m_design.GetUnits();
  m_units2 = *m_design.GetUnits2();
  for (CGridRows* const rows : m_parts) rows->Grid().ShowLengths(m_units, !isSame);
  Changed();
}
