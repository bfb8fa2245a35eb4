#include "support/failingmemory.h"

#include <cstdlib>
#include <new>

namespace {
thread_local bool theFails = false;
thread_local std::size_t theLeft = 0;
}  // namespace

CFailingMemory::CFailingMemory(std::size_t left) {
  theLeft = left;
  theFails = true;
}
CFailingMemory::~CFailingMemory() { theFails = false; }

void* operator new(std::size_t size) {
  if (theFails && theLeft == 0) throw std::bad_alloc();
  if (theFails) --theLeft;
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  const bool fails = theFails && theLeft == 0;
  if (theFails && !fails) --theLeft;
  return fails ? nullptr : std::malloc(size == 0 ? 1 : size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
