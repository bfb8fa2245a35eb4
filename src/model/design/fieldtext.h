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

/// The number of a field; 0 for a text and for what is several numbers (points, flags).
std::int64_t FieldNumber(const CField& field, const CRecordBase& record);

/// Appends the text of a field; points and flags, which stand in no file, as people see them.
void AppendFieldText(CString& out, const CField& field, const CRecordBase& record, const CUnits& units,
                     ETextFor reader);
/// The same for another number of that type of field, which is no text.
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
