// SPDX-License-Identifier: Apache-2.0
#include "check/expansion.h"

#include <algorithm>

#include "check/characters.h"

namespace tarnmf::check {
namespace {

constexpr std::uint64_t kMost = std::uint64_t{1} << 50U;

// The name in the next reference to an entity from `at` on, which is moved past it; empty when there
// is none.
std::string_view NextReference(std::string_view text, std::size_t& at) {
  while ((at = text.find('&', at)) != std::string_view::npos) {
    const std::size_t begin = ++at;
    while (at < text.size() && IsOfName(text[at]))
      ++at;
    if (at > begin && at < text.size() && text[at] == ';') return text.substr(begin, at++ - begin);
  }
  return {};
}

}  // namespace

void Expansion::Measure::Add(const Measure& referred) {
  size = std::min(kMost, size + referred.size);
  depth = std::max(depth, referred.depth + 1);
}

Expansion::Expansion(const std::vector<Entity>& entities) {
  for (const Entity& entity : entities) {
    if (entity.isParameter || entity.isExternal) continue;
    Measure measure;
    measure.value = entity.value;
    measure.size = entity.value.size();
    measures_.emplace(entity.name, measure);
  }
  for (auto& [name, measure] : measures_) {
    MeasureFrom(measure);
    depth_ = std::max(depth_, measure.depth);
  }
}

// Entities may refer to each other many thousands deep.
void Expansion::MeasureFrom(Measure& start) {
  if (start.state != Measure::kNew) return;
  std::vector<Measure*> open{&start};
  while (!open.empty()) {
    Measure& measure = *open.back();
    measure.state = Measure::kOpen;
    const std::string_view name = NextReference(measure.value, measure.at);
    if (name.empty()) {
      measure.state = Measure::kDone;
      open.pop_back();
      if (open.empty()) return;
      open.back()->Add(measure);
      continue;
    }
    const auto found = measures_.find(name);
    if (found == measures_.end() || found->second.state == Measure::kOpen) continue;
    // What the entity is replaced by comes in place of the reference.
    measure.size -= name.size() + 2;
    if (found->second.state == Measure::kNew) {
      open.push_back(&found->second);
    } else {
      measure.Add(found->second);
    }
  }
}

std::uint64_t Expansion::SizeOf(std::string_view entity) const {
  const auto found = measures_.find(entity);
  return found != measures_.end() ? found->second.size : 0;
}

std::uint64_t Expansion::SizeOfReferences(std::string_view text) const {
  if (measures_.empty()) return 0;
  std::uint64_t size = 0;
  std::size_t at = 0;
  for (std::string_view name; !(name = NextReference(text, at)).empty();)
    size = std::min(kMost, size + SizeOf(name));
  return size;
}

}  // namespace tarnmf::check
