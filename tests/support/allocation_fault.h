// Makes single allocations fail and counts what is allocated.
#ifndef TESTS_SUPPORT_ALLOCATION_FAULT_H
#define TESTS_SUPPORT_ALLOCATION_FAULT_H

#include <cstdint>
#include <gtest/gtest.h>
#include <string>

namespace tarnmf::test {

// The n-th allocation (counted from 0) after Arm fails, once. The library has to report the failures
// of the platform's allocators and of the non-throwing operator new; the XML library and the
// standard library allocate with the throwing one, which then throws std::bad_alloc. Each source has
// a counter of its own.
class AllocationFault {
 public:
  enum Source { kPlatform, kOperatorNew, kThrowingNew };

  AllocationFault(Source source, std::int64_t n) : source_(source), n_(n) {}
  AllocationFault(const AllocationFault&) = delete;
  AllocationFault& operator=(const AllocationFault&) = delete;
  ~AllocationFault() { Disarm(); }

  void Arm();
  void Disarm();

  // True once the allocation has been asked for and has failed.
  bool Hit() const;

 private:
  Source source_;
  std::int64_t n_;
  bool armed_ = false;
  bool hit_ = false;
};

// What has to be reported by a code.
inline constexpr AllocationFault::Source kReportedSources[] = {AllocationFault::kPlatform,
                                                               AllocationFault::kOperatorNew};

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

// Calls work(fault) with a fault of the first allocation, the second, ..., until one is not asked
// for any more; work sets the stage, arms the fault, and does and checks what is to be tested.
// Nothing that a call of work allocates may outlive it. Returns how many allocations have failed.
template <class Work>
int SweepAllocations(AllocationFault::Source source, Work work) {
  for (int n = 0;; ++n) {
    SCOPED_TRACE("allocation " + std::to_string(n));
    AllocationFault fault(source, n);
    const std::int64_t before = LiveAllocations();
    work(fault);
    fault.Disarm();
    EXPECT_EQ(LiveAllocations(), before);
    if (!fault.Hit() || testing::Test::HasFatalFailure()) return n;
  }
}

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_ALLOCATION_FAULT_H
