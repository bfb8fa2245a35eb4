#include "interchange/boardrules.h"

#include <algorithm>
#include <limits>

#include "interchange/boardvalues.h"

namespace {
using EKind = SJson::EKind;

/// How the values of a class are called in project files and in board files.
struct SValueNames {
  std::string_view project;
  std::string_view board;
};
constexpr SValueNames kValueNames[] = {
    {"clearance", "clearance"},
    {"track_width", "trace_width"},
    {"via_diameter", "via_dia"},
    {"via_drill", "via_drill"},
    {"microvia_diameter", "uvia_dia"},
    {"microvia_drill", "uvia_drill"},
    {"diff_pair_width", "diff_pair_width"},
    {"diff_pair_gap", "diff_pair_gap"},
    {"diff_pair_via_gap", "diff_pair_via_gap"},
};
static_assert(std::size(kValueNames) == static_cast<std::size_t>(EClassValue::Count));

/// What holds for the whole board: name in project files, in board files, and the spacings it sets.
struct SBoardRule {
  std::string_view project;
  std::string_view board;
  std::vector<Dsu SDesignSpacingsFields::*> members;
};
const SBoardRule kBoardRules[] = {
    {"min_clearance",
     "",
     {&SDesignSpacingsFields::padToPad, &SDesignSpacingsFields::padToTrack, &SDesignSpacingsFields::padToVia,
      &SDesignSpacingsFields::trackToTrack, &SDesignSpacingsFields::trackToVia, &SDesignSpacingsFields::viaToVia}},
    {"min_copper_edge_clearance", "", {&SDesignSpacingsFields::toBoard}},
    {"min_hole_to_hole", "", {&SDesignSpacingsFields::holeToHole}},
    {"min_track_width", "trace_min", {&SDesignSpacingsFields::minimumTrackWidth}},
    {"min_through_hole_diameter", "via_min_drill", {&SDesignSpacingsFields::minimumDrill}},
    {"min_via_annular_width", "", {&SDesignSpacingsFields::minimumAnnularRing}},
};

CString Called(std::string_view what, std::string_view of) { return CString(what) + " of " + CString(of); }

void Expect(const SJson& json, EKind kind, const char* what) {
  if (!json.Is(kind)) throw STextFault{json.at, Quoted(json.name) + " must be " + what};
}
const CString& JsonText(const SJson& json) {
  Expect(json, EKind::Text, "a text");
  return json.text;
}
/// The items of a list or object; none where it is absent.
const std::vector<SJson>& Items(const SJson& json, EKind kind, const char* what) {
  if (!json.Is(EKind::Null)) Expect(json, kind, what);
  return json.items;
}

/// "rgb(255, 128, 0)" or "rgba(255, 128, 0, 0.5)". None for a colour that does not show at all, and for other texts.
std::optional<CColour> ReadColour(std::string_view text) {
  const std::size_t open = text.find('(');
  if (open == text.npos || !text.ends_with(')')) return {};
  std::vector<std::string_view> parts;
  for (std::size_t from = open + 1, to = 0; from < text.size(); from = to + 1) {
    to = std::min(text.find(',', from), text.size() - 1);
    parts.push_back(Trim(text.substr(from, to - from)));
  }
  if (parts.size() < 3 || (parts.size() > 3 && parts[3].find_first_not_of("0.") == CString::npos)) return {};
  std::uint32_t rgb = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    std::int64_t value = 0;
    if (!ParseInt(parts[i], value) || value < 0 || value > 255) return {};
    rgb = rgb << 8 | static_cast<std::uint32_t>(value);
  }
  return CColour{rgb};
}
}  // namespace

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

void CBoardRules::AddClass(SClassRule rule, std::size_t at) {
  if (!m_byName.emplace(rule.name, m_classes.size()).second)
    throw STextFault{at, "the net class " + Quoted(rule.name) + " is there twice"};
  m_classes.push_back(std::move(rule));
}

void CBoardRules::Assign(CString net, CString className) {
  m_assigned[std::move(net)].classes.push_back(std::move(className));
}

