#include "support/fulldesign.h"

#include <gtest/gtest.h>

void ChangeField(const CTechnology& technology, CRecordBase& record, const CField& field, int salt) {
  const void* const now = field.at(record.FieldsAddress());
  const auto set = [&](const auto& value) { EXPECT_TRUE(field.set(record, &value)) << field.name; };
  const CString text = "\"" + IntText(salt) + "\"\\ \n\t\x01 \xC3\xA4\xF0\x9F\x98\x80/";
  switch (field.type->fieldClass) {
    case EFieldClass::Text: return set(text);
    case EFieldClass::Name: return set(CName{text});
    case EFieldClass::Length: return set(Dsu{salt % 2 ? -2147483647 - 1 : 2147483647});
    case EFieldClass::Integer: return set(&record.Kind() == &CUnits::TheKind() ? 4 : -salt - 1);
    case EFieldClass::Boolean: return set(!*static_cast<const bool*>(now));
    case EFieldClass::Colour: return set(CColour{0xABCD00u + static_cast<unsigned>(salt % 256)});
    case EFieldClass::Point: return set(CPoint{-salt - 1, 2147483647});
    case EFieldClass::Points:
      return set(CPoints(static_cast<std::size_t>(salt % 30 + 1), CPoint{salt, -2147483647 - 1}));
    case EFieldClass::Angle: return set(CAngle{-359'999});
    case EFieldClass::Flags: return set(~CItemFlags(0x8000'0000'0000'0001u) >> 1);
    case EFieldClass::Code: {
      const auto choices = field.type->choices();
      const int value = *static_cast<const int*>(now);
      return set(choices.front().value == value ? choices.back().value : choices.front().value);
    }
    case EFieldClass::Reference: {
      const CCollectionBase* const targets = technology.CollectionOf(*field.type->target());
      CRecordBase* const last = targets ? targets->LastRecord() : nullptr;
      if (last && last != &record) set(CRefBase{last});
    }
  }
}

void AddOneOfEach(CCollectionBase& home, int levels) {
  CRecordBase& record = home.Append(home.Kind().make());
  if (home.Kind().nameField) {
    const CName name{CString("new ") + home.Name()};
    home.Kind().nameField->set(record, &name);
  }
  for (std::size_t i = 0; CCollectionBase* child = record.Child(i); ++i)
    for (int count = 0; count < levels; ++count) AddOneOfEach(*child, levels);
}

std::unique_ptr<CTechnology> Full(const CString& kind) {
  std::unique_ptr<CTechnology> technology = MakeTechnology(kind, EContent::DefaultTechnology);
  for (CCollectionBase* collection : technology->Collections()) AddOneOfEach(*collection, 2);
  return technology;
}

void ChangeEverything(CTechnology& technology) {
  int salt = 0;
  technology.ForEachRecord([&](CRecordBase& record) {
    if (record.RecordName().starts_with('[')) return;
    for (const CField& field : record.Kind().fields) ChangeField(technology, record, field, ++salt);
  });
}
