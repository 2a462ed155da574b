// SPDX-License-Identifier: Apache-2.0
// What a description of manifest documents is made of. The descriptions themselves are constants in
// manifest.h and the headers that it includes: what reads documents, checks them, explains them or
// completes them in an editor takes names, kinds of values, words and texts from there.
#ifndef GRAMMAR_GRAMMAR_H
#define GRAMMAR_GRAMMAR_H

#include <span>

#include "grammar/words.h"
#include "platform/errors.h"

namespace tarnmf::grammar {

enum class ValueKind {
  kKeyword,       // one of the attribute's words
  kBoolean,       // one of kBooleanWords
  kDecimal,       // a number within 32 bits; what follows its digits is not looked at
  kDecimal16,     // the same from 0 to 32767
  kUniqueId,      // 36 or 32 characters
  kText,          // any text
  kNonEmptyText,  // any text but the empty one
  kWordList,      // texts separated by ";", one at least
  kVersion,       // the decimal number 1
  kAddressBits,   // the decimal number 32 or 64
  kIgnored,       // any text; it is not read
  kRefused,       // none: the attribute is known and never admitted
};

struct AttributeT {
  const char* name;  // lower-case ASCII, as all names; documents may write them in any letter case
  ValueKind kind;
  bool required;
  const Words* words;  // of a keyword; else null
  const char* doc;
};

// How attributes are read where an element is met.
enum class AttributeForm {
  kRequired,  // one at least
  kOptional,
  kNone,     // any is refused
  kIgnored,  // none is looked at
};

// What may stand between the tags of an element.
enum class Content {
  kElements,  // its children; text and comments between them say nothing
  kPreload,   // no elements; everything else says nothing
  kSide,      // nothing at all when the side names its module, else as kElements
  kArgument,  // one text at most
  kValue,     // a text, which comes first
  kNothing,   // not even a blank
};

// What the attributes of one element have to do with each other. An attribute is named as "name", or
// as "name=word" where only that value counts.
struct ConditionT {
  enum Kind {
    kNeeds,     // `a` needs `b`
    kExcludes,  // `a` cannot stand beside `b`
    kOneOf,     // one at least of the attributes in `a`, which are separated by blanks
  };
  Kind kind;
  const char* a;
  const char* b;
  BtkErrorT code;  // of an element that breaks it
};

struct ElementT {
  const char* name;
  AttributeForm form;
  std::span<const AttributeT> attributes;
  Content content;
  std::span<const ElementT* const> children;
  std::span<const ConditionT> conditions;
  const char* doc;
};

}  // namespace tarnmf::grammar

#endif  // GRAMMAR_GRAMMAR_H
