// What a page of records decides: its options, and the rules and hooks that it overrides.
//
// Everything here is asked, nothing here runs anything. Rules are const and write nothing; Follow and Settle write the
// draft they are handed and nothing else, and doing it twice is doing it once. The hooks of writing are called while
// the design is written, and announce it.
#pragma once
#include "technology/findings.h"
#include "technology/importcsv.h"

struct SRowKind;

/// What cannot be edited in a built-in record, one whose name stands in brackets.
enum class EBuiltIn { Editable, NameLocked, RowLocked };
/// Which rows are settled before they are checked.
enum class ESettled { None, Edited, All };

struct SPageOptions {
  CTextId title{};
  CString settings{};      // key under which the layout is kept
  CTextId nameError{};     // a name that is invalid or not unique; takes row and name
  CTextId inUse{};         // a record in use cannot be deleted; takes its name
  CTextId builtInStays{};  // nor can one that is built in; takes its name; none: nothing is refused for that
  CTextId exportName{};
  bool (*validName)(const CString&) = nullptr;
  EBuiltIn builtIn = EBuiltIn::Editable;
  ESettled settled = ESettled::None;
  bool silentInUse = false;          // Delete leaves a record in use alone without a word
  bool nameErrorHasRow = true;       // false: the name alone is its argument
  bool layoutBeforeWriting = false;  // the layout is kept before the writing pass
  bool rowByRow = false;             // each row is checked and written before the next: no checks of the page
  bool checksEditedRows = false;     // Apply checks the rows that were edited alone
  bool ordered = false;              // row order is the design's order
  bool styles = false;               // rows stand by name; new ones come from the form, empty or as copies
  bool keepsSort = false;            // the column that sorts is kept with the layout
  bool reportsLines = false;         // reports of imports name the lines of the file, others its records
  bool importsToRows = false;        // an import edits the rows, as a person does, instead of the design
  bool redraws = false;              // the whole design is drawn anew after Apply and after an import
  int ownedInFile = 0;   // the column of files whose text makes a record one that another owns; 0: none does
  CTextId writeLevel{};  // the undo level around the writing, which a failure takes back, and an import
};

class CRecordRules {
 public:
  virtual ~CRecordRules() = default;

  // ---- Rules
  /// What a record must be by itself, its name apart; a form asks no more.
  virtual void CheckValues(const SCheckedRow&, CFindings&) const {}
  /// What a row must be on the page; an import into the design asks it too.
  virtual void Check(const SCheckedRow& row, CFindings& findings) const { CheckValues(row, findings); }
  /// The same where everything is listed, but for what CheckTogether checks of all rows at once: comparing each with
  /// each would take too long, and say too much.
  virtual void CheckAlone(const SCheckedRow& row, CFindings& findings) const { Check(row, findings); }
  virtual void CheckTogether(CFindings&) const {}
  /// Whether the row, which stands for a record or is built in, may be deleted.
  virtual void CheckDeletion(const SCheckedRow& row, CFindings& findings) const = 0;

  // ---- Drafts
  /// After a field changed in a cell, in the form or by a file: what else follows from it. `before` are the values
  /// before the change.
  virtual void Follow(const CField& /*changed*/, const CRecordBase& /*before*/, CRecordBase& /*values*/) const {}
  /// Before a row is checked: what is not meant, whatever was entered. Which rows are settled is an option of the page.
  virtual void Settle(CRecordBase& /*values*/) const {}
  /// Why no record can be made of these fields of a file, whatever each of them says; no text where one can.
  virtual CTextId WhyUnusable(const SRowKind& /*kind*/, const CFileFields& /*fields*/) const { return {}; }
  /// What a new record begins with.
  virtual void InitNew(CRecordBase&) const {}

  // ---- Rows
  /// Whether row `a` stands before row `b` after Sort; both stand for records. Pages in the design's order alone.
  virtual bool StandsBefore(const SGridRow&, const SGridRow&) const { return false; }
  /// The record of the page that a selected item of the design uses, or null; its row is selected when the page opens.
  virtual const CRecordBase* UsedBy(const CDesignItem&) const { return nullptr; }

  // ---- Writing
  /// Writes one field that was edited.
  virtual void WriteField(CRecordBase& record, const CField& field, const CRecordBase& values);
  virtual void Added(CRecordBase&) {}
  virtual void Deleted(CRecordBase&) {}  // it is out of the design by now
  /// Puts a record that an import added or changed where it belongs.
  virtual void PlaceImported(CRecordBase&) {}
};
