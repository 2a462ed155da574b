// SPDX-License-Identifier: Apache-2.0
#include "bench/contest.h"

#include <stdexcept>
#include <string>

namespace tarnmf::bench {

ContestPtr MakeContest(std::string_view name, std::int64_t size) {
  if (name == "parse") return ParseContest(size);
  if (name == "publish") return PublishContest(size, false);
  if (name == "publish-scattered") return PublishContest(size, true);
  for (const std::string_view style : {"plain", "prefix", "prefixes"}) {
    if (name == "hits-" + std::string(style)) return LookupContest(style, true, size);
    if (name == "misses-" + std::string(style)) return LookupContest(style, false, size);
  }
  throw std::invalid_argument("no contest " + std::string(name));
}

double RunOurs(Contest& contest) {
  const double start = Now();
  contest.Ours();
  return Now() - start;
}

double RunOther(Contest& contest) {
  const double start = Now();
  contest.Other();
  return Now() - start;
}

}  // namespace tarnmf::bench
