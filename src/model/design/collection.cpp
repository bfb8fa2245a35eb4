#include "model/design/collection.h"

#include <algorithm>
#include <cassert>
#include <functional>
#include <new>

#include "model/design/technology.h"

/// A record that entered or left. The entry owns the record while it is out.
class CPresenceChange final : public CChange<CPresenceChange> {
 public:
  CPresenceChange(CCollectionBase& home, CRecordBase& record, CRecordBase* previous, bool out)
      : m_home(&home), m_record(&record), m_previous(previous), m_out(out) {}
  CPresenceChange(CPresenceChange&& other) noexcept
      : m_home(other.m_home), m_record(other.m_record), m_previous(other.m_previous), m_out(other.m_out) {
    other.m_out = false;
  }
  CPresenceChange(const CPresenceChange&) = delete;
  CPresenceChange& operator=(const CPresenceChange&) = delete;
  ~CPresenceChange() override {
    if (m_out) delete m_record;
  }
  void Swap() noexcept override {
    if (m_out) {
      m_home->Enter(*m_record, m_previous);
    } else {
      m_previous = m_record->Previous();
      m_home->Leave(*m_record);
    }
    m_out = !m_out;
  }

 private:
  CCollectionBase* m_home;
  CRecordBase* m_record;
  CRecordBase* m_previous;  // behind which the record stood or stands again
  bool m_out;
};

class CPlaceChange final : public CChange<CPlaceChange> {
 public:
  CPlaceChange(CCollectionBase& home, CRecordBase& record, CRecordBase* previous)
      : m_home(&home), m_record(&record), m_previous(previous) {}
  void Swap() noexcept override {
    CRecordBase* const now = m_record->Previous();
    m_home->Unlink(*m_record);
    m_home->Link(*m_record, m_previous);
    m_previous = now;
  }

 private:
  CCollectionBase* m_home;
  CRecordBase* m_record;
  CRecordBase* m_previous;
};

CCollectionBase::CCollectionBase(const CKind& kind, const char* name, CRecordBase* owner)
    : m_kind(kind), m_name(name), m_owner(owner) {}

CCollectionBase::~CCollectionBase() { Clear(); }

void CCollectionBase::Clear() noexcept {
  while (CRecordBase* record = m_first) {
    m_first = record->m_next;
    delete record;
  }
  m_last = nullptr;
  m_count = 0;
  m_numbered.clear();
  m_buckets.clear();
  m_indexed = 0;
}

CRecordBase& CCollectionBase::Insert(std::unique_ptr<CRecordBase> record, CRecordBase* previous) {
  assert(record && &record->Kind() == &m_kind && !record->Journal() && !record->m_home);
  if (IsIn()) record->DropForeignReferences(*m_technology);
  CUndoJournal* const journal = IsIn() && m_technology->Journal().IsRecording() ? &m_technology->Journal() : nullptr;
  if (journal) journal->Reserve();
  if (IsIn()) {
    MakeIndex();
    record->MakeRoomForOwned();
  }
  CRecordBase& entered = *record.release();
  Enter(entered, previous);
  if (journal) journal->Note<CPresenceChange>(*this, entered, previous, false);
  return entered;
}

void CCollectionBase::Remove(CRecordBase& record) {
  assert(record.m_home == this);
  CRecordBase* const previous = record.m_previous;
  CUndoJournal* const journal = record.Journal() && record.Journal()->IsRecording() ? record.Journal() : nullptr;
  if (journal) journal->Reserve();
  Leave(record);
  if (journal) {
    journal->Note<CPresenceChange>(*this, record, previous, true);
  } else {
    delete &record;
  }
}

void CCollectionBase::SetPlace(CRecordBase& record, std::size_t place) {
  assert(record.m_home == this);
  if (At(place) == &record || (place >= m_count && m_last == &record)) return;
  CRecordBase* const previous = record.m_previous;
  CUndoJournal* const journal = record.Journal() && record.Journal()->IsRecording() ? record.Journal() : nullptr;
  if (journal) journal->Reserve();
  Unlink(record);  // the numbers up to `place` have had their room already
  Link(record, place == 0 ? nullptr : place >= m_count ? m_last : At(place - 1));
  if (journal) journal->Note<CPlaceChange>(*this, record, previous);
}

void CCollectionBase::Enter(CRecordBase& record, CRecordBase* previous) noexcept {
  record.m_home = this;
  Link(record, previous);
  if (!IsIn()) return;
  record.Connect(*m_technology);
  m_technology->NotePresence();
}

void CCollectionBase::Leave(CRecordBase& record) noexcept {
  if (IsIn()) {
    record.Disconnect();
    m_technology->NotePresence();
  }
  assert(record.m_uses == 0 && record.m_yielding == 0);  // nothing may refer to a record that is out
  Unlink(record);
}

