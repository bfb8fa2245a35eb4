#include "technology/gridrows.h"

#include <algorithm>

#include "model/services/report.h"
#include "technology/importcsv.h"
#include "technology/techpage.h"

CGridRows::CGridRows(CTechDialogPage& page, const char* name, const CString& settings) : m_page(page), m_name(name) {
  m_grid.SetOwner(this);
  m_grid.SetRegistryKey(settings);
}

void CGridRows::FetchAhead(int row) const {
  constexpr int kAhead = 12, kLine = 64;  // bytes of memory that come at a time
  if (row + 2 * kAhead < m_grid.GetRowCount()) __builtin_prefetch(&m_grid.Row(row + 2 * kAhead));
  if (row + kAhead >= m_grid.GetRowCount()) return;
  const SGridRow& line = m_grid.Row(row + kAhead);
  const auto* const record = reinterpret_cast<const char*>(line.record);
  __builtin_prefetch(line.cells.data());
  __builtin_prefetch(reinterpret_cast<const char*>(line.cells.data()) + kLine);
  __builtin_prefetch(record);
  __builtin_prefetch(record + kLine);
}

// ---- Checks and writing

void CGridRows::Judge(CFindings& findings, EJudged) {
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!m_grid.IsPresent(row) || !m_grid.GetRowModified(row)) continue;
    for (int col = 0; col < m_grid.GetColumnCount() && !findings.IsDecided(); ++col) {
      int dsu = 0;
      if (m_grid.Cell(row, col).wrong && !m_page.ParseLength(m_grid.GetItemText(row, col), dsu))
        findings.AddLastErrorOfCell(*this, row, col);
    }
  }
}

namespace {
struct SPlainRow {
  int row;
  std::vector<SCell> cells;
  int height;
  bool modified;
};
struct SPlainRows final : CGridRows::CKept {
  std::vector<SPlainRow> rows;
};
}  // namespace

std::unique_ptr<CGridRows::CKept> CGridRows::Keep() const {
  auto kept = std::make_unique<SPlainRows>();
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    const SGridRow& line = m_grid.Row(row);
    kept->rows.push_back({row, line.cells, line.height, line.modified});
  }
  return kept;
}

void CGridRows::Restore(std::unique_ptr<CKept> kept) {
  for (SPlainRow& one : static_cast<SPlainRows&>(*kept).rows) {
    SGridRow& line = m_grid.Row(one.row);
    line.cells = std::move(one.cells);
    line.height = one.height;
    line.modified = one.modified;
  }
}

int CGridRows::ColumnFor(const SFinding& finding) const {
  if (finding.col >= 0 || finding.row == 0) return std::max(finding.col, 0);
  for (int col = 0; col < m_grid.GetColumnCount(); ++col)
    if (m_grid.GetCellEditClass(finding.row, col) != EEditor::None) return col;
  return 0;
}

// ---- Files

std::vector<SFileTitle> CGridRows::FileTitles() const {
  std::vector<SFileTitle> titles;
  titles.reserve(static_cast<std::size_t>(m_grid.GetColumnCount()));
  for (int col = 0; col < m_grid.GetColumnCount(); ++col)
    titles.push_back({m_grid.Column(col).title, m_grid.Column(col).hasLengths});
  return titles;
}

void CGridRows::ExportTitles(CCsvWriter& file) const {
  for (const SFileTitle& title : FileTitles()) file.Quoted(TitleInFile(title, m_page.UserUnits().GetType()));
  file.EndRecord();
}

void CGridRows::Export(CCsvWriter& file) const {
  ExportTitles(file);
  for (int row = 1; row < m_grid.GetRowCount(); ++row) {
    if (!m_grid.IsPresent(row)) continue;
    for (const SCell& cell : m_grid.Row(row).cells) {
      const bool isNumber = cell.editor == EEditor::Length || cell.editor == EEditor::Integer;
      isNumber ? file.Plain(CellCopy(cell)) : file.Quoted(cell.text);
    }
    file.EndRecord();
  }
}

namespace {
/// A field of a file as it is entered; marks are words there.
SInput InputOf(const CString& field, EEditor editor) {
  if (editor == EEditor::Boolean)
    for (const bool checked : {false, true})
      if (field == TextOf(checked ? Text::Yes : Text::No)) return SInput::Value(checked);
  return SInput::Text(field);
}
}  // namespace

bool CGridRows::Import(CReportFile& report) {
  const std::vector<SFileTitle> titles = FileTitles();
  std::vector<int> unitTypes(titles.size(), m_page.UserUnits().GetType());
  const auto refuse = [&](CCsvReader& reader, const CString& reason) {
    const SFilePlace place{reader};
    report.WriteShown(Text::RecordUnusable, {place.Number()},
                      TextOf(Text::RecordUnusable, CStringArray{place.Text(), reason}));
  };
  const auto enter = [&](CCsvReader& reader) {
    const CFileFields& fields = reader.Fields();
    if (fields.size() != titles.size())
      return refuse(reader,
                    TextOf(Text::WrongFieldCount, CStringArray{IntText(static_cast<std::int64_t>(fields.size())),
                                                               IntText(static_cast<std::int64_t>(titles.size()))}));
    int row = 1;
    while (row < m_grid.GetRowCount() && (!m_grid.IsPresent(row) || NameOfRow(row) != fields[0])) ++row;
    if (row == m_grid.GetRowCount())
      return refuse(reader, TextOf(Text::ImportNameInvalid, CStringArray{CString(fields[0])}));
    for (int col = 1; col < m_grid.GetColumnCount(); ++col) {
      const CString field(fields[static_cast<std::size_t>(col)]);
      CString why;
      int dsu = 0;
      const EEditor editor = m_grid.GetCellEditClass(row, col);
      const bool isLength =
          editor == EEditor::Length && ReadLength(field, unitTypes[static_cast<std::size_t>(col)], dsu);
      const SCell& cell = m_grid.Cell(row, col);
      if (isLength ? cell.hasValue && cell.value == dsu : CellCopy(cell) == field) continue;
      const SInput input = isLength ? SInput::Value(std::int64_t{dsu}) : InputOf(field, editor);
      if (m_grid.Fits(row, col, input) && m_grid.Enter(row, col, input, why)) continue;
      refuse(reader, TextOf(Text::ImportValueInvalid, CStringArray{field, m_grid.Column(col).title}));
    }
  };
  const CSVImportResult result =
      CImportCSV::Import([&](const CFileFields& fields) { return AreTitles(fields, titles, unitTypes); }, enter,
                         [&](CCsvReader& reader) { refuse(reader, reader.Error()); });
  if (result == CSVImportResult::Unreadable) m_page.FailCommand(CAppError::GetLastErrorString());
  return false;
}

