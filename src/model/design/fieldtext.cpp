#include "model/design/fieldtext.h"

#include "model/base/catalogue.h"
#include "model/base/decimal.h"
#include "model/design/technology.h"

namespace {
using Number = std::int64_t;

bool FitsInt(Number number) { return number == static_cast<int>(number); }

const CString& YesNo(bool yes) {
  static const CString kYes = TextOf(Text::Yes);
  static const CString kNo = TextOf(Text::No);
  return yes ? kYes : kNo;
}

/// What is done with the values of one class of field.
struct SForm {
  Number (*number)(const void* value);
  void (*append)(CString& out, const CFieldType& type, Number number, const CUnits& units, ETextFor reader);
  bool (*read)(const CFieldType& type, std::string_view text, const CTechnology& technology, int unitType,
               Number& number);
  bool (*store)(const CField& field, CRecordBase& record, Number number, std::string_view text);
};

// ---- Texts

Number NoNumber(const void*) { return 0; }
void AppendNothing(CString&, const CFieldType&, Number, const CUnits&, ETextFor) {}
bool ReadAnything(const CFieldType&, std::string_view, const CTechnology&, int, Number& number) {
  number = 0;
  return true;
}
bool ReadNothing(const CFieldType&, std::string_view, const CTechnology&, int, Number&) { return false; }
bool StoreText(const CField& field, CRecordBase& record, Number, std::string_view text) {
  const CString value(text);
  return field.set(record, &value);
}
bool StoreName(const CField& field, CRecordBase& record, Number, std::string_view text) {
  const CName value{CString(text)};
  return field.set(record, &value);
}
bool StoreNothing(const CField&, CRecordBase&, Number, std::string_view) { return false; }

// ---- Integers: lengths, numbers and codes are one int each

Number IntNumber(const void* value) { return *static_cast<const int*>(value); }
bool StoreInt(const CField& field, CRecordBase& record, Number number, std::string_view) {
  const int value = static_cast<int>(number);
  return field.set(record, &value);
}
void AppendDsu(CString& out, const CFieldType&, Number number, const CUnits& units, ETextFor reader) {
  AppendLength(out, static_cast<int>(number), units, reader == ETextFor::Files);
}
bool ReadDsu(const CFieldType&, std::string_view text, const CTechnology&, int unitType, Number& number) {
  int dsu = 0;
  if (!ReadLength(text, unitType, dsu)) return false;
  number = dsu;
  return true;
}
void AppendInteger(CString& out, const CFieldType&, Number number, const CUnits&, ETextFor) { AppendInt(out, number); }
bool ReadInteger(const CFieldType&, std::string_view text, const CTechnology&, int, Number& number) {
  Number value = 0;
  if (!ParseInt(Trim(text), value) || !FitsInt(value)) return false;
  number = value;
  return true;
}
void AppendCode(CString& out, const CFieldType& type, Number number, const CUnits&, ETextFor) {
  out += ChoiceText(type.choices(), static_cast<int>(number));
}
bool ReadCode(const CFieldType& type, std::string_view text, const CTechnology&, int, Number& number) {
  const int value = ChoiceValue(type.choices(), text);
  if (value < 0) return false;
  number = value;
  return true;
}

// ---- The rest

Number BoolNumber(const void* value) { return *static_cast<const bool*>(value); }
void AppendBool(CString& out, const CFieldType&, Number number, const CUnits&, ETextFor reader) {
  out += reader == ETextFor::People ? std::string_view(YesNo(number != 0)) : number != 0 ? "Y" : "N";
}
bool ReadBool(const CFieldType&, std::string_view text, const CTechnology&, int, Number& number) {
  const bool yes = EqualNoCase(text, "Y") || EqualNoCase(text, YesNo(true));
  if (!yes && !EqualNoCase(text, "N") && !EqualNoCase(text, YesNo(false))) return false;
  number = yes;
  return true;
}
bool StoreBool(const CField& field, CRecordBase& record, Number number, std::string_view) {
  const bool value = number != 0;
  return field.set(record, &value);
}

Number ColourNumber(const void* value) { return static_cast<const CColour*>(value)->rgb; }
void AppendColour(CString& out, const CFieldType&, Number number, const CUnits&, ETextFor) {
  out += ColourText(CColour{static_cast<std::uint32_t>(number)});
}
bool ReadColour(const CFieldType&, std::string_view text, const CTechnology&, int, Number& number) {
  CColour colour;
  if (!ColourFromText(text, colour)) return false;
  number = colour.rgb;
  return true;
}
bool StoreColour(const CField& field, CRecordBase& record, Number number, std::string_view) {
  const CColour value{static_cast<std::uint32_t>(number)};
  return field.set(record, &value);
}

Number AngleNumber(const void* value) { return static_cast<const CAngle*>(value)->GetMilliDegrees(); }
constexpr std::int32_t kAngleScale = 1000;
void AppendAngle(CString& out, const CFieldType&, Number number, const CUnits&, ETextFor reader) {
  AppendExact(out, static_cast<std::int32_t>(number), kAngleScale);
  if (reader == ETextFor::People) out += "\xC2\xB0";
}
bool ReadAngle(const CFieldType&, std::string_view text, const CTechnology&, int, Number& number) {
  text = Trim(text);
  if (text.ends_with("\xC2\xB0")) text.remove_suffix(2);
  std::int32_t value = 0;
  if (!ScaleDecimal(text, kAngleScale, value)) return false;
  number = value;
  return true;
}
bool StoreAngle(const CField& field, CRecordBase& record, Number number, std::string_view) {
  const CAngle value(static_cast<int>(number));
  return field.set(record, &value);
}

Number TargetNumber(const void* value) { return reinterpret_cast<Number>(static_cast<const CRefBase*>(value)->target); }
void AppendTarget(CString& out, const CFieldType&, Number number, const CUnits&, ETextFor) {
  if (number != 0) out += reinterpret_cast<const CRecordBase*>(number)->RecordName();
}
bool ReadTarget(const CFieldType& type, std::string_view text, const CTechnology& technology, int, Number& number) {
  const CCollectionBase* const records = technology.CollectionOf(*type.target());
  const CRecordBase* const target = text.empty() || !records ? nullptr : records->FindRecord(text);
  if (!text.empty() && !target) return false;
  number = reinterpret_cast<Number>(target);
  return true;
}
bool StoreTarget(const CField& field, CRecordBase& record, Number number, std::string_view) {
  const CRefBase value{reinterpret_cast<CRecordBase*>(number)};
  return field.set(record, &value);
}

const SForm& FormOf(EFieldClass fieldClass) {
  static constexpr SForm kText{NoNumber, AppendNothing, ReadAnything, StoreText};
  static constexpr SForm kName{NoNumber, AppendNothing, ReadAnything, StoreName};
  static constexpr SForm kLength{IntNumber, AppendDsu, ReadDsu, StoreInt};
  static constexpr SForm kInteger{IntNumber, AppendInteger, ReadInteger, StoreInt};
  static constexpr SForm kBoolean{BoolNumber, AppendBool, ReadBool, StoreBool};
  static constexpr SForm kColour{ColourNumber, AppendColour, ReadColour, StoreColour};
  static constexpr SForm kCode{IntNumber, AppendCode, ReadCode, StoreInt};
  static constexpr SForm kReference{TargetNumber, AppendTarget, ReadTarget, StoreTarget};
  static constexpr SForm kAngle{AngleNumber, AppendAngle, ReadAngle, StoreAngle};
  static constexpr SForm kSeveral{NoNumber, AppendNothing, ReadNothing, StoreNothing};  // numbers, not one
  switch (fieldClass) {
    case EFieldClass::Text: return kText;
    case EFieldClass::Name: return kName;
    case EFieldClass::Length: return kLength;
    case EFieldClass::Integer: return kInteger;
    case EFieldClass::Boolean: return kBoolean;
    case EFieldClass::Colour: return kColour;
    case EFieldClass::Code: return kCode;
    case EFieldClass::Reference: return kReference;
    case EFieldClass::Angle: return kAngle;
    case EFieldClass::Point:
    case EFieldClass::Points:
    case EFieldClass::Flags: break;
  }
  return kSeveral;
}

const void* ValueOf(const CField& field, const CRecordBase& record) { return &field.As<char>(record.FieldsAddress()); }
}  // namespace

