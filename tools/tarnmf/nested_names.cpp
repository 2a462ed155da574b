// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/nested_names.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <string_view>

#include "tools/tarnmf/manifest_files.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

constexpr const char* kSides[] = {"client", "service", "agent"};
static_assert(std::size(kSides) == kMfSideCount);

bool HasMadeId(const MfModuleT* module) {
  return (module->flags & kMfModuleGeneratedId) != 0;
}

// The places of the modules with ids that were made.
std::unordered_map<std::string_view, std::int32_t> MadeIds(const MfLdpDataT& data) {
  std::unordered_map<std::string_view, std::int32_t> places;
  for (std::int32_t i = 0; i < data.modules.count; ++i) {
    if (HasMadeId(data.modules[i])) places.emplace(data.modules[i]->id, i);
  }
  return places;
}

}  // namespace

void NestedNames::Collect(const MfLdpDataT& data, const std::vector<std::string>& manifests) {
  if (std::none_of(data.modules.begin(), data.modules.end(), HasMadeId)) return;
  // Publishing has put paths in the place of the ids that sides name, so the manifests are read once
  // more: modules come in the same order.
  MfLdpDataT fresh;
  Load(FileList(manifests), BTK_W("."), fresh);
  if (fresh.modules.count != data.modules.count) return;  // a file has changed in between
  const auto places = MadeIds(fresh);
  for (const MfIntfClassT* record : fresh.classes) {
    for (std::int32_t side = 0; side < kMfSideCount; ++side) {
      const char* const id = record->sides[side].moduleref;
      const auto place = id != nullptr ? places.find(id) : places.end();
      if (place == places.end()) continue;
      names_.emplace(
          data.modules[place->second]->id,
          fmt::format("{} side of {}", kSides[side], IdText(record->ids[kMfClientSide])));
    }
  }
}

std::string NestedNames::Shown(const std::string& id) const {
  const auto name = names_.find(id);
  return name != names_.end() ? name->second : id;
}

void NestedNames::Show(Json& json) const {
  if (names_.empty()) return;
  if (json.is_string()) {
    const auto name = names_.find(json.get_ref<const std::string&>());
    if (name != names_.end()) json = name->second;
  } else if (json.is_structured()) {
    for (Json& element : json)
      Show(element);
  }
}

}  // namespace tool
