// The net classes of a board, and which of them its nets are in.
#pragma once
#include <array>
#include <map>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "interchange/importsummary.h"
#include "model/design/values.h"

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
  std::int64_t priority = 0;  // of several classes of a net, that of the least goes first
  std::optional<CColour> colour;

  std::optional<int>& operator[](EClassValue value) { return values[static_cast<std::size_t>(value)]; }
  std::optional<int> operator[](EClassValue value) const { return values[static_cast<std::size_t>(value)]; }
};

class CBoardClasses {
 public:
  static constexpr const char* kDefaultClass = "Default";

  explicit CBoardClasses(CImportSummary& summary) : m_summary(summary) {}
  /// Throws a fault at `at` for a class that is there already.
  void Add(SClassRule rule, std::size_t at);
  void Assign(CString net, CString className) { m_assigned[std::move(net)].push_back(std::move(className)); }
  /// See CNetPatterns.
  void AssignPattern(CString pattern, CString className) {
    m_patterns.emplace_back(std::move(pattern), std::move(className));
  }
  /// Whether all the classes of a net hold, value by value, or the first of them alone.
  void SetMerging(bool merging) { m_merging = merging; }

  /// The class of each net once all is read, an index into All(). The most prior class of a net goes first, then, where
  /// classes merge, the first by name, and otherwise the first that was assigned. Classes are made for the combinations
  /// in use. What a class does not say is as in the default class, which stands first. The summary tells of classes and
  /// nets that are not there, and of patterns without a net.
  std::vector<std::size_t> Resolve(std::span<const std::string_view> nets);
  const std::vector<SClassRule>& All() const { return m_classes; }

 private:
  using Claims = std::vector<std::uint32_t>;  // of a net: classes, in the order of assignment
  std::vector<Claims> CollectClaims(std::span<const std::string_view> nets);
  std::size_t ClassOf(Claims& claims);
  std::size_t Merged(const Claims& claims);

  CImportSummary& m_summary;
  std::vector<SClassRule> m_classes;
  std::unordered_map<CString, std::uint32_t> m_byName;  // indices of classes
  std::map<CString, CStringArray> m_assigned;           // classes by net
  std::vector<std::pair<CString, CString>> m_patterns;  // with their classes
  std::map<Claims, std::size_t> m_merged;               // classes made of classes
  bool m_merging = false;
};
