// Track, text, line and hatch styles. Lengths are design units.
#pragma once
#include "model/design/choices.h"
#include "model/design/record.h"

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
  Dsu width{1'000'000};      // the size of the text
  Dsu lineWidth{150'000};    // of the strokes; without meaning for a TrueType font
  CString font{"Standard"};  // a stroke or barcode font, or the name of a TrueType font
  bool underlined = false;
  bool proportional = false;
  int charWidthPercent = 100;
  int interlineHeightPercent = 100;
  int parameter1 = 0;  // of a barcode font, as the next five
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
  int GetWidth() const { return Values().width.value; }
  void SetWidth(int dsu) { Set(&Fields::width, Dsu{dsu}); }
  int GetLineWidth() const { return Values().lineWidth.value; }
  void SetLineWidth(int dsu) { Set(&Fields::lineWidth, Dsu{dsu}); }
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
