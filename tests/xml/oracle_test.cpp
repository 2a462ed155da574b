// SPDX-License-Identifier: Apache-2.0
// The tree that the readers walk says what the XML library's own DOM would have said.
#include <filesystem>
#include <gtest/gtest.h>
#include <random>

#include "tests/support/documents.h"
#include "tests/support/everything.h"
#include "tests/support/ignored_leaks.h"
#include "tests/support/temp_directory.h"
#include "tests/xml/dom_oracle.h"

namespace tarnmf::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kWholeReads = 1 << 20;

#if defined(TARNMF_SLOW_BUILD)
constexpr int kMutations = 10'000;
#else
constexpr int kMutations = 100'000;
#endif

void ExpectSame(const std::string& document, std::size_t readLimit = kWholeReads) {
  ASSERT_EQ(Outcome(document, readLimit), OutcomeByDom(document, readLimit)) << document;
}

// Odd declarations, which the XML library judges itself, and odd content.
const std::string kPieces[] = {
    "<?xml version=\"1.0\"?>",
    "<?xml version=\"1.1\"?>",
    "<?xml version=\"1. \"?>",
    "<?xml version=\"1.0\" encoding=\"UTF-16\"?>",
    "<?xml version=\"1.0\" standalone=\"yes\"?>",
    "<!DOCTYPE tarnmanifest [<!ENTITY e \"x\"><!ENTITY f \"&e;<module/>\">]>",
    "<!DOCTYPE tarnmanifest [<!ENTITY e \"</modules>\"><!ENTITY f \"<modules>\">]>",
    "<!DOCTYPE a [<!ATTLIST module id CDATA \"d\" type NMTOKEN #FIXED \"t\">]>",
    "<!DOCTYPE a [<!ATTLIST module \xc3\x97 CDATA \"d\"><!ELEMENT modules (module*)>]>",
    "<!DOCTYPE a [<!ELEMENT tarnmanifest (modules)><!ELEMENT modules (module)*>]>",
    "<!DOCTYPE a SYSTEM \"/nowhere.dtd\">",
    "<!DOCTYPE a PUBLIC \"p\" \"/nowhere.dtd\" [",
    "<!DOCTYPE a [<!ENTITY % p \"<!ENTITY e 'v'>\">%p;]>",
    "<!NOTATION n SYSTEM \"x\">",
    "<!ENTITY x SYSTEM \"/nowhere\">",
    "&e;",
    "&f;",
    "&x;",
    "&lt;",
    "&#65;",
    "&#x0;",
    "&",
    "%p;",
    "<!-- c -->",
    "<!-- c -- d -->",
    "<?p i?>",
    "<?xml-model href=\"x\"?>",
    "<?1 i?>",
    "<![CDATA[x]]>",
    "<![CDATA[]]>",
    "]]>",
    "<modules>",
    "</modules>",
    "<module",
    "/>",
    ">",
    "<",
    "</",
    "=",
    "\"",
    "'",
    " ",
    "\n",
    "\r\n",
    "\t",
    "\xc2\x85",
    "\xe2\x80\xa8",
    "\x01",
    "\xff",
    "\xc3\xa9",
    "\xf0\x9f\x98\x80",
    "id=\"a\"",
    "ID=\"a\"",
    "name='n'",
    "xmlns=\"u\"",
    "x:y=\"z\"",
    "<tarnmanifest version=\"1\">",
    "</tarnmanifest>",
    "version=\"1\"",
    "text",
};

std::string Mutated(std::string document, std::mt19937& random) {
  const auto below = [&random](std::size_t limit) {
    return random() % std::max<std::size_t>(limit, 1);
  };
  for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
    const std::size_t at = below(document.size() + 1);
    const std::string& piece = kPieces[below(std::size(kPieces))];
    switch (below(8)) {
      case 0:
        document.resize(at);
        break;
      case 1:
        document.erase(at, below(12));
        break;
      case 2:
        if (at < document.size()) document[at] = static_cast<char>(random());
        break;
      case 3:
        document.insert(at, document.substr(below(document.size()), below(60)));
        break;
      case 4:
        document.insert(0, piece);
        break;
      default:
        document.insert(at, piece);
    }
  }
  return document;
}

