// What an import tells about itself: settings that were mended or left out, items that were, and the words of the file
// that are no settings.
#pragma once
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "model/base/text.h"

class CImportSummary {
 public:
  /// Tells of one setting, in a sentence. `kind` (in the plural: "net class patterns") says what it belongs to.
  void Say(const char* kind, CString sentence);
  /// Counts items of a kind (in the plural: "circles") that are left out, or that differ from what the file says, which
  /// `what` then says. The first `example` of each is shown.
  void LeaveOutItem(std::string_view what) { Count(m_leftOut, what, {}); }
  void MendItem(std::string_view what, std::string_view example = {}) { Count(m_mended, what, example); }
  /// Counts a word that is no setting.
  void LeaveOutWord(std::string_view word) { Count(m_words, word, {}); }

  /// Lines ready to be shown: the settings, then the items, one line a kind, then how many words there are that are no
  /// settings. Of many settings of a kind the first are shown. With `verbose` all of them are, and each word.
  CStringArray Lines(bool verbose) const;
  /// Whether verbose lines say more.
  bool IsShortened() const;

 private:
  struct SCount {
    std::size_t count = 0;
    CString example;
  };
  using Counts = std::map<CString, SCount, std::less<>>;
  static void Count(Counts& counts, std::string_view what, std::string_view example);

  std::vector<std::pair<const char*, CStringArray>> m_settings;  // in the order of their first sentences
  Counts m_mended, m_leftOut, m_words;
};

/// The names of the records that an import makes: mended where they break the rules of names, and made unique.
///
/// The same file gives the same names each time. Quotation marks and control characters are replaced, blanks at the
/// ends taken away, a "[" at the start becomes "(", what is longer than 255 bytes is cut, and a name that another
/// record of the kind has gets a number behind it.
class CImportNames {
 public:
  explicit CImportNames(CImportSummary& summary) : m_summary(summary) {}
  /// The name for a setting of `kind` that the file calls `wanted`. A change is told in the summary.
  CString Take(const char* kind, std::string_view wanted);
  /// The same for an item: changes are counted.
  CString TakeForItem(const char* kind, std::string_view wanted);
  /// The same for records to which the import gives the names: what it changes is not worth telling.
  CString TakeUnlisted(const char* kind, std::string_view wanted);

 private:
  struct STaken {
    std::unordered_set<CString> names;
    std::unordered_map<CString, int> numbers;  // the last one behind a name
  };
  CImportSummary& m_summary;
  std::unordered_map<CString, STaken> m_taken;
};
