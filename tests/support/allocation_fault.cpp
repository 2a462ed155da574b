#include "tests/support/allocation_fault.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include "platform/host/btkhost.h"

namespace {

std::atomic<std::int64_t> g_liveBlocks{0};

// Counts down to the allocation that is to fail; negative: none.
struct Countdown {
  std::atomic<std::int64_t> left{-1};
  std::atomic<bool> hit{false};

  void Set(std::int64_t n) {
    hit = false;
    left = n;
  }
  bool FailsNow() {
    if (left.load(std::memory_order_relaxed) < 0) return false;
    if (left.fetch_sub(1) != 0) return false;
    hit = true;
    return true;
  }
};
Countdown g_nothrowNew;
Countdown g_throwingNew;

void* Allocate(std::size_t size) {
  void* block = std::malloc(size > 0 ? size : 1);
  if (block != nullptr) g_liveBlocks.fetch_add(1, std::memory_order_relaxed);
  return block;
}

void* AllocateOrNull(std::size_t size) {
  return g_nothrowNew.FailsNow() ? nullptr : Allocate(size);
}

void* AllocateOrThrow(std::size_t size) {
  void* block = g_throwingNew.FailsNow() ? nullptr : Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void Free(void* block) {
  if (block == nullptr) return;
  g_liveBlocks.fetch_sub(1, std::memory_order_relaxed);
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return AllocateOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return AllocateOrNull(size);
}
void operator delete(void* block) noexcept {
  Free(block);
}
void operator delete[](void* block) noexcept {
  Free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  Free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  Free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
  Free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
  Free(block);
}

namespace tarnmf::test {

AllocationFault::AllocationFault(Source source, std::int64_t n) : source_(source) {
  if (source == kPlatform) {
    btkHostFailAllocation(n);
  } else {
    g_nothrowNew.Set(n);
  }
}

AllocationFault::~AllocationFault() {
  if (source_ == kPlatform) {
    btkHostFailAllocation(-1);
  } else {
    g_nothrowNew.Set(-1);
  }
}

bool AllocationFault::Hit() const {
  return source_ == kPlatform ? btkHostAllocationFailed() : g_nothrowNew.hit.load();
}

ThrowingNewFault::ThrowingNewFault(std::int64_t n) {
  g_throwingNew.Set(n);
}
ThrowingNewFault::~ThrowingNewFault() {
  g_throwingNew.Set(-1);
}
bool ThrowingNewFault::Hit() const {
  return g_throwingNew.hit;
}

std::int64_t LiveAllocations() {
  return g_liveBlocks + btkHostLiveAllocations();
}

}  // namespace tarnmf::test
