#include "support/statetext.h"

#include "storage/designfile.h"

CString StateOf(const CTechnology& technology) { return DesignText(technology); }
