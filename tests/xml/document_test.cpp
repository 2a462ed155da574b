#include "tarnmf/dispose.h"

#include "platform/host/btkhost.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/everything.h"
#include "tests/xml/parse.h"
#include "xml/xml_input_source.h"
#include "xml/xml_platform.h"

namespace tarnmf::test {
namespace {

constexpr char kClass[] = R"(<class id="00000000-1111-2222-3333-444444444444"/>)";
constexpr char kModule[] = R"(<module id="m" name="n"/>)";
constexpr char kRunnable[] = R"(<runnable moduleref="m"/>)";

// The code of a document, with the numbers of modules, classes and runnables behind it.
std::string Counts(const std::string& document) {
  MfLdpDataT data;
  const BtkErrorT code = Parse(document, data);
  EXPECT_TRUE(code == kBtkOk || IsEmpty(data));
  if (code != kBtkOk) return std::to_string(code);
  return "0: " + std::to_string(data.modules.count) + " " + std::to_string(data.classes.count) +
         " " + std::to_string(data.runnables.count);
}

TEST(Root, IsChecked) {
  const struct {
    const char* document;
    const char* expected;
  } rows[] = {
      {R"(<tarnmanifest version="1"/>)", "0: 0 0 0"},
      {R"(<TarnModuleManifest VERSION=" 1x"></TarnModuleManifest>)", "0: 0 0 0"},
      {R"(<tarnclassmanifest version="1"> <!-- c --> </tarnclassmanifest>)", "0: 0 0 0"},
      {R"(<tarnrunnablemanifest version="1"/>)", "0: 0 0 0"},
      {R"(<tarnmanifest/>)", "42"},
      {R"(<tarnmanifest version="1" xmlns="urn:x"/>)", "42"},
      {R"(<tarnmanifest versio="1"/>)", "42"},
      {R"(<tarnmanifest version="2"/>)", "416"},
      {R"(<tarnmanifest version="x"/>)", "416"},
      {R"(<tarnmanifest version=""/>)", "432"},
      {R"(<tarnmanifest version="1"><module/></tarnmanifest>)", "1"},
      {R"(<tarnmanifest version="2"><module/></tarnmanifest>)", "416"},
      {R"(<manifest version="2"/>)", "42"},
      {R"(<x:tarnmanifest version="1"/>)", "42"},
      {R"(<tarnmanifest version="1"><![CDATA[x]]></tarnmanifest>)", "42"},
      {R"(<tarnmanifest version="1"><?p i?></tarnmanifest>)", "42"},
      {R"(<!DOCTYPE tarnmanifest [<!ENTITY e "x">]><tarnmanifest version="1">&e;</tarnmanifest>)",
       "42"},
      {R"(<tarnmanifest version=""><x/></tarnmanifest>)", "432"},
      {R"(<tarnmanifest version="2147483648"/>)", "432"},
      {R"(<tarnmanifest version="2" y=""/>)", "42"},
      {R"(<tarnmodulemanifest version="1"><class/></tarnmodulemanifest>)", "42"},
      {R"(<tarnclassmanifest version="1"><runnables/></tarnclassmanifest>)", "42"},
      {R"(<tarnrunnablemanifest version="1"><module/></tarnrunnablemanifest>)", "42"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Counts(row.document), row.expected) << row.document;
}

// The rule of single and list elements, for each kind under its own root and mixed.
TEST(DocumentLevel, AdmitsOneElementOrAList) {
  const struct {
    const char* kind;
    const char* item;
    const char* one;
    const char* two;
  } kinds[] = {
      {"module", kModule, "0: 1 0 0", "0: 2 0 0"},
      {"class", kClass, "0: 0 1 0", "0: 0 2 0"},
      {"runnable", kRunnable, "0: 0 0 1", "0: 0 0 2"},
  };
  for (const auto& kind : kinds) {
    const std::string item = kind.item;
    const std::string list = std::string(kind.kind) + (kind.kind[0] == 'c' ? "es" : "s");
    const auto inRoot = [&](const std::string& content) {
      const std::string root = std::string("tarn") + kind.kind + "manifest";
      return "<" + root + " version=\"1\">" + content + "</" + root + ">";
    };
    const auto inList = [&](const std::string& content) {
      return "<" + list + ">" + content + "</" + list + ">";
    };
    SCOPED_TRACE(kind.kind);
    EXPECT_EQ(Counts(inRoot(item)), kind.one);
    EXPECT_EQ(Counts(inRoot(item + item)), "261");
    // A second one is refused before it is read.
    EXPECT_EQ(Counts(inRoot(item + "<" + kind.kind + "/>")), "261");
    EXPECT_EQ(Counts(inRoot(inList(item + item))), kind.two);
    EXPECT_EQ(Counts(inRoot(inList(item) + item)), kind.two);
    EXPECT_EQ(Counts(inRoot(item + inList(item))), kind.two);
    EXPECT_EQ(Counts(inRoot(item + inList("") + item)), kind.two);
    EXPECT_EQ(Counts(inRoot("<" + list + " id=\"x\"/>")), "42");
    EXPECT_EQ(Counts(inRoot(inList(inList("")))), "42");
    EXPECT_EQ(Counts(InRoot(item + item)), kind.two);
    EXPECT_EQ(Counts(InRoot(item + inList(item))), kind.two);
    EXPECT_EQ(Counts(InRoot("<" + list + " id=\"x\"/>")), "42");
  }
}

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

TEST(Parse, DetectsEncodings) {
  const std::string latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" +
                            InRoot("<module id=\"\xe9\" name=\"n\"/>");
  const std::string dump =
      "0\nmodule id=\"\xc3\xa9\" loadpoint=\"\"+\n  impl name=\"n\"+ path=\"\"+ version=1\n";
  EXPECT_EQ(ParseAndDump(latin), dump);
  std::string utf16("\xff\xfe", 2);
  for (const char unit : InRoot("<module id=\"\xe9\" name=\"n\"/>"))
    utf16 += {unit, '\0'};
  EXPECT_EQ(ParseAndDump(utf16), dump);
}

// No way of ending a document leaves anything behind. A failing read is the end of the input.
TEST(Parse, SurvivesACutAtEveryByte) {
  const std::string whole = kEverything;
  const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
  // The code, or what was read when all went well; records are only counted, for some ids are fresh.
  const auto parse = [&parser](MemoryStream& stream) {
    MfLdpDataT data;
    const BtkErrorT code = parser->Parse(&data, &stream);
    EXPECT_TRUE(code == kBtkOk || IsEmpty(data));
    EXPECT_EQ(stream.References(), 1);
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

// Where the XML library gives up, what it has built by then is the document.
TEST(Parse, ReadsDamagedDocumentsUpToTheDamage) {
  const std::string open = "<tarnmanifest version=\"1\">";
  const std::string one = open + kModule;
  const struct {
    std::string document;
    const char* expected;
  } rows[] = {
      {one + "</wrong>", "0: 1 0 0"},
      {one + "<module id=\"m\" name=\"n", "0: 1 0 0"},
      {one + "<module id=\"m\" id=\"m\" name=\"n\"/></tarnmanifest>", "0: 1 0 0"},
      {one + "<module id=\"m\"", "0: 1 0 0"},
      {one + "<module id=\"m\">", "1"},
      {one + "&undeclared;" + kModule + "</tarnmanifest>", "0: 1 0 0"},
      {one + "</tarnmanifest>" + one + "</tarnmanifest>", "0: 1 0 0"},
      {one + "</tarnmanifest> text", "0: 1 0 0"},
      {"text" + one + "</tarnmanifest>", "42"},
      {"", "42"},
      {" ", "42"},
      {"no xml", "42"},
      {"\xff\xff\xff", "42"},
      {"<", "42"},
      {one + "<!-- " + kModule, "0: 1 0 0"},
      // Bytes are decoded ahead of what is read of them.
      {one + "\xff" + kModule + "</tarnmanifest>", "42"},
      {one + "&#xD800;</tarnmanifest>", "0: 1 0 0"},
      {std::string("<?xml version=\"1.0\" encoding=\"no-such\"?>") + one + "</tarnmanifest>", "42"},
      {std::string("\xef\xbb\xbf") + one + "</tarnmanifest>", "0: 1 0 0"},
      // A default that the document declares itself counts like a given attribute.
      {"<!DOCTYPE tarnmanifest [<!ATTLIST tarnmanifest version CDATA \"1\">]><tarnmanifest/>",
       "0: 0 0 0"},
      {"<!DOCTYPE tarnmanifest [<!ATTLIST tarnmanifest more CDATA \"1\">]>" + open +
           "</tarnmanifest>",
       "42"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Counts(row.document), row.expected) << row.document;
}

template <class Element>
void ExpectExactSize(const MfArrayT<Element>& list, std::int32_t more = 0) {
  const auto count = static_cast<std::size_t>(list.count + more);
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
    EXPECT_EQ(Counts(InRoot(kModule)), "0: 1 0 0");
  }
}

}  // namespace
}  // namespace tarnmf::test
