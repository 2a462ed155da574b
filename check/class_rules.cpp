// SPDX-License-Identifier: Apache-2.0
// The rules on the sides of a class.
#include <array>
#include <fmt/format.h>

#include "check/inspection.h"
#include "check/placement.h"
#include "check/wording.h"
#include "platform/dlm.h"

namespace tarnmf::check {
namespace {

using grammar::ElementT;
using State = GivenAttributes::State;

// The class whose sides are checked. What cannot be made out is not judged by.
struct ClassAtHand {
  const ElementAtHand& element;
  std::optional<std::int32_t> affinity;
  std::optional<bool> isWorker;
};

std::string AffinityShown(std::int32_t affinity) {
  for (const grammar::Word& word : grammar::kAffinityWords.list) {
    if (word.number == affinity) return word.text;
  }
  return {};
}

// ---- Whether a side may be there ---------------------------------------------------------------

void ReportForbidden(Inspection& inspection, const ClassAtHand& owner, NodeId side) {
  Finding& finding = inspection.Report(
      Rule::kSideForbidden, kBtkForbidden, inspection[side].name,
      fmt::format("no {} in {} classes", inspection.Tag(side), AffinityShown(*owner.affinity)));
  const Attribute* const affinity = owner.element.given.Find("affinity");
  finding.related.push_back(
      affinity != nullptr
          ? inspection.RelatedTo(affinity->value, "the affinity is given here")
          : inspection.RelatedTo(inspection[owner.element.node].name,
                                 "the class gives no affinity, which is generic then"));
}

void ReportTwice(Inspection& inspection, NodeId first, NodeId second, std::string_view owner) {
  inspection
      .Report(Rule::kSideTwice, kBtkDuplicate, inspection[second].name,
              fmt::format("second {} of this {}", inspection.Tag(second), owner))
      .related.push_back(inspection.RelatedTo(inspection[first].name, "the first one"));
}

// ---- What a side needs -------------------------------------------------------------------------

Finding& ReportIncomplete(Inspection& inspection, NodeId side, std::string_view needed) {
  return inspection.Report(Rule::kSideIncomplete, kBtkMissing, inspection[side].name,
                           fmt::format("{} needs {}", inspection.Tag(side), needed));
}

void ReportUnserved(Inspection& inspection, const ClassAtHand& owner, NodeId side,
                    std::string_view needed) {
  const Attribute* const type = owner.element.given.Find("managedtype");
  ReportIncomplete(inspection, side, needed)
      .related.push_back(
          inspection.RelatedTo(type != nullptr ? type->value : inspection[owner.element.node].name,
                               "the side needs it because the class is no worker"));
}

// Whether the class is offered as a service of its own.
State Served(const ClassAtHand& owner, const GivenAttributes& given) {
  const State svcid = given.StateOf("svcid");
  if (svcid == State::kGiven || owner.isWorker == true) return State::kGiven;
  return svcid == State::kUncertain || !owner.isWorker ? State::kUncertain : State::kAbsent;
}

// What stands in a side, as far as it is known.
struct SideContent {
  bool isEmpty;
  bool holdsSomething;
};

SideContent ContentOf(const Inspection& inspection, NodeId side) {
  return {inspection[side].firstChild == kNoNode && inspection.IsWhole(side),
          inspection.FirstChild(side) != kNoNode};
}

// Tells what a side lacks; false when that is nothing.
bool TellMissingOfPlain(Inspection& inspection, const ElementAtHand& side) {
  if (!ContentOf(inspection, side.node).isEmpty || !side.given.IsAbsent("moduleref")) return false;
  ReportIncomplete(inspection, side.node, "\"moduleref\" or a <module>");
  return true;
}

bool TellMissingOfService(Inspection& inspection, const ClassAtHand& owner,
                          const ElementAtHand& side) {
  const SideContent content = ContentOf(inspection, side.node);
  const bool isUnserved = Served(owner, side.given) == State::kAbsent;
  const bool mayHaveHost = !side.given.IsAbsent("xsid");
  const bool hasModule = content.holdsSomething || side.given.IsGiven("moduleref");
  if (isUnserved && !mayHaveHost) {
    ReportUnserved(inspection, owner, side.node, "\"svcid\" or \"xsid\"");
  } else if (isUnserved && hasModule) {
    ReportUnserved(inspection, owner, side.node, "\"svcid\" for its module");
  } else if (content.isEmpty && side.given.IsAbsent("moduleref") && !mayHaveHost) {
    ReportIncomplete(inspection, side.node, "\"moduleref\", a <module> or \"xsid\"");
  } else {
    return false;
  }
  return true;
}

// ---- The modules of a side ---------------------------------------------------------------------

void CheckModules(Inspection& inspection, const ElementAtHand& side) {
  NodeId first = kNoNode;
  inspection.ForEachElement(side.node, [&](NodeId child) {
    if (ChildNamed(side.described, inspection.Doc().Name(child)) == nullptr) return;
    if (first != kNoNode) ReportTwice(inspection, first, child, "side");
    if (first == kNoNode) first = child;
    const GivenAttributes given = inspection.Given(child, grammar::kModule);
    const std::optional<TextValue> type = given.Text("type");
    if (!type || btkIsSharedLibType(type->text.c_str())) return;
    inspection.Report(Rule::kNestedNotShared, kBtkNotSharedLib, type->span,
                      fmt::format("{}: a module of a side must be {}", Assigned("type", type->text),
                                  Quoted(kBtkSharedLibType)));
  });
}

void CheckSide(Inspection& inspection, const ClassAtHand& owner, const ElementAtHand& side) {
  const bool lacksSomething = &side.described == &grammar::kServiceSide
                                  ? TellMissingOfService(inspection, owner, side)
                                  : TellMissingOfPlain(inspection, side);
  if (!lacksSomething && side.given.IsEmpty()) ReportNothingGiven(inspection, side);
  if (!side.given.IsGiven("moduleref")) {
    CheckModules(inspection, side);
    return;
  }
  const NodeId child = inspection.FirstChild(side.node);
  if (child == kNoNode) return;
  const bool isWhole = inspection.IsWhole(side.node);
  Finding& finding =
      inspection.Report(Rule::kContentBesideModuleref, kBtkDuplicate,
                        isWhole ? inspection[side.node].content : inspection[child].span,
                        inspection.Tag(side.node) + " names its module: it must be empty");
  finding.related.push_back(
      inspection.RelatedTo(side.given.Find("moduleref")->name, "the module is named here"));
  SuggestEmptying(inspection, side, finding);
}

}  // namespace

void CheckSides(Inspection& inspection, const ElementAtHand& element) {
  ClassAtHand owner = {element, element.given.WordOr("affinity", kMfGenericClass), {}};
  const auto managedType = element.given.WordOr("managedtype", kMfGeneric);
  if (managedType) owner.isWorker = *managedType == kMfWorker;

  std::array<NodeId, kMfSideCount> first;
  first.fill(kNoNode);
  inspection.ForEachElement(element.node, [&](NodeId child) {
    const ElementT* const side = ChildNamed(grammar::kClass, inspection.Doc().Name(child));
    if (side == nullptr) return;
    NodeId& earlier = first[side == &grammar::kClientSide    ? kMfClientSide
                            : side == &grammar::kServiceSide ? kMfServiceSide
                                                             : kMfAgentSide];
    if (earlier != kNoNode) {
      ReportTwice(inspection, earlier, child, "class");
      return;
    }
    earlier = child;
    if (owner.affinity && IsSideForbidden(*side, *owner.affinity)) {
      ReportForbidden(inspection, owner, child);
      return;
    }
    CheckSide(inspection, owner, {child, *side, grammar::kClass, inspection.Given(child, *side)});
  });
}

}  // namespace tarnmf::check
