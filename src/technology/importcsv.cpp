#include "technology/importcsv.h"

#include <algorithm>

#include "model/base/catalogue.h"
#include "model/base/csv.h"
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

CSVImportResult CImportCSV::Import(const CStringArray& headers, const HandleRecord& handle,
                                   const HandleBroken& broken) {
  constexpr std::size_t kMostBytes = 64 << 20;
  const auto path =
      UserInterface().ChooseFile({SFileChooser::EKind::Open, {}, TextOf(Text::CsvExtension), TextOf(Text::CsvFilter)});
  if (!path) return CSVImportResult::Cancelled;
  const CResult<CString> text = ReadTextFile(*path, kMostBytes);
  if (!text) {
    CAppError::ReportError(text.Error());
    return CSVImportResult::Unreadable;
  }
  CCsvReader reader(*text, GetCSVSeparator());
  for (CCsvReader::EStep step = reader.Next(); step != CCsvReader::EStep::End; step = reader.Next()) {
    if (step == CCsvReader::EStep::Broken) {
      broken(reader.Record(), reader.Error());
      continue;
    }
    const CFileFields& fields = reader.Fields();
    if (fields.empty() || (reader.Record() == 1 && std::ranges::equal(fields, headers))) continue;
    handle(fields, reader.Record());
  }
  return CSVImportResult::Ok;
}
