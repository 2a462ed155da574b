// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/element_text.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "check/placement.h"
#include "grammar/intf_class.h"
#include "tools/tarnmf/lsp/attribute_values.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::grammar;

// Which attributes an element cannot do without, found one reason after the other.
class NeededAttributes {
 public:
  explicit NeededAttributes(const NewElement& element)
      : attributes_(element.described.attributes), isNeeded_(attributes_.size()) {
    const ElementT& described = element.described;
    for (std::size_t i = 0; i < attributes_.size(); ++i)
      isNeeded_[i] = tarnmf::check::IsRequired(attributes_[i], described, element.parent);
    // The grammar's first attribute is what such an element is mostly given.
    if (described.form == AttributeForm::kRequired && IsEmpty()) isNeeded_.front() = true;
    for (const ConditionT& condition : described.conditions) {
      if (condition.kind == ConditionT::kOneOf) NeedOneOf(condition.a);
    }
    // The side names its module, which nobody but a worker offers without an id.
    if (&described == &kServiceSide && !element.isOfWorker) Need("svcid");
  }

  std::vector<const AttributeT*> All() const {
    std::vector<const AttributeT*> all;
    for (std::size_t i = 0; i < attributes_.size(); ++i) {
      if (isNeeded_[i]) all.push_back(&attributes_[i]);
    }
    return all;
  }

 private:
  bool IsEmpty() const {
    return std::find(isNeeded_.begin(), isNeeded_.end(), true) == isNeeded_.end();
  }

  void Need(std::string_view name) {
    for (std::size_t i = 0; i < attributes_.size(); ++i)
      isNeeded_[i] = isNeeded_[i] || attributes_[i].name == name;
  }

  // None of them is required: the first one will do.
  void NeedOneOf(std::string_view names) { Need(names.substr(0, names.find(' '))); }

  const std::span<const AttributeT> attributes_;
  std::vector<bool> isNeeded_;
};

// A side is given its module by name.
bool IsEmptyTag(Content content) {
  return content == Content::kNothing || content == Content::kPreload || content == Content::kSide;
}

}  // namespace

void WriteElement(const NewElement& element, Snippet& snippet) {
  const ElementT& described = element.described;
  snippet.Write(described.name);
  for (const AttributeT* attribute : NeededAttributes(element).All()) {
    snippet.Write(" ");
    WriteAttribute(*attribute, described, FixedValues(*attribute, described), snippet);
  }
  if (IsEmptyTag(described.content)) {
    snippet.Write("/>");
  } else {
    snippet.Write(">").LastPlace().Write("</").Write(described.name).Write(">");
  }
}

}  // namespace tool::lsp
