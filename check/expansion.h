// SPDX-License-Identifier: Apache-2.0
// What references to entities come to, without following them.
#ifndef CHECK_EXPANSION_H
#define CHECK_EXPANSION_H

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "check/judge.h"

namespace tarnmf::check {

class Expansion {
 public:
  explicit Expansion(const std::vector<Entity>& entities);

  // The bytes that a reference to the entity is replaced by; 0 for one that is not declared here.
  std::uint64_t SizeOf(std::string_view entity) const;
  // The most entities that refer to each other in a row.
  std::uint32_t Depth() const { return depth_; }
  // The bytes that all references in the text come to.
  std::uint64_t SizeOfReferences(std::string_view text) const;

 private:
  struct Measure {
    std::string_view value;
    std::size_t at = 0;  // how far the value has been measured
    std::uint64_t size = 0;
    std::uint32_t depth = 1;
    enum { kNew, kOpen, kDone } state = kNew;

    void Add(const Measure& referred);
  };

  void MeasureFrom(Measure& start);

  std::unordered_map<std::string_view, Measure> measures_;
  std::uint32_t depth_ = 0;
};

}  // namespace tarnmf::check

#endif  // CHECK_EXPANSION_H
