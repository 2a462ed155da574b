// SPDX-License-Identifier: Apache-2.0
// The walk over the elements of a manifest, and the rules on which of them may stand where.
#include <fmt/format.h>
#include <vector>

#include "check/inspection.h"
#include "check/suggestions.h"
#include "check/wording.h"

namespace tarnmf::check {
namespace {

using grammar::Content;
using grammar::ElementT;

void CheckElement(Inspection& inspection, NodeId node, const ElementT& described,
                  const ElementT& parent);

std::vector<std::string> TagsOf(std::span<const ElementT* const> elements) {
  std::vector<std::string> tags;
  for (const ElementT* element : elements)
    tags.push_back(Tagged(element->name));
  return tags;
}

// "<x> cannot stand in <p>"
std::string NoPlace(const Inspection& inspection, NodeId node) {
  const NodeId parent = inspection[node].parent;
  if (parent == kDocumentNode) return inspection.Tag(node) + " cannot be the root";
  return fmt::format("{} cannot stand in {}", inspection.Tag(node), inspection.Tag(parent));
}

// ---- Elements that have no place ---------------------------------------------------------------

Suggestion Rename(const Inspection& inspection, NodeId node, std::string_view name) {
  const Node& element = inspection[node];
  Suggestion suggestion = Replace(element.name, inspection.Doc().Name(node), std::string(name));
  if (element.span != element.startTag) {
    const std::size_t begin = element.content.end + 2;  // after "</"
    suggestion.edits.push_back({{begin, begin + element.name.Size()}, std::string(name)});
  }
  return suggestion;
}

// What could stand there instead.
CloseNames CloseChildren(const Inspection& inspection, NodeId node, const ElementT& parent) {
  CloseNames close(inspection.Doc().Name(node));
  for (const ElementT* child : parent.children)
    close.Offer(child->name);
  for (const ElementT* child : parent.children)
    close.OfferAsLongForm(child->name);
  return close;
}

void ReportUnknown(Inspection& inspection, NodeId node, const ElementT& parent) {
  const CloseNames close = CloseChildren(inspection, node, parent);
  const std::vector<std::string_view> meant = close.FewBest();
  const std::string expected = parent.children.empty()
                                   ? "it holds no elements"
                                   : "expected " + Listed(TagsOf(parent.children), "or");
  Finding& finding = inspection.Report(
      Rule::kElementUnknown, kBtkUnexpected, inspection[node].name,
      fmt::format("{}; {}{}", NoPlace(inspection, node), expected, DidYouMean(meant, Tagged)));
  if (!inspection.IsWhole(node)) return;
  for (const std::string_view name : meant) {
    finding.suggestions.push_back(Rename(inspection, node, name));
    finding.suggestions.back().safe = close.IsCertain();
  }
}

void ReportMisplaced(Inspection& inspection, NodeId node, const ElementT& described,
                     const ElementT& parent) {
  const std::vector<const ElementT*> parents = ParentsOf(described);
  const bool isRoot = parents.front() == &grammar::kDocument;
  const std::vector<std::string_view> meant = CloseChildren(inspection, node, parent).FewBest();
  Finding& finding =
      inspection.Report(Rule::kElementMisplaced, kBtkUnexpected, inspection[node].name,
                        fmt::format("{}; it {}{}", NoPlace(inspection, node),
                                    isRoot ? "is the root of a document"
                                           : "belongs into " + Listed(TagsOf(parents), "or"),
                                    DidYouMean(meant, Tagged)));
  if (!inspection.IsWhole(node)) return;
  for (const std::string_view name : meant)
    finding.suggestions.push_back(Rename(inspection, node, name));
}

// Of an element that has no place nothing else is judged: it may be meant to be another one.
void CheckChild(Inspection& inspection, NodeId node, const ElementT& parent) {
  const std::string_view name = inspection.Doc().Name(node);
  if (const ElementT* const described = ChildNamed(parent, name)) {
    CheckElement(inspection, node, *described, parent);
  } else if (const ElementT* const elsewhere = ElementNamed(name)) {
    ReportMisplaced(inspection, node, *elsewhere, parent);
  } else {
    ReportUnknown(inspection, node, parent);
  }
}

// ---- Elements that stand too often -------------------------------------------------------------

bool IsElementOf(const Inspection& inspection, NodeId node, const ElementT& described) {
  return inspection[node].kind == NodeKind::kElement &&
         ChildNamed(grammar::kMixedManifest, inspection.Doc().Name(node)) == &described;
}

// Puts the element and those of its kind that follow it into a list.
Suggestion Wrap(const Inspection& inspection, NodeId first, const ElementT& single,
                const ElementT& list) {
  NodeId last = first;
  for (NodeId next = inspection[first].next; next != kNoNode; next = inspection[next].next) {
    const NodeKind kind = inspection[next].kind;
    if (IsElementOf(inspection, next, single)) {
      last = next;
    } else if (kind != NodeKind::kText && kind != NodeKind::kComment) {
      break;
    }
  }
  const std::size_t begin = inspection[first].span.begin;
  const std::size_t end = inspection[last].span.end;
  Suggestion suggestion;
  suggestion.title = fmt::format("Put them into {}", Tagged(list.name));
  suggestion.safe = true;
  suggestion.edits.push_back({{begin, begin}, fmt::format("<{}>", list.name)});
  suggestion.edits.push_back({{end, end}, fmt::format("</{}>", list.name)});
  return suggestion;
}

// A document of one kind holds one element of it, or any number once a list has been entered. The
// second one is told; what comes after it is mended with it.
void CheckBareElements(Inspection& inspection, NodeId root, const ElementT& described) {
  if (&described == &grammar::kMixedManifest) return;
  const ElementT& single = *described.children[0];
  const ElementT& list = *described.children[1];
  NodeId first = kNoNode;
  NodeId second = kNoNode;
  bool hasList = false;
  inspection.ForEachElement(root, [&](NodeId child) {
    hasList = hasList || IsElementOf(inspection, child, list);
    if (hasList || second != kNoNode || !IsElementOf(inspection, child, single)) return;
    (first == kNoNode ? first : second) = child;
  });
  if (second == kNoNode) return;
  Finding& finding = inspection.Report(
      Rule::kSecondBareElement, kBtkDuplicate, inspection[second].name,
      fmt::format("second bare {} after line {}; put them into {}", inspection.Tag(second),
                  inspection.Line(first), Tagged(list.name)));
  finding.related.push_back(inspection.RelatedTo(inspection[first].name, "the first one"));
  if (inspection.IsWhole(root)) {
    finding.suggestions.push_back(Wrap(inspection, first, single, list));
  }
}

// Of the arguments and the environment of a role the last ones count.
void CheckRoleParts(Inspection& inspection, const ElementAtHand& element) {
  if (element.described.children.data() != grammar::kRoleChildren) return;
  for (const ElementT* part : element.described.children) {
    NodeId earlier = kNoNode;
    inspection.ForEachElement(element.node, [&](NodeId child) {
      if (ChildNamed(element.described, inspection.Doc().Name(child)) != part) return;
      if (earlier != kNoNode) {
        inspection
            .Report(Rule::kRolePartTwice, kBtkOk, inspection[child].name,
                    fmt::format("this {} replaces the one of line {}", inspection.Tag(child),
                                inspection.Line(earlier)))
            .related.push_back(inspection.RelatedTo(inspection[earlier].name, "replaced"));
      }
      earlier = child;
    });
  }
}

// ---- One element -------------------------------------------------------------------------------

void CheckContent(Inspection& inspection, const ElementAtHand& element) {
  inspection.ForEachChild(element.node, [&](NodeId child) {
    if (inspection[child].kind == NodeKind::kElement) {
      CheckChild(inspection, child, element.described);
    } else {
      CheckBetween(inspection, element, child);
    }
  });
}

void CheckElement(Inspection& inspection, NodeId node, const ElementT& described,
                  const ElementT& parent) {
  const ElementAtHand element = {node, described, parent, inspection.Given(node, described)};
  CheckAttributes(inspection, element);
  switch (described.content) {
    case Content::kArgument:
    case Content::kValue:
    case Content::kNothing:
      CheckText(inspection, element);
      return;
    case Content::kSide:
      // Nothing may stand in a side that names its module: that is told as a whole.
      if (!element.given.IsGiven("moduleref")) CheckContent(inspection, element);
      return;
    case Content::kElements:
    case Content::kPreload:
      CheckContent(inspection, element);
      CheckRoleParts(inspection, element);
      if (&described == &grammar::kClass) CheckSides(inspection, element);
      return;
  }
}

}  // namespace

void CheckElements(Manifest& manifest) {
  Inspection inspection(manifest);
  const NodeId root = manifest.document.Root();
  if (root != kNoNode && inspection.IsTrusted(root)) {
    CheckChild(inspection, root, grammar::kDocument);
    const ElementT* const described = ChildNamed(grammar::kDocument, manifest.document.Name(root));
    if (described != nullptr) CheckBareElements(inspection, root, *described);
  }
}

}  // namespace tarnmf::check
