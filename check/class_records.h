// SPDX-License-Identifier: Apache-2.0
// The class records of a load point as the library leaves them: a record that completes an earlier
// one of the same class has handed its sides over to that.
#ifndef CHECK_CLASS_RECORDS_H
#define CHECK_CLASS_RECORDS_H

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "check/declared.h"
#include "check/installation.h"

namespace tarnmf::check {

struct ClassRecord {
  const Manifest* manifest = nullptr;
  const ClassDeclaration* declaration = nullptr;
  // The first record of the class; null when this is it.
  const ClassRecord* first = nullptr;
  bool completesFirst = false;  // false with a first one: the two exclude each other
  const ClassRecord* completedBy = nullptr;
  // What is wrong inside the element may have changed what it says.
  bool hasErrors = false;
  // By MfSideT; null without a module. Of the record itself, and with all that was handed over.
  std::array<const SideDeclaration*, kMfSideCount> written{};
  std::array<const SideDeclaration*, kMfSideCount> sides{};
  UniIdT serviceId{};  // under which the service side is offered; the null id: under none

  Place At(Span span) const { return {&manifest->source, span}; }
  Span ElementName() const { return manifest->document[declaration->node].name; }
};

// In the order of the library's records, which is that of the manifests.
std::vector<ClassRecord> ClassRecordsOf(const LoadPoint& loadpoint);

// The name that people know a class by: its common name, else its id.
std::string NameOf(const ClassDeclaration& declaration);

}  // namespace tarnmf::check

#endif  // CHECK_CLASS_RECORDS_H
