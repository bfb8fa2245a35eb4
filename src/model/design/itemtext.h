// What an item of a design is, in one line for people.
#pragma once
#include "model/design/item.h"

/// Kind and name of an item, the net or component that it belongs to, its styles, and where it lies:
/// "Via, Net: GND, Style: Small, Span: Through". What the item leaves open is that of its owner.
CString DescribeItem(const CDesignItem& item);
