// SPDX-License-Identifier: Apache-2.0
// Expat as the judge of documents.
#ifndef CHECK_JUDGE_H
#define CHECK_JUDGE_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/document.h"

namespace tarnmf::check {

// An entity that the document type declares. Of one name the first declaration counts.
struct Entity {
  std::string name;
  std::string value;     // of an internal one, references to characters resolved
  std::string systemId;  // of an external one
  bool isParameter = false;
  bool isExternal = false;
  bool isUnparsed = false;  // and never fetched
};

struct DefaultValue {
  std::string element;
  std::string attribute;
  Span name;  // where it is declared
  Span value;
};

// What a document type declaration says that changes what is read.
struct DocumentType {
  std::string systemId;  // of its external part; empty: it has none
  std::vector<Entity> entities;
  std::vector<DefaultValue> defaults;
};

// What is not well-formed: the judge's number for it, and where it stands.
struct Refusal {
  int error = 0;
  std::size_t offset = 0;
};

// Of what is no character of XML.
inline constexpr int kRefusedCharacter = 4;

// Whether the judge stopped because the text was over.
bool IsBreakingOff(const Refusal& refusal);

struct Verdict {
  std::optional<Refusal> refusal;
  // References to entities come to so much that they were not followed.
  bool isCutShort = false;
  DocumentType type;
};

// Judges `text`, which has the places of the document's source. Where `readsValues`, attributes are
// given the values that entities and the document type make of them.
Verdict Judge(std::string_view text, Document& document, bool readsValues);

}  // namespace tarnmf::check

#endif  // CHECK_JUDGE_H
