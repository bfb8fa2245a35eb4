#include "ui/qt/gridentries.h"

#include <algorithm>

#include "ui/qt/decimalpoint.h"
#include "ui/qt/text.h"

namespace {
/// What spreadsheets and this program write for a check mark; anything else stays a text, which no check box takes.
SInput CheckInput(const QString& text) {
  static constexpr const char* kYes[] = {"Y", "1", "TRUE"};
  static constexpr const char* kNo[] = {"N", "0", "FALSE"};
  const auto isOneOf = [&text](const auto& words, CTextId own) {
    return text.compare(QtText(own), Qt::CaseInsensitive) == 0 ||
           std::any_of(std::begin(words), std::end(words), [&text](const char* word) {
             return text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
           });
  };
  if (isOneOf(kYes, Text::Yes)) return SInput::Value(true);
  return isOneOf(kNo, Text::No) ? SInput::Value(false) : SInput::Text(FromQt(text));
}

SInput InputOf(EEditor editor, const QString& text) {
  switch (editor) {
    case EEditor::Boolean: return CheckInput(text.trimmed());
    case EEditor::Length:
    case EEditor::Integer: return SInput::Text(FromQt(WithDecimalPoint(text)));
    case EEditor::Object: return text.isEmpty() ? SInput::Value(CValue()) : SInput::Text(FromQt(text));
    default: return SInput::Text(FromQt(text));
  }
}

CString TextOfInput(const SInput& input) {
  if (const auto* const text = std::get_if<CString>(&input.value)) return *text;
  if (const auto* const flag = std::get_if<bool>(&input.value)) return TextOf(*flag ? Text::Yes : Text::No);
  if (const auto* const number = std::get_if<std::int64_t>(&input.value)) return IntText(*number);
  return {};
}
}  // namespace

void CGridEntries::AddText(int row, int col, const QString& text, int like) {
  m_entries.push_back({row, col, InputOf(m_grid.GetCellEditClass(like, col), text), like});
}

bool CGridEntries::IsAlready(const SEntry& entry) const {
  const auto* const text = std::get_if<CString>(&entry.input.value);
  return text ? m_grid.CopyText(entry.row, entry.col) == *text
              : m_grid.OuterValue(entry.row, entry.col) == entry.input.value;
}

bool CGridEntries::Fit(QString& why) const {
  for (const SEntry& entry : m_entries) {
    const bool isThere = m_grid.IsValid(entry.row, entry.col);
    const int row = isThere ? entry.row : entry.like;
    if (!m_grid.IsValid(row, entry.col) || m_grid.GetCellEditClass(row, entry.col) == EEditor::None) continue;
    if (isThere && (!m_grid.IsCellEnabled(row, entry.col) || IsAlready(entry))) continue;
    if (m_grid.Fits(row, entry.col, entry.input)) continue;
    why = QtText(Text::EntryRefused,
                 CStringArray{IntText(entry.row), m_grid.Column(entry.col).title, TextOfInput(entry.input)});
    return false;
  }
  return true;
}

int CGridEntries::Enter() {
  int left = 0;
  CString why;
  for (const SEntry& entry : m_entries)
    if (!IsAlready(entry) && !m_grid.Enter(entry.row, entry.col, entry.input, why)) ++left;
  return left;
}
