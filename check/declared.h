// SPDX-License-Identifier: Apache-2.0
// What all load points of a process declare together.
#ifndef CHECK_DECLARED_H
#define CHECK_DECLARED_H

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "check/installation.h"

namespace tarnmf::check {

// The manifest's errors, to be asked whether an element holds one.
class ErrorPlaces {
 public:
  explicit ErrorPlaces(const Manifest& manifest);
  bool AreIn(Span span) const;

 private:
  std::vector<std::size_t> begins_;  // sorted
  const std::size_t trustedEnd_;     // what goes on after it holds the fault of the document
};

struct Declared {
  std::unordered_set<std::string> modules;
  std::set<std::string> services;  // the texts of their ids, as IdText makes them
  bool knowsModules = true;        // those that are not here are nowhere
  bool knowsServices = true;
};

Declared DeclaredBy(const std::vector<std::unique_ptr<LoadPoint>>& loadpoints);

// Whether the start tag of an element is read. One that reaches up to a fault of the document, or
// stands after it, is not.
bool IsRead(const Manifest& manifest, NodeId element);

// Whether what is wrong in the manifest may hide modules, or services, that it declares.
bool MayHideModules(const Manifest& manifest);
bool MayHideServices(const Manifest& manifest);

// 36 characters in lower case.
std::string IdText(const UniIdT& id);

}  // namespace tarnmf::check

#endif  // CHECK_DECLARED_H
