// SPDX-License-Identifier: Apache-2.0
// Scans an installation: an input is its layout file up to the first "<", and then its manifest, if any.
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "fuzz/harness.h"
#include "repository/scan.h"
#include "tests/support/temp_directory.h"

using tarnmf::fuzz::Require;

namespace {

// Every exposed service is found, and they come in ascending order.
void CheckServices(liMfRepository& repository) {
  std::vector<MfSvcResolveT> entries(
      static_cast<std::size_t>(repository.GetServiceEntries(nullptr, 0)));
  const auto count = static_cast<std::int32_t>(entries.size());
  Require(repository.GetServiceEntries(entries.data(), count) == count);
  const UniIdT* last = nullptr;
  for (const MfSvcResolveT& entry : entries) {
    const UniIdT* const id = &entry.ids[kMfCombinedId];
    Require(last == nullptr || btkUniIdCompare(last, id) < 0);
    Require(repository.FindServiceEntry(id) != nullptr);
    last = id;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const tarnmf::test::TempDirectory directory;
  static const btkFSPath installation(directory.At("installation").c_str());
  const std::string input = tarnmf::fuzz::TextOf(bytes, size);
  const std::size_t end = std::min(input.find('<'), input.size());
  directory.Write("installation/.installed", input.substr(0, end));
  const std::string manifest = directory.Write("installation/input.tmfx", input.substr(end));
  if (end == input.size()) std::filesystem::remove(manifest);

  const tarnmf::fuzz::FreshManagers managers;
  const tarnmf::RepositoryPtr repository(new tarnmf::liMfRepoBaseImpl);
  const auto scan = [&] {
    return tarnmf::ScanLoadpoint(*repository, installation.WideText(), btkFSList(0));
  };
  const BtkErrorT result = tarnmf::fuzz::WithoutXmlExceptions(scan);
  const bool filed = repository->GetLoadpointIds(nullptr, 0) == 1;
  Require(result != kBtkOk || filed);
  if (filed) Require(scan() == kBtkDuplicate);
  CheckServices(*repository);
  return 0;
}
