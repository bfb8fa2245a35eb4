#include "interchange/boardlayers.h"

#include <algorithm>
#include <array>

#include "interchange/boardvalues.h"

namespace {
/// What a canonical name says. Layers of one side stand in the stack by rank.
struct SMeaning {
  int side = ELayerSide::All;
  int usage = ELayerUsage::Documentation;
  int rank = 0;
};

/// The layers that both outer sides have, from the copper outwards.
struct SOuter {
  std::string_view name;
  int usage;
};
constexpr SOuter kOuter[] = {{"Cu", ELayerUsage::Electrical},       {"Mask", ELayerUsage::SolderMask},
                             {"Paste", ELayerUsage::PasteMask},     {"SilkS", ELayerUsage::Documentation},
                             {"Adhes", ELayerUsage::Documentation}, {"CrtYd", ELayerUsage::Documentation},
                             {"Fab", ELayerUsage::Documentation}};
constexpr std::string_view kSideless[] = {"Dwgs.User", "Cmts.User", "Eco1.User", "Eco2.User", "Edge.Cuts", "Margin"};

constexpr int kLegacyInner = 30, kLegacyBack = 31;
/// The layers behind the copper in files that number their layers.
constexpr const char* kLegacyNames[] = {"B.Adhes",   "F.Adhes", "B.Paste",   "F.Paste",   "B.SilkS",   "F.SilkS",
                                        "B.Mask",    "F.Mask",  "Dwgs.User", "Cmts.User", "Eco1.User", "Eco2.User",
                                        "Edge.Cuts", "Margin",  "B.CrtYd",   "F.CrtYd",   "B.Fab",     "F.Fab"};

CString LegacyName(std::int64_t number) {
  if (number == 0) return "F.Cu";
  if (number > 0 && number <= kLegacyInner) return "In" + IntText(number) + ".Cu";
  if (number == kLegacyBack) return "B.Cu";
  const std::int64_t beyond = number - kLegacyBack - 1;
  return beyond >= 0 && beyond < std::ssize(kLegacyNames) ? kLegacyNames[beyond] : "";
}

/// Reads the number in "In7.Cu" or "User.7". False for a name of another form.
bool NumberIn(std::string_view name, std::string_view before, std::string_view behind, std::int64_t& number) {
  return name.size() > before.size() + behind.size() && name.starts_with(before) && name.ends_with(behind) &&
         IsDigit(name[before.size()]) &&
         ParseInt(name.substr(before.size(), name.size() - before.size() - behind.size()), number);
}

/// False, `meaning` untouched, for a name that is not canonical.
bool Meaning(std::string_view name, SMeaning& meaning) {
  if (name.starts_with("F.") || name.starts_with("B.")) {
    const auto* const outer = std::find_if(std::begin(kOuter), std::end(kOuter),
                                           [&](const SOuter& one) { return one.name == name.substr(2); });
    if (outer == std::end(kOuter)) return false;
    const bool isFront = name[0] == 'F';
    const auto rank = static_cast<int>(outer - kOuter);
    meaning = {isFront ? ELayerSide::Top : ELayerSide::Bottom, outer->usage, isFront ? -rank : rank};
    return true;
  }
  std::int64_t number = 0;
  if (NumberIn(name, "In", ".Cu", number) && number > 0 && number < 1000) {
    meaning = {ELayerSide::Inner, ELayerUsage::Electrical, static_cast<int>(number)};
    return true;
  }
  if (!NumberIn(name, "User.", "", number) &&
      std::find(std::begin(kSideless), std::end(kSideless), name) == std::end(kSideless))
    return false;
  meaning = {};
  return true;
}

/// How a board file calls the kinds of copper layers, and the layer types made of them.
struct SCopperKind {
  std::string_view word;
  const char* type;
  int bias;
};
constexpr SCopperKind kCopperKinds[] = {{"signal", "Signal", ELayerBias::Any},
                                        {"power", "Power", ELayerBias::PowerPlane},
                                        {"mixed", "Mixed", ELayerBias::Any},
                                        {"jumper", "Jumper", ELayerBias::Any}};

struct SBoardLayer {
  CSNode row;
  CString canonicalName;
  SMeaning meaning;
};

CLayerType* TypeOf(const SCopperKind& kind, CPcbDesign& design, CImportNames& names) {
  if (CLayerType* const type = design.FindLayerType(kind.type)) return type;
  CLayerType type;
  type.SetName(names.TakeUnlisted("layer type", kind.type));
  type.SetUsage(ELayerUsage::Electrical);
  return design.layerTypes.Add(type);
}

/// Colours of inner layers. Neighbours lie far apart on the circle of hues (138 of 360 degrees), and no hue comes back
/// within 60 layers; from then on they are darker.
CColour InnerColour(int rank) {
  const int hue = 352 + rank * 138, sector = hue / 60 % 6, light = std::max(200 - (rank - 1) / 60 * 20, 60);
  const int low = light * 2 / 5, part = (light - low) * (hue % 60) / 60;
  const int up = low + part, down = light - part;
  const std::array<int, 3> channels[] = {{light, up, low},   {down, light, low}, {low, light, up},
                                         {low, down, light}, {up, low, light},   {light, low, down}};
  const auto& [red, green, blue] = channels[sector];
  return CColour{static_cast<std::uint32_t>(red << 16 | green << 8 | blue)};
}

CColour ColourOf(const SMeaning& meaning) {
  switch (meaning.usage) {
    case ELayerUsage::Electrical:
      return meaning.side == ELayerSide::Top      ? CColour{0xC83434u}
             : meaning.side == ELayerSide::Bottom ? CColour{0x4D7FC4u}
                                                  : InnerColour(meaning.rank);
    case ELayerUsage::SolderMask: return CColour{0x8A3A8Au};
    case ELayerUsage::PasteMask: return CColour{0xB4A09Au};
    default: return CColour{0xC8C8C8u};
  }
}

CLayer* MakeLayer(const SBoardLayer& from, bool numbered, CPcbDesign& design, CImportNames& names) {
  const CSNode kindWord = Word(from.row, 1), userName = from.row.Value(2);
  CLayer layer;
  const bool hasUserName = !numbered && userName.IsWord() && (userName.IsQuoted() || userName.Text() != "hide");
  const CSNode name = hasUserName ? userName : Word(from.row, 0);
  layer.SetName(names.Take("layer", name.Text()));
  layer.SetSide(from.meaning.side);
  layer.SetUsage(from.meaning.usage);
  layer.SetColour(ColourOf(from.meaning));
  for (const CSNode value : from.row)
    if (!value.IsQuoted() && value.Text() == "hide") layer.SetDisplayed(false);
  if (from.meaning.usage == ELayerUsage::Electrical) {
    const auto* const kind = std::find_if(std::begin(kCopperKinds), std::end(kCopperKinds),
                                          [&](const SCopperKind& one) { return one.word == kindWord.Text(); });
    if (kind == std::end(kCopperKinds))
      Fault(kindWord, Quoted(kindWord.Text()) + " is no kind of copper layer: signal, power, mixed or jumper");
    layer.SetType(TypeOf(*kind, design, names));
    layer.SetBias(kind->bias);
  }
  return design.layers.Add(layer);
}
}  // namespace

