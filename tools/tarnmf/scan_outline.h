// SPDX-License-Identifier: Apache-2.0
// What a scan that was printed as JSON has found, by names, so that two of them can be compared.
#ifndef TOOLS_TARNMF_SCAN_OUTLINE_H
#define TOOLS_TARNMF_SCAN_OUTLINE_H

#include <map>
#include <string>
#include <tuple>

#include "tools/tarnmf/record_json.h"

namespace tool {

enum class ItemKind { kLoadpoint, kModule, kClass, kService, kRunnable };

struct ItemKey {
  ItemKind kind;
  std::string loadpoint;  // its path
  std::string id;         // in the load point; of a load point empty
  int number;             // among those of one id

  bool operator<(const ItemKey& other) const {
    return std::tie(kind, loadpoint, id, number) <
           std::tie(other.kind, other.loadpoint, other.id, other.number);
  }
};

struct Item {
  std::string name;  // as it is told to people
  Json content;      // an object; paths of modules' files are replaced by the modules' ids
  Json file;         // of a module: what it resolves to, or null
};

// A query for a class's name, for callers of one scope and any version.
struct Query {
  std::string name;
  std::string scope;

  bool operator<(const Query& other) const {
    return std::tie(name, scope) < std::tie(other.name, other.scope);
  }
};

struct Answer {
  std::string id;  // of the class
  std::string loadpoint;
  int version = 0;  // of the service

  bool IsOf(const Answer& other) const { return id == other.id && loadpoint == other.loadpoint; }
};

struct ScanOutline {
  std::map<ItemKey, Item> items;
  std::map<Query, Answer> answers;  // those of the scope itself

  // Null when there is none. Callers of a scope are also answered with what is for everybody.
  const Answer* AnswerTo(const Query& query) const;
};

// Throws std::invalid_argument with a sentence when the file cannot be read as a scan.
ScanOutline ReadOutline(const std::string& file);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_OUTLINE_H
