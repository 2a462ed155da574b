// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <xercesc/dom/DOMException.hpp>

#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "platform/host/btkhost.h"
#include "platform/memory.h"
#include "support/ignore_refusal.h"
#include "tests/support/documents.h"
#include "tests/support/everything.h"
#include "tests/support/fault.h"
#include "tests/support/memory_stream.h"
#include "tests/support/parse.h"
#include "tests/support/record_dump.h"
#include "xml/xml_input_source.h"
#include "xml/xml_platform.h"

namespace tarnmf::test {
namespace {

constexpr char kClass[] = R"(<class id="00000000-1111-2222-3333-444444444444"/>)";
constexpr char kModule[] = R"(<module id="m" name="n"/>)";
constexpr char kRunnable[] = R"(<runnable moduleref="m"/>)";

TEST(Parse, AppendsAndKeepsNothingOnFailure) {
  MfLdpDataT data;
  data.loadpoint = btk_wcsdup(BTK_W("here"));
  ASSERT_EQ(Parse(InRoot(std::string(kModule) + kClass), data), kBtkOk);
  const MfModuleT* const first = data.modules[0];
  ASSERT_EQ(
      Parse(InRoot(std::string("<modules>") + kModule + kModule + "</modules>" + kRunnable), data),
      kBtkOk);
  EXPECT_EQ(data.modules.count, 3);
  EXPECT_EQ(data.modules[0], first);
  EXPECT_EQ(data.classes.count, 1);
  EXPECT_EQ(data.runnables.count, 1);
  EXPECT_EQ(Parse(InRoot(""), data), kBtkOk);
  EXPECT_EQ(data.modules.count, 3);
  EXPECT_EQ(Parse(InRoot(std::string(kModule) + "<x/>"), data), kBtkUnexpected);
  EXPECT_TRUE(IsEmpty(data));
  EXPECT_EQ(Text(data.loadpoint), "here");
}

TEST(Parse, RefusesNullPointers) {
  const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew("any"));
  MemoryStream stream(InRoot(kModule));
  MfLdpDataT data;
  EXPECT_EQ(parser->Parse(nullptr, &stream), kBtkNullArgument);
  ASSERT_EQ(parser->Parse(&data, &stream), kBtkOk);
  EXPECT_EQ(parser->Parse(&data, nullptr), kBtkNullArgument);
  EXPECT_EQ(data.modules.count, 1);
}

// No way of ending a document leaves anything behind. A failing read is the end of the input.
TEST(Parse, SurvivesACutAtEveryByte) {
  const std::string whole = kEverything;
  // The code, or what was read when all went well; records are only counted, for some ids are fresh.
  const auto parse = [](MemoryStream& stream) {
    MfLdpDataT data;
    const BtkErrorT code = Parse(stream, data);
    return code == kBtkOk ? -data.modules.count - data.classes.count - data.runnables.count
                          : static_cast<std::int32_t>(code);
  };
  MemoryStream tinyReads(whole);
  tinyReads.LimitReads(1);
  const std::int32_t all = parse(tinyReads);
  EXPECT_EQ(all, -8);
  std::int32_t most = 0;
  const std::int64_t before = LiveAllocations();
  for (std::size_t cut = 0; cut < whole.size(); ++cut) {
    std::int32_t read = 0;
    {
      MemoryStream cutStream(whole.substr(0, cut));
      MemoryStream failingStream(whole);
      failingStream.FailFrom(cut);
      read = parse(cutStream);
      EXPECT_EQ(parse(failingStream), read) << cut;
    }
    ASSERT_EQ(LiveAllocations(), before) << cut;
    // What is read grows with the document.
    if (read > 0) continue;
    ASSERT_LE(read, most) << cut;
    most = read;
  }
  EXPECT_EQ(most, all);
}

template <class Element>
void ExpectExactSize(const MfArrayT<Element>& list, std::int32_t more = 0) {
  const auto count = static_cast<std::size_t>(list.count) + static_cast<std::size_t>(more);
  EXPECT_EQ(btkHostBlockSize(list.items), count * sizeof(Element));
}

TEST(Parse, HandsOverListsOfExactSize) {
  MfLdpDataT data;
  ASSERT_EQ(Parse(kEverything, data), kBtkOk);
  if (btkHostBlockSize(data.classes.items) == 0) GTEST_SKIP() << "blocks do not know their size";
  for (int document = 0; document < 2; ++document) {
    ExpectExactSize(data.classes);
    ExpectExactSize(data.modules);
    ExpectExactSize(data.runnables);
    ASSERT_EQ(Parse(kEverything, data), kBtkOk);
  }
  const MfModuleT& module = *data.modules[0];
  ExpectExactSize(module.impls);
  ExpectExactSize(module.impls[0]->preloads);
  ExpectExactSize(module.impls[1]->preloads);
  EXPECT_EQ(module.impls[2]->preloads.items, nullptr);
  const MfRunnableT& runnable = *data.runnables[0];
  ExpectExactSize(runnable.services);
  ExpectExactSize(runnable.services[0]->args, 1);
  ExpectExactSize(runnable.services[0]->env);
  ExpectExactSize(runnable.apps[0]->args, 1);
  ExpectExactSize(runnable.launchers[0]->types);
}

TEST(InputSource, CountsWhatItReadsAndHoldsItsStream) {
  MemoryStream stream("0123456789");
  stream.FailFrom(8, -7);
  std::unique_ptr<xercesc::BinInputStream> adaptor(btkXMLInputSource(&stream).makeStream());
  EXPECT_EQ(stream.References(), 2);
  XMLByte buffer[10];
  EXPECT_EQ(adaptor->readBytes(buffer, 3), 3U);
  EXPECT_EQ(adaptor->readBytes(buffer, 10), 5U);
  EXPECT_EQ(buffer[0], '3');
  EXPECT_EQ(adaptor->readBytes(buffer, 10), 0U);
  EXPECT_EQ(adaptor->curPos(), 8U);
  EXPECT_EQ(adaptor->getContentType(), nullptr);
  adaptor.reset();
  EXPECT_EQ(stream.References(), 1);
}

TEST(XmlPlatform, StaysInUseWhileTheLibraryIsLoaded) {
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(AcquireXmlPlatform(), kBtkOk);
    ReleaseXmlPlatform();
    MfLdpDataT data;
    EXPECT_EQ(Parse(InRoot(kModule), data), kBtkOk);
  }
}

// What a document says of itself can make the XML library throw, too.
TEST(Parse, PassesExceptionsOfTheXmlLibrary) {
  MfLdpDataT data;
  EXPECT_THROW(IgnoreRefusal(Parse("<?xml version=\"1. \"?>" + InRoot(""), data)),
               xercesc::DOMException);
}

TEST(Parse, PassesExceptionsOfTheStream) {
  const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
  for (std::size_t offset = 0; offset < sizeof kEverything; offset += 97) {
    SCOPED_TRACE(offset);
    const LeakCheck check;
    MfLdpDataT data;
    MemoryStream stream(kEverything);
    stream.LimitReads(64);
    stream.ThrowFrom(offset);
    EXPECT_THROW(IgnoreRefusal(parser->Parse(&data, &stream)), std::runtime_error);
    EXPECT_TRUE(IsEmpty(data));
    EXPECT_EQ(stream.References(), 1);
  }
}

}  // namespace
}  // namespace tarnmf::test
