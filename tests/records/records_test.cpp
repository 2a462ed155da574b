#include "tarnmf/records.h"

#include <gtest/gtest.h>

#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "support/owned.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/everything.h"
#include "tests/support/memory_stream.h"
#include "tests/support/record_dump.h"

namespace tarnmf::test {
namespace {

void ReadEverything(MfLdpDataT& data) {
  const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
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

  // A role's shared part is copied with it.
  const MfServiceRoleT& service = *data.runnables[0]->services[0];
  MfServiceRoleT copy;
  copy = service;
  EXPECT_EQ(copy.args.items, service.args.items);
  EXPECT_EQ(copy.env.items, service.env.items);
  EXPECT_EQ(copy.launcher, service.launcher);
  EXPECT_EQ(copy.url, service.url);
  copy = MfServiceRoleT();
}

TEST(Records, ReleaseWhatTheyOwnAndNothingElse) {
  btkWChar lent[] = BTK_W("lent");
  {
    // What the first parse of a process makes for all later ones is nobody's leak.
    MfLdpDataT warm;
    ReadEverything(warm);
  }
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
  const MfServiceRoleT service;
  EXPECT_EQ(service.model, kMfManaged);
  EXPECT_EQ(service.multiplicity, kMfSingleInstance);
  EXPECT_EQ(service.port, -1);
  EXPECT_EQ(service.MfRunRoleBaseT::reserved, -1);
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
