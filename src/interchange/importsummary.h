// What an import tells about itself: names it had to change, and what has no place in a design.
#pragma once
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "model/base/text.h"

struct SImportSummary {
  struct SMended {
    CString kind;  // "layer", "net"
    CString was;
    CString now;
  };
  std::int64_t format = 0;                              // of the file
  std::vector<SMended> mended;                          // in the order of the file
  std::map<CString, std::size_t, std::less<>> leftOut;  // how often, by what it is

  void LeaveOut(std::string_view what);
  /// One line for each fact, ready to be shown.
  CStringArray Lines() const;
};

/// The names of the records that an import makes: mended where they break the rules of names, and made unique.
///
/// The same file gives the same names each time. Quotation marks and control characters are replaced, blanks at the
/// ends taken away, a "[" at the start becomes "(", what is longer than 255 bytes is cut, and a name that another
/// record of the kind has gets a number behind it.
class CImportNames {
 public:
  explicit CImportNames(SImportSummary& summary) : m_summary(summary) {}
  /// The name for a record of `kind` that the file calls `wanted`. A change is listed in the summary.
  CString Take(const char* kind, std::string_view wanted);
  /// The same for records to which the import gives the names: what it changes is not worth listing.
  CString TakeUnlisted(const char* kind, std::string_view wanted);

 private:
  struct STaken {
    std::unordered_set<CString> names;
    std::unordered_map<CString, int> numbers;  // the last one behind a name
  };
  SImportSummary& m_summary;
  std::unordered_map<CString, STaken> m_taken;
};
