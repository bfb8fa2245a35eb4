// Which nets the patterns of net classes name.
//
// A pattern names a net when all of the net's name matches it, as a wildcard pattern ("*" stands for any text, "?" for
// any character) or as a regular expression. A bus vector, D[0..7], stands for its members. A pattern without an
// operator is looked up; one with a fixed beginning is compared with those names alone that begin so. A match takes
// time linear in the name, memory is bounded, and so is the work of all patterns together.
#pragma once
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "model/base/text.h"

class CNetPatterns {
 public:
  /// The names must stay where they are as long as patterns are looked for.
  explicit CNetPatterns(std::span<const std::string_view> names);

  /// Finds the nets that `pattern` names: indices into the names, rising. False, and none, for a pattern that is too
  /// large: it, or all up to it, would take more memory or time than any board needs.
  bool Find(std::string_view pattern, std::vector<std::uint32_t>& nets);
  /// The same for the nets of that very name.
  void FindNamed(std::string_view name, std::vector<std::uint32_t>& nets) const;

 private:
  void AddNamed(std::string_view name, std::vector<std::uint32_t>& nets) const;
  bool FindOne(const CString& pattern, std::vector<std::uint32_t>& nets);
  bool FindWildcard(std::string_view pattern, std::vector<std::uint32_t>& nets);
  bool FindExpression(const CString& pattern, std::vector<std::uint32_t>& nets);
  template <class Matches>
  bool FindBetween(std::string_view least, std::string_view most, std::size_t work, const Matches& matches,
                   std::vector<std::uint32_t>& nets);

  std::span<const std::string_view> m_names;
  std::unordered_multimap<std::string_view, std::uint32_t> m_byName;
  std::vector<std::uint32_t> m_sorted;  // by name
  std::size_t m_work = 0;
  std::size_t m_found = 0;  // the same of look-ups
};
