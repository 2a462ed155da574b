// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/connection.h"

#include <atomic>
#include <gtest/gtest.h>
#include <sstream>

namespace tool::lsp {
namespace {

class FlushCounter : public std::stringbuf {
 public:
  int Flushes() const { return flushes_; }

 protected:
  int sync() override {
    ++flushes_;
    return 0;
  }

 private:
  std::atomic<int> flushes_ = 0;
};

// Standard input flushes standard output wherever it waits. On the reading thread that would send what
// the other one is just writing, and again when that has finished.
TEST(Connection, ReadsWithoutFlushing) {
  FlushCounter buffer;
  std::ostream out(&buffer);
  std::istringstream in("Content-Length: 2\r\n\r\n{}");
  in.tie(&out);
  Connection connection(in, out);
  EXPECT_EQ(connection.Next({})->kind, Incoming::Kind::kMessage);
  EXPECT_EQ(connection.Next({})->kind, Incoming::Kind::kEnd);
  EXPECT_EQ(buffer.Flushes(), 0);
  connection.Send("text");
  EXPECT_EQ(buffer.Flushes(), 1);
  EXPECT_EQ(buffer.str(), "Content-Length: 6\r\n\r\n\"text\"");
}

}  // namespace
}  // namespace tool::lsp
