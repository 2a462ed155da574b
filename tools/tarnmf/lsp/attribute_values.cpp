// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/attribute_values.h"

#include <string_view>

#include "check/declared.h"
#include "check/placement.h"
#include "grammar/intf_class.h"
#include "platform/unique_id.h"

namespace tool::lsp {

using tarnmf::grammar::AttributeT;
using tarnmf::grammar::ElementT;
using tarnmf::grammar::ValueKind;

std::vector<std::string> FixedValues(const AttributeT& attribute, const ElementT& element) {
  std::vector<std::string> values;
  switch (attribute.kind) {
    case ValueKind::kKeyword:
      for (const tarnmf::grammar::Word& word : attribute.words->list) {
        if (tarnmf::check::IsWordAdmitted(word.number, attribute, element))
          values.emplace_back(word.text);
      }
      break;
    case ValueKind::kBoolean:
      values = {"true", "false"};
      break;
    case ValueKind::kVersion:
      values = {"1"};
      break;
    case ValueKind::kAddressBits:
      values = {"32", "64"};
      break;
    default:
      break;
  }
  return values;
}

bool IsOwnId(const AttributeT& attribute, const ElementT& element) {
  if (attribute.kind != ValueKind::kUniqueId) return false;
  const std::string_view name = attribute.name;
  return name == "id" || (&element == &tarnmf::grammar::kServiceSide && name == "svcid");
}

std::string FreshId() {
  UniIdT id{};
  // It cannot fail for this kind.
  if (btkUniIdGen14(&id, kBtkUniIdRandom, 0) != kBtkOk) return {};
  return tarnmf::check::IdText(id);
}

void WriteAttribute(const AttributeT& attribute, const ElementT& element,
                    std::span<const std::string> values, Snippet& snippet) {
  snippet.Write(attribute.name).Write("=\"");
  if (values.size() == 1) {
    snippet.Write(values.front());
  } else if (!values.empty()) {
    snippet.Choice(values);
  } else if (IsOwnId(attribute, element)) {
    snippet.Place(FreshId());
  } else {
    snippet.Place();
  }
  snippet.Write("\"");
}

}  // namespace tool::lsp
