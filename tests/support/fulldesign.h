// Designs that hold something of everything, with values that are not the usual ones.
#pragma once
#include "model/design/design.h"

/// A technology of that kind in which every collection holds records.
std::unique_ptr<CTechnology> Full(const CString& kind);
/// Adds a record with `levels` records in each collection that it owns, and so on.
void AddOneOfEach(CCollectionBase& home, int levels);
/// Gives a field a value that it does not have. References go to the last record of their collection.
void ChangeField(const CTechnology& technology, CRecordBase& record, const CField& field, int salt);
/// The same with every field of every record but the built-in ones.
void ChangeEverything(CTechnology& technology);
