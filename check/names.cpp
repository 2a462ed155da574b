// SPDX-License-Identifier: Apache-2.0
#include "check/names.h"

#include <algorithm>

#include "grammar/manifest.h"
#include "platform/text.h"
#include "support/owned.h"

namespace tarnmf::check {
namespace {

using grammar::ElementT;

bool IsAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

bool IsSame(std::string_view written, const char* name) {
  const char* expected = name;
  for (const char c : written) {
    if (!IsAscii(c)) return Folded(written) == name;
    if (btkAsciiToLower(c) != *expected++) return false;
  }
  return *expected == '\0';
}

// Whether the written name is that of the grammar, which is in lower-case ASCII. Most are told apart
// by their first letter.
inline bool IsNamed(std::string_view written, const char* name) {
  if (written.empty()) return false;
  if (IsAscii(written[0]) && btkAsciiToLower(written[0]) != name[0]) return false;
  return IsSame(written, name);
}

void Collect(const ElementT& element, std::vector<const ElementT*>& all) {
  if (std::find(all.begin(), all.end(), &element) != all.end()) return;
  all.push_back(&element);
  for (const ElementT* child : element.children)
    Collect(*child, all);
}

// The document itself is the first one.
const std::vector<const ElementT*>& AllElements() {
  static const std::vector<const ElementT*> all = [] {
    std::vector<const ElementT*> collected;
    Collect(grammar::kDocument, collected);
    return collected;
  }();
  return all;
}

}  // namespace

std::string Folded(std::string_view written) {
  Utf8Text lower;
  std::size_t length = 0;
  const BtkErrorT e = btkStrUtf8ToLowerAlloc(Out(lower), &length, written.data(), written.size());
  return e == kBtkOk ? std::string(lower.get(), length) : std::string(written);
}

const ElementT* ChildNamed(const ElementT& parent, std::string_view written) {
  const auto child =
      std::find_if(parent.children.begin(), parent.children.end(),
                   [&](const ElementT* candidate) { return IsNamed(written, candidate->name); });
  return child != parent.children.end() ? *child : nullptr;
}

const grammar::AttributeT* AttributeNamed(const ElementT& element, std::string_view written) {
  const auto attribute = std::find_if(
      element.attributes.begin(), element.attributes.end(),
      [&](const grammar::AttributeT& candidate) { return IsNamed(written, candidate.name); });
  return attribute != element.attributes.end() ? &*attribute : nullptr;
}

const ElementT* ElementNamed(std::string_view written) {
  const auto& all = AllElements();
  const auto element = std::find_if(all.begin() + 1, all.end(), [&](const ElementT* candidate) {
    return IsNamed(written, candidate->name);
  });
  return element != all.end() ? *element : nullptr;
}

std::vector<const ElementT*> ParentsOf(const ElementT& element) {
  std::vector<const ElementT*> parents;
  for (const ElementT* parent : AllElements()) {
    const auto& children = parent->children;
    if (std::find(children.begin(), children.end(), &element) != children.end()) {
      parents.push_back(parent);
    }
  }
  return parents;
}

}  // namespace tarnmf::check
