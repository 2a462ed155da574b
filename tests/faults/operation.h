// SPDX-License-Identifier: Apache-2.0
// The operations of the library whose faults are swept, each with a stage of its own.
#ifndef TESTS_FAULTS_OPERATION_H
#define TESTS_FAULTS_OPERATION_H

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/errors.h"
#include "tests/support/fault.h"

namespace tarnmf::test {

class Operation {
 public:
  Operation() = default;
  Operation(const Operation&) = delete;
  Operation& operator=(const Operation&) = delete;
  virtual ~Operation() = default;

  virtual BtkErrorT Run() = 0;
  // All that can be seen of what Run works on.
  virtual std::string State() const = 0;
  // Of what a failed run has left, when it is not what was there before.
  virtual const char* Remains() const { return "?"; }
  // Tries again after a failed run. What is to be seen then is that of a run without a fault, unless
  // something is there to stay.
  virtual BtkErrorT RunAgain() { return Run(); }
  virtual bool Stays() const { return false; }
};

struct SweptOperation {
  std::string name;
  std::function<std::unique_ptr<Operation>()> make;
  BtkErrorT code = kBtkOk;  // without a fault
  std::vector<Failing> ways = {Failing::kThrow, Failing::kRefuse, Failing::kNoMemory,
                               Failing::kNothrowNew, Failing::kThrowingNew};
};

std::vector<SweptOperation> SweptOperations();

// The functions of the platform that can fail, by their names for the linker.
std::set<std::string>& KnownCalls();

}  // namespace tarnmf::test

#endif  // TESTS_FAULTS_OPERATION_H
