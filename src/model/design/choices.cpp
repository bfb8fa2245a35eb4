#include "model/design/choices.h"

#include "model/base/catalogue.h"

#define TECHSHEET_CHOICES(Tag, ...)                      \
  std::span<const SChoice> Tag::Choices() {              \
    static constexpr SChoice kChoices[] = {__VA_ARGS__}; \
    return kChoices;                                     \
  }
TECHSHEET_CHOICES(ELayerUsage, {1, 20201}, {2, 20202}, {4, 20203}, {8, 20204}, {16, 20205})
TECHSHEET_CHOICES(ELayerBias, {0, 20210}, {1, 20211}, {2, 20212}, {3, 20213}, {4, 20214}, {5, 20215})
TECHSHEET_CHOICES(ELayerSide, {0, 20220}, {2, 20222}, {1, 20221}, {3, 20223})
TECHSHEET_CHOICES(EOversizeType, {0, 20230}, {1, 20231}, {2, 20232})
TECHSHEET_CHOICES(EPadShape, {0, 20240}, {1, 20241}, {2, 20242}, {3, 20243}, {4, 20244}, {5, 20245}, {6, 20246})
TECHSHEET_CHOICES(EDrillShape, {0, 20250}, {1, 20251})
TECHSHEET_CHOICES(ENetClassType, {0, 20255}, {1, 20256})
TECHSHEET_CHOICES(ETentedVias, {1, 7551}, {0, 7552}, {2, 7566})
TECHSHEET_CHOICES(EUnitType, {0, 20260}, {1, 20261}, {2, 20262}, {3, 20263})
TECHSHEET_CHOICES(EGridSnapMode, {0, 20270}, {1, 20271}, {2, 20272})
TECHSHEET_CHOICES(ELinePattern, {0, 20275}, {1, 20276}, {2, 20277}, {3, 20278})
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
