#include "support/snapshot.h"

namespace {
void AppendPoint(CString& out, CPoint point) {
  AppendInt(out, point.x);
  out += ',';
  AppendInt(out, point.y);
}

void AppendIdentity(CString& out, const CRecordBase& record) {
  out += '@';
  AppendInt(out, static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(&record)));
}

void AppendValue(CString& out, const CField& field, const void* fields) {
  switch (field.type->fieldClass) {
    case EFieldClass::Text: out += field.As<CString>(fields); break;
    case EFieldClass::Name: out += field.As<CName>(fields).text; break;
    case EFieldClass::Boolean: out += field.As<bool>(fields) ? '1' : '0'; break;
    case EFieldClass::Colour: AppendInt(out, field.As<CColour>(fields).rgb); break;
    case EFieldClass::Point: AppendPoint(out, field.As<CPoint>(fields)); break;
    case EFieldClass::Angle: AppendInt(out, field.As<CAngle>(fields).GetMilliDegrees()); break;
    case EFieldClass::Flags: out += field.As<CItemFlags>(fields).to_string(); break;
    case EFieldClass::Integer: AppendInt(out, field.As<int>(fields)); break;
    case EFieldClass::Length: AppendInt(out, field.As<Dsu>(fields).value); break;
    case EFieldClass::Code: AppendInt(out, field.As<CCode<ELayerSide>>(fields).value); break;  // all codes are alike
    case EFieldClass::Points:
      for (const CPoint point : field.As<CPoints>(fields)) {
        AppendPoint(out, point);
        out += ';';
      }
      break;
    case EFieldClass::Reference: {
      const CRecordBase* const target = field.As<CRefBase>(fields).target;
      out += target ? target->RecordName() : "-";
      if (target) AppendIdentity(out, *target);
      break;
    }
  }
}

void AppendRecord(CString& out, const CRecordBase& record, const char* where, std::size_t depth) {
  out.append(2 * depth, ' ');
  out += where;
  AppendIdentity(out, record);
  out += ':';
  for (const CField& field : record.Kind().fields) {
    out += ' ';
    out += field.name;
    out += '=';
    AppendValue(out, field, record.FieldsAddress());
  }
  out += '\n';
  for (std::size_t i = 0; const CCollectionBase* child = record.Child(i); ++i)
    for (const CRecordBase* one = child->FirstRecord(); one; one = one->Next())
      AppendRecord(out, *one, child->Name(), depth + 1);
}
}  // namespace

CString SnapshotOf(const CTechnology& technology) {
  CString out;
  out.reserve(8192);
  for (const CTechnology::SSingle& single : technology.Singles()) AppendRecord(out, *single.record, single.name, 0);
  for (const CCollectionBase* collection : technology.Collections())
    for (const CRecordBase* one = collection->FirstRecord(); one; one = one->Next())
      AppendRecord(out, *one, collection->Name(), 0);
  return out;
}
