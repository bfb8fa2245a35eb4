#include "technology/styles/stylerules.h"

#include "model/services/apperror.h"

bool IsBuiltInStyle(const CRecordBase& values) { return values.RecordName().starts_with('['); }

bool RefuseBuiltInStyle(const CRecordBase& style) {
  if (!IsBuiltInStyle(style)) return false;
  CAppError::ReportError(Text::BuiltIn, style.RecordName());
  return true;
}

void CopyDefaultStyle(const CRecordBase* defaultStyle, CRecordBase& draft) {
  if (!defaultStyle) return;
  draft.AssignFrom(*defaultStyle);
  const CName none;
  draft.Kind().nameField->set(draft, &none);
}
