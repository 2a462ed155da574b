// SPDX-License-Identifier: Apache-2.0
// Attributes.
#include <algorithm>
#include <iterator>

#include "check/characters.h"
#include "grammar/intf_class.h"
#include "tools/tarnmf/grammar_sentences.h"
#include "tools/tarnmf/lsp/attribute_values.h"
#include "tools/tarnmf/lsp/completion_place.h"
#include "tools/tarnmf/lsp/given_beside.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;
using namespace tarnmf::grammar;

bool HoldsElements(const CompletionPlace& place) {
  const Document& document = place.Document();
  if (!HasWholeStartTag(document, place.cursor.node)) return false;
  for (const NodeId child : document.ChildrenOf(place.cursor.node)) {
    if (document[child].kind == NodeKind::kElement) return true;
  }
  return false;
}

// A side that holds its module cannot name one as well.
bool IsLeftToContent(const CompletionPlace& place, const AttributeT& attribute) {
  return place.cursor.element->content == Content::kSide &&
         std::string_view(attribute.name) == kModuleRef.name && HoldsElements(place);
}

bool HasValue(const CompletionPlace& place) {
  const std::string_view behind = place.TextBehindWord();
  const std::size_t next = behind.find_first_not_of(kBlanks);
  return place.cursor.attribute != nullptr && next != behind.npos && behind[next] == '=';
}

CompletionItem ItemOf(const CompletionPlace& place, const GivenBeside& given,
                      const AttributeT& attribute) {
  CompletionItem item;
  item.kind = CompletionItem::Kind::kAttribute;
  item.label = item.filter = attribute.name;
  item.detail = ValueText(attribute, kPlainStyle);
  item.documentation = attribute.doc;
  item.replaced = place.cursor.word;
  Snippet snippet(place.asSnippets);
  if (HasValue(place)) {
    snippet.Write(attribute.name);
  } else {
    WriteAttribute(attribute, *place.cursor.element, given.FixedValuesOf(attribute), snippet);
  }
  item.newText = snippet.Text();
  return item;
}

}  // namespace

std::vector<CompletionItem> CompleteAttribute(const CompletionPlace& place) {
  const GivenBeside given(place.Document(), place.cursor);
  std::vector<CompletionItem> items;
  std::vector<CompletionItem> lacking;  // another attribute, which has to be given first
  for (const AttributeT& attribute : place.cursor.element->attributes) {
    if (attribute.kind == ValueKind::kRefused || given.Has(attribute.name) ||
        given.Excludes(attribute) || IsLeftToContent(place, attribute)) {
      continue;
    }
    (given.LacksPartnerOf(attribute) ? lacking : items).push_back(ItemOf(place, given, attribute));
  }
  std::move(lacking.begin(), lacking.end(), std::back_inserter(items));
  return items;
}

}  // namespace tool::lsp
