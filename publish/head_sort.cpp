// SPDX-License-Identifier: Apache-2.0
#include "publish/head_sort.h"

#include <algorithm>
#include <span>
#include <utility>

namespace tarnmf {
namespace {

constexpr int kHeadBytes = sizeof(std::uint64_t);
constexpr int kByteValues = 256;

std::uint8_t ByteOf(const KeyHead& entry, int byte) {
  return static_cast<std::uint8_t>(entry.head >> 8 * byte);
}

bool IsBefore(const KeyHead& left, const KeyHead& right) {
  return left.head != right.head ? left.head < right.head : left.position < right.position;
}

// Where the entries with each value of a byte start in the order of that byte.
struct Starts {
  Starts(std::span<const KeyHead> entries, int byte) {
    for (const KeyHead& entry : entries)
      ++at[ByteOf(entry, byte) + 1];
    for (int value = 0; value < kByteValues; ++value)
      at[value + 1] += at[value];
  }
  std::int32_t at[kByteValues + 1] = {};
};

// From the last byte to the first. Bytes that are the same in all heads change nothing.
void SortByBytes(KeyHeads& entries, KeyHeads& scratch) {
  const auto count = static_cast<std::size_t>(entries.Count());
  std::span<KeyHead> from(entries.begin(), count);
  std::span<KeyHead> to(scratch.begin(), count);
  std::uint64_t differences = 0;
  for (const KeyHead& entry : entries)
    differences |= entry.head ^ entries[0].head;
  for (int byte = 0; byte < kHeadBytes; ++byte) {
    if ((differences >> 8 * byte & 0xFF) == 0) continue;
    Starts starts(from, byte);
    for (const KeyHead& entry : from)
      to[static_cast<std::size_t>(starts.at[ByteOf(entry, byte)]++)] = entry;
    std::swap(from, to);
  }
  if (from.data() != entries.begin()) std::copy(from.begin(), from.end(), entries.begin());
}

}  // namespace

bool SortByHead(KeyHeads& entries) {
  constexpr std::int32_t kFew = 1000;
  if (std::is_sorted(entries.begin(), entries.end(), IsBefore)) return true;
  if (entries.Count() < kFew) {
    std::sort(entries.begin(), entries.end(), IsBefore);
    return true;
  }
  KeyHeads scratch;
  if (!scratch.Reserve(entries.Count())) return false;
  SortByBytes(entries, scratch);
  return true;
}

}  // namespace tarnmf
