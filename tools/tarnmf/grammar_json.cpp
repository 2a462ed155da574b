// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/grammar_json.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "check/names.h"
#include "tools/tarnmf/grammar_elements.h"
#include "tools/tarnmf/grammar_sentences.h"

namespace tool {
namespace {

using namespace tarnmf::grammar;

const char* KindWord(ValueKind kind) {
  switch (kind) {
    case ValueKind::kKeyword:
      return "keyword";
    case ValueKind::kBoolean:
      return "boolean";
    case ValueKind::kDecimal:
      return "number";
    case ValueKind::kDecimal16:
      return "smallNumber";
    case ValueKind::kUniqueId:
      return "id";
    case ValueKind::kText:
      return "text";
    case ValueKind::kNonEmptyText:
      return "nonEmptyText";
    case ValueKind::kWordList:
      return "textList";
    case ValueKind::kVersion:
      return "version";
    case ValueKind::kAddressBits:
      return "addressBits";
    case ValueKind::kIgnored:
      return "ignored";
    case ValueKind::kRefused:
      return "refused";
  }
  return "";
}

const char* FormWord(AttributeForm form) {
  switch (form) {
    case AttributeForm::kRequired:
      return "required";
    case AttributeForm::kOptional:
      return "optional";
    case AttributeForm::kNone:
      return "none";
    case AttributeForm::kIgnored:
      return "ignored";
  }
  return "";
}

const char* ContentWord(Content content) {
  switch (content) {
    case Content::kElements:
      return "elements";
    case Content::kPreload:
      return "noElements";
    case Content::kSide:
      return "elementsUnlessModuleref";
    case Content::kArgument:
      return "oneText";
    case Content::kValue:
      return "leadingText";
    case Content::kNothing:
      return "nothing";
  }
  return "";
}

const char* ConditionWord(ConditionT::Kind kind) {
  switch (kind) {
    case ConditionT::kNeeds:
      return "needs";
    case ConditionT::kExcludes:
      return "excludes";
    case ConditionT::kOneOf:
      return "oneOf";
  }
  return "";
}

Json WordsJson(const AttributeT& attribute) {
  const Words* const words =
      attribute.kind == ValueKind::kBoolean ? &kBooleanWords : attribute.words;
  Json array = Json::array();
  if (words == nullptr) return array;
  for (const Word& word : words->list)
    array.push_back(word.text);
  return array;
}

Json AttributeJson(const AttributeT& attribute) {
  const auto [name, meaning] = KindOf(attribute.kind, kPlainStyle);
  return {{"name", attribute.name},
          {"required", attribute.required},
          {"kind", KindWord(attribute.kind)},
          {"words", WordsJson(attribute)},
          {"value", meaning.empty() ? name : name + ": " + meaning},
          {"description", attribute.doc}};
}

// "name", or "name=word" where only that value counts.
void AddConditionNames(Json& array, std::string_view names) {
  while (!names.empty()) {
    const std::string_view one = names.substr(0, names.find(' '));
    const std::size_t equals = one.find('=');
    array.push_back({{"name", one.substr(0, equals)},
                     {"value", equals == one.npos ? Json() : Json(one.substr(equals + 1))}});
    names.remove_prefix(std::min(one.size() + 1, names.size()));
  }
}

Json ConditionJson(const ConditionT& condition) {
  Json attributes = Json::array();
  AddConditionNames(attributes, condition.a);
  if (condition.b != nullptr) AddConditionNames(attributes, condition.b);
  return {{"kind", ConditionWord(condition.kind)},
          {"attributes", std::move(attributes)},
          {"code", static_cast<int>(condition.code)},
          {"sentence", ConditionSentence(condition, kPlainStyle)}};
}

}  // namespace

Json ElementJson(const ElementT& element) {
  Json json = {{"name", element.name},
               {"description", element.doc},
               {"root", false},
               {"parents", Json::array()},
               {"children", Json::array()},
               {"content", ContentWord(element.content)},
               {"attributeUse", FormWord(element.form)},
               {"sentences", ContentSentences(element, kPlainStyle)},
               {"attributes", Json::array()},
               {"conditions", Json::array()}};
  for (const ElementT* parent : tarnmf::check::ParentsOf(element)) {
    if (parent->name[0] == '\0') {
      json["root"] = true;
    } else {
      json["parents"].push_back(parent->name);
    }
  }
  for (const ElementT* child : element.children)
    json["children"].push_back(child->name);
  for (const AttributeT& attribute : element.attributes)
    json["attributes"].push_back(AttributeJson(attribute));
  for (const ConditionT& condition : element.conditions)
    json["conditions"].push_back(ConditionJson(condition));
  return json;
}

Json AttributeOfElementJson(const ElementT& element, const AttributeT& attribute) {
  Json json = {{"of", element.name}};
  json.update(AttributeJson(attribute));
  json["conditions"] = Json::array();
  for (const ConditionT& condition : element.conditions) {
    if (Mentions(condition, attribute.name)) json["conditions"].push_back(ConditionJson(condition));
  }
  return json;
}

std::string JsonSchema() {
  Json elements = Json::array();
  for (const ElementT* element : GrammarElements())
    elements.push_back(ElementJson(*element));
  return FormText(json_format::kSchema, {{"elements", std::move(elements)}});
}

}  // namespace tool
