// What the pages of styles have in common beyond their base.
#pragma once
#include "model/design/record.h"

/// Whether a style is built in: its name cannot be edited, and it stays in the design.
bool IsBuiltInStyle(const CRecordBase& values);
/// Says that a built-in style cannot be deleted; false, and nothing said, for any other.
bool RefuseBuiltInStyle(const CRecordBase& style);
/// Makes `draft` a copy of the default style, where there is one, without a name.
void CopyDefaultStyle(const CRecordBase* defaultStyle, CRecordBase& draft);
