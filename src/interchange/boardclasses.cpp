#include "interchange/boardclasses.h"

#include <algorithm>
#include <limits>

#include "interchange/netpatterns.h"
#include "model/base/textfault.h"

namespace {
constexpr std::size_t kNetsShown = 5;
constexpr std::size_t kMaxMergedName = 1024;  // bytes; names of classes are shorter

/// The nets of a class that is not there.
struct SHomeless {
  std::size_t count = 0;
  CString shown;
};
}  // namespace

void CBoardClasses::Add(SClassRule rule, std::size_t at) {
  if (!m_byName.emplace(rule.name, static_cast<std::uint32_t>(m_classes.size())).second)
    throw STextFault{at, "the net class " + Quoted(rule.name) + " is there twice"};
  m_classes.push_back(std::move(rule));
}

std::vector<CBoardClasses::Claims> CBoardClasses::CollectClaims(std::span<const std::string_view> nets) {
  std::vector<Claims> claims(nets.size());
  std::map<CString, SHomeless> missing;
  const auto claim = [&](const std::vector<std::uint32_t>& named, const CString& className) {
    const auto found = m_byName.find(className);
    for (const std::uint32_t net : named) {
      if (found != m_byName.end()) {
        if (claims[net].empty() || claims[net].back() != found->second) claims[net].push_back(found->second);
      } else if (SHomeless& one = missing[className]; ++one.count <= kNetsShown) {
        one.shown.append(one.shown.empty() ? "" : ", ").append(Quoted(nets[net]));
      }
    }
  };
  CNetPatterns patterns(nets);
  std::vector<std::uint32_t> named;
  for (const auto& [net, classes] : m_assigned) {
    patterns.FindNamed(net, named);
    for (const CString& one : classes) {
      const CString args[] = {Quoted(one), Quoted(net)};
      if (named.empty())
        m_summary.Say("nets of net classes", FormatText("The board lacks the net %2 of the net class %1", args));
      claim(named, one);
    }
  }
  for (const auto& [pattern, className] : m_patterns) {
    const CString args[] = {Quoted(className), Quoted(pattern)};
    if (!patterns.Find(pattern, named)) {
      m_summary.Say("patterns that are too large",
                    FormatText("The pattern %2 of the net class %1 is too large and left out", args));
    } else if (named.empty()) {
      m_summary.Say("patterns without a net", FormatText("No net matches the pattern %2 of the net class %1", args));
    }
    claim(named, className);
  }
  for (const auto& [name, without] : missing) {
    const bool isLong = without.count > kNetsShown;
    const CString args[] = {
        Quoted(name), without.shown,
        isLong ? " and " + IntText(static_cast<std::int64_t>(without.count - kNetsShown)) + " more" : ""};
    m_summary.Say("net classes", FormatText("There is no net class %1 for the nets %2%3", args));
  }
  return claims;
}

std::size_t CBoardClasses::ClassOf(Claims& claims) {
  const auto isPrior = [&](std::uint32_t a, std::uint32_t b) { return m_classes[a].priority < m_classes[b].priority; };
  if (!m_merging) {
    const auto first = std::min_element(claims.begin(), claims.end(), isPrior);
    return first != claims.end() ? *first : 0;
  }
  std::erase(claims, 0);  // the default class holds behind all others
  std::sort(claims.begin(), claims.end(), [&](std::uint32_t a, std::uint32_t b) {
    return std::tie(m_classes[a].priority, m_classes[a].name) < std::tie(m_classes[b].priority, m_classes[b].name);
  });
  claims.erase(std::unique(claims.begin(), claims.end()), claims.end());
  return claims.empty() ? 0 : claims.size() == 1 ? claims[0] : Merged(claims);
}

std::size_t CBoardClasses::Merged(const Claims& claims) {
  const auto [at, isNew] = m_merged.try_emplace(claims, m_classes.size());
  if (!isNew) return at->second;
  SClassRule merged = m_classes[claims[0]];
  for (const std::uint32_t one : std::span(claims).subspan(1)) {
    const SClassRule& rule = m_classes[one];
    if (merged.name.size() < kMaxMergedName) merged.name += " + " + rule.name;
    for (std::size_t i = 0; i < merged.values.size(); ++i)
      if (!merged.values[i]) merged.values[i] = rule.values[i];
    if (!merged.colour) merged.colour = rule.colour;
  }
  m_summary.Say("net classes made of others",
                "The net class " + Quoted(merged.name) + " holds the nets that several classes name");
  m_classes.push_back(std::move(merged));
  return at->second;
}

std::vector<std::size_t> CBoardClasses::Resolve(std::span<const std::string_view> nets) {
  if (!m_byName.contains(kDefaultClass)) Add({kDefaultClass, {}, 0, {}}, 0);
  const auto first = m_classes.begin(), found = first + static_cast<std::ptrdiff_t>(m_byName[kDefaultClass]);
  std::rotate(first, found, found + 1);
  m_classes[0].priority = std::numeric_limits<std::int64_t>::max();
  for (std::size_t i = 0; i < m_classes.size(); ++i) m_byName[m_classes[i].name] = static_cast<std::uint32_t>(i);

  std::vector<std::size_t> classes;
  for (Claims& claims : CollectClaims(nets)) classes.push_back(ClassOf(claims));
  for (SClassRule& rule : m_classes)
    for (std::size_t i = 0; i < rule.values.size(); ++i)
      if (!rule.values[i]) rule.values[i] = m_classes[0].values[i];
  return classes;
}
