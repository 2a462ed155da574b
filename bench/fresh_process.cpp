// SPDX-License-Identifier: Apache-2.0
#include "bench/fresh_process.h"

#include <algorithm>
#include <fstream>
#include <malloc.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <xercesc/util/PlatformUtils.hpp>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/repository.h"

#include "bench/bare_dom.h"
#include "bench/contest.h"
#include "bench/quiet_managers.h"
#include "platform/filesystem.h"

namespace tarnmf::bench {
namespace {

btkFSList Manifests(const std::filesystem::path& directory) {
  return btkFSList(btkFSEntry(directory.c_str()), "*.tmfx");
}

void Check(BtkErrorT code) {
  if (code != kBtkOk) throw std::runtime_error("the manifests were refused");
}

// A value of /proc/self/status, in bytes.
std::int64_t ProcessBytes(const std::string& key) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    std::int64_t kilobytes = 0;
    if (word == key + ":" && status >> kilobytes) return 1024 * kilobytes;
  }
  throw std::runtime_error("no " + key);
}

// What the process has now.
struct Memory {
  std::int64_t resident = ProcessBytes("VmRSS");
  std::int64_t data = ProcessBytes("RssAnon");  // without code, which is read when first run
  std::int64_t peak = ProcessBytes("VmHWM");
  std::int64_t allocated = [] {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
  }();
};

// Reads a small document of each kind of record, so that nothing is done for the first time later.
template <class Run>
void WarmUp(Run run) {
  const ContestPtr parse = ParseContest(30);
  parse->Prepare();
  run(*parse);
}

}  // namespace

void WriteManifests(const std::filesystem::path& directory, std::int64_t files,
                    const RecordCounts& counts, Detail detail) {
  std::filesystem::create_directories(directory);
  const std::int64_t numbers = std::max({counts.modules, counts.classes, counts.runnables});
  for (std::int64_t i = 0; i < files; ++i) {
    std::ofstream file(directory / (std::to_string(i) + ".tmfx"), std::ios::binary);
    if (!(file << ManifestDocument(counts, i * numbers, detail)).flush())
      throw std::runtime_error("no file could be written");
  }
}

double StartRepository(const std::filesystem::path& directory) {
  const QuietManagers managers;
  const btkFSList manifests = Manifests(directory);
  const double start = Now();
  Check(liMfRepository::Initialize(manifests, nullptr));
  return Now() - start;
}

double StartBareDom(const std::filesystem::path& directory) {
  const btkFSList manifests = Manifests(directory);
  xercesc::XMLPlatformUtils::Initialize();
  const double start = Now();
  for (unsigned i = 0; i < manifests.Count(); ++i)
    ParseBareDom(manifests[i].Path().NarrowText());
  return Now() - start;
}

Growth LoadRecords(const std::filesystem::path& directory) {
  const DisposePtr<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
  const btkFSList manifests = Manifests(directory);
  WarmUp(RunOurs);
  std::optional<MfLdpDataT> data(std::in_place);
  const Memory before;
  Check(loader->Load(&*data, nullptr, manifests));
  const Memory after;
  data.reset();
  return {after.peak - before.resident, after.data - before.data,
          after.allocated - Memory().allocated};
}

Growth LoadBareDom(const std::filesystem::path& directory) {
  const btkFSList manifests = Manifests(directory);
  WarmUp(RunOther);
  const Memory before;
  for (unsigned i = 0; i < manifests.Count(); ++i)
    ParseBareDom(manifests[i].Path().NarrowText());
  return {Memory().peak - before.resident};
}

}  // namespace tarnmf::bench
