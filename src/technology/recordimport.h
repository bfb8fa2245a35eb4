// One run over a delimited file: what its records say, what of it was taken, and what was not and why.
//
// Records go into the design at once, or into the rows as if they had been typed, as the page says. Nobody is asked:
// what a rule would ask is taken and stands in the report. A record that a rule refuses is not taken; what a file
// leaves as it is, it does not have to answer for. Both sides are compared settled, so that reading back what was
// written changes nothing.
#pragma once
#include <map>
#include <set>
#include <unordered_map>

#include "model/design/design.h"
#include "model/services/report.h"
#include "technology/importcsv.h"
#include "technology/recordtable.h"

class CRecordImport final : private CRowContext {
 public:
  CRecordImport(CRecordTable& rows, CReportFile& report);

  /// Lets a person choose the file. True when records of it were written to the design.
  bool Run();

 private:
  struct SFileRecord {
    const CFileFields& fields;
    const SRowKind& kind;
    bool isOwned;
  };
  void Take(const CFileFields& fields);
  void TakeIntoDesign(const SFileRecord& record);
  void TakeIntoRows(const SFileRecord& record);
  bool Read(const SFileRecord& record, const CRecordBase* present, std::unique_ptr<CRecordBase>& values);
  bool ReadField(const SFileRecord& record, std::size_t place, const CRecordBase* present,
                 std::unique_ptr<CRecordBase>& values);
  bool IsOffered(const CColumn& column, std::int64_t value);
  bool IsAccepted(const SCheckedRow& row, const CRecordBase* present);
  bool IsSame(const CRecordBase& present, const CRecordBase& values) const;
  int FindOwned(const SFileRecord& record, int owner) const;
  std::unique_ptr<CRecordBase>* FindToCome(const SFileRecord& record, int owner);
  std::unique_ptr<CRecordBase> CopyOf(const CRecordBase& present);
  void WriteDifferences(CRecordBase& present, const CRecordBase& values);
  /// The number of the record that is read, as messages say it.
  CString Number() const { return Place().Number(); }
  SFilePlace Place() const { return {*m_reader, m_rows.Options().reportsLines}; }
  void Tell(CTextId id, const CString& what, CStringArray args);
  void Refuse(const CString& reason);
  void RefuseField(const CColumn& column, std::string_view field);
  void ReportWithout();
  void ReportBroken(const CFindings& before);

  const CRecordBase& Blank(const SFileRecord& record) const { return record.isOwned ? *m_newOwned : *m_new; }
  void ShowAgain(int row);
  void InsertOwned();
  CRecordBase* FindInDesign(std::string_view name, int& row);
  int RowOf(const CRecordBase& record);
  void ShowInRows();
  void ShowNewRecords();
  void MoveReplacedRows();
  std::vector<int> RowsByPlace() const;
  void FindPlaces(const CRecordBase& record);

  std::span<const SOther> All(const SCheckedRow& row) const override;
  CString NumberOf(const SCheckedRow&) const override { return Number(); }
  const CRecordBase* OwnerOf(const SCheckedRow& row) const override;
  const CRecordBase& SurvivorOf(const CRecordBase& record) const override { return m_rows.SurvivorOf(record); }

  CRecordTable& m_rows;
  CEditGrid& m_grid;
  const CDesign& m_design;
  CReportFile& m_report;
  std::vector<int> m_unitTypes;                                // of lengths without a unit, for each column of the file
  CCsvReader* m_reader = nullptr;                              // at the record that is read
  std::map<const CColumn*, std::set<std::int64_t>> m_offered;  // by combos, once they are asked
  CString m_without;                                           // what of it a rule takes back
  std::unique_ptr<CRecordBase> m_new;                          // what a new record begins with
  std::unique_ptr<CRecordBase> m_newOwned;                     // and one that another owns; null where none is
  std::unique_ptr<CRecordBase> m_spare;    // the values of an earlier record, for those of the next one
  const CRecordBase* m_present = nullptr;  // what the record that is judged replaces
  bool m_isWritten = false;                // anything, to the design
  // Into the design. Its rows stay where they are until everything is written.
  int m_row = 0;                                        // of the record that was found last
  std::unordered_map<const CRecordBase*, int> m_rowOf;  // of all rows, once that is asked
  struct SPlace {
    const CField* field = nullptr;
    const CFieldType* type = nullptr;
    std::ptrdiff_t offset = 0;  // among the fields of a record
    int col = -1;               // that is filled when the field is written
  };
  std::vector<SPlace> m_places;             // of the fields of the page's records, once that is asked
  std::vector<int> m_following;             // columns that can change with any field
  std::vector<const CField*> m_written;     // of the record that is taken
  std::vector<int> m_toFill;                // the columns that show it
  std::vector<int> m_toShow;                // rows that were deleted or merged here
  std::set<const CRecordBase*> m_replaced;  // records that were put elsewhere
  bool m_hasAdded = false;
  // Into rows: the rows of the page's records by name, and what gets rows behind those of its owner.
  std::unordered_map<CString, int> m_named;
  std::map<int, std::vector<std::unique_ptr<CRecordBase>>> m_owned;
  mutable std::vector<SOther> m_others;
  mutable bool m_othersKnown = false;
};
