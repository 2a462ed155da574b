// SPDX-License-Identifier: Apache-2.0
// Makes single calls and allocations fail and counts what is allocated.
#ifndef TESTS_SUPPORT_FAULT_H
#define TESTS_SUPPORT_FAULT_H

#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>

#include "platform/errors.h"

namespace tarnmf::test {

struct PlatformException : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A code that only a test gives.
constexpr auto kRefusal = static_cast<BtkErrorT>(77);

// How something fails: every call of the platform can throw, some can refuse, and those that answer
// with a code with any code. The library has to report the failures of the non-throwing operator
// new; the XML library and the standard library allocate with the throwing one.
enum class Failing { kThrow, kRefuse, kNoMemory, kNothrowNew, kThrowingNew };

// While it lives, the n-th (counted from 0) that can fail in this way does so, once.
class Fault {
 public:
  Fault(Failing how, int n);
  Fault(const Fault&) = delete;
  Fault& operator=(const Fault&) = delete;
  ~Fault();

  // What has failed; null while nothing has.
  const char* Hit() const;
};

// Stands in front of every call: throws, or gives the code to refuse with, or nothing.
enum class Refusing { kNever, kOneWay, kByCode };
std::optional<BtkErrorT> BeforeCall(const char* function, Refusing refusing);

// Blocks that are allocated now, by the platform's allocators and by every operator new.
std::int64_t LiveAllocations();

// What is allocated while this lives must not outlive it.
class LeakCheck {
 public:
  LeakCheck() = default;
  LeakCheck(const LeakCheck&) = delete;
  LeakCheck& operator=(const LeakCheck&) = delete;
  ~LeakCheck() { EXPECT_EQ(LiveAllocations(), before_); }

 private:
  const std::int64_t before_ = LiveAllocations();
};

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_FAULT_H
