// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/ldp_writer.h"

#include "platform/memory.h"
#include "tests/support/documents.h"
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
  AddFile("\xc3\xa9 \xf0\x9f\x98\x80.tmfx", InRoot("<runnable moduleref='m'/>"));
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

TEST(Factories, MakeALoaderAndNothingElse) {
  for (const char* kind : {static_cast<const char*>(nullptr), "xml"}) {
    EXPECT_NE(DisposePtr<liLdpMfLoader>(liLdpMfLoader::CreateNew(kind)), nullptr);
    EXPECT_TRUE(!liLdpMfWriter::CreateNew(kind) && !liMfBuilder::CreateNew(kind));
  }
}

}  // namespace
}  // namespace tarnmf::test
