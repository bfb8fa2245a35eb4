#include "interchange/boardwords.h"

#include <algorithm>

#include "model/base/decimal.h"

namespace {
/// How a setting shows its value; items show none.
enum class EMeaning { Item, MendedItem, Setting, LengthSetting, NumberSetting, TextSetting };

struct SMeaningOf {
  std::string_view owner;  // without what only tells apart the things drawn, see Owner
  std::string_view word;
  EMeaning meaning;
  const char* plainWords;
  const char* usual = "";  // the value that holds where the file has none, beside 0, "no" and the like
};
using enum EMeaning;

constexpr std::int32_t kScale = 1'000'000;  // numbers are compared and shown with so much of a fraction
constexpr std::size_t kMostShown = 256;     // bytes of a value; messages show fewer

constexpr SMeaningOf kMeanings[] = {
    // Settings of the board
    {"setup", "stackup", Setting, "the thicknesses and materials of the stack"},
    {"general", "thickness", LengthSetting, "the thickness of the board", "1.6"},
    {"setup", "zone_clearance", LengthSetting, "the usual clearance of zones", "0.508"},
    {"setup", "via_min_size", LengthSetting, "the least diameter of vias", "0.4"},
    {"setup", "uvia_min_size", LengthSetting, "the least diameter of microvias", "0.2"},
    {"setup", "uvia_min_drill", LengthSetting, "the least drill of microvias", "0.1"},
    {"setup", "uvias_allowed", Setting, "that microvias are allowed"},
    {"setup", "blind_buried_vias_allowed", Setting, "that blind and buried vias are allowed"},
    {"setup", "pad_to_mask_clearance", LengthSetting, "the oversize of the solder mask", "0.051"},
    {"setup", "solder_mask_min_width", LengthSetting, "the least width of the solder mask", "0.25"},
    {"setup", "pad_to_paste_clearance", LengthSetting, "the oversize of the paste mask"},
    {"setup", "pad_to_paste_clearance_ratio", NumberSetting, "the oversize of the paste mask as a share of the pad"},
    {"setup", "allow_soldermask_bridges_in_footprints", Setting, "that footprints may bridge the solder mask"},
    {"setup", "tenting", TextSetting, "the sides on which vias are tented", "front back"},
    {"setup", "grid_origin", TextSetting, "the origin of the grid"},
    {"rules", "allow_microvias", Setting, "that microvias are allowed"},
    {"rules", "allow_blind_buried_vias", Setting, "that blind and buried vias are allowed"},
    {"rules", "min_via_diameter", LengthSetting, "the least diameter of vias", "0.5"},
    {"rules", "min_microvia_diameter", LengthSetting, "the least diameter of microvias", "0.2"},
    {"rules", "min_microvia_drill", LengthSetting, "the least drill of microvias", "0.1"},
    {"rules", "min_hole_clearance", LengthSetting, "the least clearance of holes", "0.25"},
    {"rules", "min_silk_clearance", LengthSetting, "the least clearance of the silk screen"},
    {"rules", "min_text_height", LengthSetting, "the least height of texts", "0.8"},
    {"rules", "min_text_thickness", LengthSetting, "the least line width of texts", "0.08"},
    {"rules", "min_connection", LengthSetting, "the least width of copper between parts of a zone"},
    {"rules", "min_groove_width", LengthSetting, "the least width of grooves for creepage"},
    {"rules", "min_resolved_spokes", NumberSetting, "the least number of spokes of a thermal relief", "2"},
    {"rules", "solder_mask_clearance", LengthSetting, "the oversize of the solder mask"},
    {"rules", "solder_mask_min_width", LengthSetting, "the least width of the solder mask"},
    {"rules", "solder_mask_to_copper_clearance", LengthSetting, "the least clearance of the solder mask to copper"},
    {"design_settings", "drc_exclusions", Setting, "what is excluded from the check of design rules"},
    {"project", "text_variables", Setting, "the text variables of the project"},
    {"", "property", TextSetting, "a text variable of the board"},
    {"title_block", "company", TextSetting, "the company of the title block"},
    {"title_block", "date", TextSetting, "the date of the title block"},
    {"title_block", "comment", TextSetting, "a comment of the title block"},

    // Items of the board and of footprints
    {"", "arc", Item, "curved tracks"},
    {"", "gr_arc", Item, "arcs"},
    {"", "gr_circle", Item, "circles"},
    {"", "gr_curve", Item, "curves"},
    {"", "gr_text_box", Item, "text boxes"},
    {"", "gr_vector", Item, "vectors"},
    {"", "barcode", Item, "barcodes"},
    {"", "dimension", Item, "dimensions"},
    {"", "generated", Item, "generated items"},
    {"", "group", Item, "groups"},
    {"", "image", Item, "pictures"},
    {"", "point", Item, "points"},
    {"", "table", Item, "tables"},
    {"", "target", Item, "alignment targets"},
    {"", "embedded_files", Item, "embedded files"},
    {"footprint", "fp_arc", Item, "arcs of footprints"},
    {"footprint", "fp_circle", Item, "circles of footprints"},
    {"footprint", "fp_curve", Item, "curves of footprints"},
    {"footprint", "fp_text_box", Item, "text boxes of footprints"},
    {"footprint", "barcode", Item, "barcodes of footprints"},
    {"footprint", "dimension", Item, "dimensions of footprints"},
    {"footprint", "group", Item, "groups of footprints"},
    {"footprint", "image", Item, "pictures of footprints"},
    {"footprint", "point", Item, "points of footprints"},
    {"footprint", "embedded_files", Item, "files embedded in footprints"},
    {"footprint", "model", Item, "3D models of footprints"},
    {"footprint", "net_tie_pad_groups", Item, "net ties of footprints"},
    {"footprint", "clearance", Item, "clearances of single footprints"},
    {"footprint", "solder_mask_margin", Item, "mask oversizes of single footprints"},
    {"footprint", "solder_paste_margin", Item, "mask oversizes of single footprints"},
    {"footprint", "solder_paste_ratio", Item, "mask oversizes of single footprints"},
    {"footprint", "solder_paste_margin_ratio", Item, "mask oversizes of single footprints"},
    {"footprint", "thermal_gap", Item, "thermal reliefs of single footprints"},
    {"footprint", "thermal_width", Item, "thermal reliefs of single footprints"},
    {"footprint", "zone_connect", Item, "thermal reliefs of single footprints"},
    {"pad", "trapezoid", MendedItem, "trapezoid pads are rectangles"},
    {"pad", "custom", MendedItem, "pads of free shapes are rectangles"},
    {"pad", "chamfer", MendedItem, "pads that are chamfered at some corners have none"},
    {"pad", "padstack", Item, "shapes of pads on single layers"},
    {"pad", "clearance", Item, "clearances of single pads"},
    {"pad", "solder_mask_margin", Item, "mask oversizes of single pads"},
    {"pad", "solder_paste_margin", Item, "mask oversizes of single pads"},
    {"pad", "solder_paste_margin_ratio", Item, "mask oversizes of single pads"},
    {"pad", "thermal_gap", Item, "thermal reliefs of single pads"},
    {"pad", "thermal_width", Item, "thermal reliefs of single pads"},
    {"pad", "thermal_bridge_width", Item, "thermal reliefs of single pads"},
    {"pad", "thermal_bridge_angle", Item, "thermal reliefs of single pads"},
    {"pad", "zone_connect", Item, "thermal reliefs of single pads"},
    {"pad", "die_length", Item, "lengths of pads within their packages"},
    {"pad", "remove_unused_layers", Item, "that pads lack copper where nothing connects"},
    {"pad", "tenting", Item, "tents of single pads"},
    {"pad", "teardrops", Item, "teardrops of single pads"},
    {"via", "teardrops", Item, "teardrops of single vias"},
    {"drill", "offset", Item, "offsets of holes in their pads"},
    {"via", "padstack", Item, "shapes of vias on single layers"},
    {"via", "remove_unused_layers", Item, "that vias lack copper where nothing connects"},
    {"via", "tenting", Item, "tents and fillings of single vias"},
    {"via", "covering", Item, "tents and fillings of single vias"},
    {"via", "plugging", Item, "tents and fillings of single vias"},
    {"via", "capping", Item, "tents and fillings of single vias"},
    {"via", "filling", Item, "tents and fillings of single vias"},
    {"zone", "priority", Item, "priorities of zones"},
    {"zone", "keepout", Item, "what areas keep out"},
    {"zone", "fill", Item, "how zones are filled: thermal reliefs, corners, islands"},
    {"zone", "connect_pads", Item, "how zones connect to pads"},
    {"zone", "placement", Item, "placement rules of areas"},
    {"zone", "filled_polygon", Item, "poured copper of zones, which can be poured again"},
    {"zone", "fill_segments", Item, "poured copper of zones, which can be poured again"},
    {"stroke", "type", MendedItem, "dashed and dotted lines are solid"},
    {"font", "bold", MendedItem, "bold texts have the line width alone"},
    {"font", "italic", MendedItem, "slanted texts are upright"},
    {"justify", "left", MendedItem, "texts are aligned at their middle"},
    {"justify", "right", MendedItem, "texts are aligned at their middle"},
    {"justify", "top", MendedItem, "texts are aligned at their middle"},
    {"justify", "bottom", MendedItem, "texts are aligned at their middle"},
    {"gr_text", "hide", MendedItem, "hidden texts are shown"},
};

const SMeaningOf* MeaningOf(std::string_view owner, std::string_view word) {
  if (owner == "module") owner = "footprint";
  const auto* const found = std::find_if(std::begin(kMeanings), std::end(kMeanings),
                                         [&](const SMeaningOf& one) { return one.word == word && one.owner == owner; });
  return found != std::end(kMeanings) ? found : nullptr;
}

/// Whether a word says what holds without it: no, none, nothing, or any zero.
bool IsNothing(std::string_view word) {
  return word.empty() || word == "no" || word == "none" || word == "false" ||
         (word.find_first_not_of("+-0.") == word.npos && word.find('0') != word.npos);
}

/// A number as it is shown, without the last digits that a computation leaves behind.
CString Number(const CString& value) {
  CString text;
  if (std::int32_t scaled = 0; ScaleDecimal(value, kScale, scaled)) AppendExact(text, scaled, kScale);
  return text.empty() ? Quoted(value) : text;
}

void LeaveOut(CImportSummary& summary, std::string_view owner, std::string_view word, const CString& value) {
  const SMeaningOf* const found = MeaningOf(owner, word);
  const bool hasOwner = !owner.empty() && word != "uuid" && word != "tstamp";  // whose these are tells nobody anything
  if (!found) return summary.LeaveOutWord(hasOwner ? CString(word).append(" of ").append(owner) : CString(word));
  const CString what = found->plainWords;
  if (found->meaning == Item) return summary.LeaveOutItem(what);
  if (found->meaning == MendedItem) return summary.MendItem(what);
  const bool isNumber = found->meaning == LengthSetting || found->meaning == NumberSetting;
  const CString shown = isNumber ? Number(value) : value;
  if (shown == found->usual && !shown.empty()) return;
  CString sentence = "Left out: " + what;
  if (isNumber) sentence += ", " + shown + (found->meaning == LengthSetting ? " mm" : "");
  if (found->meaning == TextSetting && !shown.empty()) sentence += ", " + Quoted(shown);
  summary.Say("settings", std::move(sentence));
}
}  // namespace

void LeaveOut(CImportSummary& summary, std::string_view owner, CSNode value) {
  if (!value.IsList()) return LeaveOut(summary, owner, value.IsQuoted() ? "text" : value.Text(), {});
  CString text;
  bool holdsAnyway = value.Value(0).IsWord();
  for (const CSNode one : value) {
    holdsAnyway = holdsAnyway && one.IsWord() && IsNothing(one.Text());
    if (one.IsWord() && text.size() < kMostShown)
      text.append(text.empty() ? 0 : 1, ' ').append(one.Text().substr(0, kMostShown));
  }
  if (!holdsAnyway) LeaveOut(summary, owner, value.Tag(), text);
}

void LeaveOut(CImportSummary& summary, std::string_view owner, const SJson& value) {
  using EKind = SJson::EKind;
  const bool holdsMore = value.Is(EKind::Array) || value.Is(EKind::Object);
  if (value.Is(EKind::Null) || (holdsMore ? value.items.empty() : IsNothing(value.text))) return;
  LeaveOut(summary, owner, value.name, value.text);
}
