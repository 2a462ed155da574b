#include <gtest/gtest.h>
#include <string>

#include "platform/host/embedded_dlm.h"
#include "platform/host/embedded_services.h"
#include "platform/memory.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {
namespace {

std::u16string Wide(const std::string& narrow) {
  return btkFSPath(narrow.c_str()).WideText();
}

TEST(EmbeddedDlm, ResolvesToFilesThatExist) {
  const TempDirectory root;
  for (const char* file :
       {"liba.so", "linux-x64/liba.so", "sub/libb.so", "linux-x86/sub/libb.so", "raw.bin", "prog"})
    root.Write(file, "");
  const std::u16string loadpoint = Wide(root.Path().string());
  const std::u16string forced = Wide((root.Path() / "sub").string());
  struct {
    const char* what;
    const char* type;
    const char16_t* name;
    const char16_t* path;
    std::uint32_t flags;
    const char16_t* loadpoint;
    const char* machine;
    const char* expected;  // below the root; null: not found
  } const rows[] = {
      {"machine folder first", nullptr, u"a", u"", 0, loadpoint.c_str(), "", "linux-x64/liba.so"},
      {"then the load point", nullptr, u"b", u"sub", 0, loadpoint.c_str(), "", "sub/libb.so"},
      {"other machine", "SHAREDLIB", u"b", u"sub", 0, loadpoint.c_str(), "linux-x86",
       "linux-x86/sub/libb.so"},
      {"explicit name", nullptr, u"raw.bin", nullptr, kBtkExplicitName, loadpoint.c_str(), nullptr,
       "raw.bin"},
      {"executable", "executable", u"prog", u"", 0, loadpoint.c_str(), "", "prog"},
      {"forced path", nullptr, u"b", forced.c_str(), kBtkForcePath, nullptr, nullptr,
       "sub/libb.so"},
      {"missing", nullptr, u"c", u"", 0, loadpoint.c_str(), "", nullptr},
      {"no load point", nullptr, u"a", u"", 0, nullptr, nullptr, nullptr},
  };
  btkHostDlmManager manager;
  const btkModuleVersionT version = {};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    btkZString result;
    const BtkErrorT code =
        manager.ResolveModule(&result, "id", row.type, row.name, row.path, row.flags, row.loadpoint,
                              row.machine, 0, &version);
    EXPECT_EQ(code, row.expected != nullptr ? kBtkOk : kBtkNotFound);
    EXPECT_EQ(result.Text(),
              row.expected != nullptr ? (root.Path() / row.expected).string() : std::string());
  }
  EXPECT_TRUE(manager.HasMachineVariant(loadpoint.c_str(), "linux-x86"));
  EXPECT_FALSE(manager.HasMachineVariant(loadpoint.c_str(), "linux-arm"));
  EXPECT_FALSE(manager.HasMachineVariant(nullptr, "."));  // the current folder is no load point
}

TEST(EmbeddedDlm, LoadsOrOnlyRecordsWhatIsPreloaded) {
  const TempDirectory root;
  const std::string broken = root.Write("libbroken.so", "no library");
  btkHostDlmManager manager;
  void* const untouched = &manager;
  void* handle = untouched;
  EXPECT_EQ(manager.PreloadModule(&handle, broken.c_str(), 0, 0, nullptr, nullptr), kBtkNotFound);
  manager.SetPreloadMode(kBtkHostRecordsOnly);
  EXPECT_EQ(manager.PreloadModule(&handle, broken.c_str(), 0, 0, nullptr, nullptr), kBtkOk);
  EXPECT_EQ(handle, untouched);
  ASSERT_EQ(manager.Preloads().size(), 2U);
  EXPECT_NE(manager.Preloads()[0].failure, "");
  EXPECT_EQ(manager.Preloads()[1].failure, "");
  EXPECT_EQ(manager.Preloads()[1].path, broken);
  EXPECT_FALSE(manager.Preloads()[1].isLoaded);
}

