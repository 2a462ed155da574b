// The repository as a process uses it: one instance, load points added to it, questions asked.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tarnmf/options.h"

#include "platform/unique_id.h"
#include "repository/option_table.h"
#include "repository/repo_base_impl.h"
#include "support/ignore_refusal.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/generated_manifest.h"
#include "tests/support/quiet_managers.h"
#include "tests/support/temp_directory.h"

namespace tarnmf {
namespace {

using test::AllocationFault;
using test::GeneratedId;

std::u16string Wide(const std::filesystem::path& path) {
  return btkFSPath(path.c_str()).WideText();
}

// Takes the process's repository away, so that the next test starts without one.
class RepositoryTest : public testing::Test {
 protected:
  ~RepositoryTest() override { EndRepository(); }
  static void EndRepository() { RepositoryPtr(std::exchange(g_repository, nullptr)); }

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

// An installation that uses layouts, a scope, modules, classes and services.
std::u16string WriteInstallation(const test::TempDirectory& root, const std::string& name,
                                 const std::string& scope, const std::string& manifest) {
  root.Write(name + "/.installed",
             "base = \"lib\"\nscope = " + scope + "\nlayout += 0 {\"a\" | | \"b\", \"c\"}\n");
  root.Write(name + "/a.tmfx", manifest);
  return Wide(root.Path() / name);
}

TEST_F(RepositoryTest, StandsEveryFailedAllocation) {
  const std::u16string directory =
      WriteInstallation(root_, "add", test::GeneratedIdText(test::kGeneratedOffer, 9, 9),
                        test::GeneratedManifest(2, 2, 3, 2));
  btkFSList files(0);
  files.Append(btkFSEntry(root_.Write("p.tmfx", test::GeneratedManifest(1, 2, 3, 2)).c_str()));
  btkHostSetProcessLoadpoint(BTK_W("/opt/process"));
  const auto start = [&] { return liMfRepository::Initialize(files, nullptr); };
  const auto add = [&] { return liMfRepository::Instance()->AddLoadpoint(directory.c_str()); };
  ASSERT_EQ(start(), kBtkOk);  // whatever is made once is made now
  ASSERT_EQ(add(), kBtkOk);
  const auto services = liMfRepository::Instance()->GetServiceEntries(nullptr, 0);
  EXPECT_EQ(services, 6);

  for (const auto source : {AllocationFault::kPlatform, AllocationFault::kOperatorNew}) {
    bool hit = true;
    for (int n = 0; hit; ++n) {
      EndRepository();
      const std::int64_t live = test::LiveAllocations();
      BtkErrorT started{};
      BtkErrorT added{};
      {
        AllocationFault fault(source, n);
        fault.Arm();
        started = start();
        if (started == kBtkOk) added = add();
        hit = fault.Hit();
      }
      const BtkErrorT code = started != kBtkOk ? started : added;
      // A stream that cannot be made reads as a missing file, and the publisher refuses a batch
      // that it cannot check. An array that cannot be shrunk is no failure.
      EXPECT_THAT(code, testing::AnyOf(kBtkNoMemory, kBtkMissing, kBtkUnexpected, kBtkOk)) << n;
      EXPECT_TRUE(hit || code == kBtkOk);
      EXPECT_EQ(liMfRepository::Instance() != nullptr, started == kBtkOk) << n;
      if (started != kBtkOk) {
        EXPECT_EQ(test::LiveAllocations(), live) << n;
        EXPECT_EQ(start(), kBtkOk) << n;
      }
      const bool filed = LoadpointCount() == 2;
      EXPECT_EQ(add(), filed ? kBtkDuplicate : kBtkOk) << n;
      EXPECT_EQ(LoadpointCount(), 2);
      if (code == kBtkOk || !filed) {
        EXPECT_EQ(liMfRepository::Instance()->GetServiceEntries(nullptr, 0), services) << n;
      }
    }
  }
  btkHostSetProcessLoadpoint(nullptr);
}

TEST_F(RepositoryTest, ReleasesEverythingWhenAnExceptionPasses) {
  class Thrower : public test::QuietDlmManager {
   public:
    BtkErrorT RegisterRunnable(btkZString*, const char*, const char*, const char*, const btkWChar*,
                               std::int32_t, const btkWChar* const*, const EnvCmdT*, std::int32_t,
                               std::int32_t) override {
      throw 5;  // the load point is filed by now
    }
  } thrower;
  btkFSList files(0);
  files.Append(btkFSEntry(root_.Write("p.tmfx", test::GeneratedManifest(1, 1, 1, 1)).c_str()));
  ASSERT_EQ(liMfRepository::Initialize(files, nullptr), kBtkOk);
  EndRepository();
  btkHostSetDlmManager(&thrower);
  const std::int64_t live = test::LiveAllocations();
  EXPECT_THROW(IgnoreRefusal(liMfRepository::Initialize(files, nullptr)), int);
  EXPECT_EQ(test::LiveAllocations(), live);
  EXPECT_EQ(liMfRepository::Instance(), nullptr);
}

TEST_F(RepositoryTest, AnswersForAThousandInstallations) {
  constexpr int kCount = 1000;
  constexpr int kClasses = 20;
  constexpr int kServices = 10;
  constexpr int kScopes = 7;
  const auto scopeOf = [](int number) { return number % kScopes; };
  const auto scopeId = [](int scope) {
    return scope == 0 ? kBtkNullUniId : GeneratedId(test::kGeneratedOffer, 9999, scope);
  };
  ASSERT_EQ(liMfRepository::Initialize(btkFSList(0), nullptr), kBtkOk);
  liMfRepository& repo = *liMfRepository::Instance();
  struct Early {
    MfSvcResolveT* entry;
    std::string key;
    MfIntfClassT* record;
  };
  std::vector<Early> early;
  std::map<std::pair<int, int>, std::tuple<int, int>> best;  // by scope and class: version, number
  for (int number = 0; number < kCount; ++number) {
    const int scope = scopeOf(number);
    const std::string idText = scope == 0
                                   ? "00000000-0000-0000-0000-000000000000"
                                   : test::GeneratedIdText(test::kGeneratedOffer, 9999, scope);
    const std::u16string directory =
        WriteInstallation(root_, std::to_string(number), idText,
                          test::GeneratedManifest(number, kClasses, kClasses, kServices));
    ASSERT_EQ(repo.AddLoadpoint(directory.c_str()), kBtkOk);
    for (int item = 0; item < kClasses; ++item) {
      const UniIdT host = GeneratedId(test::kGeneratedService, number, item % kServices);
      const std::tuple<int, int> rank{test::QuietServiceManager::VersionOf(host), number};
      best[{scope, item}] = std::max(best[{scope, item}], rank);
    }
    const UniIdT id = scopeId(scope);
    MfSvcResolveT* const entry = repo.FindClassImpl(&id, "Class3", 0, 32767);
    ASSERT_NE(entry, nullptr);
    early.push_back({entry, entry->key, entry->record});
  }

  for (int scope = 0; scope <= kScopes; ++scope) {  // the last one is nobody's
    for (int item = 0; item < kClasses; ++item) {
      const UniIdT id = scopeId(scope);
      const auto [version, number] = best[{scope < kScopes ? scope : 0, item}];
      const std::string name = "Class" + std::to_string(item);
      const MfSvcResolveT* const entry = repo.FindClassImpl(&id, name.c_str(), 0, 32767);
      const UniIdT classId = GeneratedId(test::kGeneratedClass, number, item);
      ASSERT_NE(entry, nullptr);
      EXPECT_TRUE(btkUniIdIsEqual(&entry->record->ids[kMfClientSide], &classId));
      EXPECT_EQ(entry->versionKey, version * 2);
      EXPECT_EQ(repo.FindClassImpl(&id, name.c_str(), 30, 32767), nullptr);
    }
  }
  for (int number = 0; number < kCount; ++number) {
    const std::u16string path = Wide(root_.Path() / std::to_string(number) / "lib/");
    UniIdT loadpoint{};
    ASSERT_EQ(btkHostEmbeddedDlmManager().QueryLoadpointId(&loadpoint, path.c_str()), kBtkOk);
    ASSERT_NE(repo.FindLoadpoint(&loadpoint), nullptr);
    EXPECT_EQ(repo.FindLoadpoint(&loadpoint)->classes.count, kClasses);
    for (int item = 0; item <= kServices; ++item) {
      const UniIdT service = GeneratedId(test::kGeneratedService, number, item);
      const MfServiceRoleT* const role = repo.FindService(&service, path.c_str());
      ASSERT_EQ(role != nullptr, item < kServices);
      UniIdT combined{};
      ASSERT_EQ(btkUniIdCombine(&combined, &loadpoint, &service), kBtkOk);
      EXPECT_EQ(repo.FindServiceEntry(&combined) != nullptr, role != nullptr && item % 2 == 0);
    }
  }
  EXPECT_EQ(repo.GetServiceEntries(nullptr, 0), kCount * (kServices / 2 + kClasses / 2));
  for (const auto& [entry, key, record] : early)
    EXPECT_TRUE(entry->key == key && entry->record == record && record->commonname == key);
}

TEST(Options, KeepTheLastValueOfEveryId) {
  const auto id = [](int number) {
    return UniIdT{{static_cast<std::uint8_t>(number * 37), 1}};  // in no order
  };
  std::uint32_t value = 77;
  const UniIdT first = id(200);
  EXPECT_EQ(btkConfIsOptionKnown(&first, &value), 0);
  EXPECT_EQ(value, 77U);
  for (const std::uint32_t wanted : {5U, 0U}) {
    btkConfEnableOption(&first, wanted);
    EXPECT_EQ(btkConfIsOptionKnown(&first, &value), 1);
    EXPECT_EQ(value, wanted);
  }

  const std::int64_t live = test::LiveAllocations();
  {
    OptionTable table;
    for (int i = 0; i < 100; ++i) {
      {
        AllocationFault fault(AllocationFault::kPlatform, 0);
        fault.Arm();
        table.Set(id(i), 1);
        EXPECT_EQ(fault.Hit(), i % 2 == 0);  // room is made for two
        EXPECT_EQ(table.Find(id(i)) == nullptr, fault.Hit());
      }
      table.Set(id(i), 2U + static_cast<std::uint32_t>(i));
      EXPECT_EQ(table.Capacity(), (i + 2) / 2 * 2);
    }
    for (int i = 0; i < 100; ++i)
      EXPECT_EQ(table.Find(id(i))->value, 2U + static_cast<std::uint32_t>(i));
    EXPECT_EQ(table.Count(), 100);
  }
  EXPECT_EQ(test::LiveAllocations(), live);
}

}  // namespace
}  // namespace tarnmf
