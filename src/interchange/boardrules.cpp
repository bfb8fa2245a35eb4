#include "interchange/boardrules.h"

#include <algorithm>

#include "interchange/boardvalues.h"
#include "interchange/boardwords.h"

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

/// The gap of predefined differential pairs has no place: their width becomes a track style.
void LeaveOutGap(CImportSummary& summary, int width, int gap) {
  const CString args[] = {Millimetres(gap), Millimetres(width)};
  if (gap > 0)
    summary.Say("settings", FormatText("Left out: the gap, %1 mm, of differential pairs of the width %2 mm", args));
}

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
      classes.Assign(CString(Word(value).Text()), rule.name);
    } else {
      LeaveOut(m_summary, "net_class", value);
    }
  }
  const CString args[] = {Quoted(rule.name), Quoted(Word(list, 1).Text())};
  if (!Word(list, 1).Text().empty() && rule.name != CBoardClasses::kDefaultClass)  // that one's is always the same
    m_summary.Say("settings", FormatText("Left out: the description of the net class %1, %2", args));
  classes.Add(std::move(rule), list.At());
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
      if (const CSNode gap = value.Value(1)) LeaveOutGap(m_summary, trackWidths.back(), Size(gap));
    } else if (value.IsList() && rule != std::end(kBoardRules)) {
      for (const auto member : rule->members) spacings.*member = Dsu{SizeOf(value)};
    } else if (value.Tag() != "aux_axis_origin") {  // the origin is a value of the design
      LeaveOut(m_summary, "setup", value);
    }
  }
}

void CBoardRules::ReadProject(const SJson& project) {
  for (const SJson& section : project.items)
    if (section.name != "board" && section.name != "net_settings" && section.name != "meta")
      LeaveOut(m_summary, "project", section);
  const SJson& board = project["board"];
  for (const SJson& section : Items(board, EKind::Object, "an object"))
    if (section.name != "design_settings") LeaveOut(m_summary, "project board", section);
  ReadSizes(board["design_settings"]);
  for (const SJson& section : Items(project["net_settings"], EKind::Object, "an object")) ReadNetSettings(section);
}

void CBoardRules::ReadNetSettings(const SJson& section) {
  constexpr std::int64_t kMergesFrom = 4;  // the version of these settings since which the classes of a net merge
  if (section.name == "classes") {
    for (const SJson& one : Items(section, EKind::Array, "a list")) ReadJsonClass(one);
  } else if (section.name == "netclass_assignments") {
    for (const SJson& net : Items(section, EKind::Object, "an object")) {
      if (net.Is(EKind::Text)) {
        classes.Assign(net.name, net.text);
        continue;
      }
      for (const SJson& one : Items(net, EKind::Array, "a net class or a list of them"))
        classes.Assign(net.name, JsonText(one));
    }
  } else if (section.name == "netclass_patterns") {
    for (const SJson& one : Items(section, EKind::Array, "a list")) {
      Expect(one, EKind::Object, "an object");
      classes.AssignPattern(JsonText(one["pattern"]), JsonText(one["netclass"]));
    }
  } else if (section.name == "net_colors") {
    for (const SJson& one : Items(section, EKind::Object, "an object"))
      if (const auto colour = ReadColour(JsonText(one))) netColours[one.name] = *colour;
  } else if (section.name == "meta") {
    if (std::int64_t version = 0; ParseInt(section["version"].text, version))
      classes.SetMerging(version >= kMergesFrom);
  } else {
    LeaveOut(m_summary, "net_settings", section);
  }
}

void CBoardRules::ReadJsonClass(const SJson& json) {
  Expect(json, EKind::Object, "an object");
  SClassRule rule;
  rule.name = JsonText(json["name"]);
  for (const SJson& value : json.items) {
    const auto* const names = std::find_if(std::begin(kValueNames), std::end(kValueNames),
                                           [&](const SValueNames& one) { return one.project == value.name; });
    if (value.Is(EKind::Null) || value.name == "name") continue;
    if (names != std::end(kValueNames)) {
      rule[static_cast<EClassValue>(names - kValueNames)] = Size(value);
    } else if (value.name == "nets") {
      for (const SJson& net : Items(value, EKind::Array, "a list")) classes.Assign(JsonText(net), rule.name);
    } else if (value.name == "priority") {
      if (!ParseInt(value.text, rule.priority)) throw STextFault{value.at, "\"priority\" must be a whole number"};
    } else if (value.name == "pcb_color") {
      rule.colour = ReadColour(JsonText(value));
    } else {
      LeaveOut(m_summary, "net class", value);
    }
  }
  classes.Add(std::move(rule), json.at);
}

void CBoardRules::ReadSizes(const SJson& settings) {
  for (const SJson& section : Items(settings, EKind::Object, "an object")) {
    const bool pairs = section.name == "diff_pair_dimensions", vias = section.name == "via_dimensions";
    if (section.name == "rules") {
      for (const SJson& value : Items(section, EKind::Object, "an object")) {
        const auto* const rule = std::find_if(std::begin(kBoardRules), std::end(kBoardRules),
                                              [&](const SBoardRule& one) { return one.project == value.name; });
        if (rule == std::end(kBoardRules)) {
          LeaveOut(m_summary, "rules", value);
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
        if (const SJson& gap = item["gap"]; pairs && !gap.Is(EKind::Null)) LeaveOutGap(m_summary, size, Size(gap));
      }
    } else if (section.name != "meta") {
      LeaveOut(m_summary, "design_settings", section);
    }
  }
}