class OracleTest : public testing::Test {
 protected:
  OracleTest() {
    for (const FileCase& one : ReadDocumentCases(TARNMF_CASES))
      documents_.push_back(one.input);
    documents_.push_back(kEverything);
    for (const char* folder : {"fuzz/corpus", "samples"}) {
      for (const auto& entry : fs::recursive_directory_iterator(fs::path(TARNMF_SOURCE) / folder)) {
        if (entry.is_regular_file()) documents_.push_back(ReadFile(entry.path()));
      }
    }
  }

  std::vector<std::string> documents_;
};

TEST_F(OracleTest, AgreesOnDocuments) {
  for (const std::string& document : documents_) {
    for (const std::size_t readLimit : {kWholeReads, std::size_t{1}, std::size_t{7}})
      ExpectSame(document, readLimit);
  }
}

TEST_F(OracleTest, AgreesOnACutAtEveryByte) {
  const std::string whole = kEverything;
  for (std::size_t cut = 0; cut < whole.size(); ++cut)
    ExpectSame(whole.substr(0, cut));
}

// Texts that reach from one of the XML library's buffers into the next, and many attributes.
TEST_F(OracleTest, AgreesOnLongTextsAndManyAttributes) {
  for (const std::size_t length : {1'000U, 16'383U, 16'384U, 50'000U, 200'000U}) {
    const std::string text(length, 'x');
    ExpectSame(InRoot("<runnable moduleref='m'><app nameid='a'><args><arg>" + text +
                      " y</arg></args><env><set name='" + text + "'>" + text +
                      "<!--c-->z</set></env></app></runnable>"),
               997);
  }
  std::string attributes;
  for (int i = 0; i < 400; ++i)
    attributes += " a" + std::to_string(i * 7919 % 400) + "='v'";
  for (const char* more : {"", " id='m' name='n'", " ID='m' id='m' name='n'", " zzz='1'"}) {
    ExpectSame(InRoot("<module" + std::string(more) + attributes + "/>"));
    ExpectSame(
        InRoot("<module type='t' path='p' name='n' loadpoint='l' id='m' explicitname='no' "
               "forcepath='no' description='d' apilevel='1' version='1' private='no' "
               "abits='32' TYPE='t' PATH='' NAME='' DESCRIPTION='x' Description=''" +
               std::string(more) + "/>"));
  }
}

// Files that a document makes the XML library read. It does not clean up after one that it refuses, be
// it for its own tree or for ours.
TEST_F(OracleTest, AgreesOnExternalFiles) {
  const IgnoredLeaks ignored;
  const TempDirectory root;
  const std::string dtd = root.Write("d.dtd",
                                     "<!ELEMENT tarnmanifest (modules*)><!ENTITY e \"v\">"
                                     "<!ATTLIST module id CDATA \"d\" path CDATA #FIXED \"p\">");
  const std::string module = root.Write("m.xml", "<module id='x' name='n'/>");
  const std::string broken = root.Write("b.xml", "<module id='x' name='n'>");
  const std::string newer = root.Write("n.xml", "<?xml version='1.1'?><!-- \xc2\x85 -->");
  for (const std::string& file : {dtd, module, broken, newer, root.At(), dtd + "x"}) {
    for (const std::string content :
         {"<modules><module name='n'/></modules>", "<modules>&f;</modules>", "&f;",
          "<modules><module id='&e;' name='n'/>&f;<module id='y' name='&f;'/></modules>",
          "<runnable moduleref='m'><app nameid='a'><args><arg>&f;</arg><arg>a&f;</arg></args>"
          "<env><set name='a'>b&f;c</set></env></app></runnable>"}) {
      const std::string document = "<tarnmanifest version='1'>" + content + "</tarnmanifest>";
      ExpectSame("<!DOCTYPE tarnmanifest SYSTEM '" + file + "'>" + document);
      ExpectSame("<!DOCTYPE tarnmanifest SYSTEM '" + dtd + "' [<!ENTITY f SYSTEM '" + file +
                 "'>]>" + document);
    }
  }
}

TEST_F(OracleTest, AgreesOnMutations) {
  std::mt19937 random(20);
  for (int i = 0; i < kMutations; ++i) {
    const std::string document = Mutated(documents_[random() % documents_.size()], random);
    ExpectSame(document, i % 4 == 0 ? 1 + random() % 50 : kWholeReads);
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace tarnmf::test
