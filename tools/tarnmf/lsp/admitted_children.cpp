// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/admitted_children.h"

#include <algorithm>
#include <optional>

#include "check/given.h"
#include "check/names.h"
#include "check/placement.h"
#include "grammar/manifest.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;
using namespace tarnmf::grammar;

class Admission {
 public:
  Admission(const CompletionPlace& place, const ElementPlace& element)
      : document_(place.Document()), offset_(place.offset), element_(element) {
    CollectSiblings();
    if (parent_ == &kClass) {
      affinity_ = Given().WordOr("affinity", kMfGenericClass);
    } else if (parent_->content == Content::kSide) {
      hasModuleRef_ = Given().IsGiven("moduleref");
    }
  }

  bool Admits(const ElementT& child) const {
    if (parent_ == &kDocument) return siblings_.empty() && offset_ >= document_.doctype.end;
    if (parent_->content == Content::kSide) return siblings_.empty() && !hasModuleRef_;
    if (parent_ == &kClass) {
      return !IsThere(child) && (!affinity_ || !IsSideForbidden(child, *affinity_));
    }
    if (parent_->children.data() == kRoleChildren) return !IsThere(child);
    const bool isRoot = parent_->attributes.data() == kRootAttributes;
    if (isRoot && parent_ != &kMixedManifest && &child == parent_->children[0]) {
      return MayStandBare(child, *parent_->children[1]);
    }
    return true;
  }

 private:
  struct Sibling {
    const ElementT* described;
    bool isBefore;  // the place
  };

  // What follows a tag that is half typed stands beside it once that is finished.
  void CollectSiblings() {
    const std::size_t end = document_[element_.parent].span.end;
    std::vector<bool> passesOn = {true};  // by node, from the parent on
    for (NodeId node = element_.parent + 1;
         node < document_.nodes.size() && document_[node].span.begin < end; ++node) {
      const bool isSibling = passesOn[document_[node].parent - element_.parent];
      const bool isElement = document_[node].kind == NodeKind::kElement;
      passesOn.push_back(isSibling && isElement && !HasWholeStartTag(document_, node));
      if (!isSibling || !isElement || node == element_.atHand) continue;
      const ElementT* const described = ChildNamed(*parent_, document_.Name(node));
      if (described == nullptr) continue;
      siblings_.push_back({described, document_[node].span.begin < offset_});
    }
  }

  GivenAttributes Given() const { return {document_, element_.parent, *parent_}; }

  bool IsThere(const ElementT& child) const {
    return std::any_of(siblings_.begin(), siblings_.end(),
                       [&](const Sibling& sibling) { return sibling.described == &child; });
  }

  // One of them may stand outside a list, and any number once a list has stood before.
  bool MayStandBare(const ElementT& single, const ElementT& list) const {
    bool hasSingle = false;
    for (const Sibling& sibling : siblings_) {
      if (sibling.described == &list) return sibling.isBefore || !hasSingle;
      hasSingle = hasSingle || sibling.described == &single;
    }
    return !hasSingle;
  }

  const Document& document_;
  const std::size_t offset_;
  const ElementPlace& element_;
  const ElementT* const parent_ = &element_.parentElement;
  std::vector<Sibling> siblings_;
  std::optional<std::int32_t> affinity_;  // of a class; nothing: it cannot be made out
  bool hasModuleRef_ = false;             // of a side
};

}  // namespace

std::vector<const ElementT*> AdmittedChildren(const CompletionPlace& place,
                                              const ElementPlace& element) {
  const Admission admission(place, element);
  std::vector<const ElementT*> admitted;
  for (const ElementT* child : element.parentElement.children) {
    if (admission.Admits(*child)) admitted.push_back(child);
  }
  return admitted;
}

}  // namespace tool::lsp
