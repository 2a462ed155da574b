// Makes single allocations fail and counts what is allocated.
#ifndef TESTS_SUPPORT_ALLOCATION_FAULT_H
#define TESTS_SUPPORT_ALLOCATION_FAULT_H

#include <cstdint>

namespace tarnmf::test {

// While it lives, the n-th allocation (counted from 0) fails, once. Counted are the allocations
// whose failure the library has to report: those of the platform's allocators and those of the
// non-throwing operator new, each with its own counter. The XML library and the standard library
// allocate with the throwing operator new and are left alone.
class AllocationFault {
 public:
  enum Source { kPlatform, kOperatorNew };

  AllocationFault(Source source, std::int64_t n);
  AllocationFault(const AllocationFault&) = delete;
  AllocationFault& operator=(const AllocationFault&) = delete;
  ~AllocationFault();

  // True once the allocation has been asked for and has failed.
  bool Hit() const;

 private:
  Source source_;
};

// While it lives, the n-th allocation of the throwing operator new throws std::bad_alloc, once.
class ThrowingNewFault {
 public:
  explicit ThrowingNewFault(std::int64_t n);
  ThrowingNewFault(const ThrowingNewFault&) = delete;
  ThrowingNewFault& operator=(const ThrowingNewFault&) = delete;
  ~ThrowingNewFault();

  bool Hit() const;
};

// Blocks that are allocated now, by the platform's allocators and by every operator new.
std::int64_t LiveAllocations();

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_ALLOCATION_FAULT_H
