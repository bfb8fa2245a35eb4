#include "storage/fieldjson.h"

#include <charconv>

#include "model/base/jsontext.h"
#include "model/design/choices.h"
#include "model/design/collection.h"
#include "storage/designfile.h"

namespace json = simdjson::ondemand;

namespace {
/// How the values of one class of field are read and written.
struct SFieldJson {
  decltype(SFieldPlan::read) read = nullptr;
  decltype(SFieldKey::append) append = nullptr;
  SFieldKey::EEqual equal = SFieldKey::EEqual::AsTheTypeSays;
};

template <class T>
const T& As(const void* value) {
  return *static_cast<const T*>(value);
}

// ---- Texts

void ReadText(CFieldReader& reader, json::value& value, const CField&, void* out) {
  *static_cast<CString*>(out) = reader.TakeText(value);  // a CName begins with its text
}
void AppendText(CString& out, const void* value, std::size_t, ELines) { AppendJsonText(out, As<CString>(value)); }

void ReadColour(CFieldReader& reader, json::value& value, const CField&, void* out) {
  if (!ColourFromText(reader.TakeText(value), *static_cast<CColour*>(out))) reader.Fail(value, "a colour, \"#RRGGBB\"");
}
void AppendColour(CString& out, const void* value, std::size_t, ELines) {
  ((out += '"') += ColourText(As<CColour>(value))) += '"';
}

// ---- Numbers and marks

void ReadInteger(CFieldReader& reader, json::value& value, const CField& field, void* out) {
  *static_cast<int*>(out) = reader.TakeInt(value, field.least, field.most);
}
void AppendInteger(CString& out, const void* value, std::size_t, ELines) { AppendInt(out, As<int>(value)); }

void ReadAngle(CFieldReader& reader, json::value& value, const CField&, void* out) {
  *static_cast<CAngle*>(out) = CAngle(reader.TakeInt(value));
}
void AppendAngle(CString& out, const void* value, std::size_t, ELines) {
  AppendInt(out, As<CAngle>(value).GetMilliDegrees());
}

void ReadCode(CFieldReader& reader, json::value& value, const CField& field, void* out) {
  std::int64_t code = 0;
  const bool isNumber = !value.get_int64().get(code);
  CString allowed;
  for (const SChoice& choice : field.type->choices()) {
    if (isNumber && choice.value == code) {
      *static_cast<int*>(out) = choice.value;
      return;
    }
    allowed += (allowed.empty() ? "" : ", ") + IntText(choice.value);
  }
  reader.Fail(value, "one of " + allowed);
}

void ReadBoolean(CFieldReader& reader, json::value& value, const CField&, void* out) {
  *static_cast<bool*>(out) = reader.TakeBool(value);
}
void AppendBoolean(CString& out, const void* value, std::size_t, ELines) { out += As<bool>(value) ? "true" : "false"; }

// ---- Lists

CPoint TakePoint(CFieldReader& reader, json::value& value) {
  constexpr const char* kWanted = "a place, [x,y]";
  json::array pair = reader.TakeArray(value, kWanted);
  CPoint point;
  int count = 0;
  for (auto item : pair) {
    json::value number = reader.Take(std::move(item));
    if (count == 2) reader.Fail(number, "a place of two numbers");
    (count++ == 0 ? point.x : point.y) = reader.TakeInt(number);
  }
  if (count != 2) reader.Fail(value, kWanted);
  return point;
}
void ReadPoint(CFieldReader& reader, json::value& value, const CField&, void* out) {
  *static_cast<CPoint*>(out) = TakePoint(reader, value);
}
void AppendPoint(CString& out, const void* value, std::size_t, ELines) {
  const CPoint point = As<CPoint>(value);
  char text[32] = "[";
  char* end = std::to_chars(text + 1, text + 12, point.x).ptr;
  *end++ = ',';
  end = std::to_chars(end, end + 11, point.y).ptr;
  *end++ = ']';
  out.append(text, end);
}

void ReadPoints(CFieldReader& reader, json::value& value, const CField&, void* out) {
  CPoints points;
  for (auto item : reader.TakeArray(value, "a list of places, [[x,y],...]")) {
    json::value point = reader.Take(std::move(item));
    points.push_back(TakePoint(reader, point));
  }
  *static_cast<CPoints*>(out) = std::move(points);
}
void AppendPoints(CString& out, const CPoints& points, std::size_t indent, ELines lines, bool broken) {
  const std::size_t begin = out.size();
  out += '[';
  for (const CPoint& point : points) {
    if (&point != &points.front()) out += ',';
    if (broken) (out += '\n').append(indent + 1, ' ');
    AppendPoint(out, &point, indent, lines);
    if (broken || lines == ELines::One || out.size() - begin <= kLineLength) continue;
    if (lines == ELines::OneIfItFits) return;
    out.resize(begin);
    return AppendPoints(out, points, indent, lines, true);
  }
  out += ']';
}
void AppendPoints(CString& out, const void* value, std::size_t indent, ELines lines) {
  AppendPoints(out, As<CPoints>(value), indent, lines, false);
}

/// The numbers of the flags that are not set, which are few.
void ReadFlags(CFieldReader& reader, json::value& value, const CField&, void* out) {
  CItemFlags flags = CItemFlags().set();
  for (auto item : reader.TakeArray(value, "a list of numbers")) {
    json::value number = reader.Take(std::move(item));
    const auto cleared = static_cast<std::size_t>(reader.TakeInt(number, 0, static_cast<int>(flags.size()) - 1));
    if (!flags[cleared]) reader.Fail(number, "a list without repeated numbers");
    flags.reset(cleared);
  }
  *static_cast<CItemFlags*>(out) = flags;
}
void AppendFlags(CString& out, const void* value, std::size_t, ELines) {
  const CItemFlags& flags = As<CItemFlags>(value);
  out += '[';
  for (std::size_t item = 0; item < flags.size(); ++item) {
    if (flags[item]) continue;
    if (out.back() != '[') out += ',';
    AppendInt(out, static_cast<std::int64_t>(item));
  }
  out += ']';
}

// ---- References stand there by name; who reads or writes many remembers the last one

const SFieldJson& JsonOf(const CFieldType& type) {
  static constexpr SFieldJson kText{ReadText, AppendText};
  static constexpr SFieldJson kColour{ReadColour, AppendColour};
  static constexpr SFieldJson kInteger{ReadInteger, AppendInteger, SFieldKey::EEqual::Ints};
  static constexpr SFieldJson kCode{ReadCode, AppendInteger, SFieldKey::EEqual::Ints};
  static constexpr SFieldJson kAngle{ReadAngle, AppendAngle};
  static constexpr SFieldJson kBoolean{ReadBoolean, AppendBoolean};
  static constexpr SFieldJson kPoint{ReadPoint, AppendPoint};
  static constexpr SFieldJson kPoints{ReadPoints, AppendPoints};
  static constexpr SFieldJson kFlags{ReadFlags, AppendFlags};
  static constexpr SFieldJson kReference{nullptr, nullptr, SFieldKey::EEqual::Targets};
  switch (type.fieldClass) {
    case EFieldClass::Text:
    case EFieldClass::Name: return kText;
    case EFieldClass::Length:
    case EFieldClass::Integer: return kInteger;
    case EFieldClass::Code: return kCode;
    case EFieldClass::Angle: return kAngle;
    case EFieldClass::Boolean: return kBoolean;
    case EFieldClass::Colour: return kColour;
    case EFieldClass::Point: return kPoint;
    case EFieldClass::Points: return kPoints;
    case EFieldClass::Flags: return kFlags;
    case EFieldClass::Reference: break;
  }
  return kReference;
}
}  // namespace

