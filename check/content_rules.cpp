// SPDX-License-Identifier: Apache-2.0
// The rules on what stands between the tags of an element.
#include <algorithm>
#include <fmt/format.h>
#include <utility>

#include "check/inspection.h"
#include "check/suggestions.h"
#include "check/wording.h"

namespace tarnmf::check {
namespace {

using grammar::Content;

std::string KindShown(const Inspection& inspection, NodeId node) {
  switch (inspection[node].kind) {
    case NodeKind::kElement:
      return "element " + inspection.Tag(node);
    case NodeKind::kCData:
      return "CDATA section";
    case NodeKind::kComment:
      return "comment";
    case NodeKind::kInstruction:
      return "processing instruction";
    case NodeKind::kEntity:
      return "entity reference";
    default:
      return "text";
  }
}

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == text.npos;
}

bool IsText(const Inspection& inspection, NodeId node) {
  return inspection[node].kind == NodeKind::kText;
}

// Nothing that anybody could miss: a comment, or blanks.
bool SaysNothing(const Inspection& inspection, NodeId node) {
  const NodeKind kind = inspection[node].kind;
  return kind == NodeKind::kComment ||
         (kind == NodeKind::kText && IsBlank(inspection.Doc().TextOf(node)));
}

// ---- Elements that hold a text -----------------------------------------------------------------

// An element that holds a text, and whether it does with everything else taken out of it.
struct TextHolder {
  const ElementAtHand& element;
  bool isRightWithoutRest;
};

TextHolder Holder(const Inspection& inspection, const ElementAtHand& element) {
  TextHolder holder = {element, element.described.content == Content::kArgument};
  inspection.ForEachChild(element.node, [&](NodeId child) {
    holder.isRightWithoutRest = holder.isRightWithoutRest || IsText(inspection, child);
  });
  return holder;
}

void SuggestText(const Inspection& inspection, const TextHolder& holder, NodeId node,
                 Finding& finding) {
  const Node& at = inspection[node];
  const NodeId element = holder.element.node;
  const std::string_view inside = inspection.Text().Text(at.content);
  if (at.kind == NodeKind::kCData && !inside.empty()) {
    Suggestion text;
    text.title = "Write the CDATA section as text";
    text.edits.push_back({at.span, EscapedText(inside)});
    finding.suggestions.push_back(Safe(std::move(text)));
  } else if (at.kind == NodeKind::kComment && holder.isRightWithoutRest) {
    const std::size_t before = inspection[element].span.begin;
    Suggestion move;
    move.title = "Move the comment before " + inspection.Tag(element);
    move.edits.push_back({{before, before}, std::string(inspection.Text().Text(at.span))});
    move.edits.push_back({at.span, ""});
    finding.suggestions.push_back(Safe(std::move(move)));
  }
}

void ReportOnlyText(Inspection& inspection, const TextHolder& holder, NodeId node,
                    std::string_view where) {
  const NodeId element = holder.element.node;
  Finding& finding =
      inspection.Report(Rule::kOnlyText, kBtkUnexpected, inspection[node].span,
                        fmt::format("{} {} {}: it holds nothing but text",
                                    KindShown(inspection, node), where, inspection.Tag(element)));
  if (inspection.IsWhole(element)) SuggestText(inspection, holder, node, finding);
}

void CheckArgument(Inspection& inspection, const ElementAtHand& element) {
  const TextHolder holder = Holder(inspection, element);
  inspection.ForEachChild(element.node, [&](NodeId child) {
    if (!IsText(inspection, child)) ReportOnlyText(inspection, holder, child, "in");
  });
}

// What follows the text is lost; comments, instructions and blanks there are no loss.
void CheckCut(Inspection& inspection, NodeId text) {
  for (NodeId after = inspection[text].next; after != kNoNode; after = inspection[after].next) {
    if (!inspection.IsTrusted(after)) return;
    if (SaysNothing(inspection, after) || inspection[after].kind == NodeKind::kInstruction) {
      continue;
    }
    inspection.Report(Rule::kTextCut, kBtkOk, inspection[after].span,
                      fmt::format("only {} is read, what stands after it is lost",
                                  Quoted(inspection.Doc().TextOf(text))));
    return;
  }
}

void CheckTextValue(Inspection& inspection, const ElementAtHand& element) {
  NodeId child = inspection.FirstChild(element.node);
  if (child == kNoNode) {
    if (!inspection.IsWhole(element.node)) return;
    inspection.Report(Rule::kTextMissing, kBtkUnexpected, inspection[element.node].name,
                      inspection.Tag(element.node) + " needs a text");
    return;
  }
  if (IsText(inspection, child)) {
    CheckCut(inspection, child);
    return;
  }
  const TextHolder holder = Holder(inspection, element);
  for (; child != kNoNode && inspection.IsTrusted(child) && !IsText(inspection, child);
       child = inspection[child].next)
    ReportOnlyText(inspection, holder, child, "first in");
}

// ---- Elements that hold nothing ----------------------------------------------------------------

void CheckNothing(Inspection& inspection, const ElementAtHand& element) {
  const NodeId child = inspection.FirstChild(element.node);
  if (child == kNoNode) return;
  const bool isWhole = inspection.IsWhole(element.node);
  Finding& finding =
      inspection.Report(Rule::kTextForbidden, kBtkUnexpected,
                        isWhole ? inspection[element.node].content : inspection[child].span,
                        inspection.Tag(element.node) + " admits nothing inside, a blank included");
  SuggestEmptying(inspection, element, finding);
}

}  // namespace