Number FieldNumber(const CField& field, const CRecordBase& record) {
  return FormOf(field.type->fieldClass).number(ValueOf(field, record));
}

void AppendFieldText(CString& out, const CField& field, const CRecordBase& record, const CUnits& units,
                     ETextFor reader) {
  const void* const fields = record.FieldsAddress();
  switch (field.type->fieldClass) {
    case EFieldClass::Text:
    case EFieldClass::Name: out += field.As<CString>(fields); break;  // a CName begins with its text
    case EFieldClass::Point: {
      const CPoint point = field.As<CPoint>(fields);
      AppendLength(out, point.x, units, reader == ETextFor::Files);
      out += " / ";
      AppendLength(out, point.y, units, reader == ETextFor::Files);
      break;
    }
    case EFieldClass::Points:
      out += TextOf(Text::PointCount, CStringArray{IntText(static_cast<Number>(field.As<CPoints>(fields).size()))});
      break;
    case EFieldClass::Flags: {
      const CItemFlags& flags = field.As<CItemFlags>(fields);
      out += TextOf(Text::SomeOfAll, CStringArray{IntText(static_cast<Number>(flags.count())),
                                                  IntText(static_cast<Number>(flags.size()))});
      break;
    }
    default: AppendNumberText(out, *field.type, FieldNumber(field, record), units, reader);
  }
}

void AppendNumberText(CString& out, const CFieldType& type, Number number, const CUnits& units, ETextFor reader) {
  FormOf(type.fieldClass).append(out, type, number, units, reader);
}

bool ReadFieldNumber(const CFieldType& type, std::string_view text, const CTechnology& technology, int unitType,
                     Number& number) {
  return FormOf(type.fieldClass).read(type, text, technology, unitType, number);
}

bool FieldHolds(const CField& field, const CRecordBase& record, Number number, std::string_view text) {
  if (IsTextField(field.type->fieldClass)) return field.As<CString>(record.FieldsAddress()) == text;
  return FieldNumber(field, record) == number;
}

bool StoreField(const CField& field, CRecordBase& record, Number number, std::string_view text) {
  return FormOf(field.type->fieldClass).store(field, record, number, text);
}
