// SPDX-License-Identifier: Apache-2.0
// What can be measured once in a process, and files to measure it with.
#ifndef BENCH_FRESH_PROCESS_H
#define BENCH_FRESH_PROCESS_H

#include <filesystem>

#include "bench/documents.h"

namespace tarnmf::bench {

// Writes `files` manifests with so many records each into a directory of their own.
void WriteManifests(const std::filesystem::path& directory, std::int64_t files,
                    const RecordCounts& counts, Detail detail);

// Seconds for the manifests of a directory, read, published and filed by Initialize with managers
// that answer at once / parsed by the bare DOM parser.
double StartRepository(const std::filesystem::path& directory);
double StartBareDom(const std::filesystem::path& directory);

// Bytes of the process, more than before.
struct Growth {
  std::int64_t peak = 0;     // while the manifests of a directory were read
  std::int64_t stays = 0;    // afterwards, with the records
  std::int64_t records = 0;  // that the records themselves have been given by the allocator
};
Growth LoadRecords(const std::filesystem::path& directory);
// The peak alone; no two documents are held at once.
Growth LoadBareDom(const std::filesystem::path& directory);

}  // namespace tarnmf::bench

#endif  // BENCH_FRESH_PROCESS_H
