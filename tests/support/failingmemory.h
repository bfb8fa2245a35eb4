// Memory that runs out when a test wants it to.
#pragma once
#include <cstddef>

/// From now on `left` allocations succeed, and all behind them fail until the object is gone.
class CFailingMemory {
 public:
  explicit CFailingMemory(std::size_t left);
  ~CFailingMemory();
  CFailingMemory(const CFailingMemory&) = delete;
  CFailingMemory& operator=(const CFailingMemory&) = delete;
};
