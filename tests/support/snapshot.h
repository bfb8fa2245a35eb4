// The whole state of a design as one text that says of every record and reference which object it is, so that a test
// compares two states of one design, identities included, with one ==.
#pragma once
#include "model/design/technology.h"

/// A line a record: "layers@1234: name=Top type=- side=0 ...", owned records indented below their owners.
CString SnapshotOf(const CTechnology& technology);
