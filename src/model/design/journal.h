// The undo journal of one design.
//
// An entry knows only how to trade places with the present, so undo, redo and roll-back are one function and are
// exact by symmetry. All entries stand in one log: first the done steps, then the steps that can be redone, then the
// entries of the levels now open (or of the implicit step).
//
// Memory can run out only before a change is made (Reserve) or a level begins: to note, to end, to undo, to redo and to
// roll back allocate nothing.
#pragma once
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "model/base/text.h"

/// One change. Lives in a slot of the journal and is moved there when slots before it are freed.
class CUndoChange {
 public:
  virtual ~CUndoChange() = default;
  /// Trades places with the present: undoes the change, and redoes it the next time.
  virtual void Swap() noexcept = 0;
  /// Undoes this change and ends it, and then those in the `more` slots before it while they are of the same class:
  /// levels are mostly many changes of one field, which one call can take back. Returns how many were taken back.
  virtual std::size_t TakeBack(std::size_t more) noexcept = 0;
  /// Builds this change anew in `slot` and ends it here.
  virtual void MoveTo(void* slot) noexcept = 0;

  static constexpr std::size_t kSlotSize = 64;  // bytes
};

/// The base of a final class `Change`, which says how to trade places.
template <class Change>
class CChange : public CUndoChange {
 public:
  std::size_t TakeBack(std::size_t more) noexcept final {
    auto* at = reinterpret_cast<std::byte*>(this);
    std::size_t count = 0;
    for (;; at -= kSlotSize) {
      auto& change = *std::launder(reinterpret_cast<Change*>(at));
      change.Swap();
      change.~Change();
      if (++count > more) return count;
      const auto& before = *std::launder(reinterpret_cast<const CUndoChange*>(at - kSlotSize));
      if (typeid(before) != typeid(Change)) return count;
    }
  }
  void MoveTo(void* slot) noexcept final {
    auto* const change = static_cast<Change*>(this);
    ::new (slot) Change(std::move(*change));
    change->~Change();
  }
};

class CUndoJournal {
 public:
  static constexpr std::size_t kSlotSize = CUndoChange::kSlotSize;

  struct SStep {
    unsigned id = 0;             // command identifier; 0 for a step made outside every level
    std::string_view command{};  // the command that made a step of identifier 0
    std::size_t end = 0;         // its entries end before this place of the log
    bool ignored = false;        // does not mark the design as changed
  };

  CUndoJournal() = default;
  CUndoJournal(const CUndoJournal&) = delete;
  CUndoJournal& operator=(const CUndoJournal&) = delete;
  ~CUndoJournal();

  /// Makes room for one change more. Called before the change is made, so that nothing has happened when that fails.
  void Reserve() {
    if (m_size == m_blocks.size() * kBlockSlots || m_steps.size() == m_steps.capacity()) Grow();
  }
  /// Notes a change that has just been made, for which there is room.
  template <class Change, class... Args>
  void Note(Args&&... args) noexcept {
    static_assert(sizeof(Change) <= kSlotSize && alignof(Change) <= alignof(std::max_align_t));
    static_assert(std::is_nothrow_move_constructible_v<Change>);
    assert(m_size < m_blocks.size() * kBlockSlots);
    ::new (Slot(m_size)) Change(std::forward<Args>(args)...);
    ++m_size;
    ++m_revision;
  }

  bool IsRecording() const { return m_recording; }
  /// Loading a design records nothing; only a journal without history may stop recording.
  void SetRecording(bool recording) { m_recording = recording; }

  void Start(unsigned id);
  /// Closes the innermost level when its identifier is `id`, and keeps its changes; false, and nothing changed, for
  /// any other identifier or without an open level. Only the outermost close makes a step, if anything was noted.
  bool End(unsigned id) noexcept;
  /// Closes the innermost level when its identifier is `id`, and reverts everything noted in it.
  bool Revert(unsigned id) noexcept;
  /// Closes the innermost level, whatever its identifier is, and keeps its changes.
  void EndInnermost() noexcept;
  bool InLevel() const { return !m_levels.empty(); }
  std::size_t LevelCount() const { return m_levels.size(); }
  unsigned Innermost() const { return m_levels.empty() ? 0 : m_levels.back().id; }  // 0: none
  /// Identifiers of the open levels, outermost first.
  std::vector<unsigned> OpenLevels() const;

  /// Ends the step of the changes made outside every level, if there is one, and names the next such step.
  void EndImplicitStep() noexcept;
  /// `name` outlives the journal, as literals do.
  void SetCommand(std::string_view name) noexcept { m_command = name; }
  std::string_view Command() const { return m_command; }

  /// One step back or forward. False, and nothing changed, while a level is open or when there is no such step.
  bool Undo() noexcept;
  bool Redo() noexcept;
  /// Forgets all steps; the present stays, and stays as modified as it was. Refused (false) while a level is open.
  bool Reset();

  /// Forgets everything, open levels included, because the design goes away.
  void Discard() noexcept;

  const std::vector<SStep>& Steps() const { return m_steps; }
  std::size_t DoneSteps() const { return m_done; }
  /// A number that grows with every noted change and whenever changes are taken back or made again, so that two equal
  /// ones mean that nothing has changed in between.
  std::uint64_t Revision() const { return m_revision; }

  /// Whether the present and the last save differ by a step that counts.
  bool IsModified() const;
  /// Whether they differ by any step, ignored ones too: what a file of the last save does not hold.
  bool DiffersFromSave() const;
  void MarkSaved();
  /// Marks the present as differing from every save, as after an import.
  void MarkModified() {
    m_savedReachable = m_savedExists = false;
    m_savedInside = 0;
  }

  /// Zero-terminated list of identifiers whose steps do not mark a design as changed; null for none. The list is
  /// copied; it serves all designs.
  static void SetIgnored(const unsigned* ids);

 private:
  static constexpr std::size_t kBlockSlots = 256;
  struct SLevel {
    unsigned id;
    std::size_t begin;
  };
  struct alignas(std::max_align_t) SBlock {
    std::byte bytes[kBlockSlots * kSlotSize];
  };

  void* Slot(std::size_t at) { return m_blocks[at / kBlockSlots]->bytes + at % kBlockSlots * kSlotSize; }
  CUndoChange& Entry(std::size_t at) { return *std::launder(static_cast<CUndoChange*>(Slot(at))); }
  void Grow();
  void Destroy(std::size_t from, std::size_t to) noexcept;  // latest first
  void RollBackTo(std::size_t begin) noexcept;
  void Commit(unsigned id) noexcept;
  std::size_t DoneEnd() const { return m_done == 0 ? 0 : m_steps[m_done - 1].end; }
  std::size_t Base() const { return m_steps.empty() ? 0 : m_steps.back().end; }
  bool AnyCounts(std::size_t from, std::size_t to) const;
  static bool IsIgnored(unsigned id);

  std::vector<std::unique_ptr<SBlock>> m_blocks;  // kept for reuse
  std::size_t m_size = 0;
  std::uint64_t m_revision = 0;
  std::vector<SStep> m_steps;  // done, then those that can be redone
  std::size_t m_done = 0;
  std::vector<SLevel> m_levels;
  std::string_view m_command;
  std::size_t m_saved = 0;        // done steps at the last save, while that state can be reached
  std::size_t m_savedInside = 0;  // entries at a save in the middle of a level; 0: saved between steps
  bool m_savedReachable = true;   // by steps that do not count, save for them
  bool m_savedExists = true;      // by undo and redo, to the last entry
  bool m_recording = true;
};
