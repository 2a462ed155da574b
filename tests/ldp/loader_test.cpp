#include <gtest/gtest.h>
#include <map>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/ldp_writer.h"

#include "platform/host/btkhost.h"
#include "platform/memory.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/documents.h"
#include "tests/support/everything.h"
#include "tests/support/ignored_leaks.h"
#include "tests/support/record_dump.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {
namespace {

class LoaderTest : public testing::Test {
 protected:
  void AddFile(const char* name, const std::string& content) {
    files_.Append(btkFSEntry(directory_.Write(name, content).c_str()));
  }
  BtkErrorT Load(MfLdpDataT& data) { return loader_->Load(&data, BTK_W("/here"), files_); }

  const TempDirectory directory_;
  const DisposePtr<liLdpMfLoader> loader_{liLdpMfLoader::CreateNew(nullptr)};
  btkFSList files_;
};

bool NothingIsLent(const MfLdpDataT& data) {
  return Dump(data).find("/here") == std::string::npos;
}

TEST_F(LoaderTest, LendsItsLoadpoint) {
  AddFile("a.tmfx",
          InRoot("<module id='own' name='n' loadpoint='x'/>"
                 "<module id='none' name='n' loadpoint=''/><module id='lent' name='n'/>"));
  AddFile("\xc3\xa9 \xff.tmfx", InRoot("<runnable moduleref='m'/>"));
  MfLdpDataT data;
  ASSERT_EQ(loader_->Load(&data, nullptr, files_), kBtkOk);
  ASSERT_EQ(loader_->Load(&data, BTK_W(""), btkFSList(0)), kBtkOk);
  const std::string head =
      "module id=\"own\" loadpoint=\"x\"+\n  impl name=\"n\"+ version=1\n"
      "module id=\"none\"\n  impl name=\"n\"+ version=1\nmodule id=\"lent\" loadpoint=";
  const std::string middle =
      "\n  impl name=\"n\"+ path=\"\"+ version=1\nrunnable moduleref=\"m\" loadpoint=";
  EXPECT_EQ(Dump(data), head + "\"\"+" + middle + "\"\"+\n");

  // The load-point scan hands over the container's own path, which goes with the container.
  data.loadpoint = btk_wcsdup(BTK_W("/here"));
  ASSERT_EQ(loader_->Load(&data, data.loadpoint, btkFSList(0)), kBtkOk);
  EXPECT_EQ(Dump(data), head + "\"/here\"" + middle + "\"/here\"\n");
  const btkWChar* const lent[] = {data.modules[2]->loadpoint, data.runnables[0]->loadpoint};
  EXPECT_TRUE(lent[0] == data.loadpoint && lent[1] == data.loadpoint);

  btkIStream* const stream = loader_->OpenStream(files_[0].Path().WideText());
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(stream->Release(), 0);  // the caller's is the only reference
}

TEST_F(LoaderTest, StopsAtTheFirstFault) {
  AddFile("a.tmfx", InRoot("<module id='first' name='n'/>"));
  const std::filesystem::path second = directory_.Path() / "b.tmfx";
  std::filesystem::create_directory(second);
  files_.Append(btkFSEntry(second.c_str()));
  AddFile("c.tmfx", InRoot("<module id='third' name='n'/>"));
  MfLdpDataT data;
  for (const int rounds : {1, 2}) {  // a directory, and nothing at all
    EXPECT_EQ(Load(data), kBtkMissing);
    EXPECT_EQ(data.modules.count, rounds);  // that of the file before
    EXPECT_TRUE(NothingIsLent(data));
    std::filesystem::remove(second);
  }
  directory_.Write("b.tmfx", InRoot("<x/>"));
  EXPECT_EQ(Load(data), kBtkUnexpected);
  EXPECT_EQ(data.modules.items, nullptr);
  EXPECT_EQ(loader_->Load(nullptr, BTK_W("/here"), files_), kBtkNullArgument);
}

// Failed allocations that are reported, and exceptions of the standard and of the XML library.
TEST_F(LoaderTest, SurvivesEveryFailedAllocation) {
  AddFile("a.tmfx", kEverything);
  AddFile("b.tmfx", InRoot("<runnable moduleref='m'/>"));
  MfLdpDataT warm;
  ASSERT_EQ(Load(warm), kBtkOk);
  for (const auto source : kReportedSources) {
    // By the code and how many modules are kept.
    std::map<std::string, int> outcomes = {
        {"0:5", 0}, {"112:0", 0}, {"112:5", 0}, {"1:0", 0}, {"1:5", 0}};
    SweepAllocations(source, [&](AllocationFault& fault) {
      MfLdpDataT data;
      fault.Arm();
      const BtkErrorT code = Load(data);
      fault.Disarm();
      EXPECT_TRUE(fault.Hit() || code == kBtkOk);
      EXPECT_EQ(NothingIsLent(data), code != kBtkOk);
      ++outcomes.at(std::to_string(code) + ":" + std::to_string(data.modules.count));
    });
    // A stream that cannot be made cannot be opened, and a parser that cannot be made is short
    // memory; both keep what the file before had. A failed parse keeps nothing.
    for (const char* outside : {"1:0", "1:5", "112:5"})
      EXPECT_EQ(outcomes[outside], source == AllocationFault::kOperatorNew ? 1 : 0) << outside;
  }

  const IgnoredLeaks ignored;  // of the XML library, when its own allocations fail
  const std::int64_t live = btkHostLiveAllocations();
  for (int n = 0, failed = 1; failed != 0; ++n) {
    {
      MfLdpDataT data;
      AllocationFault fault(AllocationFault::kThrowingNew, n);
      fault.Arm();
      try {
        EXPECT_EQ(Load(data), kBtkOk) << n;
      } catch (...) {
        EXPECT_TRUE(NothingIsLent(data)) << n;
      }
      failed = fault.Hit() ? 1 : 0;
      EXPECT_TRUE(failed != 0 || n > 100) << n;
    }
    ASSERT_EQ(btkHostLiveAllocations(), live) << n;
  }
}

TEST(Factories, MakeALoaderAndNothingElse) {
  for (const char* kind : {static_cast<const char*>(nullptr), "xml"}) {
    EXPECT_NE(DisposePtr<liLdpMfLoader>(liLdpMfLoader::CreateNew(kind)), nullptr);
    EXPECT_TRUE(!liLdpMfWriter::CreateNew(kind) && !liMfBuilder::CreateNew(kind));
  }
  AllocationFault fault(AllocationFault::kOperatorNew, 0);
  fault.Arm();
  EXPECT_EQ(liLdpMfLoader::CreateNew(nullptr), nullptr);
}

}  // namespace
}  // namespace tarnmf::test