void CCollectionBase::Link(CRecordBase& record, CRecordBase* previous) noexcept {
  CRecordBase*& slot = previous ? previous->m_next : m_first;
  record.m_previous = previous;
  record.m_next = slot;
  (slot ? slot->m_previous : m_last) = &record;
  slot = &record;
  ++m_count;
  if (!previous) {
    m_numbered.clear();
  } else if (IsNumbered(*previous)) {
    m_numbered.resize(previous->m_place + 1);
  } else {
    return;
  }
  if (!HasRoomForNumber()) return;  // who asks for a place numbers it
  record.m_place = static_cast<std::uint32_t>(m_numbered.size());
  m_numbered.push_back(&record);
}

bool CCollectionBase::HasRoomForNumber() const noexcept {
  if (m_numbered.size() < m_numbered.capacity()) return true;
  try {
    constexpr std::size_t kFirst = 16;
    m_numbered.reserve(std::max(kFirst, 2 * m_numbered.size()));
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

void CCollectionBase::Unlink(CRecordBase& record) noexcept {
  if (IsNumbered(record)) m_numbered.resize(record.m_place);
  (record.m_previous ? record.m_previous->m_next : m_first) = record.m_next;
  (record.m_next ? record.m_next->m_previous : m_last) = record.m_previous;
  record.m_previous = record.m_next = nullptr;
  --m_count;
}

bool CCollectionBase::NumberNext() const {
  CRecordBase* const next = m_numbered.empty() ? m_first : m_numbered.back()->m_next;
  if (!next) return false;
  next->m_place = static_cast<std::uint32_t>(m_numbered.size());
  m_numbered.push_back(next);
  return true;
}

std::size_t CCollectionBase::PlaceOf(const CRecordBase& record) const {
  assert(record.m_home == this);
  while (!IsNumbered(record) && NumberNext()) {
  }
  return record.m_place;
}

CRecordBase* CCollectionBase::At(std::size_t place) const {
  while (m_numbered.size() <= place && NumberNext()) {
  }
  return place < m_numbered.size() ? m_numbered[place] : nullptr;
}

CRecordBase* NextOfOwners(const CRecordBase& record) {
  if (record.Next() || !record.Owner()) return record.Next();
  std::size_t index = 0;
  while (record.Owner()->Child(index) != record.Home()) ++index;
  for (CRecordBase* owner = NextOfOwners(*record.Owner()); owner; owner = NextOfOwners(*owner))
    if (CRecordBase* const first = owner->Child(index)->FirstRecord()) return first;
  return nullptr;
}

namespace {
std::uint32_t HashOf(std::string_view name) {
  const std::size_t hash = std::hash<std::string_view>()(name);
  return static_cast<std::uint32_t>(hash ^ hash >> 32);
}
}  // namespace

CRecordBase* CCollectionBase::FindRecord(std::string_view name) const {
  if (m_buckets.empty()) return nullptr;
  const std::uint32_t hash = HashOf(name);
  CRecordBase* found = nullptr;
  for (CRecordBase* one = m_buckets[hash & (m_buckets.size() - 1)]; one; one = one->m_sameBucket) {
    if (one->m_hash != hash || m_kind.nameField->As<CName>(one->FieldsAddress()).text != name) continue;
    if (!found || PlaceOf(*one) < PlaceOf(*found)) found = one;
  }
  return found;
}

void CCollectionBase::MakeIndex() {
  constexpr std::size_t kFirst = 16;
  if (m_kind.nameField && m_buckets.empty()) Rehash(kFirst);
}

void CCollectionBase::Index(CRecordBase& record, const CString& name) noexcept {
  assert(!m_buckets.empty());
  try {
    if (m_indexed >= m_buckets.size()) Rehash(m_buckets.size() * 2);
  } catch (const std::bad_alloc&) {  // NOLINT(bugprone-empty-catch): longer chains find the same
  }
  record.m_hash = HashOf(name);
  CRecordBase*& bucket = m_buckets[record.m_hash & (m_buckets.size() - 1)];
  record.m_sameBucket = bucket;
  bucket = &record;
  ++m_indexed;
}

void CCollectionBase::Unindex(CRecordBase& record) {
  CRecordBase** at = &m_buckets[record.m_hash & (m_buckets.size() - 1)];
  while (*at != &record) at = &(*at)->m_sameBucket;
  *at = record.m_sameBucket;
  record.m_sameBucket = nullptr;
  --m_indexed;
}

void CCollectionBase::Rehash(std::size_t buckets) {
  std::vector<CRecordBase*> old(buckets);
  old.swap(m_buckets);
  for (CRecordBase* chain : old) {
    while (chain) {
      CRecordBase* const next = chain->m_sameBucket;
      CRecordBase*& bucket = m_buckets[chain->m_hash & (buckets - 1)];
      chain->m_sameBucket = bucket;
      bucket = chain;
      chain = next;
    }
  }
}