CBoardLayers::CBoardLayers(CSNode table, std::int64_t format, CPcbDesign& design, CImportNames& names) {
  static const CString kUsualTable =
      "(layers (0 F.Cu signal) (31 B.Cu signal) (32 B.Adhes user) (33 F.Adhes user) (34 B.Paste user) (35 F.Paste user)"
      " (36 B.SilkS user) (37 F.SilkS user) (38 B.Mask user) (39 F.Mask user) (40 Dwgs.User user) (41 Cmts.User user)"
      " (42 Eco1.User user) (43 Eco2.User user) (44 Edge.Cuts user) (45 Margin user) (46 B.CrtYd user)"
      " (47 F.CrtYd user) (48 B.Fab user) (49 F.Fab user))";
  if (!table) table = m_usual.emplace(kUsualTable).Root();
  const bool numbered = format <= kLastNumberedLayers;
  std::vector<SBoardLayer> found;
  for (const CSNode row : table) {
    if (found.size() == kMaxLayers) Fault(row, "a board has at most " + IntText(std::int64_t{kMaxLayers}) + " layers");
    std::int64_t number = 0;
    if (!ParseInt(row.Tag(), number)) Fault(row, "a layer must begin with its number");
    SBoardLayer layer{row, numbered ? LegacyName(number) : CString(Word(row).Text()), {}};
    if (!Meaning(layer.canonicalName, layer.meaning) && numbered) Fault(row, "there is no layer of this number");
    found.push_back(std::move(layer));
  }
  const auto place = [](const SBoardLayer& one) {
    constexpr int kOrder[] = {0, 2, 1, 3};  // by side
    return std::pair(kOrder[one.meaning.side], one.meaning.rank);
  };
  std::stable_sort(found.begin(), found.end(), [&](const auto& a, const auto& b) { return place(a) < place(b); });

  while (CRecordBase* const layer = design.layers.LastRecord()) {
    if (static_cast<CLayer*>(layer)->IsBuiltIn()) break;
    design.layers.Remove(*layer);
  }
  for (const SBoardLayer& one : found) {
    CLayer* const layer = MakeLayer(one, numbered, design, names);
    if (!m_byKey.emplace(Word(one.row).Text(), layer).second ||
        !m_byCanonicalName.emplace(one.canonicalName, layer).second)
      Fault(one.row, "the layer " + Quoted(Word(one.row).Text()) + " stands in the table twice");
    m_inOrder.emplace_back(one.canonicalName, layer);
  }
}

