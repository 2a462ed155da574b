#include "check/inspection.h"

#include <utility>

#include "check/wording.h"

namespace tarnmf::check {

Finding& Inspection::Report(Rule rule, BtkErrorT code, Span span, std::string message) {
  return manifest_.findings.emplace_back(
      Found(rule, code, {&manifest_.source, span}, std::move(message)));
}

Related Inspection::RelatedTo(Span span, std::string message) const {
  return {{&manifest_.source, span}, std::move(message)};
}

bool Inspection::IsTrusted(NodeId node) const {
  const Node& at = Doc()[node];
  return at.kind == NodeKind::kElement ? at.startTag.end <= manifest_.trustedEnd : IsWhole(node);
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
