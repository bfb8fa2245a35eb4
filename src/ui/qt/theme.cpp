#include "ui/qt/theme.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

#include "model/services/registry.h"
#include "ui/qt/text.h"

namespace {
constexpr const char* kKey = "Settings\\View";
constexpr const char* kValue = "Theme";

/// The colours that a theme consists of; the roles of a palette are made of them.
struct SThemeColours {
  QRgb window, base, alternate, button, text, muted, disabled, accent, accentText, link, bright, outline;
};
constexpr SThemeColours kLight{0xEFF0F2, 0xFFFFFF, 0xF4F6F9, 0xE4E6EA, 0x1B1E23, 0x5A6068,
                               0x8A9098, 0x1F5FBF, 0xFFFFFF, 0x1A56B0, 0xB00020, 0x858B94};
constexpr SThemeColours kDark{0x24272C, 0x1A1C20, 0x202328, 0x33373E, 0xE6E8EB, 0xA4ABB5,
                              0x767D87, 0x2F6FD0, 0xFFFFFF, 0x7DB3FF, 0xFF9A9A, 0x7E8591};
constexpr SThemeColours kHighContrast{0x000000, 0x000000, 0x101010, 0x000000, 0xFFFFFF, 0xFFFFFF,
                                      0x9A9A9A, 0xFFFF00, 0x000000, 0x66CCFF, 0xFF8080, 0xFFFFFF};

QPalette MakePalette(const SThemeColours& colours) {
  QPalette palette{QColor(colours.button), QColor(colours.window)};
  const auto set = [&](QRgb rgb, std::initializer_list<QPalette::ColorRole> roles) {
    for (const QPalette::ColorRole role : roles) palette.setColor(role, QColor(rgb));
  };
  set(colours.window, {QPalette::Window});
  set(colours.base, {QPalette::Base});
  set(colours.alternate, {QPalette::AlternateBase, QPalette::ToolTipBase});
  set(colours.button, {QPalette::Button});
  set(colours.text, {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText});
  set(colours.muted, {QPalette::PlaceholderText});
  set(colours.accent, {QPalette::Highlight});
  set(colours.accentText, {QPalette::HighlightedText});
  set(colours.link, {QPalette::Link, QPalette::LinkVisited});
  set(colours.bright, {QPalette::BrightText});
  set(colours.outline, {QPalette::Mid});
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(colours.disabled));
  return palette;
}

double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// Draws the edges of what can be worked with: the usual style derives them from the window's colour, and on a dark
/// window they cannot be told from it.
class COutlinedStyle final : public QProxyStyle {
 public:
  COutlinedStyle() : QProxyStyle(QStringLiteral("Fusion")) {}
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    switch (element) {
      case PE_PanelButtonCommand:
      case PE_FrameLineEdit:
      case PE_Frame:
      case PE_FrameMenu:
      case PE_IndicatorCheckBox:
      case PE_IndicatorRadioButton:
      case PE_IndicatorItemViewItemCheck: Outline(*option, *painter); break;
      default: break;
    }
  }
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ComboBox || control == CC_SpinBox) Outline(*option, *painter);
  }
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    QProxyStyle::drawControl(element, option, painter, widget);
    if (element == CE_TabBarTabShape && option->state & State_Selected) Outline(*option, *painter);
  }

 private:
  static void Outline(const QStyleOption& option, QPainter& painter) {
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool isDefault = button && button->features & QStyleOptionButton::DefaultButton;
    const bool hasFocus = option.state & State_HasFocus && option.state & State_Enabled;
    painter.save();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(option.palette.color(hasFocus || isDefault ? QPalette::Highlight : QPalette::Mid));
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter.restore();
  }
};

struct SNamedTheme {
  const char* stored;
  CTextId text;
};
constexpr SNamedTheme kNames[kThemes] = {{"System", Text::ThemeSystem},
                                         {"Light", Text::ThemeLight},
                                         {"Dark", Text::ThemeDark},
                                         {"HighContrast", Text::ThemeHighContrast}};
}  // namespace

QColor Mixed(const QColor& a, const QColor& b, double ofB) {
  const auto mix = [ofB](int x, int y) { return static_cast<int>(std::lround(x + (y - x) * ofB)); };
  return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

double Contrast(const QColor& a, const QColor& b) {
  const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor Readable(const QColor& wished, const QColor& background) {
  const QColor end = Contrast(Qt::white, background) > Contrast(Qt::black, background) ? Qt::white : Qt::black;
  constexpr int kSteps = 20;
  for (int step = 0; step < kSteps; ++step) {
    const QColor colour = Mixed(wished, end, double{1} * step / kSteps);
    if (Contrast(colour, background) >= kReadable) return colour;
  }
  return end;
}

QPalette ThemePalette(ETheme theme) {
  switch (theme) {
    case ETheme::Light: return MakePalette(kLight);
    case ETheme::Dark: return MakePalette(kDark);
    case ETheme::HighContrast: return MakePalette(kHighContrast);
    default: return QApplication::style()->standardPalette();
  }
}

QString ThemeText(ETheme theme) { return QtText(kNames[static_cast<std::size_t>(theme)].text); }

void ApplyTheme(ETheme theme) {
  static const QString systemStyle = QApplication::style()->name();
  if (theme == ETheme::Dark || theme == ETheme::HighContrast) {
    QApplication::setStyle(new COutlinedStyle);
  } else {
    QApplication::setStyle(theme == ETheme::System ? systemStyle : QStringLiteral("Fusion"));
  }
  QApplication::setPalette(theme == ETheme::System ? QPalette() : ThemePalette(theme));
}

ETheme StoredTheme() {
  CString name;
  CAppRegistry(kKey).GetValue(kValue, name);
  for (int theme = 0; theme < kThemes; ++theme)
    if (name == kNames[theme].stored) return static_cast<ETheme>(theme);
  return ETheme::System;
}

void StoreTheme(ETheme theme) { CAppRegistry(kKey).SetValue(kValue, kNames[static_cast<std::size_t>(theme)].stored); }

QColor ProblemText(const QColor& background) { return Readable(Mixed(Qt::red, Qt::black, 0.25), background); }

QColor ProblemGround(const QPalette& palette) {
  const QColor base = palette.color(QPalette::Base);
  const QColor text = palette.color(QPalette::Text);
  for (const double share : {0.35, 0.25, 0.15})
    if (const QColor ground = Mixed(base, Qt::red, share); Contrast(ground, text) >= kReadable) return ground;
  return base;
}
