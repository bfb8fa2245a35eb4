// The names of fields as people read them.
#pragma once
#include <QString>

#include "model/design/field.h"

/// From the catalogue; the field's own name for one that has no title there.
QString FieldTitle(const CField& field);
