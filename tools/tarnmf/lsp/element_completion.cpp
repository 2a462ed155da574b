// SPDX-License-Identifier: Apache-2.0
// Elements and end tags.
#include <algorithm>
#include <fmt/format.h>

#include "check/characters.h"
#include "check/given.h"
#include "grammar/manifest.h"
#include "tools/tarnmf/lsp/admitted_children.h"
#include "tools/tarnmf/lsp/completion_place.h"
#include "tools/tarnmf/lsp/element_text.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;
using tarnmf::grammar::ElementT;

bool IsWorker(const CompletionPlace& place, const ElementPlace& element) {
  if (&element.parentElement != &tarnmf::grammar::kClass) return false;
  const GivenAttributes given(place.Document(), element.parent, tarnmf::grammar::kClass);
  return given.WordOr("managedtype", kMfGeneric) == kMfWorker;
}

// Whether more of the tag than its name is there.
bool HasMoreThanName(const CompletionPlace& place) {
  const NodeId node = place.cursor.node;
  if (place.cursor.where != Cursor::Where::kElementName) return false;
  if (node == kNoNode) return place.NextCharacter() == '>';
  const auto attributes = place.Document().AttributesOf(node);
  return HasWholeStartTag(place.Document(), node) ||
         std::any_of(attributes.begin(), attributes.end(),
                     [](const Attribute& attribute) { return !attribute.isDefault; });
}

std::string TextOf(const CompletionPlace& place, const NewElement& element) {
  Snippet snippet(place.asSnippets);
  if (place.cursor.where == Cursor::Where::kContent) snippet.Write("<");
  if (HasMoreThanName(place)) {
    snippet.Write(element.described.name);
  } else {
    WriteElement(element, snippet);
  }
  return snippet.Text();
}

// ---- End tags ----------------------------------------------------------------------------------

CompletionItem EndTag(const CompletionPlace& place, NodeId element) {
  CompletionItem item;
  item.kind = CompletionItem::Kind::kEndTag;
  const std::string name(place.Document().Name(element));
  item.label = fmt::format("</{}>", name);
  const Source& source = place.manifest.source;
  item.detail =
      fmt::format("begins in line {}", source.At(place.Document()[element].span.begin).line);
  item.replaced = place.cursor.word;
  item.filter = name;
  return item;
}

// The end tag as the last of the items, when the element around has none.
void AddMissingEndTag(const CompletionPlace& place, NodeId around,
                      std::vector<CompletionItem>& items) {
  const Node& element = place.Document()[around];
  if (element.kind != NodeKind::kElement || element.span.end > element.content.end) return;
  const bool isInContent = place.cursor.where == Cursor::Where::kContent;
  CompletionItem item = EndTag(place, around);
  const std::string text = isInContent ? item.label : item.label.substr(1);
  // The word is a part of what the element holds.
  if (isInContent) item.replaced = {place.offset, place.offset};
  item.filter = text;
  item.newText = Snippet(place.asSnippets).Write(text).Text();
  items.push_back(std::move(item));
}

}  // namespace

std::vector<CompletionItem> CompleteElement(const CompletionPlace& place) {
  const Cursor& cursor = place.cursor;
  const bool isInContent = cursor.where == Cursor::Where::kContent;
  const NodeId around = isInContent ? cursor.node : cursor.parent;
  const ElementT* const described = isInContent ? cursor.element : cursor.parentElement;
  std::vector<CompletionItem> items;
  if (described != nullptr) {
    const ElementPlace element = {around, *described, isInContent ? kNoNode : cursor.node};
    const bool isWorker = IsWorker(place, element);
    for (const ElementT* child : AdmittedChildren(place, element)) {
      CompletionItem& item = items.emplace_back();
      item.kind = CompletionItem::Kind::kElement;
      item.label = item.filter = child->name;
      item.documentation = child->doc;
      item.replaced = cursor.word;
      item.newText = TextOf(place, {*child, *described, isWorker});
    }
  }
  if (isInContent || cursor.node == kNoNode) AddMissingEndTag(place, around, items);
  return items;
}

std::vector<CompletionItem> CompleteEndTag(const CompletionPlace& place) {
  const NodeId element = place.cursor.node;
  if (element == kDocumentNode) return {};
  CompletionItem item = EndTag(place, element);
  const std::string_view behind = place.TextBehindWord();
  const std::size_t next = behind.find_first_not_of(kBlanks);
  const bool isEnded = next != behind.npos && behind[next] == '>';
  item.newText = Snippet(place.asSnippets).Write(item.filter).Write(isEnded ? "" : ">").Text();
  return {std::move(item)};
}

}  // namespace tool::lsp
