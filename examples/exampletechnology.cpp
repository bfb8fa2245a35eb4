#include "exampletechnology.h"

#include "interchange/newrecord.h"

namespace {
void AddLayers(CTechnology& tech) {
  using EUsage = ELayerUsage;
  AddRecord(tech.layerTypes, {.name = {"Copper"}, .breakShapes = true, .breakShapesGap = {Um(200)}});
  AddRecord(tech.layerTypes, {.name = {"Inner copper"}});
  AddRecord(tech.layerTypes, {.name = {"Solder mask"},
                              .usage = {EUsage::SolderMask},
                              .vias = false,
                              .oversizeType = {EOversizeType::ByAmount},
                              .oversize = {Um(50)}});
  AddRecord(tech.layerTypes, {.name = {"Paste mask"},
                              .usage = {EUsage::PasteMask},
                              .allLayerPads = false,
                              .allLayerPadInstances = false,
                              .vias = false,
                              .oversizeType = {EOversizeType::ByAmount},
                              .oversize = {Um(-50)}});
  for (const char* name : {"Silkscreen", "Assembly", "Mechanical"})
    AddRecord(tech.layerTypes, {.name = {name},
                                .usage = {EUsage::Documentation},
                                .surfacePads = false,
                                .allLayerPads = false,
                                .surfacePadInstances = false,
                                .allLayerPadInstances = false,
                                .vias = false,
                                .placementArea = CString(name) == "Assembly"});

  struct {
    const char* name;
    const char* type;
    int side;
    int bias;
    unsigned colour;
  } const kStack[] = {
      {"Top assembly", "Assembly", ELayerSide::Top, ELayerBias::None, 0x7F7F3F},
      {"Top silkscreen", "Silkscreen", ELayerSide::Top, ELayerBias::None, 0xF2EDA1},
      {"Top paste", "Paste mask", ELayerSide::Top, ELayerBias::None, 0xB4A09A},
      {"Top mask", "Solder mask", ELayerSide::Top, ELayerBias::None, 0xD864FF},
      {"Top", "Copper", ELayerSide::Top, ELayerBias::Horizontal, 0xC83434},
      {"Ground", "Inner copper", ELayerSide::Inner, ELayerBias::PowerPlane, 0x7FC87F},
      {"Power", "Inner copper", ELayerSide::Inner, ELayerBias::SplitPlane, 0xCE7D2C},
      {"Bottom", "Copper", ELayerSide::Bottom, ELayerBias::Vertical, 0x4D7FC4},
      {"Bottom mask", "Solder mask", ELayerSide::Bottom, ELayerBias::None, 0x02FFEE},
      {"Bottom paste", "Paste mask", ELayerSide::Bottom, ELayerBias::None, 0x00C2C2},
      {"Bottom silkscreen", "Silkscreen", ELayerSide::Bottom, ELayerBias::None, 0xE8B2A7},
      {"Bottom assembly", "Assembly", ELayerSide::Bottom, ELayerBias::None, 0x585D84},
      {"Outline", "Mechanical", ELayerSide::All, ELayerBias::None, 0xD0D2CD},
      {"Dimensions", "Mechanical", ELayerSide::All, ELayerBias::None, 0x808080},
      {"Notes", nullptr, ELayerSide::All, ELayerBias::None, 0x5994DC},
  };
  int place = 0;
  for (const auto& one : kStack) {
    CLayer* layer = tech.FindLayer(one.name);
    if (!layer) layer = &AddRecord(tech.layers, {.name = {one.name}});
    layer->SetType(one.type ? tech.FindLayerType(one.type) : nullptr);
    layer->SetSide(one.side);
    layer->SetBias(one.bias);
    layer->SetColour({one.colour});
    tech.SetLayerInOrder(layer, ++place);  // behind the built-in layer
  }
  const auto layer = [&](const char* name) { return tech.FindLayer(name); };
  tech.AddLayerSpan("Through", layer("Top"), layer("Bottom"));
  tech.AddLayerSpan("Top to ground", layer("Top"), layer("Ground"));
  tech.AddLayerSpan("Power to bottom", layer("Power"), layer("Bottom"));
}

void AddStyles(CTechnology& tech) {
  AddRecord(tech.lineStyles, {.name = {"Silkscreen"}, .width = {Um(120)}});
  AddRecord(tech.lineStyles, {.name = {"Courtyard"}, .width = {Um(50)}, .pattern = {ELinePattern::Dashed}});
  CLineStyle& hatching = AddRecord(tech.lineStyles, {.name = {"Hatching"}, .width = {Um(200)}});
  AddRecord(tech.hatchStyles, {.name = {"Diagonal"}, .spacing = {Um(800)}, .lineStyle = &hatching});
  AddRecord(tech.hatchStyles,
            {.name = {"Mesh"}, .spacing = {Um(500)}, .lineStyle = &hatching, .angle = CAngle(0), .crossed = true});
  for (const auto& [name, width] :
       {std::pair{"Fine", 125}, {"Signal", 200}, {"USB", 280}, {"Power", 500}, {"Mains", 1'200}})
    tech.AddTrackStyle(name, Um(width));
  AddRecord(tech.textStyles, {.name = {"Silkscreen"}, .size = {Um(800)}, .lineWidth = {Um(120)}});
  AddRecord(tech.textStyles, {.name = {"Title"},
                              .size = {Um(2'500)},
                              .lineWidth = {Um(300)},
                              .underlined = true,
                              .interlineHeightPercent = 120});
  AddRecord(tech.textStyles, {.name = {"Serial number"}, .size = {Um(1'500)}, .font = "Code 128", .parameter1 = 2});

  AddRecord(tech.padStyles, {.name = {"Via 0.6"}, .size = {Um(600)}, .drillWidth = {Um(300)}, .thermal = {0}});
  AddRecord(tech.padStyles, {.name = {"Microvia 0.3"}, .size = {Um(300)}, .drillWidth = {Um(100)}});
  AddRecord(tech.padStyles, {.name = {"Chip 0805"},
                             .shape = {EPadShape::RoundedRectangle},
                             .size = {Um(1'000)},
                             .length = {Um(1'450)},
                             .dimension3 = {Um(250)}});
  AddRecord(
      tech.padStyles,
      {.name = {"Gull wing 0.6x1.55"}, .shape = {EPadShape::Rectangle}, .size = {Um(1'550)}, .length = {Um(600)}});
  CPadStyle& header = AddRecord(
      tech.padStyles, {.name = {"Header 1.7"}, .size = {Um(1'700)}, .drillWidth = {Um(1'000)}, .thermal = {Um(300)}});
  AddRecord(tech.padStyles, {.name = {"Header 1.7, pin 1"},
                             .shape = {EPadShape::Square},
                             .size = {Um(1'700)},
                             .drillWidth = {Um(1'000)},
                             .thermal = {Um(300)}});
  CPadStyle& slot = AddRecord(tech.padStyles, {.name = {"Power jack slot"},
                                               .shape = {EPadShape::Oval},
                                               .size = {Um(2'200)},
                                               .length = {Um(4'200)},
                                               .drillShape = {EDrillShape::Slot},
                                               .drillWidth = {Um(1'000)},
                                               .drillLength = {Um(3'000)},
                                               .thermal = {Um(500)}});
  AddRecord(tech.padStyles, {.name = {"Electrolytic 1.6"},
                             .shape = {EPadShape::Octagon},
                             .size = {Um(1'600)},
                             .length = {Um(1'600)},
                             .drillWidth = {Um(800)}});
  AddRecord(tech.padStyles, {.name = {"Test point"}, .size = {Um(1'200)}});
  AddRecord(tech.padStyles,
            {.name = {"Mounting hole M3"}, .size = {Um(3'200)}, .drillWidth = {Um(3'200)}, .plated = false});
  const auto except = [&](CPadStyle& style, const char* layer, int shape, int size, int length, int thermal) {
    AddRecord(style.Exceptions(), {.layer = tech.FindLayer(layer),
                                   .shape = {shape},
                                   .size = {Um(size)},
                                   .length = {Um(length)},
                                   .thermal = {Um(thermal)}});
  };
  except(header, "Ground", EPadShape::Round, 1'900, 0, 400);
  except(header, "Power", EPadShape::Round, 1'900, 0, 400);
  except(slot, "Ground", EPadShape::Oval, 2'600, 4'600, 600);
  except(slot, "Top mask", EPadShape::Oval, 2'400, 4'400, 0);
}

void AddRules(CTechnology& tech) {
  const auto track = [&](const char* name) { return tech.FindTrackStyle(name); };
  const auto pad = [&](const char* name) { return tech.FindPadStyle(name); };
  CNetClass* const standard = tech.FindNetClass("Default");
  standard->SetTrackStyles(track("Fine"), track("Signal"));
  standard->SetViaStyle(pad("Via 0.6"));
  standard->Set(&SNetClassFields::microviaStyle, pad("Microvia 0.3"));
  standard->Set(&SNetClassFields::clearance, {Um(150)});
  CNetClass& power = AddRecord(tech.netClasses, {.name = {"Power"},
                                                 .type = {ENetClassType::Power},
                                                 .minimumStyle = track("Signal"),
                                                 .nominalStyle = track("Power"),
                                                 .viaStyle = pad("Via 0.6"),
                                                 .clearance = {Um(200)},
                                                 .useOwnColour = true,
                                                 .ownColour = {0xE04040},
                                                 .tentedVias = {ETentedVias::No}});
  CNetClass& audio = AddRecord(tech.netClasses, {.name = {"Audio"},
                                                 .minimumStyle = track("Signal"),
                                                 .nominalStyle = track("Signal"),
                                                 .viaStyle = pad("Via 0.6"),
                                                 .clearance = {Um(300)},
                                                 .trackMinMaxEnabled = true,
                                                 .minTrackLength = {Um(1'000)},
                                                 .maxTrackLength = {Um(60'000)},
                                                 .tentedVias = {ETentedVias::Yes}});
  AddRecord(tech.netClasses, {.name = {"USB"},
                              .minimumStyle = track("Fine"),
                              .nominalStyle = track("USB"),
                              .viaStyle = pad("Via 0.6"),
                              .clearance = {Um(150)},
                              .trackLengthDiffEnabled = true,
                              .trackLengthDiff = {Um(1'250)},
                              .diffPairEnabled = true,
                              .diffPairStyle = track("USB"),
                              .diffPairGap = {Um(150)},
                              .diffPairViaGap = {Um(250)},
                              .diffPairSkewEnabled = true,
                              .diffPairSkew = {Um(500)}});
  AddRecord(tech.netClasses, {.name = {"Supply input"},
                              .type = {ENetClassType::Power},
                              .minimumStyle = track("Power"),
                              .nominalStyle = track("Mains"),
                              .viaStyle = pad("Via 0.6"),
                              .clearance = {Um(500)}});
  AddRecord(tech.spacings, {.first = &power, .second = &audio, .value = {Um(400)}});
  AddRecord(tech.spacings, {.first = standard, .second = &audio, .value = {Um(250)}});

  CDesignSpacings& rules = *tech.GetDesignSpacings();
  for (const auto& [field, um] : {std::pair{&SDesignSpacingsFields::padToPad, 200},
                                  {&SDesignSpacingsFields::padToTrack, 150},
                                  {&SDesignSpacingsFields::padToVia, 150},
                                  {&SDesignSpacingsFields::trackToTrack, 125},
                                  {&SDesignSpacingsFields::trackToVia, 150},
                                  {&SDesignSpacingsFields::viaToVia, 200},
                                  {&SDesignSpacingsFields::toBoard, 300},
                                  {&SDesignSpacingsFields::holeToHole, 250},
                                  {&SDesignSpacingsFields::minimumTrackWidth, 125},
                                  {&SDesignSpacingsFields::minimumDrill, 100},
                                  {&SDesignSpacingsFields::minimumAnnularRing, 100}})
    rules.Set(field, {Um(um)});
  AddRecord(tech.grids, {.name = {"Metric"}, .stepX = {Um(500)}, .stepY = {Um(500)}, .working = true});
  AddRecord(tech.grids, {.name = {"Fine"}, .stepX = {Um(50)}, .stepY = {Um(50)}, .snapMode = {EGridSnapMode::Lines}});
  AddRecord(tech.grids, {.name = {"Imperial"}, .stepX = {Mil(50)}, .stepY = {Mil(50)}, .screen = true});
  AddRecord(tech.componentColours, {.pattern = "U*", .colour = {0x4080FF}});
  AddRecord(tech.componentColours, {.pattern = "J*", .colour = {0xFFC040}});
  AddRecord(tech.componentRules, {.firstPattern = "J*", .secondPattern = "*", .spacing = {Um(2'000)}});
  AddRecord(tech.componentRules, {.firstPattern = "*", .secondPattern = "*", .spacing = {Um(250)}});
}

void AddAttributes(CTechnology& tech) {
  CAttributeName& maker = AddRecord(tech.attributeNames, {.name = {"Manufacturer"}});
  CAttributeName& tolerance =
      AddRecord(tech.attributeNames, {.name = {"Tolerance"}, .displayed = true, .defaultValue = "1 %"});
  AddRecord(tech.attributes, {.name = {"Board maker"}, .attributeName = &maker, .value = "Any"});
  AddRecord(tech.attributes, {.name = {"Resistors"}, .attributeName = &tolerance, .value = "0.1 %"});
}
}  // namespace

void AddTechnology(CTechnology& tech) {
  AddLayers(tech);
  AddStyles(tech);
  AddRules(tech);
  AddAttributes(tech);
}
