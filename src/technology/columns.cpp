#include "technology/columns.h"

#include "model/base/catalogue.h"
#include "model/controls/fields.h"

namespace {
EEditor EditorOf(EFieldClass fieldClass) {
  switch (fieldClass) {
    case EFieldClass::Name:
    case EFieldClass::Text: return EEditor::Text;
    case EFieldClass::Length: return EEditor::Length;
    case EFieldClass::Integer: return EEditor::Integer;
    case EFieldClass::Boolean: return EEditor::Boolean;
    case EFieldClass::Code: return EEditor::Choice;
    case EFieldClass::Reference: return EEditor::Object;
    case EFieldClass::Colour: return EEditor::Colour;
    default: return EEditor::None;
  }
}

EAlign AlignOf(EEditor editor) {
  if (editor == EEditor::Length || editor == EEditor::Integer) return EAlign::Right;
  return editor == EEditor::Boolean ? EAlign::Centre : EAlign::Left;
}

std::int64_t Address(const CRecordBase* record) { return reinterpret_cast<std::int64_t>(record); }

int LengthOf(const CColumn& column, const CRecordBase& values) {
  return column.shown ? static_cast<int>(column.shown(values)) : column.field->As<Dsu>(values.FieldsAddress()).value;
}

const CString& YesNo(bool yes) {
  static const CString kYes = TextOf(Text::Yes);
  static const CString kNo = TextOf(Text::No);
  return yes ? kYes : kNo;
}
}  // namespace

const CField* FieldAt(const CKind& kind, const void* fields, const void* value) {
  for (const CField& field : kind.fields)
    if (field.at(const_cast<void*>(fields)) == value) return &field;
  assert(false && "a column names a member that is no field");
  return nullptr;
}

CColumn ColumnOf(CTextId header, const CField* field) {
  CColumn column;
  column.header = header;
  column.field = field;
  column.editor = EditorOf(field->type->fieldClass);
  column.align = AlignOf(column.editor);
  return column;
}

CColumn UsedMark() {
  constexpr int kMarkWidth = 20;
  CColumn column;
  column.isMark = true;
  column.width = kMarkWidth;
  column.align = EAlign::Centre;
  column.inFile = false;
  return column;
}

CColumn FixedColumn(CTextId header, SComboItem always) {
  CColumn column;
  column.header = header;
  column.always = std::move(always);
  return column;
}

CString FormName(const CField& field) {
  CString name = field.name;
  name[0] = static_cast<char>(name[0] - ('a' - 'A'));
  return name;
}

CComboItems CColumn::Offered(const CTechnology& design, std::int64_t current) const {
  if (items) return items(design, current);
  if (editor == EEditor::Colour) return PaletteItems();
  CComboItems all;
  if (editor == EEditor::Choice) {
    for (const SChoice& choice : field->type->choices()) all.push_back({choice.value, TextOf(choice.text)});
  } else if (editor == EEditor::Object) {
    all.push_back({0, {}});
    const CCollectionBase* const records = design.CollectionOf(*field->type->target());
    for (const CRecordBase* one = records ? records->FirstRecord() : nullptr; one; one = one->Next())
      all.push_back({Address(one), one->RecordName()});
  }
  return all;
}

