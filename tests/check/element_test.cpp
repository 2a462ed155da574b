// SPDX-License-Identifier: Apache-2.0
// The rules that need nothing but the document, with the library as their measure.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>

#include "tarnmf/ldp_data.h"

#include "check/fixes.h"
#include "check/manifest.h"
#include "tests/check/marked.h"
#include "tests/support/documents.h"
#include "tests/support/parse.h"
#include "tests/support/random_documents.h"

namespace tarnmf::check {
namespace {

using test::FileCase;

#if defined(TARNMF_SLOW_BUILD)
constexpr int kDocuments = 7000;
#else
constexpr int kDocuments = 20000;
#endif

std::unique_ptr<const Manifest> Read(const std::string& document) {
  return ReadManifest("test.tmfx", document);
}

std::string DocumentOf(const std::string& text) {
  return test::DocumentOf(test::WithIds(text));
}

std::vector<FileCase> Cases(const char* file) {
  return test::ReadCaseFile(std::string(TARNMF_CASES) + "/" + file);
}

TEST(ElementRules, FindWhatTheCasesSay) {
  for (const FileCase& one : Cases("elements.cases")) {
    const std::string document = DocumentOf(one.input);
    const auto manifest = Read(test::Unmarked(document));
    std::vector<Finding> findings = manifest->findings;
    // Those of the document itself have tests of their own.
    std::erase_if(findings, [](const Finding& finding) {
      return finding.severity != Severity::kError &&
             (finding.rule == Rule::kDoctype || finding.rule == Rule::kEncoding);
    });
    EXPECT_EQ(test::Marked(manifest->source, findings), one.result + " <= " + document) << one.name;
  }
}

// The document after all that may be applied without a question.
std::string Mended(const Manifest& manifest) {
  std::vector<Edit> edits;
  for (const Finding& finding : manifest.findings) {
    for (const Suggestion& suggestion : finding.suggestions) {
      if (suggestion.safe)
        edits.insert(edits.end(), suggestion.edits.begin(), suggestion.edits.end());
    }
  }
  return Edited(manifest.source, std::move(edits));
}

TEST(ElementRules, SuggestWhatTheCasesSay) {
  for (const FileCase& one : Cases("mended.cases")) {
    EXPECT_EQ(Mended(*Read(DocumentOf(one.input))), DocumentOf(one.result)) << one.name;
  }
}

// Whether the edits leave a document with fewer findings of the rule and no more errors than before.
// A name that is mended may bring to light what was not judged below it.
bool Mends(const Manifest& before, Rule rule, const std::vector<Edit>& edits) {
  const auto after = Read(Edited(before.source, edits));
  const auto count = [](const Manifest& manifest, auto counts) {
    return std::count_if(manifest.findings.begin(), manifest.findings.end(), counts);
  };
  const auto isOfRule = [&](const Finding& finding) { return finding.rule == rule; };
  const auto isError = [](const Finding& finding) { return finding.severity == Severity::kError; };
  if (rule == Rule::kElementUnknown || rule == Rule::kAttributeUnknown) return after->isWellFormed;
  return after->isWellFormed && count(*after, isOfRule) < count(before, isOfRule) &&
         count(*after, isError) <= count(before, isError);
}

TEST(ElementRules, MendWhatTheySuggestToMend) {
  test::RandomDocuments documents(4);
  for (int i = 0; i < kDocuments / 4; ++i) {
    const auto manifest = Read(documents.Next());
    for (const Finding& finding : manifest->findings) {
      for (const Suggestion& suggestion : finding.suggestions) {
        EXPECT_TRUE(!suggestion.safe || Mends(*manifest, finding.rule, suggestion.edits))
            << suggestion.title << " in " << manifest->source.Text();
      }
    }
  }
}

TEST(ElementRules, SayWhatTheCasesSay) {
  for (const FileCase& one : Cases("messages.cases")) {
    const auto manifest = Read(DocumentOf(one.input));
    std::string messages;
    for (const Finding& finding : manifest->findings)
      messages += (messages.empty() ? "" : " / ") + finding.message;
    EXPECT_EQ(messages, test::WithIds(one.result)) << one.name;
  }
}

// ---- The library as the measure ----------------------------------------------------------------

// Empty when what was found is what the library does.
std::string Disagreement(const std::string& document, BtkErrorT code) {
  const auto manifest = Read(document);
  // Nobody but the library can read it.
  if (!manifest->source.IsDecoded()) return {};
  std::set<BtkErrorT> codes;
  for (const Finding& finding : manifest->findings) {
    if (finding.severity == Severity::kError) codes.insert(finding.code);
  }
  const bool hasCode = !codes.empty() && *codes.rbegin() != kBtkOk;
  const bool agrees = code == kBtkOk ? !hasCode : codes.contains(code) || codes.contains(kBtkOk);
  if (agrees) return {};
  return std::to_string(code) + ": " + test::Marked(manifest->source, manifest->findings);
}

// An exception of the XML library stands for a document that cannot be read.
BtkErrorT LibraryCode(const std::string& document) {
  MfLdpDataT data;
  try {
    return test::Parse(document, data);
  } catch (...) {
    return kBtkMalformed;
  }
}

TEST(ElementRules, AgreeWithTheLibraryOnItsCases) {
  for (const FileCase& one : test::ReadDocumentCases(TARNMF_XML_CASES))
    EXPECT_EQ(Disagreement(one.input, LibraryCode(one.input)), "") << one.name;
}

TEST(ElementRules, AgreeWithTheLibraryOnRandomDocuments) {
  test::RandomDocuments documents(1);
  std::map<BtkErrorT, int> met;
  for (int i = 0; i < kDocuments; ++i) {
    const std::string document = documents.Next();
    const BtkErrorT code = LibraryCode(document);
    ++met[code];
    ASSERT_EQ(Disagreement(document, code), "") << "document " << i;
  }
  // Documents that are all right or all wrong in one way would say little.
  for (const BtkErrorT code :
       {kBtkMissing, kBtkRefused, kBtkForbidden, kBtkUnexpected, kBtkOutOfRange, kBtkNotSharedLib,
        kBtkDuplicate, kBtkWrongVersion, kBtkMalformed}) {
    EXPECT_GE(met[code], kDocuments / 7000) << code;
  }
  EXPECT_GE(met[kBtkOk], kDocuments / 10);
}

// What comes before a fault is judged, and nothing else.
TEST(ElementRules, AgreeWithTheLibraryOnDamagedDocuments) {
  test::RandomDocuments documents(3);
  for (int i = 0; i < kDocuments; ++i) {
    const std::string document = documents.NextDamaged();
    ASSERT_EQ(Disagreement(document, LibraryCode(document)), "") << "document " << i;
  }
}

}  // namespace
}  // namespace tarnmf::check
