#include "model/design/itemtext.h"

#include "model/design/fieldtext.h"
#include "model/design/technology.h"

namespace {
void Append(CString& text, CTextId label, const CString& value) {
  text += ", " + TextOf(Text::LabelAndValue, CStringArray{TextOf(label), value});
}

/// The nearest record that a field of the item, or the owner where the item leaves it open, refers to.
const CRecordBase* TargetOf(const CField& field, const CDesignItem& item) {
  if (const CRecordBase* const own = field.As<CRefBase>(item.FieldsAddress()).target) return own;
  for (const CRecordBase* owner = item.Owner(); owner; owner = owner->Owner())
    for (const CField& one : owner->Kind().fields) {
      if (!one.type->IsReference() || one.type->target() != field.type->target()) continue;
      if (const CRecordBase* const target = one.As<CRefBase>(owner->FieldsAddress()).target) return target;
    }
  return nullptr;
}
}  // namespace

CString DescribeItem(const CDesignItem& item) {
  CString name = item.RecordName();
  for (const CField& field : item.Kind().fields)
    if (name.empty() && field.type->fieldClass == EFieldClass::Text) name = field.As<CString>(item.FieldsAddress());
  const CString kind = TextOf(item.Kind().title);
  CString text = name.empty() ? kind : TextOf(Text::KindAndName, CStringArray{kind, name});
  for (const CRecordBase* owner = item.Owner(); owner; owner = owner->Owner())
    if (!owner->RecordName().empty()) Append(text, owner->Kind().title, owner->RecordName());
  const CUnits units;
  for (const CField& field : item.Kind().fields) {
    if (field.title == Text::Side) Append(text, field.title, FieldText(field, item, units));
    if (!field.type->IsReference()) continue;
    const CRecordBase* const target = TargetOf(field, item);
    if (target && !target->RecordName().empty()) Append(text, field.title, target->RecordName());
  }
  return text;
}
