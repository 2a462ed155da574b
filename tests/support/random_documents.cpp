// SPDX-License-Identifier: Apache-2.0
#include "tests/support/random_documents.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "grammar/manifest.h"

namespace tarnmf::test {
namespace {

using grammar::AttributeForm;
using grammar::Content;
using grammar::ElementT;
using grammar::ValueKind;

constexpr const ElementT* kAnywhere[] = {
    &grammar::kModule,  &grammar::kModules,   &grammar::kPreload,    &grammar::kPlatformModule,
    &grammar::kClass,   &grammar::kClasses,   &grammar::kClientSide, &grammar::kServiceSide,
    &grammar::kService, &grammar::kRunnables, &grammar::kArgs,       &grammar::kArg,
    &grammar::kEnv,     &grammar::kSet,       &grammar::kUnset,      &grammar::kMixedManifest,
};
constexpr int kDeepest = 9;

char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

std::string RandomDocuments::Next() {
  constexpr std::size_t kRates[] = {0, 0, 300, 60, 15};
  mistakes_ = kRates[Below(std::size(kRates))];
  text_.clear();
  hasEntity_ = OneIn(5);
  if (OneIn(4)) text_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  if (hasEntity_) text_ += "<!DOCTYPE tarnmanifest [<!ENTITY e \"yes\">]>";
  if (OneIn(10)) text_ += "<?model x?><!--c-->";
  WriteElement(*grammar::kDocument.children[Below(grammar::kDocument.children.size())], 0);
  return std::move(text_);
}

std::string RandomDocuments::NextDamaged() {
  std::string document = Next();
  if (OneIn(4)) {
    document.resize(Below(document.size()));
    return document;
  }
  constexpr std::string_view kDamage("<>&;\"'/=!-?[] x\nA\0", 18);
  for (std::size_t count = 1 + Below(3); count > 0 && !document.empty(); --count) {
    const char damage = kDamage[Below(kDamage.size())];
    const std::size_t at = Below(document.size());
    switch (Below(3)) {
      case 0:
        document[at] = damage;
        break;
      case 1:
        document.insert(at, 1, damage);
        break;
      default:
        document.erase(at, 1 + Below(6));
        break;
    }
  }
  return document;
}

// ---- Names and values --------------------------------------------------------------------------

std::string RandomDocuments::Name(std::string name) {
  if (OneIn(12)) std::transform(name.begin(), name.end(), name.begin(), Upper);
  if (!Err()) return name;
  const std::size_t at = Below(name.size());
  switch (Below(4)) {
    case 0:
      return name.insert(at, 1, 'x');
    case 1:
      return name.size() > 1 ? name.erase(at, 1) : name + "y";
    case 2:
      return "x:" + name;
    default:
      return OneOf({"xmlns", "id", "version", "name", "other", "\xe2\x84\xaaind", "modul"});
  }
}

std::string RandomDocuments::Id() {
  std::string id = "0123abcd-4567-89ab-cdef-00000000000" + std::to_string(Below(4));
  if (OneIn(3)) std::erase(id, '-');
  return id;
}

std::string RandomDocuments::Value(const grammar::AttributeT& attribute) {
  const std::string_view name = attribute.name;
  if (Err()) {
    return OneOf({"",
                  " ",
                  "x",
                  "1",
                  "-1",
                  "99999999999",
                  "0000000000000001",
                  "70000",
                  "2",
                  "yes ",
                  "truee",
                  "1.0",
                  "&#9;64",
                  "{0123abcd-4567-89ab-cdef-000000000000}",
                  "container",
                  "0123abcd-4567-89ab-cdef-00000000000g",
                  "0123abcd_4567_89ab_cdef_000000000000",
                  ";;",
                  "a long text of more than all buffers",
                  "\xc3\xa4"});
  }
  switch (attribute.kind) {
    case ValueKind::kKeyword:
      if (name == "affinity" && OneIn(2)) return "service";
      return attribute.words->list[Below(attribute.words->list.size())].text;
    case ValueKind::kBoolean:
      return hasEntity_ && OneIn(4) ? "&e;" : OneOf({"yes", "TRUE", "no", "false", "&#121;es"});
    case ValueKind::kDecimal:
    case ValueKind::kDecimal16:
      return Err() ? OneOf({"32768", "-1", "70000"})
                   : OneOf({"0", "7", " 12", "+3", "32767", "3rd"});
    case ValueKind::kVersion:
      return OneOf({"1", "1", "1", " 1", "1.0"});
    case ValueKind::kAddressBits:
      return OneOf({"32", "64", "64 bits"});
    case ValueKind::kUniqueId:
      return Id();
    case ValueKind::kWordList:
      return OneOf({"a", "a;b", ";a;"});
    default:
      if (name == "type") return OneOf({"sharedLib", "SHAREDLIB", "sharedlib", "executable"});
      return OneOf({"a", "b", "a b", "&lt;", "\xc3\xa4"});
  }
}

void RandomDocuments::WriteAttribute(const std::string& name, const std::string& value) {
  // A name that is there already would not be well-formed.
  const std::size_t tag = text_.rfind('<');
  if (text_.find(" " + name + "=", tag) != std::string::npos) return;
  text_ += " " + name + "=\"" + value + "\"";
}

void RandomDocuments::WriteAttributes(const ElementT& element) {
  const std::size_t rarity = 1 + Below(5);
  for (const grammar::AttributeT& attribute : element.attributes) {
    const bool isRare = attribute.kind == ValueKind::kRefused;
    const bool isWanted = isRare || attribute.required ? isRare == Err() : OneIn(rarity);
    if (isWanted) WriteAttribute(Name(attribute.name), Value(attribute));
    if (!Err()) continue;
    std::string upper = attribute.name;
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    WriteAttribute(upper, Value(attribute));
  }
  if (Err() || element.form == AttributeForm::kIgnored) WriteAttribute(OneOf({"x", "id"}), "y");
}

// ---- Content -----------------------------------------------------------------------------------

void RandomDocuments::WriteNoise() {
  if (OneIn(3)) text_ += OneOf({" ", "\n", "<!-- c -->", "\n  <!--c--> ", " "});
  if (OneIn(40)) text_ += "text";
  if (Err()) text_ += OneOf({"<?p i?>", "<![CDATA[c]]>", "<![CDATA[]]>"});
  if (hasEntity_ && Err()) text_ += "&e;";
}

void RandomDocuments::WriteText() {
  if (Err()) WriteNoise();
  if (!Err()) text_ += OneOf({"v", "a b", "&amp;x", "&#32;", " v\n", "\"a b\" c"});
  if (Err()) text_ += OneOf({"<x/>", "<!--c-->", "<![CDATA[v]]>w", "<?p i?>w"});
}

void RandomDocuments::WriteChildren(const ElementT& element, int depth) {
  WriteNoise();
  for (std::size_t count = Below(4); count > 0 && depth < kDeepest; --count) {
    if (Err()) {
      WriteElement(*kAnywhere[Below(std::size(kAnywhere))], depth + 1);
    } else if (!element.children.empty()) {
      WriteElement(*element.children[Below(element.children.size())], depth + 1);
    }
    WriteNoise();
  }
}

void RandomDocuments::WriteContent(const ElementT& element, int depth) {
  switch (element.content) {
    case Content::kElements:
      WriteChildren(element, depth);
      return;
    case Content::kSide:
      // A side that names its module must be empty.
      if (text_.find(" moduleref", text_.rfind('<')) == std::string::npos ? !OneIn(4) : Err()) {
        WriteChildren(element, depth);
      }
      return;
    case Content::kArgument:
      if (!OneIn(8)) WriteText();
      return;
    case Content::kValue:
      WriteText();
      return;
    case Content::kPreload:
      if (OneIn(6)) WriteNoise();
      if (Err()) WriteChildren(element, depth);
      return;
    case Content::kNothing:
      if (Err()) WriteNoise();
      return;
  }
}

void RandomDocuments::WriteElement(const ElementT& element, int depth) {
  const std::string name = Name(element.name);
  text_ += "<" + name;
  WriteAttributes(element);
  const std::size_t tag = text_.size();
  text_ += ">";
  WriteContent(element, depth);
  if (text_.size() == tag + 1 && !OneIn(3)) {
    text_.replace(tag, 1, "/>");
  } else {
    text_ += "</" + name + ">";
  }
}

}  // namespace tarnmf::test
