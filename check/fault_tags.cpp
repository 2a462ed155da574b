// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <fmt/format.h>
#include <optional>

#include "check/characters.h"
#include "check/surroundings.h"

namespace tarnmf::check {
namespace {

bool IsQuote(char c) {
  return c == '"' || c == '\'';
}

// Where the value's opening quote stands, if it has one.
std::optional<std::size_t> OpeningQuote(const Surroundings& here, const Attribute& attribute) {
  if (attribute.value.begin == attribute.name.end) return std::nullopt;
  const std::size_t quote = attribute.value.begin - 1;
  return IsQuote(here.text[quote]) ? std::optional(quote) : std::nullopt;
}

// Nothing: the value's quotes are as they should be, or it has none.
std::optional<Fault> UnclosedValue(const Surroundings& here, const Attribute& attribute) {
  const std::optional<std::size_t> quote = OpeningQuote(here, attribute);
  const std::size_t end = attribute.value.end;
  if (!quote || (end < here.text.size() && here.text[end] == here.text[*quote]))
    return std::nullopt;
  return Fault{
      {*quote, end},
      fmt::format(R"(the value of "{}" lacks its closing quote)", here.document.Name(attribute)),
      {}};
}

// Nothing: this attribute is not the one at fault.
std::optional<Fault> InAttribute(const Surroundings& here, const Attribute& attribute) {
  const std::size_t offset = here.offset;
  const std::string_view name = here.document.Name(attribute);
  if (offset < attribute.name.begin || offset > attribute.value.end + 1) return std::nullopt;
  if (offset == attribute.name.begin && IsQuote(here.text[offset - 1])) {
    return Fault{attribute.name,
                 fmt::format(R"(a blank is missing before "{}", or a quote before that)", name),
                 {}};
  }
  if (offset < attribute.name.end)
    return here.Tell(attribute.name, R"("{}" is no name of an attribute)");
  if (attribute.value.begin == attribute.name.end) {
    return Fault{
        attribute.name, fmt::format(R"("{}" has no value: expected {}="...")", name, name), {}};
  }
  if (!OpeningQuote(here, attribute)) {
    return Fault{
        attribute.value, fmt::format(R"(the value of "{}" must stand in quotes)", name), {}};
  }
  if (auto fault = UnclosedValue(here, attribute)) return fault;
  // The judge may stop only at the closing quote, after a reference that lacks its end.
  if (offset == attribute.value.end) return ExplainReference(here);
  if (offset > attribute.value.end) return std::nullopt;
  return ExplainText(here);
}

}  // namespace

bool IsUnfinishedTag(const Surroundings& here, NodeId element) {
  if (!here.IsAt(here.document[element].startTag.end - 1, ">")) return true;
  const auto attributes = here.document.AttributesOf(element);
  return std::any_of(attributes.begin(), attributes.end(),
                     [&](const Attribute& each) { return UnclosedValue(here, each).has_value(); });
}

Fault ExplainStartTag(const Surroundings& here, NodeId element) {
  const Node& node = here.document[element];
  for (const Attribute& attribute : here.document.AttributesOf(element)) {
    if (auto fault = InAttribute(here, attribute)) return *fault;
    if (auto fault = UnclosedValue(here, attribute)) return *fault;
  }
  if (here.offset < node.name.end) return here.Tell(node.name, R"("{}" is no name of an element)");
  if (here.IsAt("<")) {
    const std::size_t end = here.text.find_last_not_of(kBlanks, node.startTag.end - 1) + 1;
    return {{node.span.begin, end},
            fmt::format(R"(the tag <{}> lacks its ">")", here.NameOf(node)),
            {}};
  }
  const std::size_t slash = here.IsAt("/") ? here.offset : here.offset - 1;
  if (here.IsAt(slash, "/"))
    return here.Tell({slash, slash + 1}, R"("{}" must stand right before ">")");
  return here.Tell(here.CharacterAt(here.offset), R"("{}" cannot stand in a tag)");
}

Fault ExplainEndTag(const Surroundings& here) {
  const Span name = here.NameAt(here.offset + 2);
  const std::size_t end = std::min(here.text.find_first_of("<>", name.end), here.text.size());
  const bool isEnded = here.IsAt(end, ">");
  const Span tag{here.offset, isEnded ? end + 1 : name.end};
  const std::string_view ended = here.document.source->Text(name);
  const Node* const open = here.OpenElement();
  if (open == nullptr)
    return {tag, fmt::format("</{}> ends nothing: no element is open", ended), {}};
  if (name.Size() == 0)
    return {
        tag, fmt::format("an end tag names its element: expected </{}>", here.NameOf(*open)), {}};
  if (ended == here.NameOf(*open))
    return {tag, fmt::format(R"(the end tag </{}> lacks its ">")", ended), {}};
  return {tag,
          fmt::format("</{}> ends <{}> of line {}", ended, here.NameOf(*open), here.LineOf(*open)),
          {here.Beginning(*open)}};
}

Fault ExplainAttributeTwice(const Surroundings& here) {
  const Span name = here.NameAt(here.offset);
  const std::string_view text = here.document.source->Text(name);
  Fault fault{
      name,
      fmt::format(R"("{}" is given twice in <{}>)", text, here.NameOf(here.document[here.node])),
      {}};
  const auto range = here.document.AttributesOf(here.node);
  const auto first = std::find_if(range.begin(), range.end(), [&](const Attribute& each) {
    return here.document.Name(each) == text;
  });
  if (first != range.end() && first->name.begin < here.offset)
    fault.related.push_back({{here.document.source, first->name}, "first given here"});
  return fault;
}

Fault ExplainUnfinishedTag(const Surroundings& here) {
  const Node& node = here.document[here.node];
  for (const Attribute& attribute : here.document.AttributesOf(here.node)) {
    if (auto fault = UnclosedValue(here, attribute)) return *fault;
  }
  return {{here.text.size(), here.text.size()},
          fmt::format("breaks off within the tag <{}> of line {}", here.NameOf(node),
                      here.LineOf(node)),
          {}};
}

}  // namespace tarnmf::check
