// SPDX-License-Identifier: Apache-2.0
// Measures the library next to what it is compared with and prints plain figures, which scripts/bench
// makes a table of:
//   tarnmf_bench pairs CONTEST SIZE SECONDS           seconds of ours and the other, a pair a line
//   tarnmf_bench runs CONTEST SIZE ours|other COUNT   seconds of each run
//   tarnmf_bench write DIRECTORY FILES MODULES CLASSES RUNNABLES full|short
//   tarnmf_bench start DIRECTORY ours|other           seconds of a start-up
//   tarnmf_bench memory DIRECTORY ours|other          bytes: peak, what stays, what records take
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/contest.h"
#include "bench/fresh_process.h"

namespace {

using namespace tarnmf::bench;

#if !defined(__OPTIMIZE__)
#error "Figures of a build without optimisation mean nothing."
#endif

constexpr int kFewestPairs = 9;

bool IsOurs(const std::string& side) {
  if (side != "ours" && side != "other") throw std::invalid_argument("no side " + side);
  return side == "ours";
}

Detail DetailOf(const std::string& detail) {
  if (detail != "full" && detail != "short") throw std::invalid_argument("no detail " + detail);
  return detail == "full" ? Detail::kFull : Detail::kShort;
}

// The sides take turns, so that whatever slows the machine slows both. The first pair is not told:
// it does much for the first time.
void PrintPairs(Contest& contest, double seconds) {
  const double start = Now();
  for (int pair = 0; pair <= kFewestPairs || Now() - start < seconds; ++pair) {
    contest.Prepare();
    const double ours = RunOurs(contest);
    contest.Prepare();
    const double other = RunOther(contest);
    if (pair > 0) std::printf("%.9f %.9f\n", ours, other);
  }
}

void PrintRuns(Contest& contest, bool isOurs, int count) {
  for (int run = 0; run < count; ++run) {
    contest.Prepare();
    std::printf("%.9f\n", isOurs ? RunOurs(contest) : RunOther(contest));
  }
}

void PrintGrowth(const Growth& growth) {
  std::printf("%lld %lld %lld\n", static_cast<long long>(growth.peak),
              static_cast<long long>(growth.stays), static_cast<long long>(growth.records));
}

void Run(const std::vector<std::string>& words) {
  const std::string& command = words.at(0);
  if (command == "pairs") {
    PrintPairs(*MakeContest(words.at(1), std::stoll(words.at(2))), std::stod(words.at(3)));
  } else if (command == "runs") {
    PrintRuns(*MakeContest(words.at(1), std::stoll(words.at(2))), IsOurs(words.at(3)),
              std::stoi(words.at(4)));
  } else if (command == "write") {
    WriteManifests(words.at(1), std::stoll(words.at(2)),
                   {std::stoll(words.at(3)), std::stoll(words.at(4)), std::stoll(words.at(5))},
                   DetailOf(words.at(6)));
  } else if (command == "start") {
    std::printf("%.9f\n", IsOurs(words.at(2)) ? StartRepository(words[1]) : StartBareDom(words[1]));
  } else if (command == "memory") {
    PrintGrowth(IsOurs(words.at(2)) ? LoadRecords(words[1]) : LoadBareDom(words[1]));
  } else {
    throw std::invalid_argument("no command " + command);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Run({argv + 1, argv + argc});
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "tarnmf_bench: %s\n", e.what());
    return 1;
  }
}
