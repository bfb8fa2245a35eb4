// Delimited files of grid pages: the separator, and reading records one by one with the problems of all of them.
#pragma once
#include <functional>

#include "model/base/csv.h"

/// The fields of one record; the text is the file's.
using CFileFields = std::vector<std::string_view>;

/// A column of files as its title says it.
struct SFileTitle {
  CString text;
  bool isLength = false;
};
/// The title as files have it; one of a length says its unit where the settings want that.
CString TitleInFile(const SFileTitle& title, int unitType);
/// Whether a record holds these titles. A unit behind one goes to `unitTypes`, one for each; what is a length in one
/// kind of design may be nothing in another, so every title may have one.
bool AreTitles(const CFileFields& fields, const std::vector<SFileTitle>& titles, std::vector<int>& unitTypes);

/// What reports call the record that a reader has come to.
struct SFilePlace {
  CCsvReader& reader;
  bool countsLines = false;
  /// The number of the record, or that of the line that it begins in.
  CString Number() const;
  /// The same in words; with the other one where they differ.
  CString Text() const;
};

enum class CSVImportResult { Ok, Cancelled, Unreadable };

class CImportCSV {
 public:
  /// The character between fields: the first of the setting "Separator" under "Settings\\CSV", "," without one or with
  /// one that cannot separate (a quotation mark, a line end, or beyond ASCII).
  static char GetCSVSeparator();

  /// Takes the record that the reader has come to: its fields, or what is wrong with it.
  using Handle = std::function<void(CCsvReader& reader)>;
  /// Whether the fields of the first record are titles.
  using IsHeader = std::function<bool(const CFileFields& fields)>;

  /// Lets a person choose a file and hands its records over in order. The first one is skipped, but counted, when it
  /// holds titles; a record without fields is skipped too. Why a file is unreadable becomes the last
  /// error.
  static CSVImportResult Import(const IsHeader& isHeader, const Handle& handle, const Handle& broken);

  /// Whether titles of lengths are written with their unit: the setting "Units" under "Settings\\CSV", 0 without one.
  static bool WritesUnits();
};