// ---- Typing

CGridRows::SEntry CGridRows::ReadEntry(EEditor editor, const SInput& input, const SComboItem* item) const {
  const auto* const text = std::get_if<CString>(&input.value);
  const auto* const number = std::get_if<std::int64_t>(&input.value);
  const auto* const checked = std::get_if<bool>(&input.value);
  SEntry entry;
  entry.text = item ? item->text : text ? *text : CString();
  switch (editor) {
    case EEditor::Text: entry.isUnderstood = text != nullptr; break;
    case EEditor::Length:
    case EEditor::Integer:
      if (number) {
        entry.isUnderstood = *number == static_cast<int>(*number);
        entry.value = *number;
      } else if (text && editor == EEditor::Integer) {
        entry.isUnderstood = true;
        std::string_view typed = Trim(*text);
        if (typed.starts_with('+') && !typed.starts_with("+-")) typed.remove_prefix(1);
        const std::size_t digits = typed.find_first_not_of("0123456789", typed.starts_with('-') ? 1 : 0);
        if (!ParseInt(typed.substr(0, digits), entry.value) || entry.value != static_cast<int>(entry.value))
          entry.value = 0;
      } else if (text) {
        int dsu = 0;
        entry.isUnderstood = true;
        entry.isEmptied = Trim(*text).empty();
        entry.isWrong = !entry.isEmptied && !m_page.ParseLength(*text, dsu);
        entry.value = dsu;
      }
      break;
    case EEditor::Boolean:
      entry.isUnderstood = checked != nullptr;
      entry.value = checked && *checked;
      break;
    case EEditor::Choice:
    case EEditor::Object:
      entry.isUnderstood = item != nullptr;
      if (item) entry.value = item->value;
      break;
    case EEditor::Colour: {
      CColour colour;
      entry.isUnderstood = text && ColourFromText(*text, colour);
      entry.value = colour.rgb;
      break;
    }
    default: break;
  }
  if (entry.isWrong) CAppError::SetLastError(CTextId());  // Apply says it
  return entry;
}

bool CGridRows::CellFits(int row, int col, const SInput& input, const SComboItem* item) const {
  const SEntry entry = ReadEntry(m_grid.GetCellEditClass(row, col), input, item);
  return entry.isUnderstood && !entry.isWrong;
}

bool CGridRows::CellEntered(int row, int col, const SInput& input, const SComboItem* item, CString& why) {
  SCell& cell = m_grid.Cell(row, col);
  SEntry entry = ReadEntry(cell.editor, input, item);
  if (!entry.isUnderstood) {
    why = TextOf(Text::CellValueInvalid, CStringArray{RowText(row), m_grid.Column(col).title});
    return false;
  }
  cell.wrong = entry.isWrong;
  if (entry.isWrong) {  // stays visible; Apply refuses the row here
    cell.text = std::move(entry.text);
    return true;
  }
  cell.value = entry.value;
  if (cell.editor == EEditor::Length) {
    cell.hasValue = !entry.isEmptied;
    cell.text = entry.isEmptied ? CString() : LengthText(static_cast<int>(entry.value), m_page.UserUnits(), false);
  } else if (cell.editor == EEditor::Boolean) {
    cell.text = TextOf(entry.value != 0 ? Text::Yes : Text::No);
  } else {
    cell.text = cell.editor == EEditor::Integer ? IntText(entry.value) : std::move(entry.text);
  }
  return true;
}

void CGridRows::CellChanged(int row, int col) {
  EraseProblem(row, col);
  m_page.EditedRows();
}

/// Of two rows that are at fault together, mending one mends both: they have the same text.
void CGridRows::EraseProblem(int row, int col) {
  const auto own = m_grid.Row(row).problems.extract(col);
  for (int other = 1; own && other < m_grid.GetRowCount(); ++other) {
    std::map<int, CString>& problems = m_grid.Row(other).problems;
    if (const auto at = problems.find(col); at != problems.end() && at->second == own.mapped()) problems.erase(at);
  }
}

CString CGridRows::CellCopy(const SCell& cell) const {
  const bool isExact = cell.editor == EEditor::Length && cell.hasValue && !cell.wrong;
  return isExact ? LengthText(static_cast<int>(cell.value), m_page.UserUnits(), true) : cell.text;
}

CString CGridRows::CellHint(const SCell& cell) const {
  if (cell.editor != EEditor::Length || !cell.hasValue || cell.wrong) return {};
  const CUnits& units = m_page.SecondUnits();
  return LengthText(static_cast<int>(cell.value), units, false) + " " + CUnits::Suffix(units.GetType());
}
