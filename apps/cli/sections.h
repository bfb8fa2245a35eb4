// A design, project or library as named sections of records, whatever kinds of records it has.
//
// A section is one of the values that stand once in a design ("units"), one of its collections ("layers"), or a
// collection that the records of another section own ("nets.tracks.segments"). Sections are found by walking the kinds,
// so that a new collection or field shows by itself.
#pragma once
#include <set>

#include "model/design/technology.h"
#include "storage/jsonwriter.h"

struct SSection {
  CString name;
  const CKind* kind;
  CRecordBase* single = nullptr;          // the record of a section that is one record
  CCollectionBase* collection = nullptr;  // otherwise where the walk begins
  std::vector<std::size_t> children{};    // and which of its records' collections it follows from there
  bool IsItem() const;                    // of the drawing, not of the technology

  struct SRow {
    const CRecordBase* record = nullptr;
    CString owner;  // the names of the records that own it, the outermost first
  };
  /// The records in the order of the design.
  std::vector<SRow> Rows() const;
};

/// All sections; those of the technology first, in the order in which people look for them.
std::vector<SSection> SectionsOf(const CTechnology& technology);

/// How many records a section has, and how many of them are built in or stand as defaults.
struct SSectionCount {
  CString name;
  std::size_t count = 0, builtIn = 0, defaults = 0;
};
/// The counts of all sections that are collections.
std::vector<SSectionCount> CountSections(const std::vector<SSection>& sections, const CTechnology& technology);
/// The counts that are not 0 as a table: built-in records apart, collections that records own below those records'.
CString CountsText(const std::vector<SSection>& sections, const CTechnology& technology);

/// What newly placed items get.
std::set<const CRecordBase*> DefaultsOf(const CTechnology& technology);

/// A value as people read it: one line without control characters, lengths in `units` without the unit.
CString CellText(const CField& field, const CRecordBase& record, const CUnits& units);
/// The value as JSON: exact, in design units, with the text beside it where it says more.
void WriteField(CJsonWriter& json, const CField& field, const CRecordBase& record, const CUnits& units);

/// "PCB design", "schematic library".
CString KindText(const CTechnology& technology);
