// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <mutex>
#include <vector>

#include "platform/runtime.h"

namespace {

struct Cleanup {
  btkCleanupT anchor;
  btkCleanupT callback;
};

struct CleanupRegistry {
  std::mutex mutex;
  std::vector<Cleanup> cleanups;
};

// Never destroyed: libraries report their exit while the process's own objects end.
CleanupRegistry& Registry() {
  static auto* const registry = new CleanupRegistry;
  return *registry;
}

bool TakeLast(btkCleanupT anchor, btkCleanupT& callback) {
  CleanupRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  const auto last = std::find_if(registry.cleanups.rbegin(), registry.cleanups.rend(),
                                 [&](const Cleanup& entry) { return entry.anchor == anchor; });
  if (last == registry.cleanups.rend()) return false;
  callback = last->callback;
  registry.cleanups.erase(std::next(last).base());
  return true;
}

}  // namespace

int btkPushCleanupCbLow(btkCleanupT anchor, btkCleanupT callback, int /*reserved*/) {
  CleanupRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  const bool known = std::any_of(registry.cleanups.begin(), registry.cleanups.end(),
                                 [&](const Cleanup& entry) { return entry.anchor == anchor; });
  registry.cleanups.push_back({anchor, callback});
  return known ? 0 : 1;
}

void btkDlmExitNotify(btkCleanupT anchor) {
  btkCleanupT callback = nullptr;
  while (TakeLast(anchor, callback))
    callback();
}
