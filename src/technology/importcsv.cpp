#include "technology/importcsv.h"

#include <algorithm>

#include "model/base/catalogue.h"
#include "model/base/decimal.h"
#include "model/design/units.h"
#include "model/services/apperror.h"
#include "model/services/files.h"
#include "model/services/registry.h"
#include "model/services/userinterface.h"

char CImportCSV::GetCSVSeparator() {
  CString text;
  CAppRegistry("Settings\\CSV").GetValue("Separator", text);
  constexpr char kLastAscii = '\x7e';
  const bool usable =
      !text.empty() && text[0] != '"' && text[0] != '\n' && text[0] != '\r' && text[0] > '\0' && text[0] <= kLastAscii;
  return usable ? text[0] : ',';
}

CString TitleInFile(const SFileTitle& title, int unitType) {
  if (!title.isLength || !CImportCSV::WritesUnits()) return title.text;
  return TextOf(Text::WithDetail, CStringArray{title.text, CUnits::Suffix(unitType)});
}

namespace {
/// Whether a field is the title of a length with a unit in brackets behind it.
bool HasUnit(std::string_view field, const CString& title, int& unitType) {
  std::string_view number;
  const bool isTitle = field.starts_with(title) && field.substr(title.size()).starts_with(" (") && field.ends_with(')');
  if (!isTitle) return false;
  const CString length = "1 " + CString(field.substr(title.size() + 2, field.size() - title.size() - 3));
  int type = -1;
  if (!SplitUnit(length, number, type) || type < 0) return false;
  unitType = type;
  return true;
}
}  // namespace

bool AreTitles(const CFileFields& fields, const std::vector<SFileTitle>& titles, std::vector<int>& unitTypes) {
  std::vector<int> read = unitTypes;
  if (fields.size() != titles.size()) return false;
  for (std::size_t i = 0; i < titles.size(); ++i)
    if (fields[i] != titles[i].text && !HasUnit(fields[i], titles[i].text, read[i])) return false;
  unitTypes = std::move(read);
  return true;
}

CString SFilePlace::Number() const {
  return IntText(static_cast<std::int64_t>(countsLines ? reader.Line() : reader.Record()));
}

CString SFilePlace::Text() const {
  const SFilePlace other{reader, !countsLines};
  if (reader.Line() == reader.Record())
    return TextOf(countsLines ? Text::LinePlace : Text::RecordPlace, CStringArray{Number()});
  return TextOf(countsLines ? Text::LineAndRecordPlace : Text::RecordAndLinePlace,
                CStringArray{Number(), other.Number()});
}

bool CImportCSV::WritesUnits() {
  int writes = 0;
  CAppRegistry("Settings\\CSV").GetValue("Units", writes);
  return writes != 0;
}

CSVImportResult CImportCSV::Import(const IsHeader& isHeader, const Handle& handle, const Handle& broken) {
  constexpr std::size_t kMostBytes = 64 << 20;
  const auto path =
      UserInterface().ChooseFile({SFileChooser::EKind::Open, {}, TextOf(Text::CsvExtension), TextOf(Text::CsvFilter)});
  if (!path) return CSVImportResult::Cancelled;
  const CResult<CString> text = ReadTextFile(*path, kMostBytes);
  if (!text) {
    CAppError::SetLastErrorText(text.Error());
    return CSVImportResult::Unreadable;
  }
  CCsvReader reader(*text, GetCSVSeparator());
  for (CCsvReader::EStep step = reader.Next(); step != CCsvReader::EStep::End; step = reader.Next()) {
    if (step == CCsvReader::EStep::Broken) {
      broken(reader);
      continue;
    }
    const CFileFields& fields = reader.Fields();
    if (fields.empty() || (reader.Record() == 1 && isHeader(fields))) continue;
    handle(reader);
  }
  return CSVImportResult::Ok;
}