void SuggestEmptying(const Inspection& inspection, const ElementAtHand& element, Finding& finding) {
  if (!inspection.IsWhole(element.node)) return;
  bool isEmpty = true;
  inspection.ForEachChild(
      element.node, [&](NodeId child) { isEmpty = isEmpty && SaysNothing(inspection, child); });
  if (!isEmpty) return;
  finding.suggestions.push_back(Safe(
      Remove(inspection[element.node].content, "what stands in " + inspection.Tag(element.node))));
}

void CheckText(Inspection& inspection, const ElementAtHand& element) {
  switch (element.described.content) {
    case Content::kArgument:
      CheckArgument(inspection, element);
      return;
    case Content::kValue:
      CheckTextValue(inspection, element);
      return;
    default:
      CheckNothing(inspection, element);
      return;
  }
}

void CheckBetween(Inspection& inspection, const ElementAtHand& element, NodeId child) {
  const Node& at = inspection[child];
  const bool isPreload = element.described.content == Content::kPreload;
  if (at.kind == NodeKind::kText || (at.kind == NodeKind::kCData && isPreload)) {
    const std::string_view written = inspection.Text().Text(at.span);
    const std::string text = inspection.Doc().TextOf(child);
    if (IsBlank(text)) return;
    const std::size_t begin = written.find_first_not_of(" \t\r\n");
    const std::size_t end = written.find_last_not_of(" \t\r\n") + 1;
    const Span place = {at.span.begin + begin, at.span.begin + end};
    Finding& finding = inspection.Report(
        Rule::kStrayText, kBtkOk, place,
        fmt::format("text {} in {} is passed over", Quoted(inspection.Text().Text(place)),
                    inspection.Tag(element.node)));
    finding.suggestions.push_back(Remove(place, "the text"));
    return;
  }
  if (at.kind == NodeKind::kComment || isPreload) return;
  Finding& finding =
      inspection.Report(Rule::kOnlyElements, kBtkUnexpected, at.span,
                        fmt::format("{} in {}: only elements and comments may stand there",
                                    KindShown(inspection, child), inspection.Tag(element.node)));
  finding.suggestions.push_back(Remove(at.span, "the " + KindShown(inspection, child)));
}

}  // namespace tarnmf::check
