#include <atomic>
#include <thread>
#include <vector>

#include "tarnmf/ldp_loader.h"

#include "support/everything.h"
#include "xml/parse.h"

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
    const DisposePtrT<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
    const DisposePtrT<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
    if (parser && loader) ++made;
  });
  EXPECT_EQ(made, kThreads);
}

TEST(Threads, ParseIntoContainersOfTheirOwn) {
  const DisposePtrT<liMfStmParser> shared(liMfStmParser::CreateNew(nullptr));
  // The id of the nested module is fresh in every parse.
  const auto count = [](const MfLdpDataT& data) {
    return data.modules.count * 100 + data.classes.count * 10 + data.runnables.count;
  };
  std::atomic<int> right{0};
  RunOnThreads([&] {
    for (int round = 0; round < 20; ++round) {
      MfLdpDataT data;
      MemoryStream stream(kEverything);
      if (shared->Parse(&data, &stream) == kBtkOk && count(data) == 521) ++right;
      MemoryStream broken(InRoot("<x/>"));
      if (shared->Parse(&data, &broken) == kBtkUnexpected && IsEmpty(data)) ++right;
    }
  });
  EXPECT_EQ(right, kThreads * 40);
}

}  // namespace
}  // namespace tarnmf::test
