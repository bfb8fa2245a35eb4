#include "model/design/item.h"

#include "model/design/collection.h"
#include "model/design/fieldtext.h"
#include "model/design/technology.h"

namespace {
void IncludePlaces(const CRecordBase& record, CBox& box) {
  for (const CField& field : record.Kind().fields)
    for (const CPoint place : PlacesOf(field, record)) box.Include(place);
  for (std::size_t i = 0; const CCollectionBase* child = record.Child(i); ++i)
    for (const CRecordBase* one = child->FirstRecord(); one; one = one->Next()) IncludePlaces(*one, box);
}
}  // namespace

void CDesignItem::HasLeft() {
  if (IsSelected()) Technology()->SelectedItemLeaves(*this);
}

CBox CDesignItem::GetBoundingBox() const {
  CBox box;
  IncludePlaces(*this, box);
  return box;
}
