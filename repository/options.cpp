// SPDX-License-Identifier: Apache-2.0
// The option switches: one table of the process.
#include "tarnmf/options.h"

#include "platform/memory.h"
#include "support/bisect.h"
#include "support/growable_array.h"

namespace {

using tarnmf::BisectResult;

struct Option {
  UniIdT id;
  std::uint32_t value;
};
// Sorted by id, each id once.
using OptionTable = tarnmf::GrowableArray<Option, 2, tarnmf::BorrowsElements, tarnmf::ProcessHeap>;

// Empty from the start, so that switches may be set by whatever runs at load. Never destroyed: what
// still asks after the exit handler finds an empty table.
union ProcessTable {
  constexpr ProcessTable() : options() {}
  ~ProcessTable() {}
  OptionTable options;
};
constinit ProcessTable g_table;

// Its destructor is the exit handler.
struct ReleaseAtExit {
  ~ReleaseAtExit() { g_table.options.Clear(); }
};
const ReleaseAtExit g_releaseAtExit;

BisectResult Search(const UniIdT& id) {
  const OptionTable& options = g_table.options;
  return tarnmf::Bisect(options.Count(), [&](std::int32_t i) {
    // The analyzer does not see that the union's constructor makes the table.
    return btkUniIdCompare(&options[i].id, &id);  // NOLINT(clang-analyzer-core.CallAndMessage)
  });
}

}  // namespace

void btkConfEnableOption(const UniIdT* id, std::uint32_t value) {
  OptionTable& options = g_table.options;
  const BisectResult at = Search(*id);
  if (at.found) {
    options[at.place].value = value;
  } else if (options.ReserveMore(1)) {
    options.InsertReserved(at.place, {*id, value});
  }
}

std::int32_t btkConfIsOptionKnown(const UniIdT* id, std::uint32_t* value) {
  const BisectResult at = Search(*id);
  if (!at.found) return 0;
  *value = g_table.options[at.place].value;
  return 1;
}
