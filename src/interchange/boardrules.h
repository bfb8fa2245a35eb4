// The rules of a board: net classes with the nets they hold, predefined sizes, and what holds for the whole board.
//
// They stand in the board file itself or in the project file beside it, depending on the age of the board.
#pragma once
#include <array>
#include <optional>
#include <vector>

#include "interchange/importsummary.h"
#include "interchange/json.h"
#include "interchange/sexpression.h"
#include "model/design/technology.h"

/// The lengths of a net class, in the order of their names in boardrules.cpp.
enum class EClassValue {
  Clearance,
  TrackWidth,
  ViaSize,
  ViaDrill,
  MicroviaSize,
  MicroviaDrill,
  PairWidth,
  PairGap,
  PairViaGap,
  Count
};

struct SClassRule {
  CString name;
  std::array<std::optional<int>, static_cast<std::size_t>(EClassValue::Count)> values;  // design units
  std::int64_t priority = 0;  // of several classes of a net the one of the least priority holds
  std::optional<CColour> colour;

  std::optional<int>& operator[](EClassValue value) { return values[static_cast<std::size_t>(value)]; }
  std::optional<int> operator[](EClassValue value) const { return values[static_cast<std::size_t>(value)]; }
};

struct SViaSize {
  int size = 0;
  int drill = 0;
};

class CBoardRules {
 public:
  static constexpr const char* kDefaultClass = "Default";

  explicit CBoardRules(SImportSummary& summary) : m_summary(summary) {}
  /// One "net_class" list of the board file.
  void ReadClass(CSNode list);
  /// The "setup" list of the board file.
  void ReadSetup(CSNode list);
  void ReadProject(const SJson& project);
  /// Completes the classes once all is read: what a class does not say is as in the default class, which stands first.
  void Finish();

  const std::vector<SClassRule>& Classes() const { return m_classes; }
  /// The class of a net, an index into Classes(): of several the most prior, of equally prior ones the first.
  std::size_t ClassOf(std::string_view net);
  /// Counts the patterns and assignments to which no net belongs.
  void CountUnused();

  std::vector<int> trackWidths;
  std::vector<SViaSize> viaSizes;
  SDesignSpacingsFields spacings;

 private:
  struct SPattern {
    CString pattern;
    CString className;
    bool matched = false;
  };
  struct SAssigned {
    std::vector<CString> classes;  // in the order in which they claim the net
    bool matched = false;
  };
  void AddClass(SClassRule rule, std::size_t at);
  void ReadJsonClass(const SJson& json);
  void ReadSizes(const SJson& settings);
  void Assign(CString net, CString className);

  SImportSummary& m_summary;
  std::vector<SClassRule> m_classes;
  std::unordered_map<CString, std::size_t> m_byName;  // indices of classes
  std::unordered_map<CString, SAssigned> m_assigned;  // by net
  std::vector<SPattern> m_patterns;
};

/// Whether all of `text` matches `pattern`, in which "*" stands for any text and "?" for any character.
bool MatchesWildcard(std::string_view pattern, std::string_view text);
