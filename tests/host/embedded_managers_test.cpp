// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "platform/host/embedded_dlm.h"
#include "platform/host/embedded_services.h"
#include "tests/support/installed_managers.h"
#include "tests/support/system_names.h"
#include "tests/support/temp_directory.h"
#include "tests/support/wide_string.h"

namespace tarnmf::test {
namespace {

TEST(EmbeddedDlm, ResolvesWhateverTheCurrentFolderIs) {
  const TempDirectory root;
  for (const char* folder : {"process/", "process/store/", "pack/", "pack/other/", "else/process/",
                             "else/store/", "else/pack/"})
    root.Write(std::string(folder) + "liba.so", "");
  btkHostDlmManager manager;
  UniIdT scope = {};
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(root.Path());
  EXPECT_EQ(manager.RegisterProcessLoadpoint(&scope, BTK_W("process")), kBtkOk);
  EXPECT_EQ(manager.RegisterInstallation(BTK_W("pack"), &scope), kBtkOk);
  std::filesystem::current_path(root.Path() / "else");
  // The file below the root, or why there is none.
  const auto resolve = [&](const btkWChar* loadpoint, const btkWChar* path = nullptr,
                           std::uint32_t flags = 0, const char* machine = nullptr) {
    btkZString file;
    const btkFSPath library(InSystemNames("liba.so").c_str());
    const bool isExplicit = (flags & kBtkExplicitName) != 0;
    // Called by its name, which is how a program asks for an exported operation.
    const BtkErrorT code = manager.btkHostDlmManager::ResolveModule(
        &file, "id", "SHAREDLIB", isExplicit ? library.WideText() : BTK_W("a"), path, flags,
        loadpoint, machine, 0, nullptr);
    const btkHostResolutionT& resolution = manager.Resolutions().back();
    EXPECT_STREQ(resolution.file, file.Text());
    if (code != kBtkOk) return std::string(resolution.reason);
    EXPECT_EQ(std::string(file.Text()).find(root.At()), 0U);
    return std::string(file.Text()).substr(root.At().size());
  };
  EXPECT_EQ(resolve(nullptr), "");
  EXPECT_EQ(resolve(BTK_W("process")), InSystemNames("/process/liba.so"));
  EXPECT_EQ(resolve(BTK_W("process"), BTK_W("store"), kBtkExplicitName),
            InSystemNames("/process/store/liba.so"));
  EXPECT_EQ(resolve(BTK_W("pack")), InSystemNames("/pack/liba.so"));
  EXPECT_EQ(resolve(BTK_W("pack"), BTK_W(""), 0, "other"), InSystemNames("/pack/other/liba.so"));
  EXPECT_EQ(resolve(BTK_W("store")), InSystemNames("/process/store/liba.so"));
  EXPECT_EQ(resolve(BTK_W("pack"), BTK_W("../pack"), kBtkForcePath),
            InSystemNames("/process/../pack/liba.so"));
  EXPECT_EQ(resolve(BTK_W("pack"), BTK_W("other/..")),
            InSystemNames("\"..\" in \"other/../liba.so\" may lead out of the load point; "
                          "\"forcepath\" admits it"));
  EXPECT_TRUE(manager.HasMachineVariant(BTK_W("pack"), "other"));
  EXPECT_FALSE(manager.HasMachineVariant(BTK_W(""), "store"));
  EXPECT_FALSE(manager.HasMachineVariant(nullptr, "store"));
  EXPECT_EQ(manager.RegisterProcessLoadpoint(&scope, nullptr), kBtkOk);
  EXPECT_EQ(resolve(BTK_W("pack")), InSystemNames("/pack/liba.so"));
  EXPECT_EQ(resolve(BTK_W("store")),
            "the load point \"store\" is relative, and the process has no load point");
  EXPECT_EQ(resolve(BTK_W("pack"), nullptr, kBtkForcePath),
            "the forced path \"\" is relative, and the process has no load point");
  std::filesystem::current_path(before);
}

TEST(EmbeddedDlm, KeepsWhatItIsTold) {
  btkHostDlmManager manager;
  const UniIdT id = {{7}};
  btkZString result;
  // What is handed over is gone afterwards.
  WideString first = BTK_W("first"), second = BTK_W("second");
  const btkWChar* const slots[] = {first.c_str(), second.c_str(), nullptr};
  EnvCmdT variable(EnvCmdT::kUnset);
  variable.flags = kEnvCmdOwnsText | kEnvCmdCreate;
  variable.name = first.data();
  EXPECT_EQ(
      manager.RegisterInstallation(first.c_str(), &id) +
          manager.RegisterLayout(BTK_W(""), "m", nullptr, BTK_W(""), slots, slots + 1, slots + 2,
                                 true) +
          manager.RegisterRunnable(&result, "r", "m", nullptr, nullptr, 0, slots, &variable, 1, 3),
      kBtkOk);
  first = second = BTK_W("#");
  EXPECT_EQ(manager.Installations()[0].base, WideString(BTK_W("first")));
  EXPECT_TRUE(manager.ProcessLoadpoints().empty());
  const btkHostLayoutT& layout = manager.Layouts()[0];
  EXPECT_TRUE(layout.text1 == nullptr && layout.text2 != nullptr && *layout.text2 == 0);
  EXPECT_TRUE(layout.lists[0].size() == 2 && layout.lists[2].empty());
  EXPECT_EQ(layout.lists[1][0], WideString(BTK_W("second")));
  const btkHostRunnableT& runnable = manager.Runnables()[0];
  EXPECT_TRUE(runnable.launcher == nullptr && *runnable.loadpoint == 0);
  EXPECT_EQ(WideString(runnable.args[1]) + runnable.env[0].name, BTK_W("secondfirst"));
  EXPECT_TRUE(runnable.env[0].value == nullptr && runnable.env[0].flags == kEnvCmdCreate);
}

TEST(EmbeddedDlm, DerivesLoadpointIdsFromPaths) {
  const auto id = [](const btkWChar* path) {
    UniIdT result = {{1}};
    EXPECT_EQ(btkHostDlmManager().QueryLoadpointId(&result, path), kBtkOk);
    return std::string(reinterpret_cast<const char*>(result.bytes), sizeof result.bytes);
  };
  EXPECT_EQ(id(nullptr) + id(BTK_W("")), std::string(32, '\0'));
  EXPECT_TRUE(id(BTK_W("/a")) == id(BTK_W("/a/")) && id(BTK_W("/a")) != id(BTK_W("/b")));
}

TEST(EmbeddedServices, AnswersWhatWasRegistered) {
  const UniIdT first = {{1}}, second = {{2}}, third = {{3}}, null = {};
  btkHostServiceManager manager;
  std::int16_t version = 9, minVersion = 9;
  EXPECT_EQ(manager.QueryServiceVersions(&version, &minVersion, &first, BTK_W("/a")), kBtkNotFound);
  EXPECT_EQ(manager.SetServiceInfo(&first, BTK_W("/a"), "render", 2, kBtkInfoShared), kBtkNotFound);
  EXPECT_EQ(manager.AddServiceInstance(nullptr, &first, BTK_W("/a"), "", 0), kBtkNotFound);
  for (const UniIdT* id : {&first, &second})
    EXPECT_EQ(manager.DefineService(id, BTK_W("/a"), "text", &null, 0, 0, 0, 0), kBtkOk);
  EXPECT_EQ(manager.DefineService(&third, BTK_W("/b"), "text", &null, 0, 0, 0, 0), kBtkOk);
  EXPECT_EQ(manager.SetServiceInfo(&first, BTK_W("/a/"), "render", 2, kBtkInfoShared), kBtkOk);
  EXPECT_EQ(manager.SetServiceInfo(&second, BTK_W("/a"), "render", 5, kBtkInfoShared), kBtkOk);
  EXPECT_EQ(manager.SetServiceInfo(&third, BTK_W("/b"), "render", 7, kBtkInfoSingle), kBtkOk);
  EXPECT_EQ(manager.QueryServiceVersions(&version, &minVersion, &second, BTK_W("/a")), kBtkOk);
  EXPECT_TRUE(version == 5 && minVersion == 0);
  EXPECT_EQ(manager.QueryServiceVersions(&version, &minVersion, &second, BTK_W("/b")),
            kBtkNotFound);

  struct {
    const char* name;
    std::int16_t version;
    const btkWChar* loadpoint;
    const UniIdT* expected;
  } const rows[] = {
      {"render", 1, BTK_W("/a"), &second},  {"render", 0, BTK_W("/b"), &third},
      {"render", -3, BTK_W("/a"), &second}, {"render", -6, BTK_W("/a"), &third},
      {"render", 1, BTK_W("/c"), &third},   {"render", -8, BTK_W("/a"), nullptr},
      {"Render", 1, BTK_W("/a"), nullptr},
  };
  for (const auto& row : rows) {
    UniIdT found = {};
    EXPECT_EQ(manager.ResolveExternalService(&found, row.name, row.version, 0, row.loadpoint),
              row.expected != nullptr ? kBtkOk : kBtkNotFound);
    EXPECT_TRUE(btkUniIdIsEqual(&found, row.expected != nullptr ? row.expected : &null));
  }

  EXPECT_EQ(manager.AddServiceInstance(nullptr, &first, BTK_W("/a"), "", 0), kBtkOk);
  EXPECT_EQ(manager.AddServiceInstance(nullptr, &first, BTK_W("/a"), "", 0), kBtkDuplicate);
  EXPECT_STREQ(manager.Services()[0].commonname, "render");
}

TEST(Hooks, PutOtherManagersInPlace) {
  btkHostDlmManager dlm;
  btkHostServiceManager services;
  {
    const InstalledManagers installed(&dlm, &services);
    EXPECT_TRUE(btkDlmManager::Instance() == &dlm && btkServiceManager::Instance() == &services);
    const IntfRefEntryT entry = {&kBtkNullUniId, "m", "Name", nullptr, 4, 1, -1};
    EXPECT_EQ(btkIntfPublishRefList(&entry, 1, true) + dlm.PublishRefList(&entry, 1, true), kBtkOk);
    EXPECT_STREQ(dlm.InterfaceRefs()[1].commonname, "Name");
  }
  EXPECT_EQ(btkDlmManager::Instance(), &btkHostEmbeddedDlmManager());
  btkHostSetServiceSession(nullptr);
  EXPECT_EQ(btkSvcSession::Current(), nullptr);
}

}  // namespace
}  // namespace tarnmf::test
