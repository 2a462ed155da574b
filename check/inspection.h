// SPDX-License-Identifier: Apache-2.0
// The elements of one manifest while they are checked: what their rules share.
#ifndef CHECK_INSPECTION_H
#define CHECK_INSPECTION_H

#include <string>
#include <string_view>

#include "check/given.h"
#include "check/manifest.h"
#include "check/names.h"
#include "grammar/manifest.h"

namespace tarnmf::check {

// What stands after the place where a document stops being well-formed is not judged: neither the
// nodes there nor what an element that goes on there lacks.
class Inspection {
 public:
  explicit Inspection(Manifest& manifest);

  const Document& Doc() const { return manifest_.document; }
  const Source& Text() const { return manifest_.source; }
  const Node& operator[](NodeId node) const { return Doc()[node]; }

  // Valid until the next one is reported.
  Finding& Report(Rule rule, BtkErrorT code, Span span, std::string message);
  Related RelatedTo(Span span, std::string message) const;

  // Whether the node can be judged; of an element, its start tag.
  bool IsTrusted(NodeId node) const;
  // Whether nothing is missing of the node. One that reaches up to the fault may break off there.
  bool IsWhole(NodeId node) const {
    return manifest_.isWellFormed || Doc()[node].span.end < manifest_.trustedEnd;
  }
  // The first child; kNoNode also when it cannot be judged.
  NodeId FirstChild(NodeId node) const;

  GivenAttributes Given(NodeId node, const grammar::ElementT& element) const;

  // The name of an element as it is written, in angle brackets.
  std::string Tag(NodeId node) const;
  std::size_t Line(NodeId node) const { return Text().At(Doc()[node].span.begin).line; }

  // The nodes of one parent that can be judged; all: whatever their kind.
  template <class Visit>
  void ForEachChild(NodeId parent, Visit visit) const {
    for (NodeId child : Doc().ChildrenOf(parent)) {
      if (!IsTrusted(child)) return;
      visit(child);
    }
  }
  template <class Visit>
  void ForEachElement(NodeId parent, Visit visit) const {
    ForEachChild(parent, [&](NodeId child) {
      if (Doc()[child].kind == NodeKind::kElement) visit(child);
    });
  }

 private:
  bool IsWholeStartTag(NodeId element) const;

  Manifest& manifest_;
  std::size_t fault_ = SIZE_MAX;  // where the document is told to be at fault
};

// An element with its description.
struct ElementAtHand {
  NodeId node;
  const grammar::ElementT& described;
  const grammar::ElementT& parent;  // the description of what it stands in
  GivenAttributes given;
};

// The rules, each in a file of its own.
void CheckAttributes(Inspection& inspection, const ElementAtHand& element);
void CheckValue(Inspection& inspection, const ElementAtHand& element,
                const GivenAttributes::Known& attribute);
void ReportNothingGiven(Inspection& inspection, const ElementAtHand& element);
// What stands in an element that holds a text or nothing.
void CheckText(Inspection& inspection, const ElementAtHand& element);
// What stands between the elements of one that holds elements; `child` is none.
void CheckBetween(Inspection& inspection, const ElementAtHand& element, NodeId child);
// Suggests to delete what stands in an element that must be empty, if that is only blanks and comments.
void SuggestEmptying(const Inspection& inspection, const ElementAtHand& element, Finding& finding);
void CheckSides(Inspection& inspection, const ElementAtHand& element);

// Deletions take the blanks before with them.
Span WithBlanksBefore(const Source& source, Span span);

}  // namespace tarnmf::check

#endif  // CHECK_INSPECTION_H
