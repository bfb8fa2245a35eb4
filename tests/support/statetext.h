// The whole state of a design as one readable text, so that a test compares everything at once.
#pragma once
#include "model/design/technology.h"

/// Every record with every field that is not the usual one, in order. History and selection are no part of it.
CString StateOf(const CTechnology& technology);