void CColumn::Fill(SCell& cell, const CRecordBase& values, const CUnits& units) const {
  const void* const fields = values.FieldsAddress();
  cell.editor = editor;
  cell.wrong = false;
  switch (field->type->fieldClass) {
    case EFieldClass::Name:
    case EFieldClass::Text:
      cell.text = field->As<CString>(fields);  // a CName begins with its text
      if (shown) cell.value = shown(values);
      break;
    case EFieldClass::Length:
      cell.text.clear();
      cell.hasValue = !empty || !empty(values);
      cell.value = cell.hasValue ? LengthOf(*this, values) : 0;
      if (cell.hasValue) {
        AppendLength(cell.text, static_cast<int>(cell.value), units, false);
      } else if (emptyText) {  // no length that a change of units could show
        cell.text = TextOf(emptyText);
        cell.editor = EEditor::None;
      }
      break;
    case EFieldClass::Integer:
      cell.value = field->As<int>(fields);
      cell.text = IntText(cell.value);
      break;
    case EFieldClass::Boolean:
      cell.value = field->As<bool>(fields);
      cell.text = YesNo(cell.value != 0);
      break;
    case EFieldClass::Code:
      cell.value = shown ? shown(values) : field->As<int>(fields);
      cell.text = ChoiceText(field->type->choices(), static_cast<int>(cell.value));
      break;
    case EFieldClass::Reference: {
      const CRecordBase* const target = field->As<CRefBase>(fields).target;
      cell.value = Address(target);
      cell.text = target ? target->RecordName() : CString();
      break;
    }
    case EFieldClass::Colour: {
      const CColour colour = field->As<CColour>(fields);
      cell.value = colour.rgb;
      cell.text = ColourText(colour);
      cell.background = colour.rgb;
      cell.hasBackground = true;
      break;
    }
    default: break;
  }
}

void CColumn::Store(CRecordBase& draft, std::int64_t value, const CString& cellText) const {
  switch (field->type->fieldClass) {
    case EFieldClass::Name: {
      const CName name{cellText};
      field->set(draft, &name);
      break;
    }
    case EFieldClass::Text: field->set(draft, &cellText); break;
    case EFieldClass::Length:
    case EFieldClass::Integer:
    case EFieldClass::Code: {
      const int number = static_cast<int>(value);  // a length and an enumeration are one integer each
      field->set(draft, &number);
      break;
    }
    case EFieldClass::Boolean: {
      const bool checked = value != 0;
      field->set(draft, &checked);
      break;
    }
    case EFieldClass::Reference: {
      const CRefBase reference{reinterpret_cast<CRecordBase*>(value)};
      field->set(draft, &reference);
      break;
    }
    case EFieldClass::Colour: {
      const CColour colour{static_cast<std::uint32_t>(value)};
      field->set(draft, &colour);
      break;
    }
    default: break;
  }
}

void CColumn::AppendFileText(CString& out, const CRecordBase& values, const CUnits& units) const {
  if (editor == EEditor::Text) {
    out += field->As<CString>(values.FieldsAddress());
  } else if (editor == EEditor::Length) {
    AppendLength(out, LengthOf(*this, values), units, true);
  } else if (field->type->fieldClass == EFieldClass::Boolean) {
    out += field->As<bool>(values.FieldsAddress()) ? 'Y' : 'N';
  } else {
    SCell cell;
    Fill(cell, values, units);
    out += cell.text;
  }
}

bool CColumn::ReadFileText(const CString& fileText, CRecordBase& values, const CTechnology& design) const {
  std::int64_t value = 0;
  switch (field->type->fieldClass) {
    case EFieldClass::Length: {
      int dsu = 0;
      if (!ReadLength(fileText, design.GetUnits()->GetType(), dsu)) return false;
      value = dsu;
      break;
    }
    case EFieldClass::Integer:
      if (!ParseInt(Trim(fileText), value) || value != static_cast<int>(value)) return false;
      break;
    case EFieldClass::Boolean:
      value = EqualNoCase(fileText, "Y") || EqualNoCase(fileText, YesNo(true));
      if (value == 0 && !EqualNoCase(fileText, "N") && !EqualNoCase(fileText, YesNo(false))) return false;
      break;
    case EFieldClass::Code:
      value = ChoiceValue(field->type->choices(), fileText);
      if (value < 0) return false;
      break;
    case EFieldClass::Reference: {
      const CCollectionBase* const records = design.CollectionOf(*field->type->target());
      const CRecordBase* const target = fileText.empty() || !records ? nullptr : records->FindRecord(fileText);
      if (!fileText.empty() && !target) return false;
      value = Address(target);
      break;
    }
    case EFieldClass::Colour: {
      CColour colour;
      if (!ColourFromText(fileText, colour)) return false;
      value = colour.rgb;
      break;
    }
    default: break;
  }
  Store(values, value, fileText);
  return true;
}
