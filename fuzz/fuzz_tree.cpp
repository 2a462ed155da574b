// SPDX-License-Identifier: Apache-2.0
// Parses one input as a manifest document twice: into the tree that the readers walk, and into the
// XML library's DOM. Both have to come to the same.
#include "fuzz/harness.h"
#include "tests/xml/dom_oracle.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string document = tarnmf::fuzz::TextOf(bytes, size);
  const std::size_t readLimit = 1 + size % 97;
  tarnmf::fuzz::Require(tarnmf::test::Outcome(document, readLimit) ==
                        tarnmf::test::OutcomeByDom(document, readLimit));
  return 0;
}
