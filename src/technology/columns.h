// Columns: what a page says of the fields it shows.
//
// The type of a field chooses its cell: text, length, check box, colour, reference, enumeration. A column is a header
// and either a field or a computed text, and what deviates from that. Header row, filling, typing rules, CSV and the
// form of the edit dialog all come from one list of columns.
#pragma once
#include <functional>

#include "model/base/catalogue.h"
#include "model/controls/grid.h"
#include "model/design/technology.h"

/// The fields of a record that is known to be a T.
template <class T>
const typename T::Fields& FieldsOf(const CRecordBase& record) {
  return *static_cast<const typename T::Fields*>(record.FieldsAddress());
}

class CColumn {
 public:
  using Test = std::function<bool(const CRecordBase& values)>;
  /// `current` is what is chosen already.
  using Items = std::function<CComboItems(const CTechnology& design, std::int64_t current)>;

  CTextId header;
  const CField* field = nullptr;  // null: the mark of records in use, or the same in every row
  bool isMark = false;            // of records in use, which the page works out
  SComboItem always{0, {}};       // shown without a field
  EEditor editor = EEditor::None;
  EAlign align = EAlign::Left;
  int width = 100;  // pixels, until the person chooses another
  Test readOnly, enabledAtFill, enabledOnChange, empty;
  Test inForm;                                                   // none: always
  Test refused;                                                  // values that a file may not bring in
  Test written;                                                  // none: always
  CString nameInForm;                                            // empty: that of the field
  CTextId (*labelInForm)(const CRecordBase& values) = nullptr;   // null: the header
  CTextId emptyText;                                             // of a cell that `empty` disables
  std::function<std::int64_t(const CRecordBase& values)> shown;  // the value shown instead of that of the field
  Items items;
  CTextId importError = Text::RecordUnusable;  // for a text that the field does not know
  bool inFile = true;

  CColumn& Width(int pixels) { return width = pixels, *this; }
  /// The cell cannot be edited.
  CColumn& ReadOnlyWhen(Test test) { return readOnly = std::move(test), *this; }
  /// Whether the cell is enabled, judged when a row is filled and whenever one of its cells changes.
  CColumn& EnabledWhen(Test test) { return enabledOnChange = test, enabledAtFill = std::move(test), *this; }
  /// The same, judged when the row is filled alone.
  CColumn& EnabledAtFillWhen(Test test) { return enabledAtFill = std::move(test), *this; }
  /// The cell is disabled and shows nothing, or a word.
  CColumn& EmptyWhen(Test test, CTextId word = {}) { return empty = std::move(test), emptyText = word, *this; }
  CColumn& Shows(std::function<std::int64_t(const CRecordBase&)> value) { return shown = std::move(value), *this; }
  /// What the combo offers, where it is not everything that the field could hold.
  template <class Choice>
  CColumn& Offers(Choice choice) {
    if constexpr (std::is_invocable_v<Choice, const CTechnology&, std::int64_t>) {
      items = std::move(choice);
    } else {
      items = [choice = std::move(choice)](const CTechnology& design, std::int64_t) { return choice(design); };
    }
    return *this;
  }
  /// What no file may bring in, though a record may have it.
  CColumn& RefusedFromFileWhen(Test test) { return refused = std::move(test), *this; }
  /// When files hold the field; otherwise its place in them is empty. An empty one says nothing when it is read.
  CColumn& WrittenWhen(Test test) { return written = std::move(test), *this; }
  CColumn& ImportError(CTextId id) { return importError = id, *this; }
  /// What the edit form calls the field, where not as the model does.
  CColumn& CalledInForm(const char* name) { return nameInForm = name, *this; }
  CColumn& LabelledInForm(CTextId (*label)(const CRecordBase&)) { return labelInForm = label, *this; }
  /// When the edit form has the field.
  CColumn& InFormWhen(Test test) { return inForm = std::move(test), *this; }
  /// A field of text that is chosen from a list; an entry's value is an object's address, or 0.
  CColumn& ChosenFrom(CComboItems (*choice)(const CTechnology&),
                      std::function<std::int64_t(const CRecordBase&)> value) {
    editor = EEditor::Object;
    return Offers(choice).Shows(std::move(value));
  }

  CComboItems Offered(const CTechnology& design, std::int64_t current) const;
  /// Whether cells of this column sort by number.
  bool IsNumeric() const { return editor == EEditor::Length || editor == EEditor::Integer; }
  /// Whether files hold the field between quotation marks: texts of all kinds are, numbers and marks are not.
  bool IsQuoted() const { return !IsNumeric() && editor != EEditor::Boolean; }
  /// Fills a cell from `values`, text included; enabling and modified flag are the page's.
  void Fill(SCell& cell, const CRecordBase& values, const CUnits& units) const;
  /// Whether files hold something in this column for the record.
  bool IsWritten(const CRecordBase& values) const { return field && (!written || written(values)); }
  /// The text of the field as files hold it: lengths exact, check boxes "Y" or "N".
  void AppendFileText(CString& out, const CRecordBase& values, const CUnits& units) const;
  /// Reads such a text into `values`, a draft. False, and nothing changed, when the field does not know it.
  bool ReadFileText(const CString& fileText, CRecordBase& values, const CTechnology& design) const;
  /// Whether two records have the same in this column.
  bool IsEqual(const CRecordBase& a, const CRecordBase& b) const {
    return field->type->equal(field->at(const_cast<void*>(a.FieldsAddress())),
                              field->at(const_cast<void*>(b.FieldsAddress())));
  }
  /// Writes a cell's stored value into a draft.
  void Store(CRecordBase& draft, std::int64_t value, const CString& cellText) const;
};

/// The field of `kind` that stands at `value` within `fields`; every member that a column names is a field.
const CField* FieldAt(const CKind& kind, const void* fields, const void* value);
CColumn ColumnOf(CTextId header, const CField* field);

/// The column of a field of record class T.
template <class T, class V>
CColumn Column(CTextId header, V T::Fields::* member) {
  static const typename T::Fields kSample;
  return ColumnOf(header, FieldAt(T::TheKind(), &kSample, &(kSample.*member)));
}

/// The column of the mark of records in use.
CColumn UsedMark();
/// A column that is the same in every row, and empty in files.
CColumn FixedColumn(CTextId header, SComboItem always = {0, {}});

/// The name of a field as scripts call the form field of it: with a capital first letter.
CString FormName(const CField& field);
