// Everything that a dialog shows, as JSON.
#pragma once
#include "model/controls/dialog.h"
#include "storage/jsonwriter.h"

void WriteDialogState(CJsonWriter& out, CDialog& dialog);
void WriteValue(CJsonWriter& out, const CValue& value);
/// What a combo offers: [{"value", "text"}].
void WriteItems(CJsonWriter& out, const CComboItems& items, EEditor editor);
