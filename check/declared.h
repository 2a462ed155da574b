// What all load points of a process declare together.
#ifndef CHECK_DECLARED_H
#define CHECK_DECLARED_H

#include <memory>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "check/installation.h"

namespace tarnmf::check {

struct Declared {
  std::unordered_set<std::string> modules;
  std::set<std::string> services;  // the texts of their ids, as IdText makes them
  bool isComplete = true;          // what is not here is nowhere
};

Declared DeclaredBy(const std::vector<std::unique_ptr<LoadPoint>>& loadpoints);

// Whether what is wrong in the manifest may hide modules or services that it declares.
bool MayHideDeclarations(const Manifest& manifest);

// 36 characters in lower case.
std::string IdText(const UniIdT& id);

}  // namespace tarnmf::check

#endif  // CHECK_DECLARED_H
