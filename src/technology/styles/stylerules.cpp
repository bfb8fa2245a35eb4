#include "technology/styles/stylerules.h"

void CopyDefaultStyle(const CRecordBase* defaultStyle, CRecordBase& draft) {
  if (!defaultStyle) return;
  draft.AssignFrom(*defaultStyle);
  const CName none;
  draft.Kind().nameField->set(draft, &none);
}
