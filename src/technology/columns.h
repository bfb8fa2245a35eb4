// Columns: what a page says of the fields it shows.
//
// The type of a field chooses its cell: text, length, check box, colour, reference, enumeration; its title stands with
// the field. A column is a field, or something computed, and what deviates from that. Header row, filling, typing
// rules, delimited files and the edit form all come from one list of columns:
//
//   Columns({UsedMark(), Column(&F::name).Width(160),
//            Group(CApplication::IsExtended()).AlwaysInFile().Of({Column(&F::gapEnabled),
//                                                                 Column(&F::gap).EnabledBy(&F::gapEnabled)})});
#pragma once
#include <functional>
#include <initializer_list>

#include "model/base/catalogue.h"
#include "model/controls/grid.h"
#include "model/design/technology.h"

/// The fields of a record that is known to be a T.
template <class T>
const typename T::Fields& FieldsOf(const CRecordBase& record) {
  return *static_cast<const typename T::Fields*>(record.FieldsAddress());
}

/// The field of `kind` that stands at `value` within `fields`; every member that is named is a field (asserted).
const CField* FieldAt(const CKind& kind, const void* fields, const void* value);
template <class F, class V>
const CField& FieldOf(const CKind& kind, V F::* member) {
  static const F kSample;
  return *FieldAt(kind, &kSample, &(kSample.*member));
}
/// A member of a struct of fields before its kind is known: columns are written before the page that has them.
struct SMember {
  const void* fields = nullptr;
  const void* value = nullptr;
  const CField* In(const CKind& kind) const { return value ? FieldAt(kind, fields, value) : nullptr; }
};
template <class F, class V>
SMember MemberOf(V F::* member) {
  static const F kSample;
  return {&kSample, &(kSample.*member)};
}

/// Whether two records of one kind have the same in every field, owned records apart.
bool HasEqualFields(const CRecordBase& a, const CRecordBase& b);

class CColumn {
 public:
  using Test = std::function<bool(const CRecordBase& values)>;
  using Number = std::function<std::int64_t(const CRecordBase& values)>;
  /// What a combo offers; `current` is what is chosen already.
  using Items = std::function<CComboItems(const CTechnology& technology, std::int64_t current)>;

  CTextId header{};               // of the grid and of files; none: the title of the field
  SMember member;                 // none: the mark of records in use, or the same in every row
  const CField* field = nullptr;  // that member, from the moment on that the page has the column
  bool isMark = false;            // of records in use
  SComboItem always{0, {}};       // shown without a field
  EEditor editor = EEditor::None;
  EAlign align = EAlign::Left;
  int width = 100;  // pixels, until the person chooses another
  bool inGrid = true, inForm = true, inFile = true;

  Test readOnly, enabledAtFill, enabledOnChange, empty;
  CTextId emptyText{};  // of a cell that `empty` disables
  Number shown;         // the number shown instead of that of the field
  Items items;
  std::vector<int> order;        // of the values that the combo offers; none: that of the enumeration
  std::vector<SMember> alsoFor;  // fields without a cell that this one stands for
  std::function<void(CRecordBase& values)> alsoSets;          // with a value that is typed or read
  Test formTest;                                              // none: the form always has the field
  CString formName;                                           // what scripts call it in the form; empty: as the field
  CTextId (*formLabel)(const CRecordBase& values) = nullptr;  // none: the header
  Test fileTest;                                              // none: files always hold the field
  bool emptyInFileIsZero = false;
  Test refusedFromFile;
  CTextId whyRefused{};                        // none: it cannot be read as what the header says; takes the text
  CTextId importError = Text::RecordUnusable;  // for a text that the field does not know; takes record and text
  bool importErrorHasRecord = true;            // false: its value is the text alone
  bool onlyOffered = false;

  CColumn& Titled(CTextId id) { return header = id, *this; }
  CColumn& Width(int pixels) { return width = pixels, *this; }

  // ---- Cells
  /// The cell cannot be edited.
  CColumn& ReadOnlyWhen(Test test) { return readOnly = std::move(test), *this; }
  /// Whether the cell is enabled, judged when a row is filled and whenever one of its cells changes.
  CColumn& EnabledWhen(Test test) { return enabledOnChange = test, enabledAtFill = std::move(test), *this; }
  /// The same, by a check box of the record.
  template <class F>
  CColumn& EnabledBy(bool F::* flag) {
    return EnabledWhen(
        [flag](const CRecordBase& values) { return static_cast<const F*>(values.FieldsAddress())->*flag; });
  }
  /// The same, judged when the row is filled alone.
  CColumn& EnabledAtFillWhen(Test test) { return enabledAtFill = std::move(test), *this; }
  /// The cell is disabled and shows nothing, or a word.
  CColumn& EmptyWhen(Test test, CTextId word = {}) { return empty = std::move(test), emptyText = word, *this; }
  /// Another number is shown than that of the field. While such a cell is disabled, files do not change its field.
  CColumn& Shows(Number number) { return shown = std::move(number), *this; }
  /// What the combo offers, where it is not everything that the field could hold.
  template <class Choice>
  CColumn& Offers(Choice choice) {
    if constexpr (std::is_invocable_v<Choice, const CTechnology&, std::int64_t>) {
      items = std::move(choice);
    } else {
      items = [choice = std::move(choice)](const CTechnology& technology, std::int64_t) { return choice(technology); };
    }
    return *this;
  }
  /// The combo of an enumeration offers these values in this order.
  CColumn& Order(std::vector<int> values) { return order = std::move(values), *this; }
  /// A field of text that is chosen from a list; an entry's value is an object's address, or 0.
  CColumn& ChosenFrom(CComboItems (*choice)(const CTechnology&), Number value) {
    editor = EEditor::Object;
    return Offers(choice).Shows(std::move(value));
  }
  /// The cell stands for another field too, which has none: errors of that field show here.
  template <class F, class... V>
  CColumn& StandsFor(V F::*... members) {
    return alsoFor = {MemberOf(members)...}, *this;
  }
  /// A value typed here, or read from this column of a file, sets another field too.
  CColumn& AlsoSets(std::function<void(CRecordBase& values)> set) { return alsoSets = std::move(set), *this; }

