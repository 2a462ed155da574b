#include "platform/memory.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
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

// Arrays grow by a few elements at a time. A large block is therefore given the room of its size
// class, an eighth of the next power of two, so that most growths find it already there.
std::size_t RoomFor(std::size_t bytes) {
#if defined(__SANITIZE_ADDRESS__)
  return bytes;
#else
  constexpr std::size_t kSmall = 1024;
  if (bytes <= kSmall) return bytes;
  std::size_t step = kSmall / 8;
  while (step * 16 < bytes)
    step *= 2;
  const std::size_t room = (bytes + step - 1) / step * step;
  return room < bytes ? bytes : room;
#endif
}

void* Resize(void* block, std::size_t bytes) {
  if (FailsNow()) return nullptr;
  void* const resized = std::realloc(block, RoomFor(bytes > 0 ? bytes : 1));
  if (resized != nullptr && block == nullptr) {
    g_liveAllocations.fetch_add(1, std::memory_order_relaxed);
  }
  return resized;
}

void Free(void* block) {
  if (block == nullptr) return;
  g_liveAllocations.fetch_sub(1, std::memory_order_relaxed);
  std::free(block);
}

template <class Char>
Char* Duplicate(const Char* text) {
  if (text == nullptr) return nullptr;
  const std::size_t bytes = (std::char_traits<Char>::length(text) + 1) * sizeof(Char);
  void* const copy = Resize(nullptr, bytes);
  if (copy != nullptr) std::memcpy(copy, text, bytes);
  return static_cast<Char*>(copy);
}

}  // namespace

void* btkReAlloc(void* block, std::size_t bytes) {
  return Resize(block, bytes);
}
void btkFree(void* block) {
  Free(block);
}
void* btkSysReAlloc(void* block, std::size_t bytes) {
  return Resize(block, bytes);
}
void btkSysFree(void* block) {
  Free(block);
}

char* btk_strdup(const char* text) {
  return Duplicate(text);
}
btkWChar* btk_wcsdup(const btkWChar* text) {
  return Duplicate(text);
}
void btkStrFree(void* text) {
  Free(text);
}

void btkHostFailAllocation(std::int64_t n) {
  g_failed = false;
  g_untilFailure = n;
}
bool btkHostAllocationFailed() {
  return g_failed;
}
std::int64_t btkHostLiveAllocations() {
  return g_liveAllocations;
}
