// Every allocation fails once, and every way of throwing is taken.
#include <gtest/gtest.h>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "platform/host/btkhost.h"
#include "support/ignore_refusal.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/documents.h"
#include "tests/support/everything.h"
#include "tests/support/ignored_leaks.h"
#include "tests/support/memory_stream.h"
#include "tests/support/parse.h"
#include "tests/support/record_dump.h"

namespace tarnmf::test {
namespace {

// A parser, and a container that holds a record already.
class FaultTest : public testing::Test {
 protected:
  FaultTest() {
    MfLdpDataT data;
    MemoryStream stream(kEverything);
    EXPECT_EQ(parser_->Parse(&data, &stream), kBtkOk);
  }

  // A parse that must leave `data` empty unless it goes well.
  BtkErrorT ParseOnTop(MfLdpDataT& data, MemoryStream& stream, AllocationFault* fault = nullptr) {
    MemoryStream earlier(InRoot(R"(<module id="a" name="b"/>)"));
    EXPECT_EQ(parser_->Parse(&data, &earlier), kBtkOk);
    if (fault != nullptr) fault->Arm();
    const BtkErrorT code = parser_->Parse(&data, &stream);
    EXPECT_TRUE(code == kBtkOk || IsEmpty(data));
    return code;
  }

  const DisposePtr<liMfStmParser> parser_{liMfStmParser::CreateNew(nullptr)};
};

// Each document ends with its own code once nothing fails: one with everything, the readers of the
// other roots, lists that grow beyond their first room, names that need memory to be compared, and
// records that are refused when they have joined a list.
TEST_F(FaultTest, EachFailedAllocationIsReportedAndLeavesNothing) {
  std::string modules, classes;
  for (int i = 0; i < 9; ++i) {
    modules += R"(<module id="m" name="n"><preload name="x"/><preload name="y"/><preload name="z"/>
                  </module>)";
    classes += R"(<class id="$1"><clientside multiplicity="perLdp"><module name="n"/></clientside>
                  </class>)";
  }
  const auto inRoot = [](const std::string& root, const std::string& content) {
    return "<" + root + " version=\"1\">" + WithIds(content) + "</" + root + ">";
  };
  const struct {
    std::string document;
    BtkErrorT code;
  } rows[] = {
      {kEverything, kBtkOk},
      {inRoot("tarnmodulemanifest", "<modules>" + modules + "</modules>"), kBtkOk},
      {inRoot("tarnclassmanifest", "<classes>" + classes + "</classes>"), kBtkOk},
      {inRoot("tarnrunnablemanifest",
              R"(<runnable moduleref="m"><app nameid="a"/><app nameid="b"/></runnable>)"),
       kBtkOk},
      {InRoot(modules + "<\xc3\x84/>"), kBtkUnexpected},
      {inRoot("tarnmodulemanifestofalengththatdoesnotfit", ""), kBtkUnexpected},
      {InRoot("<module name='n'/>"), kBtkMissing},
      {inRoot("tarnclassmanifest", R"(<class id="$1"><clientside multiplicity="perLdp">
                                      <module name="n" type="t"/></clientside></class>)"),
       kBtkNotSharedLib},
  };
  int failures = 0;
  for (const auto& row : rows) {
    MfLdpDataT whole;
    MemoryStream wholeStream(row.document);
    EXPECT_EQ(ParseOnTop(whole, wholeStream), row.code);
    const std::string dump = DumpWithoutFreshIds(whole);
    for (const auto source : kReportedSources) {
      failures += SweepAllocations(source, [&](AllocationFault& fault) {
        MfLdpDataT data;
        MemoryStream stream(row.document);
        const BtkErrorT code = ParseOnTop(data, stream, &fault);
        if (fault.Hit() && code == kBtkNoMemory) return;
        // Shrinking a list may fail without harm, but nothing is lost.
        EXPECT_EQ(code, row.code) << row.document;
        EXPECT_EQ(DumpWithoutFreshIds(data), dump);
      });
    }
  }
  EXPECT_GT(failures, 400);
}

TEST_F(FaultTest, AParserThatCannotBeMade) {
  AllocationFault fault(AllocationFault::kOperatorNew, 0);
  fault.Arm();
  EXPECT_EQ(liMfStmParser::CreateNew(nullptr), nullptr);
  EXPECT_TRUE(fault.Hit());
}

// What a document says of itself can make the XML library throw, too.
TEST_F(FaultTest, DocumentsThatTheXmlLibraryThrowsFor) {
  MfLdpDataT data;
  MemoryStream stream("<?xml version=\"1. \"?>" + InRoot(""));
  EXPECT_THROW(IgnoreRefusal(ParseOnTop(data, stream)), xercesc::DOMException);
  EXPECT_TRUE(IsEmpty(data));
}

TEST_F(FaultTest, ExceptionsOfTheStreamPassThrough) {
  for (std::size_t offset = 0; offset < sizeof kEverything; offset += 97) {
    SCOPED_TRACE(offset);
    const LeakCheck check;
    MfLdpDataT data;
    MemoryStream stream(kEverything);
    stream.LimitReads(64);
    stream.ThrowFrom(offset);
    EXPECT_THROW(IgnoreRefusal(ParseOnTop(data, stream)), std::runtime_error);
    EXPECT_TRUE(IsEmpty(data));
    EXPECT_EQ(stream.References(), 1);
  }
}

// The XML library does not clean up after an allocation of its own that fails: it leaks blocks and
// may lose the stream adaptor that it made. So only what is the library's is looked at here.
TEST_F(FaultTest, ExceptionsOfTheXmlLibraryPassThrough) {
  const IgnoredLeaks ignored;
  const std::int64_t before = btkHostLiveAllocations();
  int thrown = 0;
  for (int n = 0, more = true; more; ++n) {
    MfLdpDataT data;
    MemoryStream stream(kEverything);
    AllocationFault fault(AllocationFault::kThrowingNew, n);
    try {
      EXPECT_EQ(ParseOnTop(data, stream, &fault), kBtkOk) << n;
    } catch (const xercesc::OutOfMemoryException&) {
      ++thrown;
      EXPECT_TRUE(IsEmpty(data));
      EXPECT_EQ(btkHostLiveAllocations(), before);
    }
    more = fault.Hit();
  }
  EXPECT_GT(thrown, 100);
}

}  // namespace
}  // namespace tarnmf::test