// ---- Reading

SFieldPlan::SFieldPlan(const CField& aField, const CCollectionBase* aTargets)
    : field(&aField), read(JsonOf(*aField.type).read), targets(aTargets) {}

void CFieldReader::ReadField(json::value& value, SFieldPlan& plan, CRecordBase& record, CRecordBase& owner) {
  void* const out = plan.field->at(record.FieldsAddress());
  if (plan.read) return plan.read(*this, value, *plan.field, out);
  ReadReference(value, plan, *static_cast<CRefBase*>(out), owner);
}

void CFieldReader::ReadReference(json::value& value, SFieldPlan& plan, CRefBase& out, CRecordBase& owner) {
  if (TakeNull(value)) {
    out.target = nullptr;
    return;
  }
  const std::string_view name = TakeText(value, "a name or null");
  if (!plan.last || name != plan.lastName) {
    CRecordBase* const found = plan.targets ? plan.targets->FindRecord(name) : nullptr;
    if (!found) {
      m_open.push_back({&owner, &plan, name, OffsetOf(value.raw_json_token().data())});
      return;
    }
    plan.lastName = name;
    plan.last = found;
  }
  out.target = plan.last;
}

void CFieldReader::ResolveOpenReferences() {
  for (const SOpenReference& open : m_open) {
    const CRefBase found{open.plan->targets ? open.plan->targets->FindRecord(open.name) : nullptr};
    if (!found.target)
      throw STextFault{open.at, CString("\"") + open.plan->field->name + "\" names " + Quoted(open.name) +
                                    ", which this file does not hold"};
    open.plan->field->set(*open.record, &found);
  }
}

// ---- Writing

SFieldKey::SFieldKey(const CField& aField, const void* aUsual)
    : field(&aField),
      append(JsonOf(*aField.type).append),
      equal(JsonOf(*aField.type).equal),
      text(",\"" + CString(aField.name) + "\":"),
      usual(aUsual) {}

void SFieldKey::AppendReference(CString& out, const CRecordBase* named) {
  if (!named) {
    out += "null";
    return;
  }
  if (named != target) {
    target = named;
    targetText.clear();
    AppendJsonText(targetText, named->RecordName());
  }
  out += targetText;
}

CString FieldJson(const CField& field, const CRecordBase& record) {
  CString out;
  SFieldKey(field, nullptr).AppendValue(out, &field.As<char>(record.FieldsAddress()), 0, ELines::One);
  return out;
}
