#include "technology/columns.h"

#include <algorithm>

#include "model/controls/fields.h"
#include "model/design/fieldtext.h"

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

std::int64_t Address(const CRecordBase* record) { return reinterpret_cast<std::int64_t>(record); }
}  // namespace

EAlign AlignOf(EEditor editor) {
  if (editor == EEditor::Length || editor == EEditor::Integer) return EAlign::Right;
  return editor == EEditor::Boolean ? EAlign::Centre : EAlign::Left;
}

const CField* FieldAt(const CKind& kind, const void* fields, const void* value) {
  for (const CField& field : kind.fields)
    if (field.at(const_cast<void*>(fields)) == value) return &field;
  assert(false && "a column names a member that is no field");
  return nullptr;
}

bool HasEqualFields(const CRecordBase& a, const CRecordBase& b) {
  const void *const mine = a.FieldsAddress(), *const other = b.FieldsAddress();
  return std::ranges::all_of(a.Kind().fields, [&](const CField& field) {
    return field.type->AreEqual(&field.As<char>(mine), &field.As<char>(other));
  });
}

void CColumn::Resolve(const CKind& kind) {
  field = member.In(kind);
  if (!field) return;
  if (editor == EEditor::None) editor = EditorOf(field->type->fieldClass);
  if (!shown && field->shown) shown = field->shown;
  if (align == EAlign::Left) align = AlignOf(editor);
}

CColumn UsedMark() {
  constexpr int kMarkWidth = 20;
  CColumn column;
  column.isMark = true;
  column.width = kMarkWidth;
  column.align = EAlign::Centre;
  column.inForm = column.inFile = false;
  return column;
}

CColumn FixedColumn(CTextId header, SComboItem always) {
  CColumn column;
  column.header = header;
  column.always = std::move(always);
  column.inForm = false;
  return column;
}

std::vector<CColumn> CColumnGroup::Of(std::initializer_list<CColumn> columns) const {
  std::vector<CColumn> group(columns);
  for (CColumn& column : group) {
    column.inGrid = column.inGrid && m_condition;
    column.inForm = column.inForm && m_condition;
    column.inFile = column.inFile && !m_notInFile && (m_condition || m_alwaysInFile);
  }
  return group;
}

std::vector<CColumn> Flat(std::initializer_list<SColumns> list) {
  std::vector<CColumn> flat;
  for (const SColumns& some : list) flat.insert(flat.end(), some.columns.begin(), some.columns.end());
  return flat;
}

CString FormName(const CField& field) {
  CString name = field.name;
  name[0] = static_cast<char>(name[0] - ('a' - 'A'));
  return name;
}

CComboItems CColumn::Offered(const CTechnology& technology, std::int64_t current) const {
  if (items) return items(technology, current);
  if (editor == EEditor::Colour) return PaletteItems();
  CComboItems all;
  for (const int value : order) all.push_back({value, ChoiceText(field->type->choices(), value)});
  if (!all.empty()) return all;
  if (editor == EEditor::Choice) {
    for (const SChoice& choice : field->type->choices()) all.push_back({choice.value, TextOf(choice.text)});
  } else if (editor == EEditor::Object) {
    all.push_back({0, {}});
    const CCollectionBase* const records = technology.CollectionOf(*field->type->target());
    for (const CRecordBase* one = records ? records->FirstRecord() : nullptr; one; one = one->Next())
      all.push_back({Address(one), one->RecordName()});
  }
  return all;
}

std::int64_t CColumn::NumberOf(const CRecordBase& values) const {
  return shown ? shown(values) : FieldNumber(*field, values);
}

void CColumn::Fill(SCell& cell, const CRecordBase& values, const CUnits& units) const {
  cell.editor = editor;
  cell.wrong = false;
  cell.text.clear();
  const bool isLength = editor == EEditor::Length;
  if (isLength) cell.hasValue = !empty || !empty(values);
  if (isLength && !cell.hasValue) {
    cell.value = 0;
    if (!emptyText) return;
    cell.text = TextOf(emptyText);  // no length that a change of units could show
    cell.editor = EEditor::None;
    return;
  }
  cell.value = NumberOf(values);
  if (IsTextField(field->type->fieldClass)) {
    cell.text = field->As<CString>(values.FieldsAddress());  // a CName begins with its text
  } else {
    AppendNumberText(cell.text, *field->type, cell.value, units, ETextFor::People);
  }
  cell.hasBackground = editor == EEditor::Colour;
  if (cell.hasBackground) cell.background = static_cast<std::uint32_t>(cell.value);
}

void CColumn::AppendFileText(CString& out, const CRecordBase& values, const CUnits& units) const {
  if (!IsHeld(values)) return;
  if (IsTextField(field->type->fieldClass)) {
    out += field->As<CString>(values.FieldsAddress());
  } else {
    AppendNumberText(out, *field->type, NumberOf(values), units, ETextFor::Files);
  }
}
