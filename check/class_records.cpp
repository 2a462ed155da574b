// SPDX-License-Identifier: Apache-2.0
#include "check/class_records.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "check/declared.h"

namespace tarnmf::check {
namespace {

using IdBytes = std::array<std::uint8_t, sizeof(UniIdT)>;

// One record brings the client side, the other one the service side; the agent side may come with
// either of them.
bool Completes(const ClassRecord& record, const ClassRecord& first) {
  const auto has = [](const ClassRecord& which, MfSideT side) {
    return which.sides[static_cast<std::size_t>(side)] != nullptr;
  };
  const bool hasClient = has(first, kMfClientSide);
  const bool hasService = has(first, kMfServiceSide);
  return hasClient != hasService && has(record, kMfClientSide) == hasService &&
         has(record, kMfServiceSide) == hasClient &&
         !(has(first, kMfAgentSide) && has(record, kMfAgentSide));
}

void HandOver(ClassRecord& record, ClassRecord& first) {
  for (std::size_t side = 0; side < record.sides.size(); ++side) {
    if (record.sides[side] == nullptr) continue;
    if (side == kMfServiceSide) first.serviceId = record.serviceId;
    first.sides[side] = std::exchange(record.sides[side], nullptr);
  }
}

ClassRecord RecordOf(const Manifest& manifest, const ClassDeclaration& declaration,
                     const ErrorPlaces& errors) {
  ClassRecord record;
  record.manifest = &manifest;
  record.declaration = &declaration;
  record.hasErrors = errors.AreIn(manifest.document[declaration.node].span);
  for (std::size_t side = 0; side < record.written.size(); ++side) {
    if (declaration.sides[side].HasModule()) record.written[side] = &declaration.sides[side];
  }
  record.sides = record.written;
  if (declaration.svcid) record.serviceId = declaration.svcid->id;
  return record;
}

}  // namespace

std::vector<ClassRecord> ClassRecordsOf(const LoadPoint& loadpoint) {
  std::size_t count = 0;
  for (const auto& manifest : loadpoint.manifests)
    count += manifest->declarations.classes.size();
  std::vector<ClassRecord> records;
  records.reserve(count);  // so that they stay where they are
  std::map<IdBytes, ClassRecord*> firsts;
  for (const auto& manifest : loadpoint.manifests) {
    const ErrorPlaces errors(*manifest);
    for (const ClassDeclaration& declaration : manifest->declarations.classes) {
      if (!IsRead(*manifest, declaration.node)) continue;
      ClassRecord& record = records.emplace_back(RecordOf(*manifest, declaration, errors));
      if (!declaration.id) continue;
      const auto [place, isFirst] =
          firsts.try_emplace(std::to_array(declaration.id->id.bytes), &record);
      if (isFirst) continue;
      record.first = place->second;
      record.completesFirst = Completes(record, *place->second);
      if (!record.completesFirst) continue;
      HandOver(record, *place->second);
      place->second->completedBy = &record;
    }
  }
  return records;
}

std::string NameOf(const ClassDeclaration& declaration) {
  if (declaration.commonname) return declaration.commonname->text;
  return declaration.id ? IdText(declaration.id->id) : "";
}

}  // namespace tarnmf::check
