// SPDX-License-Identifier: Apache-2.0
// How documents are read, in whatever encoding and however broken they are.
#include <algorithm>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <string>
#include <utf8.h>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>

#include "check/manifest.h"
#include "tests/check/marked.h"
#include "tests/support/case_file.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::check {
namespace {

std::unique_ptr<const Manifest> Read(const std::string& bytes) {
  auto manifest = std::make_unique<Manifest>(Source::OfManifest("test.tmfx", bytes));
  ParseDocument(*manifest);
  return manifest;
}

// Whether the XML library reads to the end.
bool IsWellFormedToTheLibrary(const std::string& bytes) {
  xercesc::XercesDOMParser parser;
  xercesc::HandlerBase throwing;  // on a fatal error
  parser.setErrorHandler(&throwing);
  const auto* const begin = reinterpret_cast<const XMLByte*>(bytes.data());
  const xercesc::MemBufInputSource source(begin, bytes.size(), "");
  try {
    parser.parse(source);
    return true;
  } catch (const xercesc::SAXException&) {
  } catch (const xercesc::DOMException&) {  // the version is not known
  }
  return false;
}

std::string PlaceText(const Source& source, Span span) {
  const Position begin = source.At(span.begin);
  const Position end = source.At(span.end);
  return fmt::format("{}:{}-{}:{}", begin.line, begin.column, end.line, end.column);
}

// The nodes below one, as short as can be: <e a=value>…</e>, 'text', [CDATA], !comment, ?name, &name;
std::string Outline(const Document& document, NodeId parent) {
  std::string text;
  for (const NodeId id : document.ChildrenOf(parent)) {
    switch (document[id].kind) {
      case NodeKind::kElement:
        text += fmt::format("<{}", document.Name(id));
        for (const Attribute& each : document.AttributesOf(id))
          text += fmt::format(" {}={}{}", document.Name(each), each.text, each.isKnown ? "" : "?");
        text += fmt::format(">{}</>", Outline(document, id));
        break;
      case NodeKind::kText:
        text += fmt::format("'{}'", document.TextOf(id));
        break;
      case NodeKind::kCData:
        text += fmt::format("[{}]", document.TextOf(id));
        break;
      case NodeKind::kComment:
        text += fmt::format("!{}", document.source->Text(document[id].content));
        break;
      case NodeKind::kInstruction:
        text += fmt::format("?{}", document.Name(id));
        break;
      case NodeKind::kEntity:
        text += fmt::format("&{};", document.Name(id));
        break;
      case NodeKind::kDocument:
        break;
    }
  }
  return text;
}

// On one line.
std::string Outline(const Manifest& manifest) {
  std::string text;
  for (const char c : Outline(manifest.document, kDocumentNode))
    text += c == '\n' ? "\\n" : c == '\r' ? "\\r" : c == '\1' ? "\\x01" : std::string(1, c);
  return text;
}

TEST(Document, FaultsAreToldWhereTheyAre) {
  for (const test::FileCase& one :
       test::ReadCaseFile(std::string(TARNMF_CASES) + "/faults.cases")) {
    const std::string bare = test::Unmarked(one.input);
    const auto manifest = Read(bare);
    const auto fault =
        std::find_if(manifest->findings.begin(), manifest->findings.end(),
                     [](const Finding& finding) { return finding.rule == Rule::kNotWellFormed; });
    ASSERT_NE(fault, manifest->findings.end()) << one.name;
    EXPECT_FALSE(manifest->isWellFormed || IsWellFormedToTheLibrary(bare)) << one.name;
    EXPECT_LE(manifest->trustedEnd, manifest->source.Text().size()) << one.name;
    EXPECT_EQ(fault->message, one.result + "; the rest of this file is not judged") << one.name;
    const std::size_t begin = one.input.find('^');
    const std::size_t end = one.input.find('^', begin + 1);
    const std::size_t mark = manifest->source.MarkSize();
    EXPECT_EQ(fault->place.span.begin + mark, begin) << one.name;
    if (manifest->source.IsUtf8()) {
      EXPECT_EQ(fault->place.span.end + mark, end == std::string::npos ? begin : end - 1)
          << one.name;
    }
  }
}

TEST(Document, PartsAreFound) {
  for (const test::FileCase& one : test::ReadCaseFile(TARNMF_CASES "/outlines.cases")) {
    const auto manifest = Read(one.input);
    EXPECT_EQ(Outline(*manifest), one.result) << one.name;
    EXPECT_EQ(manifest->isWellFormed, IsWellFormedToTheLibrary(one.input)) << one.name;
  }
}

std::string Wide(const std::string& text, std::size_t width, bool isBigEndian) {
  std::u16string units;
  utf8::utf8to16(text.begin(), text.end(), std::back_inserter(units));
  std::string bytes;
  for (const char16_t unit : units) {
    std::string one{static_cast<char>(unit & 0xFFU), static_cast<char>(unit >> 8U)};
    one.resize(width);
    if (isBigEndian) std::reverse(one.begin(), one.end());
    bytes += one;
  }
  return bytes;
}

std::string Narrow(const std::string& text) {
  std::string bytes;
  for (auto at = text.begin(); at != text.end();)
    bytes += static_cast<char>(utf8::unchecked::next(at));
  return bytes;
}

// Where everything after the first line is, and what is found but for the encoding.
std::string Places(const Manifest& manifest) {
  std::string text;
  for (const Node& node : manifest.document.nodes) {
    if (manifest.source.At(node.span.begin).line > 1)
      text += PlaceText(manifest.source, node.span) + " ";
  }
  for (const Finding& finding : manifest.findings) {
    if (finding.rule == Rule::kEncoding) continue;
    text += fmt::format("{} {} ", PlaceText(manifest.source, finding.place.span), finding.message);
  }
  return text;
}

TEST(Document, PlacesDoNotDependOnTheEncoding) {
  const std::string body =
      "\r\n<!-- \xC3\xA9\xC3\xBC -->\r<tarnmanifest version=\"1\">\n"
      "<module \xC3\xA9=\"\xC3\xBF\" id=\"\" name=\"n\"></modul></tarnmanifest>";
  const auto document = [&](std::string_view encoding) {
    return fmt::format("<?xml version=\"1.0\" encoding=\"{}\"?>{}", encoding, body);
  };
  const auto plain = Read(document("UTF-8"));
  const std::string expected = Places(*plain);
  ASSERT_NE(expected.find("4:30-4:38 </modul> ends <module> of line 4"), std::string::npos)
      << expected;
  ASSERT_FALSE(plain->isWellFormed);

  const struct {
    std::string encoding;
    std::string bytes;
  } kCases[] = {
      {"UTF-8", "\xEF\xBB\xBF" + document("utf8")},
      {"UTF-8", document("UTF-16")},
      {"UTF-16LE", "\xFF\xFE" + Wide(document("UTF-16"), 2, false)},
      {"UTF-16BE", "\xFE\xFF" + Wide(document("UTF-16BE"), 2, true)},
      {"UTF-16LE", Wide(document("UTF-16LE"), 2, false)},
      {"UTF-16BE", Wide(document("UTF-16"), 2, true)},
      {"UTF-32LE", std::string("\xFF\xFE\0\0", 4) + Wide(document("UCS-4"), 4, false)},
      {"UTF-32BE", Wide(document("UTF-32"), 4, true)},
      {"ISO-8859-1", Narrow(document("ISO-8859-1"))},
      {"windows-1252", Narrow(document("windows-1252"))},
  };
  for (const auto& one : kCases) {
    const auto manifest = Read(one.bytes);
    EXPECT_EQ(manifest->source.Encoding(), one.encoding);
    EXPECT_EQ(Places(*manifest), expected) << one.encoding;
  }
  EXPECT_FALSE(Read(document("no-such-thing"))->source.IsDecoded());
}

TEST(Document, IsWholeOnceItsRootIs) {
  const std::string sample = test::ReadFile(TARNMF_SAMPLES "/platform/imaging.tmfx");
  const std::size_t end = sample.rfind('>') + 1;
  ASSERT_GT(end, 1000U);
  for (std::size_t size = 0; size <= sample.size(); ++size) {
    const auto manifest = Read(sample.substr(0, size));
    ASSERT_EQ(manifest->isWellFormed, size >= end) << size;
    const auto faults =
        std::count_if(manifest->findings.begin(), manifest->findings.end(),
                      [](const Finding& finding) { return finding.rule == Rule::kNotWellFormed; });
    ASSERT_EQ(faults, size >= end ? 0 : 1) << size;
  }
}

TEST(Document, TypesThatChangeWhatIsReadAreTold) {
  for (const test::FileCase& one : test::ReadCaseFile(TARNMF_CASES "/doctypes.cases")) {
    const auto manifest = Read(one.input);
    EXPECT_TRUE(manifest->isWellFormed) << one.name;
    std::string found;
    for (const Finding& each : manifest->findings) {
      const Position place = manifest->source.At(each.place.span.begin);
      found +=
          fmt::format("{}{} {} {}:{}: {}", found.empty() ? "" : " / ", Describe(each.rule).name,
                      static_cast<int>(each.code), place.line, place.column, each.message);
    }
    EXPECT_EQ(found.empty() ? "nothing" : found, one.result) << one.name;
  }
}

// Nothing here takes more than a moment, or a call for every level.
TEST(Document, LargeTextsTakeLinearTime) {
  std::string entities = "<!DOCTYPE a [<!ENTITY e0 'x'>";
  for (int i = 1; i < 50'000; ++i)
    entities += fmt::format("<!ENTITY e{} '&e{};'>", i, i - 1);
  const auto repeated = [](std::string_view text) {
    std::string all;
    for (int i = 0; i < 200'000; ++i)
      all += text;
    return all;
  };
  const std::string cases[] = {
      repeated("<a>"),
      repeated("<a b='"),
      repeated("<?a "),
      repeated("</a"),
      repeated("<a>&b"),
      repeated("<a b=\"\n<c d='"),
      "<a " + repeated("b='' "),
      repeated("<!--"),
      repeated("<![CDATA["),
      "<a>" + repeated("<b></a>"),
      "<!DOCTYPE a [" + repeated("'\""),
      entities + "]><a>&e49999;</a>",
  };
  for (const std::string& text : cases) {
    const auto manifest = Read(text);
    EXPECT_LE(manifest->trustedEnd, text.size());
    EXPECT_EQ(manifest->findings.size(), 1U) << text.substr(0, 40);
  }
}

}  // namespace
}  // namespace tarnmf::check
