#include "model/base/object.h"

bool CObject::IsKindOf(const CRuntimeClass* wanted) const {
  for (const CRuntimeClass* one = GetRuntimeClass(); one; one = one->base)
    if (one == wanted) return true;
  return false;
}
