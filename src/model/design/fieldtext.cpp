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
  Number (*number)(const void* value) = nullptr;
  void (*append)(CString& out, const CFieldType& type, Number number, const CUnits& units, ETextFor reader) = nullptr;
  bool (*read)(const CFieldType& type, std::string_view text, const CTechnology& technology, int unitType,
               Number& number) = nullptr;
  bool (*store)(const CField& field, CRecordBase& record, Number number, std::string_view text) = nullptr;
  bool isQuantity = false;
  bool isTelling = false;
  void (*appendWhole)(CString& out, const void* value, const CUnits& units) = nullptr;  // of what is not one number
};

// ---- Texts

Number NoNumber(const void*) { return 0; }
void AppendString(CString& out, const void* value, const CUnits&) {
  out += *static_cast<const CString*>(value);  // a CName begins with its text
}
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
  const CString text = ChoiceText(type.choices(), static_cast<int>(number));
  if (text.empty()) return AppendInt(out, number);
  out += text;
}
bool ReadCode(const CFieldType& type, std::string_view text, const CTechnology&, int, Number& number) {
  const int value = ChoiceValue(type.choices(), text);
  if (value < 0) return false;
  number = value;
  return true;
}

// ---- One number each

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

// ---- Several numbers each

CString CountText(std::size_t count) { return IntText(static_cast<Number>(count)); }
void AppendPlace(CString& out, const void* value, const CUnits& units) {
  const CPoint place = *static_cast<const CPoint*>(value);
  AppendLength(out, place.x, units, false);
  out += " / ";
  AppendLength(out, place.y, units, false);
}
void AppendPlaces(CString& out, const void* value, const CUnits& units) {
  const CPoints& places = *static_cast<const CPoints*>(value);
  if (places.empty() || places.size() > 2) {
    out += TextOf(Text::PointCount, CStringArray{CountText(places.size())});
    return;
  }
  CString first, last;
  AppendPlace(first, &places.front(), units);
  AppendPlace(last, &places.back(), units);
  out += places.size() == 1 ? first : TextOf(Text::FromTo, CStringArray{first, last});
}
void AppendFlags(CString& out, const void* value, const CUnits&) {
  const CItemFlags& flags = *static_cast<const CItemFlags*>(value);
  out += TextOf(Text::SomeOfAll, CStringArray{CountText(flags.count()), CountText(flags.size())});
}

const SForm& FormOf(EFieldClass fieldClass) {
  static constexpr SForm kText{NoNumber, AppendNothing, ReadAnything, StoreText, false, false, AppendString};
  static constexpr SForm kName{NoNumber, AppendNothing, ReadAnything, StoreName, false, false, AppendString};
  static constexpr SForm kLength{IntNumber, AppendDsu, ReadDsu, StoreInt, true, true};
  static constexpr SForm kInteger{IntNumber, AppendInteger, ReadInteger, StoreInt, true};
  static constexpr SForm kBoolean{BoolNumber, AppendBool, ReadBool, StoreBool};
  static constexpr SForm kColour{ColourNumber, AppendColour, ReadColour, StoreColour};
  static constexpr SForm kCode{IntNumber, AppendCode, ReadCode, StoreInt, false, true};
  static constexpr SForm kReference{TargetNumber, AppendTarget, ReadTarget, StoreTarget};
  static constexpr SForm kAngle{AngleNumber, AppendAngle, ReadAngle, StoreAngle, true, true};
  static constexpr SForm kPoint{NoNumber, AppendNothing, ReadNothing, StoreNothing, false, true, AppendPlace};
  static constexpr SForm kPoints{NoNumber, AppendNothing, ReadNothing, StoreNothing, false, false, AppendPlaces};
  static constexpr SForm kFlags{NoNumber, AppendNothing, ReadNothing, StoreNothing, false, false, AppendFlags};
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
    case EFieldClass::Point: return kPoint;
    case EFieldClass::Points: return kPoints;
    case EFieldClass::Flags: break;
  }
  return kFlags;
}

const void* ValueOf(const CField& field, const CRecordBase& record) { return &field.As<char>(record.FieldsAddress()); }
}  // namespace

Number FieldNumber(const CField& field, const CRecordBase& record) {
  return FormOf(field.type->fieldClass).number(ValueOf(field, record));
}

Number ShownNumber(const CField& field, const CRecordBase& record) {
  return field.shown ? field.shown(record) : FieldNumber(field, record);
}

bool IsQuantity(const CFieldType& type) { return FormOf(type.fieldClass).isQuantity; }
bool IsTextTelling(const CFieldType& type) { return FormOf(type.fieldClass).isTelling; }

CString FieldText(const CField& field, const CRecordBase& record, const CUnits& units) {
  CString text;
  const SForm& form = FormOf(field.type->fieldClass);
  if (form.appendWhole) {
    form.appendWhole(text, ValueOf(field, record), units);
  } else {
    form.append(text, *field.type, ShownNumber(field, record), units, ETextFor::People);
  }
  return text;
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

std::span<const CPoint> PlacesOf(const CField& field, const CRecordBase& record) {
  const void* const value = ValueOf(field, record);
  if (field.type->fieldClass == EFieldClass::Point) return {static_cast<const CPoint*>(value), 1};
  if (field.type->fieldClass == EFieldClass::Points) return *static_cast<const CPoints*>(value);
  return {};
}

bool StorePlaces(const CField& field, CRecordBase& record, const CPoints& places) {
  assert(places.size() == PlacesOf(field, record).size());
  if (field.type->fieldClass == EFieldClass::Points) return field.set(record, &places);
  return !places.empty() && field.set(record, places.data());
}
