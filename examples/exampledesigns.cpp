#include "exampledesigns.h"

#include <algorithm>

#include "exampletechnology.h"
#include "interchange/newrecord.h"

namespace {
constexpr int kQuarter = 90'000;  // of a turn

// ---- The parts of the amplifier, and what they connect

struct SPin {
  const char* pad;
  const char* style;
  CPoint at;
};
struct SPart {
  const char* name;
  const char* description;
  std::vector<SPin> pins;
  CPoint corner;  // of the outline, a rectangle around the origin
};
constexpr std::size_t kConnectors = 3;  // of the parts; they stand first
const std::vector<SPart>& Parts() {
  const char* const chip = "Chip 0805";
  const char* const wing = "Gull wing 0.6x1.55";
  const char* const pin = "Header 1.7";
  const char* const first = "Header 1.7, pin 1";
  static const std::vector<SPart> parts{
      {"Header 3",
       "Pin header, 3 pins, 2.54 mm",
       {{"1", first, At(-2540, 0)}, {"2", pin, At(0, 0)}, {"3", pin, At(2540, 0)}},
       At(3'900, 1'400)},
      {"Header 4",
       "Pin header, 4 pins, 2.54 mm",
       {{"1", first, At(-3810, 0)}, {"2", pin, At(-1270, 0)}, {"3", pin, At(1270, 0)}, {"4", pin, At(3810, 0)}},
       At(5'200, 1'400)},
      {"Power jack",
       "Supply connector, 2.1 mm",
       {{"1", "Power jack slot", At(-3000, 0)}, {"2", "Power jack slot", At(3000, 0)}},
       At(5'500, 4'500)},
      {"Resistor 0805", "Chip resistor", {{"1", chip, At(-950, 0)}, {"2", chip, At(950, 0)}}, At(1'700, 1'000)},
      {"Capacitor 0805", "Chip capacitor", {{"1", chip, At(-950, 0)}, {"2", chip, At(950, 0)}}, At(1'700, 1'000)},
      {"Electrolytic 6.3",
       "Electrolytic capacitor, 6.3 mm",
       {{"+", "Electrolytic 1.6", At(-1250, 0)}, {"-", "Electrolytic 1.6", At(1250, 0)}},
       At(3'200, 3'200)},
      {"Dual amplifier",
       "Dual operational amplifier, SOIC-8",
       {{"1", wing, At(-2700, 1905)},
        {"2", wing, At(-2700, 635)},
        {"3", wing, At(-2700, -635)},
        {"4", wing, At(-2700, -1905)},
        {"5", wing, At(2700, -1905)},
        {"6", wing, At(2700, -635)},
        {"7", wing, At(2700, 635)},
        {"8", wing, At(2700, 1905)}},
       At(1'950, 2'450)},
  };
  return parts;
}

struct SPlaced {
  const char* name;
  const char* part;
  const char* value;
  CPoint at;
  std::vector<const char*> nets;  // by pin
};
const std::vector<SPlaced>& Placed() {
  static const std::vector<SPlaced> placed{
      {"J1", "Header 3", "Input", At(8'000, 25'000), {"IN_L", "GND", "IN_R"}},
      {"J2", "Header 3", "Output", At(52'000, 25'000), {"OUT_L", "GND", "OUT_R"}},
      {"J3", "Power jack", "9 V", At(12'000, 38'500), {"PWR_IN", "GND"}},
      {"J4", "Header 4", "USB", At(48'000, 37'500), {"VBUS", "USB_D-", "USB_D+", "GND"}},
      {"U1",
       "Dual amplifier",
       "OPA",
       At(30'000, 22'000),
       {"AMP_L", "FB_L", "INP_L", "VEE", "INP_R", "FB_R", "AMP_R", "VCC"}},
      {"R1", "Resistor 0805", "10k", At(18'000, 27'000), {"IN_L", "INP_L"}},
      {"R2", "Resistor 0805", "10k", At(18'000, 17'000), {"IN_R", "INP_R"}},
      {"R3", "Resistor 0805", "22k", At(24'000, 27'500), {"FB_L", "AMP_L"}},
      {"R4", "Resistor 0805", "22k", At(36'500, 16'500), {"FB_R", "AMP_R"}},
      {"R5", "Resistor 0805", "4k7", At(24'000, 31'000), {"FB_L", "BIAS"}},
      {"R6", "Resistor 0805", "4k7", At(36'500, 13'000), {"FB_R", "BIAS"}},
      {"R7", "Resistor 0805", "33", At(44'000, 28'500), {"AMP_L", "OUT_L"}},
      {"R8", "Resistor 0805", "33", At(44'000, 21'000), {"AMP_R", "OUT_R"}},
      {"R9", "Resistor 0805", "1k", At(33'000, 38'000), {"VCC", "LED_A"}},
      {"R10", "Resistor 0805", "100k", At(18'000, 12'500), {"MUTE", "VCC"}},
      {"R11", "Resistor 0805", "22", At(41'000, 34'000), {"USB_D+", "DP"}},
      {"R12", "Resistor 0805", "22", At(41'000, 32'000), {"USB_D-", "DN"}},
      {"C1", "Capacitor 0805", "100n", At(30'000, 27'500), {"VCC", "GND"}},
      {"C2", "Capacitor 0805", "100n", At(30'000, 16'500), {"VEE", "GND"}},
      {"C3", "Electrolytic 6.3", "220u", At(23'000, 38'500), {"PWR_IN", "GND"}},
      {"C4", "Electrolytic 6.3", "220u", At(24'000, 8'000), {"VCC", "BIAS"}},
      {"C5", "Electrolytic 6.3", "220u", At(33'000, 8'000), {"BIAS", "VEE"}},
      {"C6", "Capacitor 0805", "10n", At(12'000, 8'000), {"SHIELD", "GND"}},
  };
  return placed;
}

const char* ClassOf(std::string_view net) {
  if (net == "PWR_IN" || net == "VBUS") return "Supply input";
  if (net == "GND" || net == "VCC" || net == "VEE") return "Power";
  if (net.starts_with("USB") || net == "DP" || net == "DN") return "USB";
  if (net.ends_with("_L") || net.ends_with("_R")) return "Audio";
  return "Default";
}

/// The nets of the placed components, with a node for each of their pins.
void AddNets(CDesign& design) {
  for (const SPlaced& placed : Placed()) {
    const SPart& part = *std::find_if(Parts().begin(), Parts().end(),
                                      [&](const SPart& one) { return std::string_view(one.name) == placed.part; });
    for (std::size_t i = 0; i < placed.nets.size(); ++i) {
      CNet* net = design.FindNet(placed.nets[i]);
      if (!net) net = design.AddNet(placed.nets[i], design.FindNetClass(ClassOf(placed.nets[i])));
      AddRecord(net->Nodes(), {.component = design.FindComponentInstance(placed.name), .pad = part.pins[i].pad});
    }
  }
}

CPoints Rectangle(CPoint from, CPoint to) { return {from, {to.x, from.y}, to, {from.x, to.y}}; }

// ---- The board

template <class T>  // a design or a library
void AddFootprint(T& home, const SPart& part) {
  CSymbol& symbol = AddRecord(home.symbols, {.name = {part.name}});
  for (const SPin& pin : part.pins) {
    CPadStyle* const style = home.FindPadStyle(pin.style);
    AddRecord(symbol.Pads(), {.name = pin.pad,
                              .style = style,
                              .position = pin.at,
                              .side = {style->Values().drillWidth.value > 0 ? ELayerSide::All : ELayerSide::Top}});
  }
  const CPoint low{-part.corner.x, -part.corner.y};
  AddRecord(symbol.Shapes(), {.layer = home.FindLayer("Top silkscreen"),
                              .lineStyle = home.FindLineStyle("Silkscreen"),
                              .points = Rectangle(low, part.corner),
                              .closed = true});
  AddRecord(symbol.Texts(), {.name = "Part",
                             .text = part.name,
                             .style = home.FindTextStyle("Silkscreen"),
                             .layer = home.FindLayer("Top assembly"),
                             .position = low});
}

void PlaceComponents(CDesign& board) {
  for (const SPart& part : Parts()) {
    AddFootprint(board, part);
    AddRecord(board.components,
              {.name = {part.name}, .symbol = board.FindSymbol(part.name), .description = part.description});
  }
  for (const SPlaced& placed : Placed()) {
    CComponentInstance& component =
        AddRecord(board.componentInstances, {.name = {placed.name}, .component = board.FindComponent(placed.part)});
    CSymbol* const symbol = board.FindSymbol(placed.part);
    CSymbolInstance& instance = AddRecord(component.SymbolInstances(), {.symbol = symbol, .position = placed.at});
    CPoint low = placed.at;
    for (const CPad& pad : symbol->Pads()) {
      const auto& [name, style, at, angle, side] = pad.Values();
      AddRecord(instance.PadInstances(), {.name = name,
                                          .style = style,
                                          .position = {placed.at.x + at.x, placed.at.y + at.y},
                                          .angle = angle,
                                          .side = side});
      low.y = std::min(low.y, placed.at.y + at.y);
    }
    for (const auto& [text, layer, down] :
         {std::tuple{placed.name, "Top silkscreen", 1'500}, {placed.value, "Top assembly", 2'600}})
      AddRecord(instance.ValuePositions(), {.value = text,
                                            .style = board.FindTextStyle("Silkscreen"),
                                            .layer = board.FindLayer(layer),
                                            .position = {low.x, low.y - Um(down)}});
  }
  AddNets(board);
  for (CNet& net : board.nets) {
    for (const CNode& node : net.Nodes())
      for (CPadInstance& pad : node.Values().component.Get()->SymbolInstances().First()->PadInstances())
        if (pad.Values().name == node.Values().pad) pad.Set(&SPadInstanceFields::net, &net);
  }
}

/// The pads of a net, in the order of its nodes.
CPoints PadsOf(CNet& net) {
  CPoints places;
  for (const CNode& node : net.Nodes())
    for (const CPadInstance& pad : node.Values().component.Get()->SymbolInstances().First()->PadInstances())
      if (pad.Values().name == node.Values().pad) places.push_back(pad.Values().position);
  return places;
}

/// Runs from pad to pad: level on the top side, upright on the bottom side, a via where the two meet. What stands on
/// the ground plane goes down to it.
void Route(CDesign& board) {
  CLayer* const top = board.FindLayer("Top");
  CLayer* const bottom = board.FindLayer("Bottom");
  for (CNet& net : board.nets) {
    const CPoints pads = PadsOf(net);
    if (net.GetName() == "GND") {
      for (const CPoint pad : pads)
        AddRecord(net.Vias(), {.style = board.FindPadStyle("Via 0.6"),
                               .span = board.FindLayerSpan("Through"),
                               .position = {pad.x, pad.y - Um(1'600)}});
      continue;
    }
    CTrackStyle* const style = net.GetNetClass()->GetNominalStyle();
    const bool isRouted = net.GetName() != "MUTE" && net.GetName() != "SHIELD";
    for (std::size_t i = 1; i < pads.size(); ++i) {
      const CPoint from = pads[i - 1], to = pads[i], bend{to.x, from.y};
      if (!isRouted || i > 3) {
        AddRecord(net.Connections(), {.start = from, .end = to});
        continue;
      }
      CTrack& track = AddRecord(net.Tracks(), {.defaultStyle = style});
      if (from != bend) AddRecord(track.Segments(), {.layer = top, .style = style, .start = from, .end = bend});
      if (bend == to) continue;
      AddRecord(track.Segments(), {.layer = bottom, .style = style, .start = bend, .end = to});
      for (const CPoint at : {bend, to})
        AddRecord(net.Vias(),
                  {.style = board.FindPadStyle("Via 0.6"), .span = board.FindLayerSpan("Through"), .position = at});
    }
  }
  AddRecord(board.FindNet("VCC")->Vias(), {.style = board.FindPadStyle("Microvia 0.3"),
                                           .span = board.FindLayerSpan("Top to ground"),
                                           .position = At(34'000, 24'000)});
}

void DrawBoard(CDesign& board) {
  const CPoint corner = At(60'000, 45'000);
  for (const char* const layer : {"Top assembly", "Bottom assembly"}) board.FindLayer(layer)->SetDisplayed(false);
  CNet* const ground = board.FindNet("GND");
  board.FindLayer("Ground")->SetNet(ground);
  AddRecord(board.boards, {.width = {Um(100)}, .points = Rectangle(At(0, 0), corner), .closed = true});
  board.SetDesignArea(At(-10'000, -10'000), At(100'000, 80'000));
  const CPoints inside = Rectangle(At(500, 500), At(59'500, 44'500));
  CArea& area =
      AddRecord(board.areas, {.name = "Ground on the bottom", .layer = board.FindLayer("Bottom"), .points = inside});
  AddRecord(area.PourTemplates(), {.net = ground, .clearance = {Um(250)}, .minimumWidth = {Um(200)}, .poured = true});
  CArea& supply = AddRecord(
      board.areas,
      {.name = "Supply", .layer = board.FindLayer("Power"), .points = Rectangle(At(500, 20'000), At(40'000, 44'500))});
  AddRecord(supply.PourTemplates(), {.net = board.FindNet("VCC"), .clearance = {Um(300)}, .minimumWidth = {Um(200)}});
  CPoints poured = inside;
  poured.insert(poured.begin() + 1, {At(20'000, 500), At(20'000, 9'000), At(28'000, 9'000), At(28'000, 500)});
  AddRecord(board.coppers, {.layer = board.FindLayer("Bottom"), .net = ground, .width = {Um(200)}, .points = poured});
  for (const auto& [name, at] : {std::pair{"H1", At(3'500, 3'500)},
                                 {"H2", At(56'500, 3'500)},
                                 {"H3", At(3'500, 41'500)},
                                 {"H4", At(56'500, 41'500)}})
    AddRecord(board.freePads, {.name = {name}, .style = board.FindPadStyle("Mounting hole M3"), .position = at});
  AddRecord(board.freePads, {.name = {"TP1"},
                             .style = board.FindPadStyle("Test point"),
                             .net = board.FindNet("BIAS"),
                             .position = At(40'000, 8'000),
                             .side = {ELayerSide::Top}});
  AddRecord(board.texts, {.name = "Title",
                          .text = "Headphone amplifier",
                          .style = board.FindTextStyle("Title"),
                          .layer = board.FindLayer("Top silkscreen"),
                          .position = At(23'500, 3'000)});
  AddRecord(board.texts, {.name = "Copper",
                          .text = "BOTTOM",
                          .style = board.FindTextStyle("Default"),
                          .layer = board.FindLayer("Bottom"),
                          .position = At(50'000, 6'000),
                          .angle = CAngle(kQuarter),
                          .mirrored = true});
  AddRecord(board.texts, {.name = "Serial number",
                          .text = "0001",
                          .style = board.FindTextStyle("Serial number"),
                          .layer = board.FindLayer("Bottom silkscreen"),
                          .position = At(45'500, 3'000),
                          .mirrored = true});
  CPoints arrow{At(0, 47'000), At(60'000, 47'000)};
  AddRecord(board.shapes, {.layer = board.FindLayer("Dimensions"), .width = {Um(100)}, .points = arrow});
  AddRecord(board.dimensions, {.text = "60.000",
                               .layer = board.FindLayer("Dimensions"),
                               .position = At(30'000, 48'000),
                               .width = {Um(60'000)}});
  AddRecord(board.notes, {.text = "Pour the bottom side last.",
                          .layer = board.FindLayer("Notes"),
                          .position = At(62'000, 40'000),
                          .width = {Um(20'000)},
                          .height = {Um(5'000)}});
  AddRecord(board.drillTables, {.text = "Drills", .layer = board.FindLayer("Notes"), .position = At(62'000, 30'000)});
  AddRecord(board.layerStacks, {.text = "Stack", .layer = board.FindLayer("Notes"), .position = At(62'000, 10'000)});
}

std::unique_ptr<CTechnology> MakeBoard() {
  auto board = std::make_unique<CPcbDesign>();
  AddTechnology(*board);
  board->SetName("Headphone amplifier");
  board->SetStyleSheet("standard.tspcbt");
  board->DesignValues().Set(&SDesignValuesFields::revision, "B");
  board->DesignValues().Set(&SDesignValuesFields::title, "Four-layer board");
  AddRecord(board->variants, {.name = {"Standard"}, .description = "All parts"});
  AddRecord(board->variants, {.name = {"Without USB"}, .description = "J4, R11 and R12 are left out"});
  AddRecord(board->assocParts, {.name = {"Spacer M3"}, .quantity = 4, .description = "Hexagonal, 10 mm"});
  PlaceComponents(*board);
  Route(*board);
  DrawBoard(*board);
  return board;
}

std::unique_ptr<CTechnology> MakeTechnologyFile() {
  auto design = std::make_unique<CPcbDesign>();
  AddTechnology(*design);
  design->SetName("Standard four-layer technology");
  return design;
}

std::unique_ptr<CTechnology> MakeLibrary() {
  auto library = std::make_unique<CPcbSymbolLibrary>();
  AddTechnology(*library);
  library->SetName("Connectors");
  for (const SPart& part : std::span(Parts()).first(kConnectors)) AddFootprint(*library, part);
  return library;
}

// ---- The schematic

void AddSchematicStyles(CScmDesign& schematic) {
  schematic.GetUnits()->SetType(EUnitType::Mil);
  schematic.GetUnits()->SetPrecision(0);
  for (const auto& [name, type] : {std::pair{"Power", ENetClassType::Power},
                                   {"Audio", ENetClassType::Signal},
                                   {"USB", ENetClassType::Signal},
                                   {"Supply input", ENetClassType::Power}})
    AddRecord(schematic.netClasses, {.name = {name}, .type = {type}});
  schematic.AddTrackStyle("Wire", Mil(6));
  schematic.AddTrackStyle("Bus", Mil(20));
  AddRecord(schematic.lineStyles, {.name = {"Symbol"}, .width = {Mil(8)}});
  AddRecord(schematic.lineStyles, {.name = {"Frame"}, .width = {Mil(12)}, .pattern = {ELinePattern::DashDot}});
  AddRecord(schematic.textStyles, {.name = {"Net name"}, .size = {Mil(70)}, .lineWidth = {Mil(6)}});
  AddRecord(schematic.padStyles, {.name = {"Junction"}, .size = {Mil(30)}});
  AddRecord(schematic.grids, {.name = {"Schematic"}, .stepX = {Mil(100)}, .stepY = {Mil(100)}, .working = true});
  AddRecord(schematic.variants, {.name = {"Standard"}, .description = "All parts"});
}

std::unique_ptr<CTechnology> MakeSchematic() {
  auto schematic = std::make_unique<CScmDesign>();
  schematic->SetName("Headphone amplifier, schematic");
  AddSchematicStyles(*schematic);
  for (const SPart& part : Parts()) {
    CSymbol& symbol = AddRecord(schematic->symbols, {.name = {part.name}});
    int row = 0;
    for (const SPin& pin : part.pins)
      AddRecord(symbol.Pads(), {.name = pin.pad,
                                .style = schematic->FindPadStyle("Default"),
                                .position = {row % 2 ? Mil(400) : -Mil(400), -Mil(100) * (row / 2)}}),
          ++row;
    AddRecord(symbol.Shapes(), {.lineStyle = schematic->FindLineStyle("Symbol"),
                                .points = Rectangle({-Mil(300), -Mil(100) * (row / 2)}, {Mil(300), Mil(100)}),
                                .closed = true});
    AddRecord(schematic->components, {.name = {part.name}, .symbol = &symbol, .description = part.description});
  }
  int column = 0;
  for (const SPlaced& placed : Placed()) {
    const CPoint at{Mil(1'200) * (column % 6), -Mil(1'000) * (column / 6)};
    ++column;
    CComponentInstance& component = AddRecord(
        schematic->componentInstances, {.name = {placed.name}, .component = schematic->FindComponent(placed.part)});
    CSymbolInstance& instance =
        AddRecord(component.SymbolInstances(), {.symbol = schematic->FindSymbol(placed.part), .position = at});
    AddRecord(instance.ValuePositions(), {.value = placed.value, .position = {at.x, at.y + Mil(150)}});
  }
  AddNets(*schematic);
  int row = 0;
  for (CNet& net : schematic->nets) {
    const CPoint from{-Mil(600), -Mil(200) * row}, to{-Mil(100), -Mil(200) * row};
    ++row;
    CTrackStyle* const wire = schematic->FindTrackStyle("Wire");
    AddRecord(AddRecord(net.Tracks(), {.defaultStyle = wire}).Segments(), {.style = wire, .start = from, .end = to});
    AddRecord(net.ConnectPoints(),
              {.style = schematic->FindPadStyle("Junction"), .position = to, .junction = net.Nodes().Count() > 2});
    AddRecord(schematic->netNames, {.net = &net, .style = schematic->FindTextStyle("Net name"), .position = from});
  }
  AddRecord(schematic->buses, {.name = {"USB[0..1]"}});
  AddRecord(schematic->texts, {.name = "Title",
                               .text = "Headphone amplifier",
                               .style = schematic->FindTextStyle("Default"),
                               .position = {0, Mil(600)}});
  return schematic;
}

std::unique_ptr<CTechnology> MakeProject() {
  auto project = std::make_unique<CProject>();
  project->SetName("Headphone amplifier");
  project->designFiles = {"amplifier.tsscm", "four-layer.tspcb"};
  for (const char* name : {"Power", "Audio", "USB", "Supply input"})
    AddRecord(project->netClasses, {.name = {name}, .clearance = {Um(200)}});
  AddRecord(project->variants, {.name = {"Standard"}, .description = "All parts"});
  AddRecord(project->variants, {.name = {"Without USB"}, .description = "J4, R11 and R12 are left out"});
  return project;
}
}  // namespace

std::span<const SExampleDesign> ExampleDesigns() {
  static constexpr SExampleDesign kExamples[] = {
      {"four-layer.tspcb", &MakeBoard},         {"amplifier.tsscm", &MakeSchematic},
      {"amplifier.tsprj", &MakeProject},        {"connectors.tspcblib", &MakeLibrary},
      {"standard.tspcbt", &MakeTechnologyFile},
  };
  return kExamples;
}
