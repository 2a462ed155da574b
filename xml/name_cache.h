// SPDX-License-Identifier: Apache-2.0
// Names of elements and attributes, folded to lower case once a document.
#ifndef XML_NAME_CACHE_H
#define XML_NAME_CACHE_H

#include <array>

#include "xml/arena.h"
#include "xml/tree.h"

namespace tarnmf {

// One slot for each of a few hash values: a name that finds another one in its slot takes its place
// and is folded anew when it is met again, so no set of names makes a look-up long.
class NameCache {
 public:
  // Its texts lie in `arena`.
  explicit NameCache(Arena& arena) : arena_(arena) {}

  NodeName Get(const btkWChar* written);

 private:
  static constexpr std::size_t kLongest = 31;  // more than any known name has
  static constexpr std::size_t kSlots = 128;

  struct Entry {
    std::size_t length;
    btkWChar written[kLongest];
    char folded[kLongest + 1];
  };

  Entry* Fold(const btkWChar* written, std::size_t length);

  Arena& arena_;
  std::array<Entry*, kSlots> slots_{};
};

}  // namespace tarnmf

#endif  // XML_NAME_CACHE_H
