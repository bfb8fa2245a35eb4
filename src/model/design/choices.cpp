#include "model/design/choices.h"

#define TECHSHEET_CHOICES(Tag, ...)                      \
  std::span<const SChoice> Tag::Choices() {              \
    static constexpr SChoice kChoices[] = {__VA_ARGS__}; \
    return kChoices;                                     \
  }
TECHSHEET_CHOICES(ELayerUsage, {1, Text::UsageAllLayers}, {2, Text::UsageElectrical}, {4, Text::UsageDocumentation},
                  {8, Text::UsageSolderMask}, {16, Text::UsagePasteMask})
TECHSHEET_CHOICES(ELayerBias, {0, Text::BiasNone}, {1, Text::BiasHorizontal}, {2, Text::BiasVertical},
                  {3, Text::BiasAny}, {4, Text::BiasSplitPlane}, {5, Text::BiasPowerPlane})
TECHSHEET_CHOICES(ELayerSide, {0, Text::SideTop}, {2, Text::SideInner}, {1, Text::SideBottom}, {3, Text::SideAll})
TECHSHEET_CHOICES(EOversizeType, {0, Text::OversizeNone}, {1, Text::OversizeByAmount}, {2, Text::OversizeToAmount})
TECHSHEET_CHOICES(EPadShape, {0, Text::PadRound}, {1, Text::PadSquare}, {2, Text::PadRectangle}, {3, Text::PadOval},
                  {4, Text::PadRoundedRectangle}, {5, Text::PadOctagon}, {6, Text::PadFinger},
                  {7, Text::PadChamferedRectangle})
TECHSHEET_CHOICES(EDrillShape, {0, Text::DrillRound}, {1, Text::DrillSlot})
TECHSHEET_CHOICES(ENetClassType, {0, Text::ClassSignal}, {1, Text::ClassPower})
TECHSHEET_CHOICES(ETentedVias, {1, Text::Tented}, {0, Text::NotTented}, {2, Text::AsThePadStyle})
TECHSHEET_CHOICES(EUnitType, {0, Text::UnitMil}, {1, Text::UnitMm}, {2, Text::UnitInch}, {3, Text::UnitMicrometre})
TECHSHEET_CHOICES(EGridSnapMode, {0, Text::SnapPoints}, {1, Text::SnapLines}, {2, Text::SnapNone})
TECHSHEET_CHOICES(ELinePattern, {0, Text::PatternSolid}, {1, Text::PatternDashed}, {2, Text::PatternDotted},
                  {3, Text::PatternDashDot})
#undef TECHSHEET_CHOICES

CString ChoiceText(std::span<const SChoice> choices, int value) {
  for (const SChoice& choice : choices)
    if (choice.value == value) return TextOf(choice.text);
  return {};
}

int ChoiceValue(std::span<const SChoice> choices, std::string_view text) {
  for (const SChoice& choice : choices)
    if (EqualNoCase(TextOf(choice.text), text)) return choice.value;
  return -1;
}

CString GetLayerBiasString(int bias) { return ChoiceText(ELayerBias::Choices(), bias); }
CString GetLayerSideString(int side) { return ChoiceText(ELayerSide::Choices(), side); }
CString GetLayerUsageString(int usage) { return ChoiceText(ELayerUsage::Choices(), usage); }
CString GetNetClassTypeString(int type) { return ChoiceText(ENetClassType::Choices(), type); }
CString GetGridSnapModeString(int mode) { return ChoiceText(EGridSnapMode::Choices(), mode); }