  // ---- Forms
  CColumn& NotInGrid() { return inGrid = false, *this; }
  /// When the edit form has the field.
  CColumn& InFormWhen(Test test) { return formTest = std::move(test), *this; }
  /// What the edit form calls the field, where not as the model does.
  CColumn& CalledInForm(const char* name) { return formName = name, *this; }
  CColumn& LabelledInForm(CTextId (*label)(const CRecordBase&)) { return formLabel = label, *this; }

  // ---- Files
  CColumn& NotInFile() { return inFile = false, *this; }
  /// When files hold the field; otherwise its place in them is empty. An empty one says nothing when it is read.
  CColumn& InFileWhen(Test test) { return fileTest = std::move(test), *this; }
  /// An empty place says that the number is 0.
  CColumn& EmptyInFileIsZero() { return emptyInFileIsZero = true, *this; }
  /// What no file may bring in, though a record may have it; `why` takes the text.
  CColumn& RefusedFromFileWhen(Test test, CTextId why = {}) {
    return refusedFromFile = std::move(test), whyRefused = why, *this;
  }
  CColumn& ImportError(CTextId id) { return importError = id, *this; }
  /// The same for an error whose only value is the text.
  CColumn& ImportErrorOfText(CTextId id) { return importErrorHasRecord = false, ImportError(id); }
  /// Files bring in what the combo offers, and no empty text.
  CColumn& OnlyOffered() { return onlyOffered = true, *this; }

  // ---- For who shows, writes and reads them
  CTextId Header() const { return header ? header : field ? field->title : CTextId(); }
  CComboItems Offered(const CTechnology& technology, std::int64_t current) const;
  /// Whether cells of this column sort by number.
  bool IsNumeric() const { return editor == EEditor::Length || editor == EEditor::Integer; }
  /// Whether files hold the field between quotation marks: texts of all kinds are, numbers and marks are not.
  bool IsQuoted() const { return !IsNumeric() && editor != EEditor::Boolean; }
  bool IsReference() const { return field && field->type->IsReference(); }
  /// Whether the cell of such values is disabled, by what is judged on every change.
  bool IsOff(const CRecordBase& values) const {
    return (enabledOnChange && !enabledOnChange(values)) || (empty && empty(values));
  }
  /// Fills a cell from `values`, text included; enabling and modified flag are the row's.
  void Fill(SCell& cell, const CRecordBase& values, const CUnits& units) const;
  /// Whether files hold something in this column for such a record, and that between quotation marks.
  bool IsHeld(const CRecordBase& values) const { return field && (!fileTest || fileTest(values)); }
  bool IsHeldQuoted(const CRecordBase& values) const { return IsHeld(values) && IsQuoted(); }
  /// Appends the text that files hold; nothing where they hold none.
  void AppendFileText(CString& out, const CRecordBase& values, const CUnits& units) const;
  /// Whether two records have the same in this column.
  bool IsEqual(const CRecordBase& a, const CRecordBase& b) const { return field->HasEqual(a, b); }
  /// Finds the fields of its members, and their editors.
  void Resolve(const CKind& kind);

 private:
  std::int64_t NumberOf(const CRecordBase& values) const;
};

template <class F, class V>
CColumn Column(V F::* member) {
  CColumn column;
  column.member = MemberOf(member);
  return column;
}
/// The column of the mark of records in use.
CColumn UsedMark();
/// A column that is the same in every row, and empty in files.
CColumn FixedColumn(CTextId header, SComboItem always = {0, {}});

/// Columns that a page has together, or not at all.
class CColumnGroup {
 public:
  explicit CColumnGroup(bool condition) : m_condition(condition) {}
  CColumnGroup& NotInFile() { return m_notInFile = true, *this; }
  /// Files hold the columns whatever the condition.
  CColumnGroup& AlwaysInFile() { return m_alwaysInFile = true, *this; }
  std::vector<CColumn> Of(std::initializer_list<CColumn> columns) const;

 private:
  bool m_condition;
  bool m_notInFile = false;
  bool m_alwaysInFile = false;
};
inline CColumnGroup Group(bool condition) { return CColumnGroup(condition); }

/// One column or a group of them, in a list of both.
struct SColumns {
  SColumns(CColumn column) { columns.push_back(std::move(column)); }   // NOLINT(google-explicit-constructor)
  SColumns(std::vector<CColumn> group) : columns(std::move(group)) {}  // NOLINT(google-explicit-constructor)
  std::vector<CColumn> columns;
};
std::vector<CColumn> Flat(std::initializer_list<SColumns> list);

/// The name of a field as scripts call the form field of it: with a capital first letter.
CString FormName(const CField& field);
EAlign AlignOf(EEditor editor);
