// What the pages of styles have in common beyond their base.
#pragma once
#include "model/design/record.h"

/// Makes `draft` a copy of the default style, where there is one, without a name.
void CopyDefaultStyle(const CRecordBase* defaultStyle, CRecordBase& draft);
