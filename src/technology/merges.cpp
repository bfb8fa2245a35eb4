#include "technology/merges.h"

void CMerges::Add(const CRecordBase& gone, CRecordBase& survivor) {
  ++m_revision;
  for (auto& [merged, target] : m_survivors)
    if (target == &gone) target = &survivor;
  m_survivors.emplace(&gone, &survivor);
}

const CRecordBase& CMerges::SurvivorOf(const CRecordBase& record) const {
  const auto at = m_survivors.find(&record);
  return at == m_survivors.end() ? record : *at->second;
}

int CMerges::UsesOf(const CRecordBase& record) const {
  int uses = record.UseCount();
  if (uses == 0 && CTechnology::IsUsed(record)) uses = 1;
  for (const auto& [merged, survivor] : m_survivors)
    if (survivor == &record) uses += merged->UseCount();
  return uses;
}

void CMerges::Write(CTechnology& technology) {
  if (IsEmpty()) return;
  technology.Merge(m_survivors);
  m_survivors.clear();
  ++m_revision;
}
