#include <gtest/gtest.h>

#include "tarnmf/ldp_loader.h"
#include "tarnmf/ldp_writer.h"

#include "support/allocation_fault.h"
#include "support/everything.h"
#include "support/owned.h"
#include "support/record_dump.h"
#include "support/temp_directory.h"

namespace tarnmf::test {
namespace {

std::string Manifest(const std::string& content) {
  return "<tarnmanifest version=\"1\">" + content + "</tarnmanifest>";
}

class LoaderTest : public testing::Test {
 protected:
  // Adds a file to the list; a null content adds the name of a file that is not there.
  void AddFile(const char* name, const std::string& content) {
    files_.Append(btkFSEntry(directory_.Write(name, content).c_str()));
  }
  void AddPath(const char* name) { files_.Append(btkFSEntry((directory_.Path() / name).c_str())); }

  const TempDirectory directory_;
  const DisposePtrT<liLdpMfLoader> loader_{liLdpMfLoader::CreateNew(nullptr)};
  btkFSList files_;
};

TEST_F(LoaderTest, LendsItsLoadpoint) {
  AddFile("a.tmfx", Manifest(R"(<module id="own" name="n" loadpoint="x"/>
                                <module id="none" name="n" loadpoint=""/>
                                <module id="lent" name="n"/>)"));
  AddFile("\xc3\xa9 \xff.tmfx", Manifest(R"(<runnable moduleref="m"/>)"));
  MfLdpDataT data;
  ASSERT_EQ(loader_->Load(&data, nullptr, files_), kBtkOk);
  ASSERT_EQ(loader_->Load(&data, BTK_W(""), btkFSList(0)), kBtkOk);
  const std::string head =
      "module id=\"own\" loadpoint=\"x\"+\n  impl name=\"n\"+ version=1\n"
      "module id=\"none\"\n  impl name=\"n\"+ version=1\nmodule id=\"lent\" loadpoint=";
  const std::string middle =
      "\n  impl name=\"n\"+ path=\"\"+ version=1\nrunnable moduleref=\"m\" loadpoint=";
  EXPECT_EQ(Dump(data), head + "\"\"+" + middle + "\"\"+\n");

  const btkWChar here[] = BTK_W("/here");
  ASSERT_EQ(loader_->Load(&data, here, btkFSList(0)), kBtkOk);
  EXPECT_EQ(Dump(data), head + "\"/here\"" + middle + "\"/here\"\n");
  EXPECT_EQ(data.modules[2]->loadpoint, here);
  EXPECT_EQ(data.runnables[0]->loadpoint, here);
  EXPECT_EQ(data.loadpoint, nullptr);
}

TEST_F(LoaderTest, StopsAtTheFirstFault) {
  AddFile("a.tmfx", Manifest(R"(<module id="first" name="n"/>)"));
  AddPath("missing.tmfx");
  AddFile("c.tmfx", Manifest(R"(<module id="third" name="n"/>)"));
  {
    MfLdpDataT data;
    EXPECT_EQ(loader_->Load(&data, BTK_W("/here"), files_), kBtkMissing);
    EXPECT_EQ(Dump(data),
              "module id=\"first\" loadpoint=\"\"+\n  impl name=\"n\"+ path=\"\"+ version=1\n");
  }
  directory_.Write("missing.tmfx", Manifest("<x/>"));
  {
    MfLdpDataT data;
    EXPECT_EQ(loader_->Load(&data, BTK_W("/here"), files_), kBtkUnexpected);
    EXPECT_EQ(data.modules.items, nullptr);
    EXPECT_EQ(data.modules.count, 0);
  }
  EXPECT_EQ(loader_->Load(nullptr, BTK_W("/here"), files_), kBtkNullArgument);
}

TEST_F(LoaderTest, DoesNotOpenDirectories) {
  std::filesystem::create_directory(directory_.Path() / "a.tmfx");
  AddPath("a.tmfx");
  MfLdpDataT data;
  EXPECT_EQ(loader_->Load(&data, nullptr, files_), kBtkMissing);
}

TEST_F(LoaderTest, SurvivesEveryFailedAllocation) {
  AddFile("a.tmfx", kEverything);
  AddFile("b.tmfx", Manifest(R"(<runnable moduleref="m"/>)"));
  {
    MfLdpDataT warm;
    ASSERT_EQ(loader_->Load(&warm, BTK_W("/here"), files_), kBtkOk);
  }
  for (const auto source : {AllocationFault::kPlatform, AllocationFault::kOperatorNew}) {
    bool failed = true;
    int streams = 0;
    for (int n = 0; failed; ++n) {
      const std::int64_t before = LiveAllocations();
      {
        MfLdpDataT data;
        AllocationFault fault(source, n);
        const BtkErrorT code = loader_->Load(&data, BTK_W("/here"), files_);
        failed = fault.Hit();
        // A stream that cannot be made cannot be opened; what was read before it stays.
        if (code == kBtkMissing) ++streams;
        if (code == kBtkNoMemory || code == kBtkOk || code == kBtkMissing) {
          EXPECT_TRUE(failed || code == kBtkOk);
        } else {
          ADD_FAILURE() << "code " << code << " at allocation " << n;
        }
      }
      ASSERT_EQ(LiveAllocations(), before) << "allocation " << n;
    }
    EXPECT_EQ(streams, source == AllocationFault::kOperatorNew ? 2 : 0);
  }
}

TEST(Factories, MakeALoaderAndNothingElse) {
  for (const char* kind : {static_cast<const char*>(nullptr), "xml"}) {
    EXPECT_NE(DisposePtrT<liLdpMfLoader>(liLdpMfLoader::CreateNew(kind)), nullptr);
    EXPECT_EQ(liLdpMfWriter::CreateNew(kind), nullptr);
    EXPECT_EQ(liMfBuilder::CreateNew(kind), nullptr);
  }
  AllocationFault fault(AllocationFault::kOperatorNew, 0);
  EXPECT_EQ(liLdpMfLoader::CreateNew(nullptr), nullptr);
}

}  // namespace
}  // namespace tarnmf::test
