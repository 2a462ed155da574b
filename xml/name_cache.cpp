// SPDX-License-Identifier: Apache-2.0
#include "xml/name_cache.h"

#include <algorithm>
#include <cstring>

#include "platform/text.h"

namespace tarnmf {

NodeName NameCache::Get(const btkWChar* written) {
  std::size_t length = 0;
  std::size_t hash = 0;
  btkWChar all = 0;
  for (; written[length] != 0 && length <= kLongest; ++length) {
    hash = hash * 31 + written[length];
    all = static_cast<btkWChar>(all | written[length]);
  }
  if (length > kLongest || all >= 0x80) {
    return {nullptr, arena_.CopyText(written)};
  }
  Entry*& entry = slots_[hash % kSlots];
  const bool known = entry != nullptr && entry->length == length &&
                     std::memcmp(entry->written, written, length * sizeof(btkWChar)) == 0;
  if (!known) entry = Fold(written, length);
  return {entry->folded, nullptr};
}

NameCache::Entry* NameCache::Fold(const btkWChar* written, std::size_t length) {
  auto* const entry = new (arena_.Allocate(sizeof(Entry))) Entry{length, {}, {}};
  std::copy_n(written, length, entry->written);
  std::transform(written, written + length, entry->folded,
                 [](btkWChar unit) { return static_cast<char>(btkAsciiToLower(unit)); });
  return entry;
}

}  // namespace tarnmf
