// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/documents.h"
#include "tests/support/parse.h"

namespace tarnmf::test {
namespace {

// A process and its fork go on from the same memory, but not with the same ids.
TEST(NestedModule, IsGivenAFreshIdInForkedProcesses) {
  const auto freshId = [] {
    MfLdpDataT data;
    const BtkErrorT e = Parse(InRoot(WithIds("<class id=\"$1\"><clientside multiplicity=\"perLdp\">"
                                             "<module name=\"n\"/></clientside></class>")),
                              data);
    return e == kBtkOk ? std::string(data.modules[0]->id) : std::string();
  };
  const std::string first = freshId();
  int pipeEnds[2];
  ASSERT_EQ(pipe(pipeEnds), 0);
  const pid_t child = fork();
  if (child == 0) {
    const std::string id = freshId();
    _exit(write(pipeEnds[1], id.data(), id.size()) == 32 ? 0 : 1);
  }
  ASSERT_GT(child, 0);
  int status = -1;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  std::string ofChild(32, '\0');
  EXPECT_EQ(read(pipeEnds[0], ofChild.data(), ofChild.size()), 32);
  close(pipeEnds[0]);
  close(pipeEnds[1]);
  EXPECT_NE(freshId(), ofChild);
  EXPECT_NE(first, ofChild);
}

}  // namespace
}  // namespace tarnmf::test
