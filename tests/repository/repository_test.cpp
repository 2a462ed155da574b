// The repository as a process uses it: one instance, load points added to it; and the options.
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <utility>

#include "tarnmf/options.h"

#include "platform/unique_id.h"
#include "repository/repo_base_impl.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/generated_manifest.h"
#include "tests/support/quiet_managers.h"
#include "tests/support/temp_directory.h"

namespace tarnmf {
namespace {

using test::AllocationFault;

class RepositoryTest : public testing::Test {
 protected:
  ~RepositoryTest() override { Discard(); }
  // Takes the process's repository away, so that there is none.
  static void Discard() { RepositoryPtr(std::exchange(g_repository, nullptr)); }

  std::int32_t LoadpointCount() { return liMfRepository::Instance()->GetLoadpointIds(nullptr, 0); }

  test::TempDirectory root_;
  test::QuietManagers managers_;
};

TEST_F(RepositoryTest, IsMadeOnce) {
  btkFSList broken(0);
  broken.Append(btkFSEntry("/nowhere/a.tmfx"));
  const btkFSList none(0);
  EXPECT_EQ(liMfRepository::Instance(), nullptr);
  EXPECT_EQ(liMfRepository::Initialize(broken, nullptr), kBtkMissing);
  EXPECT_EQ(liMfRepository::Instance(), nullptr);
  EXPECT_EQ(liMfRepository::Initialize(none, BTK_W("/not/looked/at")), kBtkOk);
  liMfRepository* const repo = liMfRepository::Instance();
  ASSERT_NE(repo, nullptr);
  EXPECT_EQ(liMfRepository::Initialize(none, nullptr), kBtkMissing);
  EXPECT_EQ(liMfRepository::Instance(), repo);
  EXPECT_EQ(repo->AddLoadpoint(nullptr), kBtkNullArgument);
  EXPECT_EQ(repo->AddLoadpoint(BTK_W("")), kBtkNullArgument);
  EXPECT_EQ(LoadpointCount(), 1);
  ASSERT_NE(repo->FindLoadpoint(nullptr), nullptr);  // a process without load point
  EXPECT_EQ(*repo->FindLoadpoint(nullptr)->loadpoint, 0);
}

TEST_F(RepositoryTest, StandsEveryFailedAllocation) {
  root_.Write("add/.installed",
              "base = \"lib\"\nscope = " + test::GeneratedIdText(test::kGeneratedOffer, 9, 9) +
                  "\nlayout += 0 {\"a\" | | \"b\", \"c\"}\n");
  root_.Write("add/a.tmfx", test::GeneratedManifest(2, 2, 3, 2));
  const btkFSPath directory((root_.Path() / "add").c_str());
  btkFSList files(0);
  files.Append(btkFSEntry(root_.Write("p.tmfx", test::GeneratedManifest(1, 2, 3, 2)).c_str()));
  btkHostSetProcessLoadpoint(BTK_W("/opt/process"));
  const auto start = [&] { return liMfRepository::Initialize(files, nullptr); };
  const auto add = [&] { return liMfRepository::Instance()->AddLoadpoint(directory.WideText()); };
  const auto services = [] { return liMfRepository::Instance()->GetServiceEntries(nullptr, 0); };
  ASSERT_EQ(start(), kBtkOk);  // whatever is made once is made now
  ASSERT_EQ(add(), kBtkOk);
  EXPECT_EQ(services(), 6);
  Discard();

  for (const auto source : test::kReportedSources) {
    test::SweepAllocations(source, [&](AllocationFault& fault) {
      fault.Arm();
      const BtkErrorT started = start();
      const BtkErrorT code = started == kBtkOk ? add() : started;
      fault.Disarm();
      // A stream that cannot be made reads as a missing file, and the publisher refuses a batch
      // that it cannot check. An array that cannot be shrunk is no failure.
      EXPECT_THAT(code, testing::AnyOf(kBtkNoMemory, kBtkMissing, kBtkUnexpected, kBtkOk));
      EXPECT_TRUE(fault.Hit() || code == kBtkOk);
      EXPECT_EQ(liMfRepository::Instance() != nullptr, started == kBtkOk);
      EXPECT_EQ(started == kBtkOk ? started : start(), kBtkOk);
      const bool filed = LoadpointCount() == 2;
      EXPECT_EQ(add(), filed ? kBtkDuplicate : kBtkOk);
      EXPECT_EQ(LoadpointCount(), 2);
      EXPECT_TRUE(services() == 6 || (filed && code != kBtkOk));
      Discard();
    });
  }
  btkHostSetProcessLoadpoint(nullptr);
}

// ---- Options -----------------------------------------------------------------------------------

UniIdT OptionId(int number) {
  return {{static_cast<std::uint8_t>(number * 37), 1}};  // in no order
}

TEST(Options, KeepTheLastValueOfEveryId) {
  std::uint32_t value = 77;
  const UniIdT first = OptionId(200);
  EXPECT_EQ(btkConfIsOptionKnown(&first, &value), 0);
  EXPECT_EQ(value, 77U);
  int failed = 0;
  for (std::uint32_t i = 0; i < 100; ++i) {
    const UniIdT id = OptionId(static_cast<int>(i));
    AllocationFault fault(AllocationFault::kPlatform, 0);
    fault.Arm();
    btkConfEnableOption(&id, 1);
    fault.Disarm();
    failed += fault.Hit() ? 1 : 0;
    EXPECT_EQ(btkConfIsOptionKnown(&id, &value), fault.Hit() ? 0 : 1);
    btkConfEnableOption(&id, i);
  }
  EXPECT_EQ(failed, 50);  // room is made for two
  for (std::uint32_t i = 0; i < 100; ++i) {
    const UniIdT id = OptionId(static_cast<int>(i));
    EXPECT_EQ(btkConfIsOptionKnown(&id, &value), 1);
    EXPECT_EQ(value, i);
  }
}

// Made before the library's own objects, so it goes after its exit handlers.
struct LateReader {
  ~LateReader() {
    std::uint32_t value = 0;
    const UniIdT ids[] = {OptionId(1), OptionId(2)};
    if (isArmed)
      _exit(btkConfIsOptionKnown(&ids[0], &value) + btkConfIsOptionKnown(&ids[1], &value));
  }
  bool isArmed = false;
};
__attribute__((init_priority(101))) LateReader g_lateReader;

TEST(Options, AreForgottenAtExit) {
  const auto leave = [](int count) {
    for (int i = 1; i <= count; ++i) {
      const UniIdT id = OptionId(i);
      btkConfEnableOption(&id, 1);
    }
    g_lateReader.isArmed = true;
    std::exit(9);
  };
  EXPECT_EXIT(leave(2), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(leave(0), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace tarnmf
