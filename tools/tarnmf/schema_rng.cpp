// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/schema_rng.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "check/references.h"
#include "tools/tarnmf/grammar_elements.h"

namespace tool {
namespace {

using tarnmf::grammar::AttributeForm;
using tarnmf::grammar::AttributeT;
using tarnmf::grammar::Content;
using tarnmf::grammar::ElementT;
using tarnmf::grammar::ValueKind;
using tarnmf::grammar::Word;
using tarnmf::grammar::Words;

constexpr char kHead[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- Manifest documents. Written by "tarnmf schema" from the tool's own grammar; do not edit.

     Letter case is free in documents, in names of elements and attributes as in words and booleans. A
     schema cannot say so: this one accepts names in lower case, and words in lower case or as they are
     documented. What attributes of one element have to do with each other, and what documents have to
     do with each other, is left to "tarnmf check". -->
<grammar xmlns="http://relaxng.org/ns/structure/1.0"
         xmlns:a="http://relaxng.org/ns/compatibility/annotations/1.0"
         datatypeLibrary="http://www.w3.org/2001/XMLSchema-datatypes">
)";

constexpr char kUniqueIdPattern[] =
    "[0-9A-Fa-f]{32}|[0-9A-Fa-f]{8}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{12}";

std::string LowerCase(std::string text) {
  for (char& c : text)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// A module in the side of a class is a shared library, and a fresh id is made where it has none.
constexpr char kNestedModule[] = "nestedmodule";

class Writer {
 public:
  std::string Take() { return std::move(text_); }

  void WriteGrammar() {
    text_ = kHead;
    depth_ = 1;
    Open("start");
    WriteChoice(tarnmf::grammar::kDocument);
    Close("start");
    for (const ElementT* element : GrammarElements())
      WriteDefine(element->name, *element, false);
    WriteDefine(kNestedModule, tarnmf::grammar::kModule, true);
    depth_ = 0;
    Close("grammar");
  }

 private:
  void Line(const std::string& line) {
    text_.append(2 * static_cast<std::size_t>(depth_), ' ');
    text_ += line;
    text_ += '\n';
  }
  void Open(const char* tag, const std::string& attributes = "") {
    Line(attributes.empty() ? fmt::format("<{}>", tag) : fmt::format("<{} {}>", tag, attributes));
    ++depth_;
  }
  void Close(const char* tag) {
    depth_ = std::max(0, depth_ - 1);
    Line(fmt::format("</{}>", tag));
  }
  void Documentation(const char* text) {
    Line(fmt::format("<a:documentation>{}</a:documentation>", tarnmf::check::EscapedText(text)));
  }
  void Value(std::string_view value) {
    Line(fmt::format(R"(<value type="string">{}</value>)", value));
  }
  void Data(const char* type, std::initializer_list<std::pair<const char*, const char*>> params) {
    if (params.size() == 0) return Line(fmt::format(R"(<data type="{}"/>)", type));
    Open("data", fmt::format(R"(type="{}")", type));
    for (const auto& [name, value] : params)
      Line(fmt::format(R"(<param name="{}">{}</param>)", name, value));
    Close("data");
  }

  void WriteWords(const Words& words) {
    Open("choice");
    for (const Word& word : words.list) {
      Value(word.text);
      const std::string lower = LowerCase(word.text);
      if (lower != word.text) Value(lower);
    }
    Close("choice");
  }

  void WriteValue(const AttributeT& attribute) {
    switch (attribute.kind) {
      case ValueKind::kKeyword:
        return WriteWords(*attribute.words);
      case ValueKind::kBoolean:
        return WriteWords(tarnmf::grammar::kBooleanWords);
      case ValueKind::kDecimal:
        return Data("int", {});
      case ValueKind::kDecimal16:
        return Data("int", {{"minInclusive", "0"}, {"maxInclusive", "32767"}});
      case ValueKind::kUniqueId:
        return Data("string", {{"pattern", kUniqueIdPattern}});
      case ValueKind::kNonEmptyText:
        return Data("string", {{"minLength", "1"}});
      case ValueKind::kWordList:
        return Data("string", {{"pattern", ".*[^;].*"}});
      case ValueKind::kVersion:
        return Value("1");
      case ValueKind::kAddressBits:
        Open("choice");
        Value("32");
        Value("64");
        return Close("choice");
      case ValueKind::kText:
      case ValueKind::kIgnored:
      case ValueKind::kRefused:
        return Line("<text/>");
    }
  }

  void WriteAttribute(const AttributeT& attribute, bool isRequired) {
    if (attribute.kind == ValueKind::kRefused) return;
    if (!isRequired) Open("optional");
    Open("attribute", fmt::format(R"(name="{}")", attribute.name));
    Documentation(attribute.doc);
    WriteValue(attribute);
    Close("attribute");
    if (!isRequired) Close("optional");
  }

  void WriteNestedAttribute(const AttributeT& attribute) {
    const std::string_view name = attribute.name;
    if (name != "type") return WriteAttribute(attribute, attribute.required && name != "id");
    Open("optional");
    Open("attribute", R"(name="type")");
    Open("choice");
    Value("sharedLib");
    Value("sharedlib");
    Close("choice");
    Close("attribute");
    Close("optional");
  }

  void WriteReference(const char* name) { Line(fmt::format(R"(<ref name="{}"/>)", name)); }

  void WriteChoice(const ElementT& element) {
    Open("choice");
    for (const ElementT* child : element.children)
      WriteReference(child->name);
    Close("choice");
  }

  // Any number of the children in any order; of the sides of a class one each.
  void WriteChildren(const ElementT& element) {
    const bool areSides =
        std::all_of(element.children.begin(), element.children.end(),
                    [](const ElementT* child) { return child->content == Content::kSide; });
    const char* const group = areSides ? "interleave" : "zeroOrMore";
    Open(group);
    if (!areSides) {
      WriteChoice(element);
    } else {
      for (const ElementT* child : element.children) {
        Open("optional");
        WriteReference(child->name);
        Close("optional");
      }
    }
    Close(group);
  }

  // A side names its module and is empty, or may hold one.
  void WriteSideContent(const ElementT& element) {
    const auto moduleref =
        std::find_if(element.attributes.begin(), element.attributes.end(),
                     [](const AttributeT& a) { return std::string_view(a.name) == "moduleref"; });
    Open("choice");
    WriteAttribute(*moduleref, true);
    Open("optional");
    WriteReference(kNestedModule);
    Close("optional");
    Close("choice");
  }

  void WriteContent(const ElementT& element) {
    switch (element.content) {
      case Content::kElements:
        return WriteChildren(element);
      case Content::kSide:
        return WriteSideContent(element);
      case Content::kArgument:
        return Line("<text/>");
      case Content::kValue:
        return Data("string", {{"minLength", "1"}});
      case Content::kPreload:
      case Content::kNothing:
        return Line("<empty/>");
    }
  }

  void WriteDefine(const char* name, const ElementT& element, bool isNested) {
    Open("define", fmt::format(R"(name="{}")", name));
    Open("element", fmt::format(R"(name="{}")", element.name));
    Documentation(element.doc);
    for (const AttributeT& attribute : element.attributes) {
      if (element.content == Content::kSide && std::string_view(attribute.name) == "moduleref")
        continue;
      if (isNested) {
        WriteNestedAttribute(attribute);
      } else {
        WriteAttribute(attribute, attribute.required);
      }
    }
    if (element.form == AttributeForm::kIgnored) {
      Line("<zeroOrMore><attribute><anyName/></attribute></zeroOrMore>");
    }
    WriteContent(element);
    Close("element");
    Close("define");
  }

  std::string text_;
  int depth_ = 0;
};

}  // namespace

std::string RngSchema() {
  Writer writer;
  writer.WriteGrammar();
  return writer.Take();
}

}  // namespace tool