CLayer* CBoardLayers::Find(CSNode key) const {
  if (const auto found = m_byKey.find(key.Text()); found != m_byKey.end()) return found->second;
  SMeaning meaning;
  if (!Meaning(key.Text(), meaning)) Fault(key, "there is no layer " + Quoted(key.Text()));
  const auto found = m_byCanonicalName.find(CString(key.Text()));
  return found != m_byCanonicalName.end() ? found->second : nullptr;
}

std::vector<CLayer*> CBoardLayers::All(CSNode list) const {
  std::unordered_set<const CLayer*> wanted;
  for (const CSNode key : list) {
    const std::string_view text = key.Text();
    if (!key.IsWord()) Fault(key, "a layer name is a word");
    if (text.starts_with("*.") || text.starts_with("F&B.")) {
      const bool inner = text[0] == '*';
      const std::string_view ending = text.substr(inner ? 1 : 3);
      for (const auto& [name, layer] : m_inOrder)
        if (name.ends_with(ending) && (inner || name.size() == ending.size() + 1)) wanted.insert(layer);
    } else if (CLayer* const layer = Find(key)) {
      wanted.insert(layer);
    }
  }
  std::vector<CLayer*> layers;
  for (const auto& [name, layer] : m_inOrder)
    if (wanted.contains(layer)) layers.push_back(layer);
  return layers;
}

CLayer* CBoardLayers::Opposite(CLayer* layer) const {
  const auto at =
      std::find_if(m_inOrder.begin(), m_inOrder.end(), [&](const auto& one) { return one.second == layer; });
  if (at == m_inOrder.end() || (!at->first.starts_with("F.") && !at->first.starts_with("B."))) return layer;
  const auto found = m_byCanonicalName.find((at->first[0] == 'F' ? 'B' : 'F') + at->first.substr(1));
  return found != m_byCanonicalName.end() ? found->second : layer;
}
