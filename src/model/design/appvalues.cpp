// The application-wide values that designs and projects offer as statics.
#include "model/design/design.h"

#define TECHSHEET_STATIC(Class, Type, Name, initial)   \
  namespace {                                          \
  Type the##Class##Name = initial;                     \
  }                                                    \
  Type Class::Get##Name() { return the##Class##Name; } \
  void Class::Set##Name(TECHSHEET_PARAMETER(Type) value) { the##Class##Name = value; }
#define TECHSHEET_PARAMETER(Type) std::conditional_t<std::is_scalar_v<Type>, Type, const Type&>
TECHSHEET_STATIC(CDesign, int, DocNameFirst, 1)
TECHSHEET_STATIC(CDesign, int, CopyAssociatedFiles, 1)
TECHSHEET_STATIC(CDesign, bool, OverwriteAssociatedFiles, false)
TECHSHEET_STATIC(CDesign, CString, SecurityDir, {})
TECHSHEET_STATIC(CDesign, bool, SecurityDirEnabled, false)
TECHSHEET_STATIC(CDesign, int, SecurityInterval, 10)
TECHSHEET_STATIC(CDesign, int, SecurityWhere, 0)
TECHSHEET_STATIC(CDesign, int, WorkTimeBeforeBackup, 300)
TECHSHEET_STATIC(CDesign, int, WorkTimeBeforeIdle, 60)
TECHSHEET_STATIC(CProject, int, AllSheets, 0)
TECHSHEET_STATIC(CProject, int, OpenAllSheets, 1)
TECHSHEET_STATIC(CProject, bool, SyncSheets, true)
#undef TECHSHEET_STATIC
#undef TECHSHEET_PARAMETER
