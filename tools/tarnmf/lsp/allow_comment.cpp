// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/allow_comment.h"

#include <fmt/format.h>
#include <string>
#include <string_view>

#include "check/allowances.h"
#include "check/characters.h"
#include "check/names.h"
#include "check/rules.h"
#include "tools/tarnmf/lsp/cursor.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;
using tarnmf::grammar::Content;
using tarnmf::grammar::ElementT;

bool NamesModule(const Document& document, NodeId side) {
  for (const Attribute& attribute : document.AttributesOf(side)) {
    if (Folded(document.Name(attribute)) == "moduleref") return true;
  }
  return false;
}

bool AdmitsComments(const Document& document, NodeId parent) {
  const ElementT* const described = DescribedAt(document, parent);
  if (described == nullptr) return false;
  switch (described->content) {
    case Content::kElements:
    case Content::kPreload:
      return true;
    case Content::kSide:
      return !NamesModule(document, parent);
    case Content::kArgument:
    case Content::kValue:
    case Content::kNothing:
      break;
  }
  return false;
}

// The innermost element there; the root for what stands outside of it.
NodeId ElementAround(const Document& document, std::size_t offset) {
  NodeId found = document.Root();
  for (NodeId node = 0; node < document.nodes.size(); ++node) {
    const Node& candidate = document[node];
    if (candidate.span.begin > offset) break;
    if (candidate.kind == NodeKind::kElement && offset < candidate.span.end) found = node;
  }
  return found;
}

// The blanks before the place in its line; nothing when something else stands there.
std::optional<std::string_view> IndentationAt(const Source& source, std::size_t offset) {
  const Span line = source.Line(source.At(offset).line);
  const std::string_view before = source.Text({line.begin, offset});
  return Trimmed(before).empty() ? std::optional(before) : std::nullopt;
}

}  // namespace

std::optional<Edit> AllowComment(const Manifest& manifest, const Finding& finding) {
  if (!CanBeAllowed(finding.rule) || !manifest.isWellFormed) return std::nullopt;
  const Document& document = manifest.document;
  NodeId node = ElementAround(document, finding.place.span.begin);
  while (node != kNoNode && node != kDocumentNode &&
         !AdmitsComments(document, document[node].parent))
    node = document[node].parent;
  if (node == kNoNode || node == kDocumentNode) return std::nullopt;
  const std::size_t place = document[node].span.begin;
  std::string comment = fmt::format("<!-- tarnmf: allow {} -->", Describe(finding.rule).name);
  if (const auto indentation = IndentationAt(manifest.source, place))
    comment += fmt::format("\n{}", *indentation);
  return Edit{{place, place}, std::move(comment)};
}

std::optional<Edit> AllowComment(const LayoutFileText& layout, const Finding& finding) {
  if (!CanBeAllowed(finding.rule)) return std::nullopt;
  const Source& source = layout.source;
  std::size_t line = source.At(finding.place.span.begin).line;
  while (line > 1 && !BeginsStatement(source.Text(source.Line(line))))
    --line;
  const std::size_t place = source.Line(line).begin;
  if (!BeginsStatement(source.Text(source.Line(line)))) return std::nullopt;
  return Edit{{place, place}, fmt::format("# tarnmf: allow {}\n", Describe(finding.rule).name)};
}

}  // namespace tool::lsp
