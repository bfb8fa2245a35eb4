#include "model/design/selection.h"

#include <algorithm>

void CSelectionOverview::Add(CDesignItem& item) {
  if (item.IsSelected() || !item.IsIn() || item.Technology() != &m_design) return;
  m_items.push_back(&item);
  item.m_selectedAs = static_cast<std::uint32_t>(m_items.size());
}

void CSelectionOverview::Clear() {
  for (CDesignItem* item : m_items)
    if (item) item->m_selectedAs = 0;
  m_items.clear();
  m_gaps = 0;
}

void CSelectionOverview::Remove(CDesignItem& item) {
  m_items[std::exchange(item.m_selectedAs, 0) - 1] = nullptr;
  if (++m_gaps > m_items.size() / 2) CloseGaps();
}

void CSelectionOverview::CloseGaps() {
  std::erase(m_items, nullptr);
  m_gaps = 0;
  std::uint32_t number = 0;
  for (CDesignItem* item : m_items) item->m_selectedAs = ++number;
}

std::vector<CDesignItem*> CSelectionOverview::Items() const {
  std::vector<CDesignItem*> items;
  items.reserve(m_items.size() - m_gaps);
  std::copy_if(m_items.begin(), m_items.end(), std::back_inserter(items), [](auto* item) { return item != nullptr; });
  return items;
}

CDesignItem* CSelectionOverview::First() const {
  const auto at = std::find_if(m_items.begin(), m_items.end(), [](auto* item) { return item != nullptr; });
  return at == m_items.end() ? nullptr : *at;
}

template <class Test>
bool CSelectionOverview::All(Test test) const {
  return std::all_of(m_items.begin(), m_items.end(), [&](const CDesignItem* item) { return !item || test(*item); });
}

bool CSelectionOverview::IsSingleTypeSelected() const {
  const CDesignItem* const first = First();
  return All([&](const CDesignItem& item) { return item.GetRuntimeClass() == first->GetRuntimeClass(); });
}

namespace {
/// The item itself, or the one that it is a part of, when it is of that kind; otherwise null.
const CRecordBase* WholeOf(const CDesignItem& item, const CRuntimeClass* kind) {
  for (const CRecordBase* one = &item; one; one = one->Owner())
    if (one->IsKindOf(kind)) return one;
  return nullptr;
}
}  // namespace

bool CSelectionOverview::AreAll(const CRuntimeClass* kind) const {
  return First() && All([&](const CDesignItem& item) { return WholeOf(item, kind) != nullptr; });
}

bool CSelectionOverview::AreSelectedDimensionsCompatibleTypes() const {
  if (!AreJustDimensionsSelected()) return false;
  const auto typeOf = [](const CDesignItem& item) {
    return static_cast<const CDimension*>(WholeOf(item, CDimension::GetThisClass()))->Values().type;
  };
  const int type = typeOf(*First());
  return All([&](const CDesignItem& item) { return typeOf(item) == type; });
}
