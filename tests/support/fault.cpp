// SPDX-License-Identifier: Apache-2.0
#include "tests/support/fault.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include "platform/host/btkhost.h"

namespace {

using tarnmf::test::Failing;

std::atomic<std::int64_t> g_liveBlocks{0};

// The fault that is to come. Faults are for one thread alone, the others only look at `armed`.
std::atomic<bool> g_armed{false};
Failing g_how = Failing::kThrow;
int g_left = 0;
const char* g_hit = nullptr;

bool FailsNow(const char* what) {
  if (g_left-- != 0) return false;
  g_armed = false;
  g_hit = what;
  return true;
}

bool FailsNow(Failing how) {
  return g_armed.load(std::memory_order_relaxed) && g_how == how && FailsNow("new");
}

void* Allocate(std::size_t size) {
  void* block = std::malloc(size > 0 ? size : 1);
  if (block != nullptr) g_liveBlocks.fetch_add(1, std::memory_order_relaxed);
  return block;
}

void* AllocateOrNull(std::size_t size) {
  return FailsNow(Failing::kNothrowNew) ? nullptr : Allocate(size);
}

void* AllocateOrThrow(std::size_t size) {
  void* block = FailsNow(Failing::kThrowingNew) ? nullptr : Allocate(size);
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

Fault::Fault(Failing how, int n) {
  g_how = how;
  g_left = n;
  g_hit = nullptr;
  g_armed = true;
}
Fault::~Fault() {
  g_armed = false;
}
const char* Fault::Hit() const {
  return g_hit;
}

std::optional<BtkErrorT> BeforeCall(const char* function, Refusing refusing) {
  const bool canFail = g_how == Failing::kThrow ||
                       (g_how == Failing::kRefuse && refusing != Refusing::kNever) ||
                       (g_how == Failing::kNoMemory && refusing == Refusing::kByCode);
  if (!g_armed || !canFail || !FailsNow(function)) return std::nullopt;
  if (g_how == Failing::kThrow) throw PlatformException(function);
  return g_how == Failing::kRefuse ? kRefusal : kBtkNoMemory;
}

std::int64_t LiveAllocations() {
  return g_liveBlocks + btkHostLiveAllocations();
}

}  // namespace tarnmf::test
