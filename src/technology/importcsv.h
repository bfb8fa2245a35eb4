// Delimited files of grid pages: the separator, and reading records one by one with the problems of all of them.
#pragma once
#include <functional>

#include "model/base/text.h"

/// The fields of one record; the text is the file's.
using CFileFields = std::vector<std::string_view>;

enum class CSVImportResult { Ok, Cancelled, Unreadable };

class CImportCSV {
 public:
  /// The character between fields: the first of the setting "Separator" under "Settings\\CSV", "," without one or with
  /// one that cannot separate (a quotation mark, a line end, or beyond ASCII).
  static char GetCSVSeparator();

  /// Takes the fields of one record.
  using HandleRecord = std::function<void(const CFileFields& fields, std::size_t record)>;
  /// A record that is no list of fields: what is wrong with it.
  using HandleBroken = std::function<void(std::size_t record, const CString& reason)>;

  /// Lets a person choose a file and hands its records over in order. The first one is skipped, but counted, when it
  /// equals `headers`; a record without fields is skipped too. An unreadable file is reported at once.
  static CSVImportResult Import(const CStringArray& headers, const HandleRecord& handle, const HandleBroken& broken);
};
