// SPDX-License-Identifier: Apache-2.0
// Walks the whole grammar: every attribute of every element at every place, given well, badly,
// twice, misspelt and where it does not belong, and every condition between attributes.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

#include "grammar/manifest.h"
#include "tests/support/documents.h"
#include "tests/support/parse.h"

namespace tarnmf::test {
namespace {

using grammar::AttributeForm;
using grammar::AttributeT;
using grammar::ConditionT;
using grammar::Content;
using grammar::ElementT;
using grammar::ValueKind;

using Attributes = std::map<std::string, std::string>;

std::string GoodValue(const AttributeT& attribute) {
  switch (attribute.kind) {
    case ValueKind::kKeyword:
      return attribute.words->list.front().text;
    case ValueKind::kBoolean:
      return "Yes";
    case ValueKind::kUniqueId:
      return "$1";
    case ValueKind::kWordList:
      return "a;b";
    case ValueKind::kAddressBits:
      return "64";
    case ValueKind::kNonEmptyText:  // a module inside a side has no other type
      return attribute.name == std::string("type") ? "SharedLib" : "t";
    default:
      return "1";
  }
}

// Values that are refused, with their codes.
std::vector<std::pair<std::string, BtkErrorT>> BadValues(const AttributeT& attribute) {
  std::vector<std::pair<std::string, BtkErrorT>> bad;
  const auto malformed = [&](std::initializer_list<std::string> values) {
    for (const std::string& value : values)
      bad.emplace_back(value, kBtkMalformed);
  };
  const std::string good = GoodValue(attribute);
  switch (attribute.kind) {
    case ValueKind::kKeyword:
    case ValueKind::kBoolean:
      malformed({"", "1", " " + good, good + "x", "averyverylongword"});
      break;
    case ValueKind::kDecimal16:
      bad = {{"-1", kBtkOutOfRange}, {"32768", kBtkOutOfRange}};
      [[fallthrough]];
    case ValueKind::kDecimal:
      malformed({"", "2147483648", "-2147483649", "0000000000000001"});
      break;
    case ValueKind::kUniqueId:
      malformed({"", "x", "{$1}", std::string(36, 'g')});
      break;
    case ValueKind::kNonEmptyText:
      malformed({""});
      break;
    case ValueKind::kWordList:
      malformed({"", ";;"});
      break;
    case ValueKind::kVersion:
      bad = {{"2", kBtkWrongVersion}, {"x", kBtkWrongVersion}};
      malformed({""});
      break;
    case ValueKind::kAddressBits:
      malformed({"", "48"});
      break;
    case ValueKind::kRefused:
      bad = {{"", kBtkRefused}, {"yes", kBtkRefused}};
      break;
    case ValueKind::kText:
    case ValueKind::kIgnored:
      break;
  }
  return bad;
}

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
  return text;
}

bool IsRoot(const ElementT& element) {
  return element.attributes.data() == grammar::kRootAttributes;
}

// What an element has to have besides its required attributes to be a good one.
Attributes BaseOf(const ElementT& element, bool withChildren) {
  static const std::map<std::string, Attributes> kMore = {
      {"platformmodule", {{"path", "p"}}},  {"preload", {{"optionid", "$1"}}},
      {"class", {{"affinity", "service"}}}, {"clientside", {{"moduleref", "m"}}},
      {"agentside", {{"moduleref", "m"}}},  {"serviceside", {{"moduleref", "m"}, {"svcid", "$2"}}},
  };
  Attributes base;
  for (const AttributeT& attribute : element.attributes) {
    if (attribute.required) base[attribute.name] = GoodValue(attribute);
  }
  if (const auto more = kMore.find(element.name); more != kMore.end()) {
    base.insert(more->second.begin(), more->second.end());
  }
  // A side either names its module or holds it.
  if (withChildren && element.content == Content::kSide) {
    base.erase("moduleref");
    base["multiplicity"] = "perLdp";
  }
  return base;
}

std::string Text(const Attributes& attributes) {
  std::string text;
  for (const auto& [name, value] : attributes)
    text += " " + name + "=\"" + value + "\"";
  return text;
}

// One element at one place of a document.
class Place {
 public:
  Place(const ElementT& element, std::string before, std::string after)
      : element_(element), before_(std::move(before)), after_(std::move(after)) {}

  void CheckAll() const {
    SCOPED_TRACE(before_ + "<" + element_.name);
    EXPECT_EQ(CodeOf(BaseOf(element_, false)), kBtkOk);
    for (const AttributeT& attribute : element_.attributes)
      CheckAttribute(attribute);
    CheckForeignAttributes();
    for (const ConditionT& condition : element_.conditions)
      CheckCondition(condition);
    CheckForeignChildren();
    for (const ElementT* child : element_.children) {
      const std::string name = element_.name;
      Place(*child, before_ + "<" + name + Text(BaseOf(element_, true)) + ">",
            "</" + name + ">" + after_)
          .CheckAll();
    }
  }

 private:
  BtkErrorT CodeOf(const Attributes& attributes, const std::string& more = "",
                   const std::string& children = "") const {
    const std::string name = element_.name;
    const std::string text = element_.content == Content::kValue ? "v" : "";
    MfLdpDataT data;
    return Parse(WithIds(before_ + "<" + name + Text(attributes) + more + ">" + text + children +
                         "</" + name + ">" + after_),
                 data);
  }

