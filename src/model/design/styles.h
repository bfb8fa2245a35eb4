// Track, text, line and hatch styles. Lengths are design units.
#pragma once
#include "model/design/choices.h"
#include "model/design/fonts.h"
#include "model/design/record.h"

class CTechnology;

struct STrackStyleFields {
  CName name;
  Dsu width{250'000};
};
class CTrackStyle : public CRecord<STrackStyleFields> {
  TECHSHEET_RECORD(CTrackStyle, CRecordBase)
  const CString& GetName() const { return Values().name.text; }
  void SetName(const CString& name) { Set(&Fields::name, CName{name}); }
  int GetWidth() const { return Values().width.value; }
  void SetWidth(int dsu) { Set(&Fields::width, Dsu{dsu}); }
};

struct STextStyleFields {
  CName name;
  Dsu size{1'000'000};       // of the text
  Dsu lineWidth{150'000};    // of the strokes; without meaning for a TrueType font
  CString font{"Standard"};  // a stroke or barcode font, or the name of a TrueType font
  bool underlined = false;
  bool proportional = false;
  int charWidthPercent = 100;
  int interlineHeightPercent = 100;
  // Of a barcode font, 0 for what the font usually has: the narrow bar in percent of the line width, the wide bar and
  // the gap between characters in percent of the narrow bar, the quiet zone in narrow bars, the height of the bars in
  // percent of the size, and whether the text stands below them (1) or not (2).
  int parameter1 = 0;
  int parameter2 = 0;
  int parameter3 = 0;
  int parameter4 = 0;
  int parameter5 = 0;
  int parameter6 = 0;
};
class CTextStyle : public CRecord<STextStyleFields> {
  TECHSHEET_RECORD(CTextStyle, CRecordBase)
  const CString& GetName() const { return Values().name.text; }
  void SetName(const CString& name) { Set(&Fields::name, CName{name}); }
  int GetWidth() const { return Values().size.value; }
  void SetWidth(int dsu) { Set(&Fields::size, Dsu{dsu}); }
  int GetLineWidth() const { return Values().lineWidth.value; }
  void SetLineWidth(int dsu) { Set(&Fields::lineWidth, Dsu{dsu}); }
  const CBaseFont* GetFont() const { return FindFont(Values().font); }
  void SetFont(const CBaseFont* font) { Set(&Fields::font, font->GetName()); }
  void SetIsUnderlined(bool underlined) { Set(&Fields::underlined, underlined); }
  bool GetProportional() const { return Values().proportional; }
  void SetProportional(bool proportional) { Set(&Fields::proportional, proportional); }
  int GetCharWidthPercent() const { return Values().charWidthPercent; }
  void SetCharWidthPercent(int percent) { Set(&Fields::charWidthPercent, percent); }
  int GetInterlineHeightPercent() const { return Values().interlineHeightPercent; }
  void SetInterlineHeightPercent(int percent) { Set(&Fields::interlineHeightPercent, percent); }
  bool IsBarcodeFont() const { return GetFont()->IsKindOf(CBarcodeFont::GetThisClass()); }
  /// One of the parameters of a barcode font, counted from 0 in the order of the fields; 0 outside them.
  int GetParameter(int index) const;
  static constexpr int kParameters = 6;
  void CopyBarcodeParams(const CTextStyle* other);
};

struct SLineStyleFields {
  CName name;
  Dsu width{150'000};
  CCode<ELinePattern> pattern;
};
class CLineStyle : public CRecord<SLineStyleFields> {
  TECHSHEET_RECORD(CLineStyle, CRecordBase)
  const CString& GetName() const { return Values().name.text; }
  int GetWidth() const { return Values().width.value; }
};

struct SHatchStyleFields {
  CName name;
  Dsu spacing{500'000};
  CRef<CLineStyle> lineStyle;
  CAngle angle{45'000};
  bool crossed = false;
};
class CHatchStyle : public CRecord<SHatchStyleFields> {
  TECHSHEET_RECORD(CHatchStyle, CRecordBase)
  const CString& GetName() const { return Values().name.text; }
};

bool ValidTrackStyleName(const CString& name);
bool ValidTextStyleName(const CString& name);
/// Whether a width or size can be drawn: greater than 0. Otherwise the last error is set, in the units of `design`.
bool IsValidDimension(int dsu, const CTechnology* design);
