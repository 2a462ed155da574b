// SPDX-License-Identifier: Apache-2.0
// Checks an installation as a whole: an input is its layout file up to the first "<", and then its
// manifest. Whatever it is, check and the library agree on whether it is refused.
#include <algorithm>
#include <string>

#include "check/check.h"
#include "fuzz/harness.h"
#include "tests/support/temp_directory.h"

using tarnmf::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const tarnmf::test::TempDirectory directory;
  const std::string input = tarnmf::fuzz::TextOf(bytes, size);
  const std::size_t end = std::min(input.find('<'), input.size());
  directory.Write("pack/.installed", input.substr(0, end));
  directory.Write("pack/input.tmfx", input.substr(end));

  tarnmf::check::DiskFiles files;
  const tarnmf::check::Report report = tarnmf::check::Check({"", {directory.At("pack")}}, files);
  for (const tarnmf::check::Finding& finding : report.findings) {
    const tarnmf::check::Place& place = finding.place;
    Require(finding.rule != tarnmf::check::Rule::kLibraryDisagrees);
    Require(place.span.begin <= place.span.end && place.span.end <= place.source->Text().size());
  }
  return 0;
}
