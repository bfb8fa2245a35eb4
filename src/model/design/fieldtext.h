// The values of fields as numbers and texts: the one place that knows how every type of field is shown and read.
//
// Most values are one number: a length in design units, an integer, a check mark, the code of an enumeration, a colour
// (0xRRGGBB), an angle (thousandths of a degree), or the address of the record referred to. A text is its own; its
// number is 0. Nothing here depends on who shows the field: cells, forms, delimited files, lists.
#pragma once
#include "model/design/record.h"

class CUnits;

/// Whom a text is made for. Files hold lengths to the last design unit and check marks as "Y" or "N"; people see
/// lengths rounded to the precision of the units, without the unit, and "Yes" or "No".
enum class ETextFor { People, Files };

/// Whether a field is a text, so that its value is no number.
constexpr bool IsTextField(EFieldClass fieldClass) {
  return fieldClass == EFieldClass::Text || fieldClass == EFieldClass::Name;
}

/// Whether the values are compared by size, so that people want their texts at the right of a column.
bool IsQuantity(const CFieldType& type);
/// Whether the text for people says more than the bare value: what the number is in their units, or stands for.
bool IsTextTelling(const CFieldType& type);

/// The number of a field; 0 for a text and for what is several numbers (points, flags).
std::int64_t FieldNumber(const CField& field, const CRecordBase& record);

/// The number that people see: that of the field, or what the field says they see instead.
std::int64_t ShownNumber(const CField& field, const CRecordBase& record);

/// The text of a field for people, of the number shown. What is several numbers is kept short: two places at most are
/// written out, flags are counted.
CString FieldText(const CField& field, const CRecordBase& record, const CUnits& units);
/// Appends the text of any number of a type of field that is one number. The code of no choice appears as it is.
void AppendNumberText(CString& out, const CFieldType& type, std::int64_t number, const CUnits& units, ETextFor reader);

/// Reads the number of such a text, made for people or for files: lengths with any unit behind them, otherwise in
/// units of `unitType`; names of records as they stand in `technology`, none for an empty text. Every text is a value
/// of a text field (number 0). False, with `number` untouched, for what the type does not know.
bool ReadFieldNumber(const CFieldType& type, std::string_view text, const CTechnology& technology, int unitType,
                     std::int64_t& number);

/// Whether a field holds that value: `text` of a text field, otherwise `number`.
bool FieldHolds(const CField& field, const CRecordBase& record, std::int64_t number, std::string_view text);
/// Writes that value through Set; true when the field held another one.
bool StoreField(const CField& field, CRecordBase& record, std::int64_t number, std::string_view text);

/// The places that a field holds: one, several or none.
std::span<const CPoint> PlacesOf(const CField& field, const CRecordBase& record);
/// Writes as many places as the field holds through Set; true when one of them was another.
bool StorePlaces(const CField& field, CRecordBase& record, const CPoints& places);