TEST(EmbeddedDlm, DerivesLoadpointIdsFromPaths) {
  btkHostDlmManager manager;
  const auto id = [&](const char16_t* path) {
    UniIdT result = {{1}};
    EXPECT_EQ(manager.QueryLoadpointId(&result, path), kBtkOk);
    return std::string(reinterpret_cast<const char*>(result.bytes), sizeof result.bytes);
  };
  EXPECT_EQ(id(nullptr), std::string(16, '\0'));
  EXPECT_EQ(id(u""), std::string(16, '\0'));
  EXPECT_EQ(id(u"/a"), id(u"/a/"));
  EXPECT_NE(id(u"/a"), id(u"/b"));
}

TEST(EmbeddedServices, AnswersWhatWasRegistered) {
  const UniIdT first = {{1}}, second = {{2}}, third = {{3}}, null = {};
  btkHostServiceManager manager;
  std::int16_t version = 9, minVersion = 9;
  EXPECT_EQ(manager.QueryServiceVersions(&version, &minVersion, &first, u"/a"), kBtkNotFound);
  EXPECT_EQ(manager.SetServiceInfo(&first, u"/a", "render", 2, kBtkInfoShared), kBtkNotFound);
  EXPECT_EQ(manager.AddServiceInstance(nullptr, &first, u"/a", "", 0), kBtkNotFound);
  for (const UniIdT* id : {&first, &second})
    EXPECT_EQ(manager.DefineService(id, u"/a", "text", &null, 0, 0, 0, 0), kBtkOk);
  EXPECT_EQ(manager.DefineService(&third, u"/b", "text", &null, 0, 0, 0, 0), kBtkOk);
  EXPECT_EQ(manager.SetServiceInfo(&first, u"/a/", "render", 2, kBtkInfoShared), kBtkOk);
  EXPECT_EQ(manager.SetServiceInfo(&second, u"/a", "render", 5, kBtkInfoShared), kBtkOk);
  EXPECT_EQ(manager.SetServiceInfo(&third, u"/b", "render", 7, kBtkInfoSingle), kBtkOk);
  EXPECT_EQ(manager.QueryServiceVersions(&version, &minVersion, &second, u"/a"), kBtkOk);
  EXPECT_EQ(version, 5);
  EXPECT_EQ(minVersion, 0);
  EXPECT_EQ(manager.QueryServiceVersions(&version, &minVersion, &second, u"/b"), kBtkNotFound);

  struct {
    const char* name;
    std::int16_t version;
    const char16_t* loadpoint;
    const UniIdT* expected;
  } const rows[] = {
      {"render", 1, u"/a", &second}, {"render", 0, u"/b", &third}, {"render", -3, u"/a", &second},
      {"render", -6, u"/a", &third}, {"render", 1, u"/c", &third}, {"render", -8, u"/a", nullptr},
      {"Render", 1, u"/a", nullptr},
  };
  for (const auto& row : rows) {
    UniIdT found = {};
    EXPECT_EQ(manager.ResolveExternalService(&found, row.name, row.version, 0, row.loadpoint),
              row.expected != nullptr ? kBtkOk : kBtkNotFound);
    EXPECT_TRUE(btkUniIdIsEqual(&found, row.expected != nullptr ? row.expected : &null));
  }

  EXPECT_EQ(manager.AddServiceInstance(nullptr, &first, u"/a", "", 0), kBtkOk);
  EXPECT_EQ(manager.AddServiceInstance(nullptr, &first, u"/a", "", 0), kBtkDuplicate);
}

TEST(Allocations, FailOnceWhenToldTo) {
  const std::int64_t before = btkHostLiveAllocations();
  btkHostFailAllocation(1);
  char* const first = btk_strdup("a");
  EXPECT_EQ(btk_strdup("b"), nullptr);
  EXPECT_TRUE(btkHostAllocationFailed());
  char* const third = btk_strdup("c");
  EXPECT_NE(third, nullptr);
  EXPECT_EQ(btkHostLiveAllocations(), before + 2);
  btkStrFree(first);
  btkStrFree(third);
  EXPECT_EQ(btkHostLiveAllocations(), before);
}

}  // namespace
}  // namespace tarnmf::test
