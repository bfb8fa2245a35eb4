#include "model/design/record.h"

#include "model/base/catalogue.h"
#include "model/design/byname.h"
#include "model/design/collection.h"
#include "model/design/technology.h"
#include "model/services/apperror.h"

bool CField::HasEqual(const CRecordBase& a, const CRecordBase& b) const {
  return type->equal(&As<char>(a.FieldsAddress()), &As<char>(b.FieldsAddress()));
}

const CField* CKind::FindField(std::string_view fieldName) const {
  for (const CField& field : fields)
    if (fieldName == field.name) return &field;
  return nullptr;
}

const CString& CRecordBase::RecordName() const {
  static const CString none;
  const CField* const field = Kind().nameField;
  return field ? field->As<CName>(FieldsAddress()).text : none;
}

CRecordBase* CRecordBase::Owner() const { return m_home ? m_home->Owner() : nullptr; }

CString CRecordBase::Description() const {
  CString own = TextOf(Kind().title), names;
  for (const CString& part : IdentityOf(*this)) names += (names.empty() ? "" : "\", \"") + part;
  if (!names.empty()) own = TextOf(Text::KindAndName, CStringArray{own, names});
  return Owner() ? Owner()->Description() + ", " + own : own;
}

namespace {
bool theRefusalAsserts = true;
}

bool CRecordBase::AssertOnRefusal(bool doesAssert) { return std::exchange(theRefusalAsserts, doesAssert); }

bool CRecordBase::RefuseReference(const void* field, const CRecordBase& target) const {
  CString name;
  for (const CField& one : Kind().fields)
    if (&one.As<char>(FieldsAddress()) == field) name = TextOf(one.title);
  CAppError::SetLastError(Text::CannotReferOutside, Description(), name, target.Description());
  assert(!theRefusalAsserts && "a reference leads to a record that is not in the design");
  return false;
}

void CRecordBase::DropForeignReferences(const CTechnology& technology) {
  const CRefBase none;
  for (const CField& field : Kind().fields) {
    if (!field.type->IsReference()) continue;
    const CRefBase& reference = field.As<CRefBase>(FieldsAddress());
    if (!reference.target || (reference.target->m_in && reference.target->m_technology == &technology)) continue;
    RefuseReference(&reference, *reference.target);
    field.set(*this, &none);
  }
  for (std::size_t i = 0; CCollectionBase* child = Child(i); ++i)
    for (CRecordBase* one = child->FirstRecord(); one; one = one->m_next) one->DropForeignReferences(technology);
}

void ConnectField(CRecordBase& record, const CName& name, bool in) {
  if (!record.m_home || name.text.empty()) return;  // nobody looks for a record without a name
  if (in) {
    record.m_home->Index(record, name.text);
  } else {
    record.m_home->Unindex(record);
  }
}

void ConnectField(CRecordBase&, const CRefBase& reference, EReference what, bool in) {
  if (!reference.target) return;
  assert(!in || reference.target->IsIn());  // nothing refers to a record that is out
  if (what != EReference::Part) {
    int& uses = reference.target->m_uses;
    uses += in ? 1 : -1;
    if (uses == (in ? 1 : 0)) reference.target->m_technology->NotePresence();
  }
  if (what != EReference::Use) reference.target->m_yielding += in ? 1 : -1;
}

void CRecordBase::ConnectFields(bool in) {
  const CKind& kind = Kind();
  for (const CField& field : kind.fields) {
    if (&field == kind.nameField) {
      ConnectField(*this, field.As<CName>(FieldsAddress()), in);
    } else if (field.type->IsReference()) {
      ConnectField(*this, field.As<CRefBase>(FieldsAddress()), field.type->reference, in);
    }
  }
}

void CRecordBase::MakeRoomForName() {
  if (m_in && m_home) m_home->MakeIndex();
}

void CRecordBase::MakeRoomForOwned() {
  for (std::size_t i = 0; CCollectionBase* child = Child(i); ++i) {
    if (child->Count() == 0) continue;
    child->MakeIndex();
    if (!child->FirstRecord()->Child(0)) continue;
    for (CRecordBase* record = child->FirstRecord(); record; record = record->m_next) record->MakeRoomForOwned();
  }
}

void CRecordBase::Connect(CTechnology& technology) {
  m_technology = &technology;
  m_journal = &technology.Journal();
  m_in = true;
  ConnectFields(true);
  for (std::size_t i = 0; CCollectionBase* child = Child(i); ++i) {
    child->m_technology = &technology;
    for (CRecordBase* record = child->FirstRecord(); record; record = record->m_next) record->Connect(technology);
  }
}

void CRecordBase::Disconnect() {
  for (std::size_t i = 0; CCollectionBase* child = Child(i); ++i)
    for (CRecordBase* record = child->FirstRecord(); record; record = record->m_next) record->Disconnect();
  ConnectFields(false);
  m_in = false;
  HasLeft();
}

void CRecordBase::AssignFrom(const CRecordBase& other) {
  assert(&Kind() == &other.Kind());
  for (const CField& field : Kind().fields) field.set(*this, field.at(const_cast<void*>(other.FieldsAddress())));
  for (std::size_t i = 0; CCollectionBase* mine = Child(i); ++i) {
    CRecordBase* at = mine->FirstRecord();
    for (const CRecordBase* from = other.Child(i)->FirstRecord(); from; from = from->m_next) {
      if (at) {
        at->AssignFrom(*from);
        at = at->m_next;
      } else {
        mine->Append(from->Clone());
      }
    }
    while (at) {
      CRecordBase* const next = at->m_next;
      mine->Remove(*at);
      at = next;
    }
  }
}

void CRecordBase::CopyChildren(const CRecordBase& other) {
  for (std::size_t i = 0; CCollectionBase* mine = Child(i); ++i)
    for (const CRecordBase* from = other.Child(i)->FirstRecord(); from; from = from->m_next)
      mine->Append(from->Clone());
}

bool CRecordBase::EqualValues(const CRecordBase& other) const {
  assert(&Kind() == &other.Kind());
  for (const CField& field : Kind().fields) {
    if (field.type->IsReference()) {
      const CRecordBase* const a = field.As<CRefBase>(FieldsAddress()).target;
      const CRecordBase* const b = field.As<CRefBase>(other.FieldsAddress()).target;
      if (!a != !b || (a && a->RecordName() != b->RecordName())) return false;
    } else if (!field.HasEqual(*this, other)) {
      return false;
    }
  }
  for (std::size_t i = 0; const CCollectionBase* mine = Child(i); ++i) {
    const CRecordBase* b = other.Child(i)->FirstRecord();
    for (const CRecordBase* a = mine->FirstRecord(); a; a = a->m_next, b = b->m_next)
      if (!b || !a->EqualValues(*b)) return false;
    if (b) return false;
  }
  return true;
}
