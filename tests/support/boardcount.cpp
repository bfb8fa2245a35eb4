#include "support/boardcount.h"

#include <cstdlib>
#include <functional>
#include <regex>
#include <set>
#include <vector>

namespace {

/// A list of the file, read without regard for anything but brackets, quotation marks and blanks.
struct SItem {
  CString word;
  std::vector<SItem> items;
  const SItem* Find(const CString& tag) const {
    for (const SItem& item : items)
      if (item.Tag() == tag) return &item;
    return nullptr;
  }
  CString Tag() const { return items.empty() ? "" : items[0].word; }
  CString Word(std::size_t index) const { return index < items.size() ? items[index].word : ""; }
  double Number(std::size_t index) const { return std::strtod(Word(index).c_str(), nullptr); }
  double Of(const CString& tag, std::size_t index = 1) const { return Find(tag) ? Find(tag)->Number(index) : 0; }
};

SItem Scan(const CString& text) {
  static const std::regex kTokens(R"re(\(|\)|"((?:[^"\\]|\\.)*)"|[^\s()"]+)re");
  std::vector<SItem> open(1);
  for (std::sregex_iterator at(text.begin(), text.end(), kTokens), end; at != end; ++at) {
    const CString token = at->str();
    if (token == "(") {
      open.emplace_back();
    } else if (token == ")") {
      SItem done = std::move(open.back());
      open.pop_back();
      open.back().items.push_back(std::move(done));
    } else {
      open.back().items.push_back({(*at)[1].matched ? (*at)[1].str() : token, {}});
    }
  }
  return open[0].items[0];
}

void ForEach(const SItem& item, const std::function<void(const SItem&)>& visit) {
  visit(item);
  for (const SItem& inner : item.items) ForEach(inner, visit);
}

}  // namespace

BoardCounts CountBoard(const CString& boardText, const CString& project) {
  const SItem board = Scan(boardText);
  using Key = std::vector<double>;
  BoardCounts counts;
  std::set<double> tracks;
  std::set<Key> pads, texts;
  std::set<CString> spans, copperKinds;
  std::map<CString, double> classDrill;  // by net
  double defaultDrill = 0;
  const auto via = [&](double size, double drill) { pads.insert({0, size, 0, 0, drill, 0, 0}); };

  std::set<CString> classes{"Default"};
  for (const SItem& item : board.items) {
    if (item.Tag() == "net" && item.Word(1) != "0") ++counts["nets"];
    if (item.Tag() != "net_class") continue;
    classes.insert(item.Word(1));
    if (item.Word(1) == "Default") defaultDrill = item.Of("via_drill");
    for (const SItem& net : item.items)
      if (net.Tag() == "add_net") classDrill[net.Word(1)] = item.Of("via_drill");
    for (const char* const width : {"trace_width", "diff_pair_width"})
      if (item.Find(width)) tracks.insert(item.Of(width));
    via(item.Of("via_dia"), item.Of("via_drill"));
    via(item.Of("uvia_dia"), item.Of("uvia_drill"));
  }
  std::map<CString, CString> netNames;
  ForEach(board, [&](const SItem& item) {
    const CString tag = item.Tag();
    if (tag == "net") netNames[item.Word(1)] = item.Word(2);
    if (tag == "user_trace_width") tracks.insert(item.Number(1));
    if (tag == "user_via") via(item.Number(1), item.Number(2));
    if (tag == "layers" && !counts["layers"]) {
      counts["layers"] = item.items.size() - 1;
      for (const SItem& row : item.items)
        if (const CString kind = row.Word(2); kind == "signal" || kind == "power" || kind == "mixed")
          copperKinds.insert(kind);
    }
    if (tag == "module" || tag == "footprint") ++counts["components"];
    if (tag == "zone") ++counts["areas"];
    if (tag == "gr_text") ++counts["texts"];
    if (tag == "gr_line" || tag == "gr_rect" || tag == "gr_poly") ++counts["shapes"];
    if (tag == "segment") {
      ++counts["segments"];
      tracks.insert(item.Of("width"));
    }
    if (tag == "via") {
      ++counts["vias"];
      const SItem& layers = *item.Find("layers");
      spans.insert(std::min(layers.Word(1), layers.Word(2)) + '|' + std::max(layers.Word(1), layers.Word(2)));
      const CString& net = netNames[item.Find("net")->Word(1)];
      via(item.Of("size"), item.Find("drill")      ? item.Of("drill")
                           : classDrill.count(net) ? classDrill[net]
                                                   : defaultDrill);
    }
    if (tag == "pad") {
      ++counts["pads"];
      if (item.Find("net") && item.Find("net")->Word(1) != "0") ++counts["nodes"];
      const double width = item.Of("size", 1), height = item.Of("size", 2);
      const SItem* const drill = item.Find("drill");
      const bool oval = drill && drill->Word(1) == "oval";
      const double drillWidth = drill ? drill->Number(oval ? 2 : 1) : 0, drillHeight = oval ? drill->Number(3) : 0;
      const bool slot = oval && drillHeight != drillWidth;
      const double unplated = item.Word(2) == "np_thru_hole";
      const CString shape = item.Word(3);
      if (shape == "circle" || (shape == "oval" && width == height)) {
        pads.insert({0, width, 0, 0, drillWidth, slot ? drillHeight : 0, unplated});
      } else {
        pads.insert({shape == "rect"   ? 1.0
                     : shape == "oval" ? 2.0
                                       : 3.0,
                     width, height, item.Of("roundrect_rratio"), drillWidth, slot ? drillHeight : 0, unplated});
      }
    }
    if ((tag == "fp_text" || tag == "gr_text" || tag == "property") && item.Find("at")) {
      const SItem& font = *item.Find("effects")->Find("font");
      texts.insert({font.Of("size", 1), font.Of("size", 2), font.Of("thickness")});
    }
  });

  const auto numbers = [&](const char* pattern, const std::function<void(double, double)>& take) {
    const std::regex regex(pattern);
    for (std::sregex_iterator at(project.begin(), project.end(), regex), end; at != end; ++at)
      take(std::strtod((*at)[1].str().c_str(), nullptr),
           at->size() > 2 ? std::strtod((*at)[2].str().c_str(), nullptr) : 0);
  };
  numbers(R"("track_width": ([0-9.]+))", [&](double width, double) { tracks.insert(width); });
  numbers(R"("diff_pair_width": ([0-9.]+))", [&](double width, double) { tracks.insert(width); });
  numbers(R"("via_diameter": ([0-9.]+),\s*"via_drill": ([0-9.]+))", via);
  numbers(R"("microvia_diameter": ([0-9.]+),\s*"microvia_drill": ([0-9.]+))", via);
  numbers(R"("diameter": ([1-9.]*[0-9.]*[1-9]),\s*"drill": ([0-9.]+))", via);
  if (const std::size_t at = project.find("\"track_widths\""); at != CString::npos) {
    const CString list = project.substr(at, project.find(']', at) - at);
    static const std::regex kNumber("[0-9][0-9.]*");
    for (std::sregex_iterator number(list.begin(), list.end(), kNumber), end; number != end; ++number)
      if (const double width = std::strtod(number->str().c_str(), nullptr); width != 0) tracks.insert(width);
  }
  static const std::regex kClass(R"re("name": "([^"]*)")re");
  for (std::sregex_iterator at(project.begin(), project.end(), kClass), end; at != end; ++at) classes.insert((*at)[1]);

  counts["classes"] = classes.size();
  counts["track styles"] = tracks.size();
  counts["pad styles"] = pads.size();
  counts["text styles"] = texts.size();
  counts["spans"] = spans.size();
  counts["layer types"] = copperKinds.size();
  std::erase_if(counts, [](const auto& one) { return one.second == 0; });
  return counts;
}
