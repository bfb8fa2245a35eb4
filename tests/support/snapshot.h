// The whole state of a design as one readable text, so that a test compares two states with one ==.
//
// A line a record: "layers/Top: name=Top type=- side=0 ...". References are written by kind and name; with
// EIdentity::Shown a record also says which object it is, so that equal values in another object differ.
#pragma once
#include "model/design/technology.h"

enum class EIdentity { Hidden, Shown };
CString StateOf(const CTechnology& technology, EIdentity identity = EIdentity::Hidden);
