// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <utility>

#include "check/document_rules.h"
#include "check/encoding.h"
#include "check/fault.h"
#include "check/judge.h"
#include "check/judged_text.h"
#include "check/manifest.h"
#include "check/scanner.h"

namespace tarnmf::check {
namespace {

Span DeclarationOf(std::string_view text) {
  if (!text.starts_with("<?xml") || text.find_first_of(" \t\r\n", 5) != 5) return {};
  const std::size_t end = text.find("?>");
  return end != std::string_view::npos ? Span{0, end + 2} : Span{};
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80U; });
}

// A copy in which entities are neither declared nor referred to.
std::string WithoutEntities(std::string_view text, const Document& document) {
  std::string plain(text);
  const auto fill = [&](Span span, char filling) {
    std::fill(plain.begin() + static_cast<std::ptrdiff_t>(span.begin),
              plain.begin() + static_cast<std::ptrdiff_t>(span.end), filling);
  };
  fill(document.doctype, ' ');
  for (const Node& node : document.nodes) {
    if (node.kind == NodeKind::kEntity && node.parent != kDocumentNode) fill(node.span, 'x');
  }
  for (const Attribute& attribute : document.attributes) {
    if (!attribute.isKnown) fill(attribute.value, 'x');
  }
  return plain;
}

Verdict JudgeManifest(std::string_view text, Document& document) {
  const bool is10 = document.version == XmlVersion::k10;
  Verdict verdict = Judge(text, document, is10);
  if (verdict.isCutShort) {
    verdict.refusal = Judge(WithoutEntities(text, document), document, false).refusal;
  } else if (verdict.refusal && is10 && !IsAscii(text)) {
    // The XML library knows more letters than the judge.
    verdict.refusal = Judge(JudgedText(text, document.version), document, false).refusal;
  }
  return verdict;
}

// What the source itself says before the judge does.
std::optional<Finding> SourceFault(const Source& source, const Document& document,
                                   const std::optional<Refusal>& refusal) {
  const Span version = DeclaredValue(source.Text(), "version");
  const std::string_view number = source.Text(version);
  if (document.declaration.Size() > 0 && version.begin > 0 && number != "1.0" && number != "1.1") {
    return NotWellFormed({&source, version},
                         fmt::format("XML of version \"{}\" is not known: write \"1.0\"", number));
  }
  const std::optional<DecodingFault>& fault = source.Fault();
  if (!fault || (refusal && refusal->offset < fault->span.begin)) return std::nullopt;
  return NotWellFormed({&source, fault->span}, fault->message);
}

}  // namespace

void ParseDocument(Manifest& manifest) {
  const Source& source = manifest.source;
  Document& document = manifest.document;
  document.source = &source;
  CheckEncoding(manifest);
  if (!source.IsDecoded()) {
    Scan({}, document);
    return;
  }
  // The XML library reads no further than to a NUL.
  const std::string_view text = std::string_view(source.Text()).substr(0, source.Text().find('\0'));
  document.declaration = DeclarationOf(text);
  if (source.Text(DeclaredValue(text, "version")) == "1.1") document.version = XmlVersion::k11;
  const bool is11 = document.version == XmlVersion::k11;
  const std::string rewritten = is11 ? JudgedText(text, XmlVersion::k11) : std::string();
  const std::string_view judged = is11 ? rewritten : text;
  Scan(judged, document);
  manifest.trustedEnd = source.Text().size();

  Verdict verdict = JudgeManifest(judged, document);
  // What breaks off at a NUL is at fault there.
  if (verdict.refusal && text.size() < source.Text().size() && IsBreakingOff(*verdict.refusal))
    verdict.refusal = Refusal{kRefusedCharacter, text.size()};
  CheckDocumentType(manifest, verdict);

  std::optional<Finding> fault = SourceFault(source, document, verdict.refusal);
  if (fault) {
    manifest.trustedEnd = fault->place.span.begin;
  } else if (verdict.refusal) {
    manifest.trustedEnd = verdict.refusal->offset;
    fault = ExplainRefusal(document, *verdict.refusal);
  }
  manifest.isWellFormed = !fault.has_value();
  if (fault) manifest.findings.push_back(std::move(*fault));
}

}  // namespace tarnmf::check
