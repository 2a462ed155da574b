// SPDX-License-Identifier: Apache-2.0
// Manifest documents of any size.
#ifndef BENCH_DOCUMENTS_H
#define BENCH_DOCUMENTS_H

#include <cstdint>
#include <string>

namespace tarnmf::bench {

struct RecordCounts {
  std::int64_t modules = 0;
  std::int64_t classes = 0;
  std::int64_t runnables = 0;
};

// How much records say.
enum class Detail { kFull, kShort };

// As many of each kind; the first of what cannot be divided is a module, the second a class.
RecordCounts Mixture(std::int64_t records);

// The order in which the records of a kind stand in a document.
enum class Order { kSorted, kRandom };

// Records whose names and ids carry their numbers, which start at `first`. So documents whose numbers
// do not overlap go together. Class N is implemented by module N and, in full detail, hosted by the
// service of runnable N.
std::string ManifestDocument(const RecordCounts& counts, std::int64_t first = 0,
                             Detail detail = Detail::kFull, Order order = Order::kSorted);

}  // namespace tarnmf::bench

#endif  // BENCH_DOCUMENTS_H