void CBoardRules::ReadClass(CSNode list) {
  SClassRule rule;
  rule.name = Word(list).Text();
  for (const CSNode value : list) {
    if (!value.IsList()) continue;  // the name and a description
    const auto* const names = std::find_if(std::begin(kValueNames), std::end(kValueNames),
                                           [&](const SValueNames& one) { return one.board == value.Tag(); });
    if (names != std::end(kValueNames)) {
      rule[static_cast<EClassValue>(names - kValueNames)] = SizeOf(value);
    } else if (value.Tag() == "add_net") {
      Assign(CString(Word(value).Text()), rule.name);
    } else {
      m_summary.LeaveOut(Called(value.Tag(), "net_class"));
    }
  }
  if (!Word(list, 1).Text().empty()) m_summary.LeaveOut("description of net_class");
  AddClass(std::move(rule), list.At());
}

void CBoardRules::ReadSetup(CSNode list) {
  for (const CSNode value : list) {
    const auto* const rule = std::find_if(std::begin(kBoardRules), std::end(kBoardRules),
                                          [&](const SBoardRule& one) { return value && one.board == value.Tag(); });
    if (value.Tag() == "user_trace_width") {
      trackWidths.push_back(SizeOf(value));
    } else if (value.Tag() == "user_via") {
      viaSizes.push_back({SizeOf(value), value.Value(1) ? Size(Word(value, 1)) : 0});
    } else if (value.Tag() == "user_diff_pair") {
      trackWidths.push_back(SizeOf(value));
      m_summary.LeaveOut("gap of user_diff_pair");
    } else if (value.IsList() && rule != std::end(kBoardRules)) {
      for (const auto member : rule->members) spacings.*member = Dsu{SizeOf(value)};
    } else if (value.Tag() != "aux_axis_origin") {  // the origin is a value of the design
      m_summary.LeaveOut(Called(value.IsList() ? value.Tag() : value.Text(), "setup"));
    }
  }
}

void CBoardRules::ReadProject(const SJson& project) {
  for (const SJson& section : project.items)
    if (section.name != "board" && section.name != "net_settings" && section.name != "meta")
      m_summary.LeaveOut(Called(section.name, "project"));
  const SJson& board = project["board"];
  for (const SJson& section : Items(board, EKind::Object, "an object"))
    if (section.name != "design_settings") m_summary.LeaveOut(Called(section.name, "project board"));
  ReadSizes(board["design_settings"]);

  for (const SJson& section : Items(project["net_settings"], EKind::Object, "an object")) {
    if (section.name == "classes") {
      for (const SJson& one : Items(section, EKind::Array, "a list")) ReadJsonClass(one);
    } else if (section.name == "netclass_assignments") {
      for (const SJson& net : Items(section, EKind::Object, "an object")) {
        if (net.Is(EKind::Text)) {
          Assign(net.name, net.text);
          continue;
        }
        for (const SJson& one : Items(net, EKind::Array, "a net class or a list of them"))
          Assign(net.name, JsonText(one));
      }
    } else if (section.name == "netclass_patterns") {
      for (const SJson& one : Items(section, EKind::Array, "a list")) {
        Expect(one, EKind::Object, "an object");
        m_patterns.push_back({JsonText(one["pattern"]), JsonText(one["netclass"])});
      }
    } else if (section.name != "meta" && !section.Is(EKind::Null)) {
      m_summary.LeaveOut(Called(section.name, "net_settings"));
    }
  }
}

