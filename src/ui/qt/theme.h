// Themes: palettes for light, dark and high contrast. Text stands out from what is behind it by at least 4.5 to 1,
// selected text too; disabled text is exempt.
#pragma once
#include <QColor>
#include <QPalette>

enum class ETheme { System, Light, Dark, HighContrast };
inline constexpr int kThemes = 4;
inline constexpr double kReadable = 4.5;

/// A colour on the way from `a` to `b`, `ofB` (0 to 1) of it gone.
QColor Mixed(const QColor& a, const QColor& b, double ofB);
/// How far two opaque colours stand apart, 1 (equal) to 21 (black and white), by the relative luminances of sRGB.
double Contrast(const QColor& a, const QColor& b);
/// `wished`, or the colour nearest to it on the way to black or white that can be read on `background`.
QColor Readable(const QColor& wished, const QColor& background);

QPalette ThemePalette(ETheme theme);
/// The name of a theme as menus show it.
QString ThemeText(ETheme theme);
/// Gives the program that theme.
void ApplyTheme(ETheme theme);
/// The theme that was kept; that of the system without a usable one.
ETheme StoredTheme();
void StoreTheme(ETheme theme);

/// What problems are written in on `background`, and the ground of a field or cell that holds one: a red that suits the
/// theme. The text on that ground is the palette's own.
QColor ProblemText(const QColor& background);
QColor ProblemGround(const QPalette& palette);
