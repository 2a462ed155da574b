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

Countdown& CountdownOf(tarnmf::test::AllocationFault::Source source) {
  return source == tarnmf::test::AllocationFault::kOperatorNew ? g_nothrowNew : g_throwingNew;
}

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

void AllocationFault::Arm() {
  armed_ = true;
  if (source_ == kPlatform) {
    btkHostFailAllocation(n_);
  } else {
    CountdownOf(source_).Set(n_);
  }
}

void AllocationFault::Disarm() {
  hit_ = Hit();
  if (source_ == kPlatform) {
    btkHostFailAllocation(-1);
  } else {
    CountdownOf(source_).Set(-1);
  }
  armed_ = false;
}

bool AllocationFault::Hit() const {
  if (!armed_) return hit_;
  return source_ == kPlatform ? btkHostAllocationFailed() : CountdownOf(source_).hit.load();
}

std::int64_t LiveAllocations() {
  return g_liveBlocks + btkHostLiveAllocations();
}

}  // namespace tarnmf::test