void CBoardRules::ReadJsonClass(const SJson& json) {
  Expect(json, EKind::Object, "an object");
  SClassRule rule;
  rule.name = JsonText(json["name"]);
  if (rule.name == kDefaultClass) rule.priority = std::numeric_limits<std::int64_t>::max();
  for (const SJson& value : json.items) {
    const auto* const names = std::find_if(std::begin(kValueNames), std::end(kValueNames),
                                           [&](const SValueNames& one) { return one.project == value.name; });
    if (value.Is(EKind::Null) || value.name == "name") continue;
    if (names != std::end(kValueNames)) {
      rule[static_cast<EClassValue>(names - kValueNames)] = Size(value);
    } else if (value.name == "nets") {
      for (const SJson& net : Items(value, EKind::Array, "a list")) Assign(JsonText(net), rule.name);
    } else if (value.name == "priority") {
      if (!ParseInt(value.text, rule.priority)) throw STextFault{value.at, "\"priority\" must be a whole number"};
    } else if (value.name == "pcb_color") {
      rule.colour = ReadColour(JsonText(value));
    } else {
      m_summary.LeaveOut(Called(value.name, "net class"));
    }
  }
  AddClass(std::move(rule), json.at);
}

void CBoardRules::ReadSizes(const SJson& settings) {
  for (const SJson& section : Items(settings, EKind::Object, "an object")) {
    const bool pairs = section.name == "diff_pair_dimensions", vias = section.name == "via_dimensions";
    if (section.name == "rules") {
      for (const SJson& value : Items(section, EKind::Object, "an object")) {
        const auto* const rule = std::find_if(std::begin(kBoardRules), std::end(kBoardRules),
                                              [&](const SBoardRule& one) { return one.project == value.name; });
        if (rule == std::end(kBoardRules)) {
          m_summary.LeaveOut(Called(value.name, "rules"));
          continue;
        }
        for (const auto member : rule->members) spacings.*member = Dsu{Size(value)};
      }
    } else if (section.name == "track_widths" || pairs || vias) {
      for (const SJson& item : Items(section, EKind::Array, "a list")) {
        if (pairs || vias) Expect(item, EKind::Object, "an object");
        const int size = Size(pairs ? item["width"] : vias ? item["diameter"] : item);
        if (size == 0) continue;  // the first entry: as the net class says
        if (vias) {
          viaSizes.push_back({size, Size(item["drill"])});
        } else {
          trackWidths.push_back(size);
        }
        if (pairs) m_summary.LeaveOut("gap of diff_pair_dimensions");
      }
    } else if (section.name != "meta") {
      m_summary.LeaveOut(Called(section.name, "design_settings"));
    }
  }
}

void CBoardRules::Finish() {
  if (!m_byName.contains(kDefaultClass)) AddClass({kDefaultClass, {}, 0, {}}, 0);
  const auto first = m_classes.begin(), found = first + static_cast<std::ptrdiff_t>(m_byName[kDefaultClass]);
  std::rotate(first, found, found + 1);
  m_classes[0].priority = std::numeric_limits<std::int64_t>::max();
  for (std::size_t i = 0; i < m_classes.size(); ++i) {
    m_byName[m_classes[i].name] = i;
    for (std::size_t value = 0; value < m_classes[i].values.size(); ++value)
      if (!m_classes[i].values[value]) m_classes[i].values[value] = m_classes[0].values[value];
  }
}

std::size_t CBoardRules::ClassOf(std::string_view net) {
  std::size_t best = 0;
  const auto claim = [&](const CString& className) {
    const auto found = m_byName.find(className);
    if (found == m_byName.end()) {
      m_summary.LeaveOut("assignment of a net to a net class that does not exist");
    } else if (m_classes[found->second].priority < m_classes[best].priority) {
      best = found->second;
    }
  };
  if (const auto assigned = m_assigned.find(CString(net)); assigned != m_assigned.end()) {
    assigned->second.matched = true;
    for (const CString& one : assigned->second.classes) claim(one);
  }
  for (SPattern& one : m_patterns) {
    if (!MatchesWildcard(one.pattern, net)) continue;
    one.matched = true;
    claim(one.className);
  }
  return best;
}

void CBoardRules::CountUnused() {
  for (const auto& [net, assigned] : m_assigned)
    if (!assigned.matched) m_summary.LeaveOut("net of a net class that the board does not have");
  for (const SPattern& one : m_patterns)
    if (!one.matched) m_summary.LeaveOut("net class pattern that no net matches");
}
