// SPDX-License-Identifier: Apache-2.0
#include "platform/memory.h"

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "platform/host/btkhost.h"

namespace {

std::atomic<std::int64_t> g_liveAllocations{0};
std::atomic<std::int64_t> g_untilFailure{-1};  // negative: no failure is wanted
std::atomic<bool> g_failed{false};

bool FailsNow() {
  if (g_untilFailure.load(std::memory_order_relaxed) < 0) return false;
  if (g_untilFailure.fetch_sub(1) != 0) return false;
  g_failed = true;
  return true;
}

// What a block was asked for as, which says how it is released.
enum class BlockKind : std::uint64_t { kArray = 1, kString = 2, kSystem = 3 };

#if defined(BTK_CHECKED_HEAP)

// In front of every block stands its kind, so that a release or resize as another kind is found out
// where it happens.
struct alignas(std::max_align_t) BlockHeader {
  BlockKind kind;
  std::size_t bytes;
};

const char* NameOf(BlockKind kind) {
  switch (kind) {
    case BlockKind::kArray:
      return "an array block (btkReAlloc, btkFree)";
    case BlockKind::kString:
      return "a string (btk_strdup, btkStrReAlloc, btkStrFree)";
    case BlockKind::kSystem:
      return "a system block (btkSysReAlloc, btkSysFree)";
  }
  return "no block of the platform";
}

BlockHeader* HeaderOf(void* block, BlockKind kind) {
  if (block == nullptr) return nullptr;
  BlockHeader* const header = static_cast<BlockHeader*>(block) - 1;
  if (header->kind != kind) {
    std::fprintf(stderr, "btkhost: %s is released or resized as %s\n", NameOf(header->kind),
                 NameOf(kind));
    std::abort();
  }
  return header;
}

void* RawResize(void* block, std::size_t bytes, BlockKind kind) {
  void* const raw = std::realloc(HeaderOf(block, kind), sizeof(BlockHeader) + bytes);
  return raw != nullptr ? new (raw) BlockHeader{kind, bytes} + 1 : nullptr;
}

void RawFree(void* block, BlockKind kind) {
  std::free(HeaderOf(block, kind));
}

#else

// Arrays grow by a few elements at a time. A large block is therefore given the room of its size
// class, an eighth of the next power of two, so that most growths find it already there.
std::size_t RoomFor(std::size_t bytes) {
  constexpr std::size_t kSmall = 1024;
  if (bytes <= kSmall) return bytes;
  std::size_t step = kSmall / 8;
  while (step * 16 < bytes)
    step *= 2;
  const std::size_t room = (bytes + step - 1) / step * step;
  return room < bytes ? bytes : room;
}

void* RawResize(void* block, std::size_t bytes, BlockKind /*kind*/) {
  return std::realloc(block, RoomFor(bytes));
}

void RawFree(void* block, BlockKind /*kind*/) {
  std::free(block);
}

#endif

void* Resize(void* block, std::size_t bytes, BlockKind kind) {
  if (FailsNow()) return nullptr;
  void* const resized = RawResize(block, bytes > 0 ? bytes : 1, kind);
  if (resized != nullptr && block == nullptr) {
    g_liveAllocations.fetch_add(1, std::memory_order_relaxed);
  }
  return resized;
}

void Free(void* block, BlockKind kind) {
  if (block == nullptr) return;
  g_liveAllocations.fetch_sub(1, std::memory_order_relaxed);
  RawFree(block, kind);
}

template <class Char>
Char* Duplicate(const Char* text) {
  if (text == nullptr) return nullptr;
  const std::size_t bytes = (std::char_traits<Char>::length(text) + 1) * sizeof(Char);
  void* const copy = Resize(nullptr, bytes, BlockKind::kString);
  if (copy != nullptr) std::memcpy(copy, text, bytes);
  return static_cast<Char*>(copy);
}

}  // namespace

void* btkReAlloc(void* block, std::size_t bytes) {
  return Resize(block, bytes, BlockKind::kArray);
}
void btkFree(void* block) {
  Free(block, BlockKind::kArray);
}

void* btkSysReAlloc(void* block, std::size_t bytes) {
  return Resize(block, bytes, BlockKind::kSystem);
}
void btkSysFree(void* block) {
  Free(block, BlockKind::kSystem);
}

void* btkStrReAlloc(void* text, std::size_t bytes) {
  return Resize(text, bytes, BlockKind::kString);
}
void btkStrFree(void* text) {
  Free(text, BlockKind::kString);
}

char* btk_strdup(const char* text) {
  return Duplicate(text);
}
btkWChar* btk_wcsdup(const btkWChar* text) {
  return Duplicate(text);
}
void btkHostFailAllocation(std::int64_t n) {
  g_failed = false;
  g_untilFailure = n;
}
bool btkHostAllocationFailed() {
  return g_failed;
}
std::size_t btkHostBlockSize([[maybe_unused]] const void* block) {
#if defined(BTK_CHECKED_HEAP)
  return (static_cast<const BlockHeader*>(block) - 1)->bytes;
#else
  return 0;
#endif
}
std::int64_t btkHostLiveAllocations() {
  return g_liveAllocations;
}
