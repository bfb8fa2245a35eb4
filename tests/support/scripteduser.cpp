#include "support/scripteduser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "model/services/report.h"

namespace {
template <class T>
bool TakeFirst(std::deque<T>& queue, T& first) {
  if (queue.empty()) return false;
  first = std::move(queue.front());
  queue.pop_front();
  return true;
}

CString Joined(const CStringArray& texts) {
  CString out;
  for (const CString& text : texts) {
    if (&text != texts.data()) out += ", ";
    out += text;
  }
  return out;
}
}  // namespace

CEditGrid& CShownPanel::Grid() const {
  static CEditGrid none;
  CEditGrid* const grid = m_panel.FindGrid(m_gridName);
  if (!grid) ADD_FAILURE() << m_panel.GetRuntimeClass()->name << " has no grid " << m_gridName;
  return grid ? *grid : none;
}

int CShownPanel::FindRow(const CString& text) const {
  const CEditGrid& grid = Grid();
  for (int col = 0; col < grid.GetColumnCount(); ++col)
    for (int row = 1; row < grid.GetRowCount(); ++row)
      if (grid.IsPresent(row) && grid.GetItemText(row, col) == text) return row;
  return -1;
}

int CShownPanel::RowOf(const SGridName& row) const {
  const int number = row.number >= 0 ? row.number : FindRow(row.name);
  if (number < 1 || number >= Grid().GetRowCount()) ADD_FAILURE() << "no row " << row.name << ' ' << row.number;
  return number;
}

int CShownPanel::ColumnOf(const SGridName& column) const {
  const CEditGrid& grid = Grid();
  int number = column.number;
  for (int col = 0; number < 0 && col < grid.GetColumnCount(); ++col)
    if (grid.Column(col).title == column.name) number = col;
  if (number < 0 || number >= grid.GetColumnCount())
    ADD_FAILURE() << "no column " << column.name << ' ' << column.number;
  return number;
}

void CShownPanel::Enter(const SGridName& row, const SGridName& column, const SInput& input) {
  CString why;
  if (!Grid().Enter(RowOf(row), ColumnOf(column), input, why)) ADD_FAILURE() << why;
}

void CShownPanel::Type(const SGridName& row, const SGridName& column, const CString& text) {
  Enter(row, column, SInput::Text(text));
}

void CShownPanel::Set(const SGridName& row, const SGridName& column, const CValue& value) {
  Enter(row, column, SInput::Value(value));
}

bool CShownPanel::Refuses(const SGridName& row, const SGridName& column, const CString& text) {
  CString why;
  return !Grid().Enter(RowOf(row), ColumnOf(column), SInput::Text(text), why);
}

CString CShownPanel::Text(const SGridName& row, const SGridName& column) const {
  const int atRow = RowOf(row), atColumn = ColumnOf(column);
  return Grid().IsValid(atRow, atColumn) ? Grid().GetItemText(atRow, atColumn) : "no such cell";
}

bool CShownPanel::IsEnabled(const SGridName& row, const SGridName& column) const {
  const int atRow = RowOf(row), atColumn = ColumnOf(column);
  return Grid().IsValid(atRow, atColumn) && Grid().IsCellEnabled(atRow, atColumn) &&
         Grid().GetCellEditClass(atRow, atColumn) != EEditor::None;
}

CString CShownPanel::Choices(const SGridName& row, const SGridName& column) const {
  CString out;
  for (const SComboItem& item : Grid().Items(RowOf(row), ColumnOf(column))) (out += item.text) += '\n';
  return out;
}

CString CShownPanel::Rows() const {
  const CEditGrid& grid = Grid();
  CString out;
  for (int row = 1; row < grid.GetRowCount(); ++row) {
    if (!grid.IsPresent(row)) continue;
    for (int col = 0; col < grid.GetColumnCount(); ++col) {
      if (col > 0) out += '|';
      out += grid.GetItemText(row, col);
    }
    out += '\n';
  }
  return out;
}

CString CShownPanel::Problems() const {
  CString text;
  for (int row = 1; row < Grid().GetRowCount(); ++row)
    for (const auto& [col, why] : Grid().Row(row).problems)
      text += "row " + IntText(Grid().PresentNumber(row)) + ", " + Grid().Column(col).title + ": " + why + "\n";
  return text;
}

void CShownPanel::Go(const SGridName& row, const SGridName& column) {
  Grid().SetFocusCell(RowOf(row), ColumnOf(column));
}

void CShownPanel::Select(const std::vector<SGridName>& rows) {
  Grid().ClearSelection();
  for (const SGridName& row : rows)
    if (const int number = RowOf(row); Grid().IsValid(number, 0)) Grid().SetRowSel(number);
}

void CShownPanel::Sort(const SGridName& column) {
  if (!m_panel.SortByColumn(Grid(), ColumnOf(column))) ADD_FAILURE() << "the rows cannot be sorted";
}

CString CShownPanel::Focus() const {
  if (const CFormField* const field = m_panel.FocusField()) return field->Name();
  const SGridPlace focus = Grid().GetFocusCell();
  if (!Grid().IsValid(focus.row, focus.col)) return "nowhere";
  return "row " + IntText(focus.row) + ", " + Grid().Column(focus.col).title;
}

