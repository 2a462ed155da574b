// SPDX-License-Identifier: Apache-2.0
#include "tarnmf/records.h"

#include <gtest/gtest.h>

#include "platform/memory.h"
#include "tests/support/everything.h"
#include "tests/support/fault.h"
#include "tests/support/parse.h"
#include "tests/support/record_dump.h"

namespace tarnmf::test {
namespace {

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
  ASSERT_EQ(Parse(kEverything, data), kBtkOk);
  ExpectSharedByAssignment(*data.modules[0]);
  ExpectSharedByAssignment(*data.classes[0]);
  ExpectSharedByAssignment(*data.runnables[0]);
  ExpectSharedByAssignment(data);

  // A role's shared part is copied with it.
  const MfServiceRoleT& service = *data.runnables[0]->services[0];
  MfServiceRoleT copy;
  copy = service;
  EXPECT_TRUE(copy.args.items == service.args.items && copy.env.items == service.env.items &&
              copy.launcher == service.launcher && copy.url == service.url);
  copy = MfServiceRoleT();
}

TEST(Records, ReleaseWhatTheyOwnAndNothingElse) {
  btkWChar lent[] = BTK_W("lent");
  const LeakCheck check;
  for (const bool owned : {false, true}) {
    const auto text = [&] { return owned ? btk_wcsdup(lent) : lent; };
    MfModuleT module;
    MfModuleImplT impl;
    MfRunnableT runnable;
    module.loadpoint = text();
    impl.name = text();
    impl.path = text();
    impl.resolvedPath = btk_strdup("x");
    runnable.loadpoint = text();
    if (owned) {
      module.flags = kMfModuleOwnsLoadpoint;
      impl.flags = kMfImplOwnsName | kMfImplOwnsPath;
      runnable.flags = kMfRunnableOwnsLoadpoint;
    }
    MfAppRoleT app;
    app.reservedText = btk_strdup("x");
    app.args.items = static_cast<btkWChar**>(btkReAlloc(nullptr, sizeof(btkWChar*)));
    app.args.items[0] = nullptr;  // no argument, and the null pointer after the last
  }
}

TEST(SvcResolve, MovesLikeItCopies) {
  MfSvcResolveT source, copied, moved;
  source.key = "name";
  source.ids[kMfScopeId] = {{7}};
  copied = source;
  moved = std::move(source);
  // NOLINTNEXTLINE(bugprone-use-after-move): what is moved stays.
  for (MfSvcResolveT* entry : {&copied, &moved, &source})
    EXPECT_TRUE(std::string(entry->key) == "name" && entry->ids[kMfScopeId].bytes[0] == 7);
}

}  // namespace
}  // namespace tarnmf::test
