#include "interchange/netpatterns.h"

#include <re2/re2.h>

#include <algorithm>

namespace {
constexpr std::size_t kMaxPattern = 1024;     // bytes of a pattern with operators
constexpr std::int64_t kMaxMemory = 1 << 18;  // bytes of an expression
constexpr std::int64_t kMaxMembers = 4096;    // of a bus vector
constexpr int kMaxBeginning = 64;             // bytes of the fixed beginning of an expression

/// The work of all patterns together. Its unit is a name of up to 32 bytes compared with a pattern of usual size.
constexpr std::size_t kMaxWork = std::size_t{1} << 26, kLookUp = 4;
constexpr std::size_t kCompile = 256, kCompiledState = 8;                        // the work of making an expression
constexpr std::size_t kNameUnit = 32, kWildcardUnit = 64, kExpressionUnit = 32;  // bytes, bytes, states

bool MatchesWildcard(std::string_view pattern, std::string_view text) {
  std::size_t p = 0, t = 0, star = pattern.npos, retry = 0;
  while (t < text.size()) {
    if (p < pattern.size() && (pattern[p] == text[t] || pattern[p] == '?') && pattern[p] != '*') {
      ++p;
      do ++t;
      while (pattern[p - 1] == '?' && t < text.size() && (text[t] & 0xC0) == 0x80);  // "?" is one whole character
    } else if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      retry = t;
    } else if (star != pattern.npos) {
      p = star + 1;
      t = ++retry;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == pattern.npos;
}

/// The longest part of a wildcard pattern that stands for itself.
std::string_view LongestPart(std::string_view pattern) {
  std::string_view longest;
  for (std::size_t from = 0, to = 0; to < pattern.size(); from = to + 1) {
    to = std::min(pattern.find_first_of("*?", from), pattern.size());
    if (to - from > longest.size()) longest = pattern.substr(from, to - from);
  }
  return longest;
}

/// What stands around the numbers of a bus vector, and the numbers.
struct SBusVector {
  std::string_view before, behind;
  std::int64_t first = 0, last = 0;
};

/// False for a pattern that is no bus vector.
bool ReadBusVector(std::string_view pattern, SBusVector& bus) {
  const std::size_t open = pattern.find('['), dots = pattern.find("..", open), close = pattern.find(']', open);
  if (open == pattern.npos || dots == pattern.npos || close == pattern.npos || dots > close) return false;
  const std::string_view first = pattern.substr(open + 1, dots - open - 1);
  const std::string_view last = pattern.substr(dots + 2, close - dots - 2);
  if (!std::all_of(first.begin(), first.end(), IsDigit) || !std::all_of(last.begin(), last.end(), IsDigit))
    return false;
  if (!ParseInt(first, bus.first) || !ParseInt(last, bus.last)) return false;
  bus.before = pattern.substr(0, open);
  bus.behind = pattern.substr(close + 1);
  if (bus.first > bus.last) std::swap(bus.first, bus.last);
  return true;
}
}  // namespace

CNetPatterns::CNetPatterns(std::span<const std::string_view> names) : m_names(names) {
  for (std::uint32_t i = 0; i < names.size(); ++i) {
    m_byName.emplace(names[i], i);
    m_sorted.push_back(i);
  }
  std::sort(m_sorted.begin(), m_sorted.end(), [&](auto a, auto b) { return m_names[a] < m_names[b]; });
}

void CNetPatterns::AddNamed(std::string_view name, std::vector<std::uint32_t>& nets) const {
  const auto [from, to] = m_byName.equal_range(name);
  for (auto at = from; at != to; ++at) nets.push_back(at->second);
}

void CNetPatterns::FindNamed(std::string_view name, std::vector<std::uint32_t>& nets) const {
  nets.clear();
  AddNamed(name, nets);
}

bool CNetPatterns::Find(std::string_view pattern, std::vector<std::uint32_t>& nets) {
  nets.clear();
  bool isDone = true;
  if (SBusVector bus; !ReadBusVector(pattern, bus)) {
    isDone = FindOne(CString(pattern), nets);
  } else {
    isDone = bus.last - bus.first < kMaxMembers;
    for (std::int64_t i = bus.first; i <= bus.last && isDone; ++i)
      isDone = FindOne(CString(bus.before) + IntText(i) + CString(bus.behind), nets);
  }
  if (!isDone) nets.clear();
  std::sort(nets.begin(), nets.end());
  nets.erase(std::unique(nets.begin(), nets.end()), nets.end());
  return isDone;
}

bool CNetPatterns::FindOne(const CString& pattern, std::vector<std::uint32_t>& nets) {
  const std::size_t before = nets.size();
  AddNamed(pattern, nets);
  // Names are looked up whatever patterns have cost; they are bounded by what they find.
  m_found += kLookUp * (1 + nets.size() - before) + pattern.size() / kNameUnit;
  if (pattern.find_first_of("*?.+()[]{}|^$\\") == pattern.npos) return m_found <= kMaxWork;
  return pattern.size() <= kMaxPattern && FindWildcard(pattern, nets) && FindExpression(pattern, nets);
}

bool CNetPatterns::FindWildcard(std::string_view pattern, std::vector<std::uint32_t>& nets) {
  const std::size_t operatorAt = pattern.find_first_of("*?");
  if (operatorAt == pattern.npos) return true;
  const std::string_view beginning = pattern.substr(0, operatorAt), part = LongestPart(pattern);
  return FindBetween(
      beginning, CString(beginning) + '\xFF', 1 + pattern.size() / kWildcardUnit,
      [&](std::string_view name) { return name.find(part) != name.npos && MatchesWildcard(pattern, name); }, nets);
}

bool CNetPatterns::FindExpression(const CString& pattern, std::vector<std::uint32_t>& nets) {
  m_work += kCompile + pattern.size();
  if (m_work > kMaxWork) return false;
  RE2::Options options;
  options.set_log_errors(false);
  options.set_max_mem(kMaxMemory);
  const RE2 expression(pattern, options);
  if (!expression.ok())  // what is no expression is a wildcard pattern or a name
    return expression.error_code() != RE2::ErrorPatternTooLarge && expression.error_code() != RE2::ErrorRepeatSize;
  m_work += kCompiledState * static_cast<std::size_t>(expression.ProgramSize());
  if (m_work > kMaxWork) return false;
  CString least, most = "\xFF";
  if (!expression.PossibleMatchRange(&least, &most, kMaxBeginning)) least.clear(), most = "\xFF";
  return FindBetween(
      least, most, 1 + static_cast<std::size_t>(expression.ProgramSize()) / kExpressionUnit,
      [&](std::string_view name) { return RE2::FullMatch({name.data(), name.size()}, expression); }, nets);
}

/// Adds the nets that match, of those with names from `least` to `most`. A match takes `work` for a short name.
template <class Matches>
bool CNetPatterns::FindBetween(std::string_view least, std::string_view most, std::size_t work, const Matches& matches,
                               std::vector<std::uint32_t>& nets) {
  auto at = std::lower_bound(m_sorted.begin(), m_sorted.end(), least,
                             [&](std::uint32_t net, std::string_view name) { return m_names[net] < name; });
  for (; at != m_sorted.end() && m_names[*at] <= most; ++at) {
    m_work += work * (1 + m_names[*at].size() / kNameUnit);
    if (m_work > kMaxWork) return false;
    if (matches(m_names[*at])) nets.push_back(*at);
  }
  return true;
}
