// Fonts. A text style names its font; which font a name stands for is found out when it is asked, since TrueType fonts
// are those of the machine. Stroke and barcode fonts are built in. A name that nobody knows is kept, and drawn in the
// first stroke font.
#pragma once
#include <span>

#include "model/base/object.h"
#include "model/base/text.h"

class CBaseFont : public CObject {
  TECHSHEET_CLASS(CBaseFont, CObject)
  explicit CBaseFont(CString name) : m_name(std::move(name)) {}
  const CString& GetName() const { return m_name; }
  /// Whether `other` is a font of the same name and class.
  bool IsEqual(const CBaseFont* other) const {
    return other && GetRuntimeClass() == other->GetRuntimeClass() && m_name == other->m_name;
  }
  CString GetObjectName() const override { return m_name; }

 private:
  CString m_name;
};

class CStrokeFont : public CBaseFont {
  TECHSHEET_CLASS(CStrokeFont, CBaseFont)
  using CBaseFont::CBaseFont;
};

/// Draws texts as bar codes; a text style has parameters for them (CTextStyle::GetParameter).
class CBarcodeFont : public CBaseFont {
  TECHSHEET_CLASS(CBarcodeFont, CBaseFont)
  using CBaseFont::CBaseFont;
};

class CTrueTypeFont : public CBaseFont {
  TECHSHEET_CLASS(CTrueTypeFont, CBaseFont)
  using CBaseFont::CBaseFont;
};

/// The TrueType fonts of the machine. Fonts live as long as the program, also when the machine loses them.
class CTypeFontList {
 public:
  /// Asks the user interface anew which fonts there are.
  static void Load();
  /// The font of that name, null when the machine had none of it at the last Load.
  static const CTrueTypeFont* Find(const CString& name);
  /// In the order of their names.
  static std::vector<const CTrueTypeFont*> All();
};

/// The fonts that are built in, in the order in which people are offered them.
std::span<const CBaseFont* const> BuiltInFonts();
/// The TrueType font of that name, else the built-in one, else the first stroke font; never null.
const CBaseFont* FindFont(const CString& name);
