#include <gtest/gtest.h>
#include <new>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/ldp_writer.h"

#include "platform/host/btkhost.h"
#include "support/owned.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/everything.h"
#include "tests/support/ignored_leaks.h"
#include "tests/support/record_dump.h"
#include "tests/support/temp_directory.h"

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
  const DisposePtr<liLdpMfLoader> loader_{liLdpMfLoader::CreateNew(nullptr)};
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

// The load-point scan hands over the container's own path, which ends with the container.
TEST_F(LoaderTest, LendsThePathOfTheContainer) {
  AddFile("a.tmfx", kEverything);
  const std::int64_t before = LiveAllocations();
  {
    MfLdpDataT data;
    data.loadpoint = btk_wcsdup(BTK_W("/here"));
    for (int round = 1; round <= 2; ++round) {
      ASSERT_EQ(loader_->Load(&data, data.loadpoint, files_), kBtkOk);
      EXPECT_EQ(data.modules.count, 5 * round);
      for (const MfModuleT* module : data.modules) {
        const bool isOwn = Text(module->loadpoint) == "/elsewhere";
        EXPECT_EQ(module->loadpoint == data.loadpoint, !isOwn);
        EXPECT_EQ((module->flags & kMfModuleOwnsLoadpoint) != 0, isOwn);
      }
      EXPECT_EQ(data.runnables[round - 1]->loadpoint, data.loadpoint);
      EXPECT_EQ(data.runnables[round - 1]->flags, 0U);
    }
    directory_.Write("a.tmfx", "no manifest");
    EXPECT_EQ(loader_->Load(&data, data.loadpoint, files_), kBtkUnexpected);
    EXPECT_EQ(data.modules.count + data.classes.count + data.runnables.count, 0);
    EXPECT_EQ(Text(data.loadpoint), "/here");
  }
  EXPECT_EQ(LiveAllocations(), before);
}

TEST_F(LoaderTest, OpensStreamsAndMakesParsers) {
  const std::string path = directory_.Write("a.tmfx", Manifest(""));
  btkIStream* const stream = loader_->OpenStream(btkFSPath(path.c_str()).WideText());
  ASSERT_NE(stream, nullptr);
  MfLdpDataT data;
  EXPECT_EQ(DisposePtr<liMfStmParser>(loader_->CreateParser())->Parse(&data, stream), kBtkOk);
  EXPECT_EQ(stream->Release(), 0);
  EXPECT_EQ(loader_->OpenStream(BTK_W("/no/such/file")), nullptr);
}

bool IsAnythingLent(const MfLdpDataT& data) {
  const auto isLent = [](const auto* record, std::uint32_t ownedBit) {
    return record->loadpoint != nullptr && (record->flags & ownedBit) == 0;
  };
  for (const MfModuleT* module : data.modules)
    if (isLent(module, kMfModuleOwnsLoadpoint)) return true;
  for (const MfRunnableT* runnable : data.runnables)
    if (isLent(runnable, kMfRunnableOwnsLoadpoint)) return true;
  return false;
}

TEST_F(LoaderTest, SurvivesEveryFailedAllocation) {
  AddFile("a.tmfx", kEverything);
  AddFile("b.tmfx", Manifest(R"(<runnable moduleref="m"/>)"));
  {
    MfLdpDataT warm;
    ASSERT_EQ(loader_->Load(&warm, BTK_W("/here"), files_), kBtkOk);
  }
  for (const auto source : {AllocationFault::kPlatform, AllocationFault::kOperatorNew}) {
    std::string kept;  // the modules that each failure outside of a parse left
    bool failed = true;
    for (int n = 0; failed; ++n) {
      const std::int64_t before = LiveAllocations();
      {
        MfLdpDataT data;
        AllocationFault fault(source, n);
        fault.Arm();
        const BtkErrorT code = loader_->Load(&data, BTK_W("/here"), files_);
        failed = fault.Hit();
        EXPECT_EQ(IsAnythingLent(data), code == kBtkOk) << n;
        if (code == kBtkMissing || (code == kBtkNoMemory && data.modules.count > 0)) {
          kept += std::to_string(code) + ":" + std::to_string(data.modules.count) + " ";
        } else {
          EXPECT_TRUE(code == kBtkOk || (failed && code == kBtkNoMemory)) << n;
          EXPECT_EQ(data.modules.count, code == kBtkOk ? 5 : 0) << n;
        }
      }
      ASSERT_EQ(LiveAllocations(), before) << "allocation " << n;
    }
    // A stream that cannot be made cannot be opened; a parser that cannot be made is want of memory.
    // Both keep what the file before had; a failed parse does not.
    EXPECT_EQ(kept, source == AllocationFault::kOperatorNew ? "1:0 1:5 112:5 " : "");
  }
}

// Exceptions of the standard library and of the XML library, whichever allocation makes them.
TEST_F(LoaderTest, LetsExceptionsPass) {
  AddFile("a.tmfx", kEverything);
  AddFile("b.tmfx", Manifest(R"(<runnable moduleref="m"/>)"));
  MfLdpDataT warm;
  ASSERT_EQ(loader_->Load(&warm, BTK_W("/here"), files_), kBtkOk);
  const IgnoredLeaks ignored;  // of the XML library, when its own allocations fail
  const std::int64_t before = btkHostLiveAllocations();
  int thrown = 0;
  bool failed = true;
  for (int n = 0; failed; ++n) {
    {
      MfLdpDataT data;
      AllocationFault fault(AllocationFault::kThrowingNew, n);
      fault.Arm();
      try {
        EXPECT_EQ(loader_->Load(&data, BTK_W("/here"), files_), kBtkOk) << n;
      } catch (const xercesc::OutOfMemoryException&) {
        ++thrown;
        EXPECT_EQ(data.modules.count + data.classes.count + data.runnables.count, 0) << n;
      } catch (const std::bad_alloc&) {
        ++thrown;
        EXPECT_FALSE(IsAnythingLent(data)) << n;
      }
      failed = fault.Hit();
    }
    ASSERT_EQ(btkHostLiveAllocations(), before) << n;
  }
  EXPECT_GT(thrown, 100);
}

TEST(Factories, MakeALoaderAndNothingElse) {
  for (const char* kind : {static_cast<const char*>(nullptr), "xml"}) {
    EXPECT_NE(DisposePtr<liLdpMfLoader>(liLdpMfLoader::CreateNew(kind)), nullptr);
    EXPECT_EQ(liLdpMfWriter::CreateNew(kind), nullptr);
    EXPECT_EQ(liMfBuilder::CreateNew(kind), nullptr);
  }
  AllocationFault fault(AllocationFault::kOperatorNew, 0);
  fault.Arm();
  EXPECT_EQ(liLdpMfLoader::CreateNew(nullptr), nullptr);
}

}  // namespace
}  // namespace tarnmf::test
