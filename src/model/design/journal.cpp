#include "model/design/journal.h"

#include <algorithm>
#include <cassert>

namespace {
std::vector<unsigned>& IgnoredIds() {
  static std::vector<unsigned> ids;
  return ids;
}
}  // namespace

CUndoJournal::~CUndoJournal() { Discard(); }

void CUndoJournal::Discard() noexcept {
  Destroy(0, m_size);
  m_size = 0;
  m_levels.clear();
  m_steps.clear();
  m_done = 0;
}

void CUndoJournal::Grow() {
  if (m_size == m_blocks.size() * kBlockSlots) m_blocks.push_back(std::make_unique_for_overwrite<SBlock>());
  constexpr std::size_t kFirstSteps = 16;
  if (m_steps.size() == m_steps.capacity()) m_steps.reserve(std::max(kFirstSteps, 2 * m_steps.size()));
}

void CUndoJournal::Destroy(std::size_t from, std::size_t to) noexcept {
  while (to > from) Entry(--to).~CUndoChange();
}

void CUndoJournal::Start(unsigned id) {
  m_levels.reserve(m_levels.size() + 1);
  EndImplicitStep();
  m_levels.push_back({id, m_size});
}

bool CUndoJournal::End(unsigned id) noexcept {
  if (m_levels.empty() || m_levels.back().id != id) return false;
  EndInnermost();
  return true;
}

void CUndoJournal::EndInnermost() noexcept {
  const unsigned id = m_levels.back().id;
  m_levels.pop_back();
  if (m_levels.empty()) Commit(id);
}

bool CUndoJournal::Revert(unsigned id) noexcept {
  if (m_levels.empty() || m_levels.back().id != id) return false;
  RollBackTo(m_levels.back().begin);
  m_levels.pop_back();
  return true;
}

void CUndoJournal::RollBackTo(std::size_t begin) noexcept {
  for (std::size_t end = m_size; end > begin;) {
    const std::size_t inBlock = (end - 1) % kBlockSlots;  // changes before the last one that stand next to each other
    end -= Entry(end - 1).TakeBack(std::min(inBlock, end - 1 - begin));
  }
  m_revision += m_size - begin;
  m_size = begin;
  if (begin >= m_savedInside) return;
  m_savedInside = 0;  // what was saved in the middle of the level is gone
  m_savedExists = false;
  m_savedReachable = IsIgnored(m_levels.front().id);
}

std::vector<unsigned> CUndoJournal::OpenLevels() const {
  std::vector<unsigned> ids;
  ids.reserve(m_levels.size());
  for (const SLevel& level : m_levels) ids.push_back(level.id);
  return ids;
}

void CUndoJournal::EndImplicitStep() noexcept {
  if (m_levels.empty()) Commit(0);
}

void CUndoJournal::Commit(unsigned id) noexcept {
  std::size_t from = Base();
  std::size_t to = DoneEnd();
  if (m_size == from) return;
  const std::size_t fresh = m_size;
  if (m_savedReachable && m_saved > m_done) {  // the saved state lies among the steps that are forgotten now
    m_savedReachable = !AnyCounts(m_done, m_saved);
    m_savedExists = false;
    m_saved = m_done;
  }
  Destroy(to, from);
  if (to == from) {
    to = m_size;
  } else {
    for (; from < m_size; ++from, ++to) Entry(from).MoveTo(Slot(to));
  }
  m_size = to;
  m_steps.resize(m_done);
  m_steps.push_back({id, id == 0 ? m_command : std::string_view(), m_size, IsIgnored(id)});
  ++m_done;
  if (const std::size_t inside = std::exchange(m_savedInside, 0); inside != 0) {
    m_saved = m_done;
    m_savedExists = inside == fresh;
    m_savedReachable = m_savedExists || IsIgnored(id);
  }
}

bool CUndoJournal::Undo() noexcept {
  EndImplicitStep();
  if (InLevel() || m_done == 0) return false;
  const std::size_t end = DoneEnd();
  --m_done;
  for (std::size_t at = end; at > DoneEnd();) Entry(--at).Swap();
  ++m_revision;
  return true;
}

bool CUndoJournal::Redo() noexcept {
  EndImplicitStep();
  if (InLevel() || m_done == m_steps.size()) return false;
  for (std::size_t at = DoneEnd(); at < m_steps[m_done].end; ++at) Entry(at).Swap();
  ++m_done;
  ++m_revision;
  return true;
}

bool CUndoJournal::Reset() {
  EndImplicitStep();
  if (InLevel()) return false;
  m_savedExists = !DiffersFromSave();
  m_savedReachable = !IsModified();
  m_saved = 0;
  Destroy(0, m_size);
  m_size = 0;
  m_steps.clear();
  m_done = 0;
  return true;
}

bool CUndoJournal::AnyCounts(std::size_t from, std::size_t to) const {
  return std::any_of(m_steps.begin() + static_cast<std::ptrdiff_t>(from),
                     m_steps.begin() + static_cast<std::ptrdiff_t>(to), [](const SStep& s) { return !s.ignored; });
}

bool CUndoJournal::IsModified() const {
  if (!m_savedReachable) return true;
  if (m_savedInside != 0 && m_savedInside == m_size) return false;
  if (m_size > Base() && !IsIgnored(m_levels.empty() ? 0 : m_levels.front().id)) return true;
  return AnyCounts(std::min(m_saved, m_done), std::max(m_saved, m_done));
}

bool CUndoJournal::DiffersFromSave() const {
  if (!m_savedExists) return true;
  if (m_savedInside != 0) return m_savedInside != m_size;
  return m_size > Base() || m_saved != m_done;
}

void CUndoJournal::MarkSaved() {
  EndImplicitStep();
  m_saved = m_done;
  m_savedReachable = m_savedExists = true;
  m_savedInside = m_size > Base() ? m_size : 0;
}

void CUndoJournal::SetIgnored(const unsigned* ids) {
  std::vector<unsigned> list;
  for (; ids && *ids != 0; ++ids) list.push_back(*ids);
  IgnoredIds() = std::move(list);
}

bool CUndoJournal::IsIgnored(unsigned id) {
  return std::find(IgnoredIds().begin(), IgnoredIds().end(), id) != IgnoredIds().end();
}