  // The base attributes with one more, and what that one needs.
  Attributes With(const std::string& name, const std::string& value) const {
    Attributes attributes = BaseOf(element_, false);
    attributes[name] = value;
    for (const ConditionT& condition : element_.conditions) {
      const bool concerned = condition.a == name || condition.a == name + "=" + value;
      if (condition.kind == ConditionT::kNeeds && concerned) {
        attributes.emplace(condition.b, GoodValue(Find(condition.b)));
      }
    }
    return attributes;
  }

  const AttributeT& Find(const std::string& name) const {
    return *std::find_if(element_.attributes.begin(), element_.attributes.end(),
                         [&](const AttributeT& attribute) { return attribute.name == name; });
  }

  void CheckAttribute(const AttributeT& attribute) const {
    SCOPED_TRACE(attribute.name);
    for (const auto& [value, code] : BadValues(attribute))
      EXPECT_EQ(CodeOf(With(attribute.name, value)), code) << value;
    if (attribute.kind == ValueKind::kRefused) return;

    const std::string good = GoodValue(attribute);
    const Attributes once = With(attribute.name, good);
    EXPECT_EQ(CodeOf(once), kBtkOk);
    Attributes inCapitals = once;
    inCapitals.erase(attribute.name);
    inCapitals[Upper(attribute.name)] = good;
    EXPECT_EQ(CodeOf(inCapitals), kBtkOk);
    const bool mayRepeat =
        attribute.kind == ValueKind::kIgnored || attribute.kind == ValueKind::kWordList;
    // "version" of modules is not read either, but counted.
    const bool counted = attribute.name == std::string("version");
    const BtkErrorT twice = IsRoot(element_)        ? kBtkUnexpected
                            : mayRepeat && !counted ? kBtkOk
                                                    : kBtkDuplicate;
    EXPECT_EQ(CodeOf(once, Text({{Upper(attribute.name), good}})), twice);
    EXPECT_EQ(CodeOf(once, Text({{attribute.name + std::string("s"), good}})), kBtkUnexpected);
    EXPECT_EQ(CodeOf(once, Text({{std::string("xml:") + attribute.name, good}})), kBtkUnexpected);
    CheckWords(attribute);
    CheckMissing(attribute);
  }

  void CheckWords(const AttributeT& attribute) const {
    if (attribute.kind != ValueKind::kKeyword) return;
    for (const grammar::Word& word : attribute.words->list) {
      const bool forbidden = element_.name == std::string("class") && word.number == kMfContainer &&
                             attribute.words == &grammar::kManagedTypeWords;
      Attributes attributes = With(attribute.name, word.text);
      attributes[attribute.name] = Upper(word.text);
      EXPECT_EQ(CodeOf(attributes), forbidden ? kBtkForbidden : kBtkOk) << word.text;
    }
  }

  void CheckMissing(const AttributeT& attribute) const {
    if (!attribute.required) return;
    Attributes without = BaseOf(element_, false);
    without.erase(attribute.name);
    // A module inside a side is given a fresh id.
    const bool nested =
        attribute.name == std::string("id") && before_.find("side ") != before_.npos;
    EXPECT_EQ(CodeOf(without), IsRoot(element_) ? kBtkUnexpected : nested ? kBtkOk : kBtkMissing);
  }

  void CheckForeignAttributes() const {
    static const std::set<std::string> kAll = AllAttributes(grammar::kDocument);
    for (const std::string& name : kAll) {
      const bool own = std::any_of(element_.attributes.begin(), element_.attributes.end(),
                                   [&](const AttributeT& one) { return one.name == name; });
      if (own) continue;
      const bool ignored = element_.form == AttributeForm::kIgnored;
      EXPECT_EQ(CodeOf(BaseOf(element_, false), Text({{name, "1"}})),
                ignored ? kBtkOk : kBtkUnexpected)
          << name;
    }
    if (element_.form == AttributeForm::kRequired) {
      EXPECT_EQ(CodeOf({}), IsRoot(element_) ? kBtkUnexpected : kBtkMissing);
    }
  }

  static std::set<std::string> AllAttributes(const ElementT& element) {
    std::set<std::string> all;
    for (const AttributeT& attribute : element.attributes)
      all.insert(attribute.name);
    for (const ElementT* child : element.children)
      all.merge(AllAttributes(*child));
    return all;
  }

  void CheckCondition(const ConditionT& condition) const {
    if (condition.kind == ConditionT::kOneOf) {
      Attributes without = BaseOf(element_, false);
      std::istringstream names(condition.a);
      for (std::string name; names >> name;)
        without.erase(name);
      EXPECT_EQ(CodeOf(without), condition.code) << condition.a;
      return;
    }
    const std::string a = condition.a;
    const std::string name = a.substr(0, a.find('='));
    const std::string value = name == a ? GoodValue(Find(name)) : a.substr(name.size() + 1);
    Attributes attributes = With(name, value);
    if (condition.kind == ConditionT::kNeeds) {
      attributes.erase(condition.b);
    } else {
      attributes[condition.b] = GoodValue(Find(condition.b));
    }
    EXPECT_EQ(CodeOf(attributes), condition.code) << a << " and " << condition.b;
  }

  void CheckForeignChildren() const {
    if (element_.content == Content::kValue) return;
    const std::string child = "<" + std::string(element_.name) + "s/>";
    const BtkErrorT refused = element_.content == Content::kSide ? kBtkDuplicate : kBtkUnexpected;
    EXPECT_EQ(CodeOf(BaseOf(element_, false), "", child), refused);
  }

  const ElementT& element_;
  std::string before_;
  std::string after_;
};

TEST(Grammar, IsWhatIsRead) {
  for (const ElementT* root : grammar::kDocument.children)
    Place(*root, "", "").CheckAll();
}

}  // namespace
}  // namespace tarnmf::test
