#include <atomic>
#include <gtest/gtest.h>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/stream_parser.h"

#include "tests/support/documents.h"
#include "tests/support/parse.h"

namespace tarnmf::test {
namespace {

constexpr int kThreads = 6;

template <class Work>
void RunOnThreads(Work work) {
  std::atomic<bool> go{false};
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      while (!go)
        std::this_thread::yield();
      work();
    });
  }
  go = true;
  for (std::thread& thread : threads)
    thread.join();
}

// First in this program, so that the threads meet in the factories' one-time step.
TEST(Threads, MakeTheirFirstParsersAtOnce) {
  std::atomic<int> made{0};
  RunOnThreads([&] {
    const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
    const DisposePtr<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
    if (parser && loader) ++made;
  });
  EXPECT_EQ(made, kThreads);
}

// Modules without an id get a fresh one, whichever thread reads them.
TEST(Threads, GiveDifferentIds) {
  const std::string document = InRoot(WithIds(
      R"(<class id="$1"><clientside multiplicity="perLdp"><module name="n"/></clientside></class>)"));
  std::mutex mutex;
  std::set<std::string> ids;
  RunOnThreads([&] {
    for (int round = 0; round < 50; ++round) {
      MfLdpDataT data;
      ASSERT_EQ(Parse(document, data), kBtkOk);
      const std::lock_guard lock(mutex);
      ids.insert(data.modules[0]->id);
    }
  });
  EXPECT_EQ(ids.size(), static_cast<std::size_t>(kThreads * 50));
}

}  // namespace
}  // namespace tarnmf::test
