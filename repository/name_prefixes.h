// SPDX-License-Identifier: Apache-2.0
// The prefixes that many names of a sorted array share.
#ifndef REPOSITORY_NAME_PREFIXES_H
#define REPOSITORY_NAME_PREFIXES_H

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tarnmf {

// Names in their order, which must stay where they are.
struct SortedNames {
  const void* owner;
  const char* (*at)(const void* owner, std::int32_t index);
  std::int32_t count;

  const char* operator[](std::int32_t index) const { return at(owner, index); }
};

// A few prefixes, sorted, of which none begins with another one. What follows them tells the names
// apart that have them.
class NamePrefixes {
 public:
  // REQUIRES: there are names.
  void Choose(const SortedNames& names);

  std::int32_t Count() const { return count_; }

  // Names with prefix number N have the place 2 * N + 1; those before, between and after them have the
  // even ones, and no characters after a prefix.
  struct Split {
    std::uint32_t place;
    const char* rest;
  };
  Split SplitOf(const char* name) const {
    std::uint32_t first = 0;
    auto last = static_cast<std::uint32_t>(count_);
    while (first < last) {
      const std::uint32_t middle = (first + last) / 2;
      const Prefix& prefix = prefixes_[middle];
      const int order = std::strncmp(name, prefix.text, prefix.length);
      if (order == 0) return {2 * middle + 1, name + prefix.length};
      if (order < 0) {
        last = middle;
      } else {
        first = middle + 1;
      }
    }
    return {2 * first, ""};
  }

 private:
  static constexpr std::int32_t kMost = 15;
  struct Prefix {
    const char* text;  // not terminated
    std::size_t length;
  };
  struct Range;
  struct Parts;

  static Range RangeOf(const SortedNames& names, std::int32_t first, std::int32_t last);
  static Parts PartsOf(const SortedNames& names, const Range& whole);
  void Choose(const SortedNames& names, Range range, std::int32_t others);

  Prefix prefixes_[kMost] = {{"", 0}};
  std::int32_t count_ = 1;
};

}  // namespace tarnmf

#endif  // REPOSITORY_NAME_PREFIXES_H