void CShownPanel::Enter(const char* field, const SInput& input) {
  CString why = CString("no field ") + field;
  CFormField* const found = m_panel.FindField(field);
  if (!found || !found->Enter(input, why)) ADD_FAILURE() << why;
}

void CShownPanel::Fill(const char* field, const CString& text) { Enter(field, SInput::Text(text)); }

void CShownPanel::Check(const char* field, bool checked) { Enter(field, SInput::Value(checked)); }

CString CShownPanel::FieldText(const char* field) const {
  const CFormField* const found = m_panel.FindField(field);
  return found ? found->GetText() : "no such field";
}

bool CShownPanel::IsVisible(const char* field) const {
  const CFormField* const found = m_panel.FindField(field);
  return found && found->IsVisible();
}

CString CShownPanel::ListText() const {
  CString text;
  for (const SListBox::SEntry& entry : m_panel.Lists().at(0)->entries) text += entry.text + "\n";
  return text;
}

void CShownPanel::Press(const char* command) {
  CString why;
  if (!m_dialog.Press(command, why)) ADD_FAILURE() << why;
}

bool CShownPanel::CanPress(const char* command) const {
  const SCommand* found = m_panel.FindCommand(command);
  if (!found) found = m_dialog.FindCommand(command);
  return found && found->visible && found->IsEnabled();
}

CString CShownDialog::Pages() const {
  CString out;
  if (const auto* const sheet = DynamicDowncast<CPropertySheetPlus>(&m_dialog))
    for (const CPropertyPagePlus* page : sheet->Pages()) (out += page->GetRuntimeClass()->name) += '\n';
  return out;
}

CShownPanel CShownDialog::Show(const CRuntimeClass* page, const char* grid) {
  auto* const sheet = DynamicDowncast<CPropertySheetPlus>(&m_dialog);
  if (!sheet || !sheet->SetPage(page)) ADD_FAILURE() << "no page " << page->name;
  return {m_dialog, m_dialog.ActivePanel(), grid};
}

CScriptedUser::CScriptedUser()
    : m_events([this](const SEvent& event) {
        CString line = "event " + event.name;
        if (event.subject && !event.subject->GetObjectName().empty()) line += ' ' + event.subject->GetObjectName();
        if (!event.subject && event.arg1) line += ' ' + IntText(event.arg1);
        if (event.arg2) line += ' ' + IntText(event.arg2);
        Note(line);
      }),
      m_installed(*this) {}

CScriptedUser::~CScriptedUser() {
  for (const SExpected& expected : m_scripts) ADD_FAILURE() << expected.dialog->name << " was not shown";
  if (!m_answers.empty()) ADD_FAILURE() << m_answers.size() << " answers were not asked for";
  if (!m_files.empty()) ADD_FAILURE() << m_files.front() << " was not chosen";
}

CString CScriptedUser::Shown() { return std::exchange(m_shown, {}); }

int CScriptedUser::Redrawn() { return std::exchange(m_redrawn, 0); }

int CScriptedUser::DoModal(CDialog& dialog) {
  const CString name = dialog.GetRuntimeClass()->name;
  CShownDialog shown(dialog);
  SExpected expected;
  if (!TakeFirst(m_scripts, expected)) {
    ADD_FAILURE() << name << " was shown unexpectedly";
  } else if (!dialog.IsKindOf(expected.dialog)) {
    ADD_FAILURE() << name << " was shown instead of " << expected.dialog->name;
  } else {
    expected.script(shown);
    if (dialog.IsOpen()) ADD_FAILURE() << name << " was left open";
  }
  if (dialog.IsOpen()) shown.Press("Cancel");
  return CDialog::kCancel;
}

EAnswer CScriptedUser::ShowMessage(const SMessage& message) {
  CString line = message.buttons == EButtons::Ok ? "error" : "ask";
  if (message.id) line += ' ' + IntText(message.id);
  const CString values = message.id ? Joined(message.args) : message.text;
  if (!values.empty()) line += ": " + values;
  EAnswer answer = message.Default();
  if (message.buttons != EButtons::Ok) {
    static constexpr const char* kNames[] = {"OK", "Cancel", "Yes", "No"};
    TakeFirst(m_answers, answer);
    line += CString(" -> ") + kNames[static_cast<std::size_t>(answer)];
  }
  Note(line);
  return answer;
}

void CScriptedUser::Beep(int sound) { Note("beep " + IntText(sound)); }

void CScriptedUser::OpenFile(const CString& path) { Note("file " + path); }

void CScriptedUser::ViewReport(const CReportFile& report) {
  for (const SReportLine& line : report.Lines()) {
    CString args;
    for (const CString& arg : line.args) args += (args.empty() ? "" : "|") + arg;
    Note("report " + (line.id ? IntText(line.id) + " [" + args + "]: " : "") + line.text);
  }
}

std::optional<CString> CScriptedUser::ChooseFile(const SFileChooser&) {
  CString path;
  if (!TakeFirst(m_files, path)) return {};
  return path;
}

void CScriptedUser::Redraw(const CObject&, const CBox*) { ++m_redrawn; }
