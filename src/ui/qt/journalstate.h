// How far a journal has come, for what is shown to know whether the design has changed since.
#pragma once
#include "model/design/journal.h"

struct SJournalState {
  std::size_t done = 0, steps = 0, entries = 0;
  SJournalState() = default;
  explicit SJournalState(const CUndoJournal& journal)
      : done(journal.DoneSteps()), steps(journal.Steps().size()), entries(journal.EntryCount()) {}
  bool operator==(const SJournalState&) const = default;
};
