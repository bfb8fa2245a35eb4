// Merges of a page that are not written yet: which record goes to which, until the one pass that moves the references.
#pragma once
#include <map>

#include "model/design/technology.h"

class CMerges {
 public:
  bool IsEmpty() const { return m_survivors.empty(); }
  /// Grows with every change.
  std::uint64_t Revision() const { return m_revision; }
  /// `gone` goes to `survivor`, and so does everything that was to go to `gone`.
  void Add(const CRecordBase& gone, CRecordBase& survivor);
  /// The record stays after all.
  void End(const CRecordBase& record) { m_revision += m_survivors.erase(&record); }
  /// The record that references to this one will go to: itself unless it is merged away.
  const CRecordBase& SurvivorOf(const CRecordBase& record) const;
  /// How many refer to the record, or will; at least 1 for one that counts as used by what it owns.
  int UsesOf(const CRecordBase& record) const;
  /// Moves the references and forgets the merges.
  void Write(CTechnology& technology);

 private:
  std::map<const CRecordBase*, CRecordBase*> m_survivors;
  std::uint64_t m_revision = 0;
};
