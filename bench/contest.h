// SPDX-License-Identifier: Apache-2.0
// Two ways to the same result, which are measured next to each other.
#ifndef BENCH_CONTEST_H
#define BENCH_CONTEST_H

#include <cstdint>
#include <ctime>
#include <memory>
#include <string_view>

namespace tarnmf::bench {

class Contest {
 public:
  virtual ~Contest() = default;
  // Makes what the next run of either side needs and its time must not hold.
  virtual void Prepare() {}
  virtual void Ours() = 0;
  virtual void Other() = 0;
};
using ContestPtr = std::unique_ptr<Contest>;

// Parse with the destruction of the records / a bare DOM parse, on a document of `size` records.
ContestPtr ParseContest(std::int64_t size);
// Add and Publish of `size` records of a document in random order / in sorted order; `scattered`: those
// in random order lie anywhere in memory.
ContestPtr PublishContest(std::int64_t size, bool scattered);
// FindClassImpl / a std::map on `size` names; `names` is "plain", "prefix" or "prefixes".
ContestPtr LookupContest(std::string_view names, bool filed, std::int64_t size);

// By the name that the command line gives it; throws when there is none.
ContestPtr MakeContest(std::string_view name, std::int64_t size);

// In seconds of processor time, which a busy machine distorts less than it does the time of day.
inline double Now() {
  timespec now;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// Seconds of one run. Instructions are counted inside these two functions, which are found by name.
double RunOurs(Contest& contest);
double RunOther(Contest& contest);

}  // namespace tarnmf::bench

#endif  // BENCH_CONTEST_H
