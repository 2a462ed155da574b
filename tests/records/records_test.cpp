#include "tarnmf/records.h"

#include <gtest/gtest.h>

#include "tarnmf/stream_parser.h"

#include "support/allocation_fault.h"
#include "support/everything.h"
#include "support/memory_stream.h"
#include "support/owned.h"
#include "support/record_dump.h"

namespace tarnmf::test {
namespace {

void ReadEverything(MfLdpDataT& data) {
  const DisposePtrT<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
  MemoryStream stream(kEverything);
  ASSERT_EQ(parser->Parse(&data, &stream), kBtkOk);
}

// Shares the content of `source`, shows that nothing was copied, and gives it up again.
template <class Record>
void ExpectSharedByAssignment(const Record& source) {
  const std::int64_t before = LiveAllocations();
  {
    Record target;
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(LiveAllocations(), before);
    EXPECT_EQ(Dump(target), Dump(source));
    target = Record();
  }
  EXPECT_EQ(LiveAllocations(), before);
}

TEST(Records, ShareByAssignment) {
  MfLdpDataT data;
  ReadEverything(data);
  ExpectSharedByAssignment(*data.modules[0]);
  ExpectSharedByAssignment(*data.classes[0]);
  ExpectSharedByAssignment(*data.runnables[0]);
  ExpectSharedByAssignment(data);
}

TEST(Records, ReleaseWhatTheyOwnAndNothingElse) {
  btkWChar lent[] = BTK_W("lent");
  const std::int64_t before = LiveAllocations();
  {
    MfModuleT module;
    module.loadpoint = lent;
    MfModuleImplT impl;
    impl.name = lent;
    impl.path = lent;
    MfRunnableT runnable;
    runnable.loadpoint = lent;
  }
  {
    MfModuleT module;
    module.loadpoint = btk_wcsdup(lent);
    module.flags = kMfModuleOwnsLoadpoint;
    MfModuleImplT impl;
    impl.name = btk_wcsdup(lent);
    impl.flags = kMfImplOwnsName;
    impl.path = lent;
    impl.resolvedPath = btk_strdup("x");
    MfRunnableT runnable;
    runnable.loadpoint = btk_wcsdup(lent);
    runnable.flags = kMfRunnableOwnsLoadpoint;
    MfAppRoleT app;
    app.reservedText = btk_strdup("x");
    app.args.items = static_cast<btkWChar**>(btkReAlloc(nullptr, sizeof(btkWChar*)));
    app.args.items[0] = nullptr;
    MfLdpDataT data;
    ReadEverything(data);
  }
  EXPECT_EQ(LiveAllocations(), before);
  EXPECT_EQ(Text(lent), "lent");
}

// A dump shows what differs from the defaults, and null strings as nothing.
TEST(Records, StartFromTheirDefaults) {
  EXPECT_EQ(Dump(MfIntfClassT()), "class\n");
  EXPECT_EQ(Dump(MfModuleT()), "module\n");
  EXPECT_EQ(Dump(MfRunnableT()), "runnable\n");
  EXPECT_EQ(Dump(MfLdpDataT()), "");
  MfModuleImplT impl;
  MfPreloadInfoT preload;
  MfServiceRoleT service;
  MfAppRoleT app;
  MfLauncherRoleT launcher;
  // Records that are lent to lists for the time of a dump.
  MfPreloadInfoT* preloads[] = {&preload};
  MfModuleImplT* impls[] = {&impl};
  MfServiceRoleT* services[] = {&service};
  MfAppRoleT* apps[] = {&app};
  MfLauncherRoleT* launchers[] = {&launcher};
  MfModuleT module;
  MfRunnableT runnable;
  impl.preloads = {preloads, 1};
  module.impls = {impls, 1};
  runnable.services = {services, 1};
  runnable.apps = {apps, 1};
  runnable.launchers = {launchers, 1};
  EXPECT_EQ(Dump(module), "module\n  impl\n    preload\n");
  EXPECT_EQ(Dump(runnable), "runnable\n  service\n  app\n  launcher\n");
  impl.preloads = {};
  module = MfModuleT();
  runnable = MfRunnableT();
}

// Roles copy the part that all roles share, too; each field of a record is copied.
TEST(Records, CopyEveryField) {
  MfLdpDataT data;
  ReadEverything(data);
  const MfRunnableT& source = *data.runnables[0];
  MfServiceRoleT service;
  MfAppRoleT app;
  MfLauncherRoleT launcher;
  service = *source.services[0];
  app = *source.apps[0];
  launcher = *source.launchers[0];
  MfServiceRoleT* services[] = {&service};
  MfAppRoleT* apps[] = {&app};
  MfLauncherRoleT* launchers[] = {&launcher};
  MfRunnableT copy;
  copy = source;
  copy.services = {services, 1};
  copy.apps = {apps, 1};
  copy.launchers = {launchers, 1};
  EXPECT_EQ(Dump(copy), Dump(source));
  EXPECT_EQ(service.env.items, source.services[0]->env.items);
  copy = MfRunnableT();
  service = MfServiceRoleT();
  app = MfAppRoleT();
  launcher = MfLauncherRoleT();

  MfModuleImplT impl;
  impl = *data.modules[0]->impls[0];
  EXPECT_EQ(impl.preloads.items, data.modules[0]->impls[0]->preloads.items);
  EXPECT_EQ(impl.flags, data.modules[0]->impls[0]->flags);
  impl = MfModuleImplT();
  MfPreloadInfoT preload;
  preload = *data.modules[0]->impls[0]->preloads[0];
  EXPECT_EQ(preload.by, kMfByExecutable);
  EXPECT_EQ(preload.name, data.modules[0]->impls[0]->preloads[0]->name);
  preload = MfPreloadInfoT();
}

TEST(SvcResolve, MovesLikeItCopies) {
  MfIntfClassT record;
  MfSvcResolveT source;
  source.key = "name";
  source.versionKey = -6;
  source.ids[kMfScopeId] = {{7}};
  source.record = &record;
  MfSvcResolveT copied, moved;
  copied = source;
  moved = std::move(source);
  const MfSvcResolveT* const entries[] = {&copied, &moved, &source};
  for (const MfSvcResolveT* entry : entries) {
    EXPECT_STREQ(entry->key, "name");
    EXPECT_EQ(entry->versionKey, -6);
    EXPECT_EQ(entry->ids[kMfScopeId].bytes[0], 7);
    EXPECT_EQ(entry->record, &record);
  }
}

}  // namespace
}  // namespace tarnmf::test
