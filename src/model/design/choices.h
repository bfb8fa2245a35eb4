// The enumerated values of the design model, each list in the order in which people are offered it.
#pragma once
#include <span>

#include "model/base/catalogue.h"

struct SChoice {
  int value = 0;
  CTextId text;
};

struct ELayerUsage {
  enum : int { All = 1, Electrical = 2, Documentation = 4, SolderMask = 8, PasteMask = 16 };
  static std::span<const SChoice> Choices();
};
struct ELayerBias {
  enum : int { None, Horizontal, Vertical, Any, SplitPlane, PowerPlane };
  static std::span<const SChoice> Choices();
};
struct ELayerSide {
  enum : int { Top, Bottom, Inner, All };
  static std::span<const SChoice> Choices();
};
struct EOversizeType {
  enum : int { None, ByAmount, ToAmount };
  static std::span<const SChoice> Choices();
};
struct EPadShape {
  enum : int { Round, Square, Rectangle, Oval, RoundedRectangle, Octagon, Finger, ChamferedRectangle };
  static std::span<const SChoice> Choices();
};
struct EDrillShape {
  enum : int { Round, Slot };
  static std::span<const SChoice> Choices();
};
struct ENetClassType {
  enum : int { Signal, Power };
  static std::span<const SChoice> Choices();
};
struct ETentedVias {
  enum : int { No, Yes, AsStyle };
  static std::span<const SChoice> Choices();
};
struct EUnitType {
  enum : int { Mil, Millimetre, Inch, Micrometre };
  static std::span<const SChoice> Choices();
};
struct EGridSnapMode {
  enum : int { Points, Lines, None };
  static std::span<const SChoice> Choices();
};
struct ELinePattern {
  enum : int { Solid, Dashed, Dotted, DashDot };
  static std::span<const SChoice> Choices();
};

/// The text of a value, empty for one that the list does not hold.
CString ChoiceText(std::span<const SChoice> choices, int value);
/// The value whose text this is (case ignored), or -1.
int ChoiceValue(std::span<const SChoice> choices, std::string_view text);

CString GetLayerBiasString(int bias);
CString GetLayerSideString(int side);
CString GetLayerUsageString(int usage);
CString GetNetClassTypeString(int type);
CString GetGridSnapModeString(int mode);
