// SPDX-License-Identifier: Apache-2.0
#include "check/inspection.h"

#include <algorithm>
#include <utility>

#include "check/wording.h"

namespace tarnmf::check {

Inspection::Inspection(Manifest& manifest) : manifest_(manifest) {
  for (const Finding& finding : manifest.findings) {
    if (finding.rule == Rule::kNotWellFormed) fault_ = finding.place.span.begin;
  }
}

Finding& Inspection::Report(Rule rule, BtkErrorT code, Span span, std::string message) {
  return manifest_.findings.emplace_back(
      Found(rule, code, {&manifest_.source, span}, std::move(message)));
}

Related Inspection::RelatedTo(Span span, std::string message) const {
  return {{&manifest_.source, span}, std::move(message)};
}

bool Inspection::IsTrusted(NodeId node) const {
  const Node& at = Doc()[node];
  if (manifest_.isWellFormed || at.kind != NodeKind::kElement) return IsWhole(node);
  return IsWholeStartTag(node);
}

// A tag that lacks its end or a quote reaches up to the next one, or to its line's end.
bool Inspection::IsWholeStartTag(NodeId element) const {
  const Span tag = Doc()[element].startTag;
  const std::string& text = Text().Text();
  const bool hasFault = fault_ >= tag.begin && fault_ < tag.end;
  if (hasFault || tag.end > manifest_.trustedEnd || text[tag.end - 1] != '>') return false;
  const auto attributes = Doc().AttributesOf(element);
  return std::all_of(attributes.begin(), attributes.end(), [&](const Attribute& attribute) {
    const Span value = attribute.value;
    return attribute.isDefault || text[value.begin - 1] == text[value.end];
  });
}

NodeId Inspection::FirstChild(NodeId node) const {
  const NodeId child = Doc()[node].firstChild;
  return child != kNoNode && IsTrusted(child) ? child : kNoNode;
}

GivenAttributes Inspection::Given(NodeId node, const grammar::ElementT& element) const {
  GivenAttributes given(Doc(), node, element);
  if (manifest_.isExternal) given.AdmitMore();
  return given;
}

std::string Inspection::Tag(NodeId node) const {
  return Tagged(Doc().Name(node));
}

Span WithBlanksBefore(const Source& source, Span span) {
  static constexpr std::string_view kBlanks = " \t\r\n";
  while (span.begin > 0 && kBlanks.find(source.Text()[span.begin - 1]) != kBlanks.npos)
    --span.begin;
  return span;
}

}  // namespace tarnmf::check
