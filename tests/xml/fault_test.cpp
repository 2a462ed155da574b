// Every allocation fails once, and every way of throwing is taken.
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "tarnmf/dispose.h"

#include "platform/host/btkhost.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/everything.h"
#include "tests/support/ignored_leaks.h"
#include "tests/xml/parse.h"

namespace tarnmf::test {
namespace {

struct WarmParser {
  WarmParser() : parser(liMfStmParser::CreateNew(nullptr)) {
    MfLdpDataT data;
    MemoryStream stream(kEverything);
    EXPECT_EQ(parser->Parse(&data, &stream), kBtkOk);
  }
  DisposePtr<liMfStmParser> parser;
};

// Each document ends with its own code once nothing fails: one with everything, the readers of the
// other roots, lists that grow beyond their first room, names that need memory to be compared, and
// records that are refused when they have joined a list.
TEST(Faults, EachFailedAllocationIsReportedAndLeavesNothing) {
  const WarmParser warm;
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
    for (const auto source : {AllocationFault::kPlatform, AllocationFault::kOperatorNew}) {
      bool failed = true;
      for (int n = 0; failed; ++n) {
        const std::int64_t before = LiveAllocations();
        {
          MfLdpDataT data;
          MemoryStream earlier(InRoot(R"(<module id="a" name="b"/>)"));
          ASSERT_EQ(warm.parser->Parse(&data, &earlier), kBtkOk);
          MemoryStream stream(row.document);
          AllocationFault fault(source, n);
          fault.Arm();
          const BtkErrorT code = warm.parser->Parse(&data, &stream);
          failed = fault.Hit();
          failures += failed ? 1 : 0;
          // Shrinking a list may fail without harm.
          if (!failed || code != kBtkNoMemory) {
            ASSERT_EQ(code, row.code) << row.document << n;
          }
          EXPECT_TRUE(code == kBtkOk || IsEmpty(data)) << n;
        }
        ASSERT_EQ(LiveAllocations(), before) << row.document << n;
      }
    }
  }
  EXPECT_GT(failures, 400);
}

TEST(Faults, ParserThatCannotBeMade) {
  const DisposePtr<liMfStmParser> once(liMfStmParser::CreateNew(nullptr));
  AllocationFault fault(AllocationFault::kOperatorNew, 0);
  fault.Arm();
  EXPECT_EQ(liMfStmParser::CreateNew(nullptr), nullptr);
  EXPECT_TRUE(fault.Hit());
}

// What a document says of itself can make the XML library throw, too.
TEST(Faults, DocumentsThatTheXmlLibraryThrowsFor) {
  MfLdpDataT data;
  ASSERT_EQ(Parse(InRoot(R"(<module id="a" name="b"/>)"), data), kBtkOk);
  EXPECT_THROW(IgnoreRefusal(Parse("<?xml version=\"1. \"?>" + InRoot(""), data)),
               xercesc::DOMException);
  EXPECT_TRUE(IsEmpty(data));
}

TEST(Faults, ExceptionsOfTheStreamPassThrough) {
  const WarmParser warm;
  for (std::size_t offset = 0; offset < sizeof kEverything; offset += 97) {
    const std::int64_t before = LiveAllocations();
    {
      MfLdpDataT data;
      MemoryStream earlier(InRoot(R"(<module id="a" name="b"/>)"));
      ASSERT_EQ(warm.parser->Parse(&data, &earlier), kBtkOk);
      MemoryStream stream(kEverything);
      stream.LimitReads(64);
      stream.ThrowFrom(offset);
      EXPECT_THROW(IgnoreRefusal(warm.parser->Parse(&data, &stream)), std::runtime_error);
      EXPECT_TRUE(IsEmpty(data));
      EXPECT_EQ(stream.References(), 1);
    }
    EXPECT_EQ(LiveAllocations(), before) << "offset " << offset;
  }
}

// The XML library does not clean up behind an allocation of its own that fails: it leaks blocks and
// may lose the stream adaptor that it made. So only what is the library's is looked at here.
TEST(Faults, ExceptionsOfTheXmlLibraryPassThrough) {
  const WarmParser warm;
  const IgnoredLeaks ignored;
  const std::int64_t before = btkHostLiveAllocations();
  int thrown = 0;
  bool failed = true;
  for (int n = 0; failed; ++n) {
    MfLdpDataT data;
    MemoryStream earlier(InRoot(R"(<module id="a" name="b"/>)"));
    ASSERT_EQ(warm.parser->Parse(&data, &earlier), kBtkOk);
    MemoryStream stream(kEverything);
    AllocationFault fault(AllocationFault::kThrowingNew, n);
    fault.Arm();
    try {
      EXPECT_EQ(warm.parser->Parse(&data, &stream), kBtkOk) << n;
    } catch (const xercesc::OutOfMemoryException&) {
      ++thrown;
      EXPECT_TRUE(IsEmpty(data));
      EXPECT_EQ(btkHostLiveAllocations(), before);
    }
    failed = fault.Hit();
  }
  EXPECT_GT(thrown, 100);
}

}  // namespace
}  // namespace tarnmf::test
