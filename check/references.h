// SPDX-License-Identifier: Apache-2.0
// References to characters and to the predefined entities, and what becomes of blanks.
#ifndef CHECK_REFERENCES_H
#define CHECK_REFERENCES_H

#include <optional>
#include <string>
#include <string_view>

namespace tarnmf::check {

// XML 1.1 has more line ends than 1.0.
enum class XmlVersion { k10, k11 };

// What a reference without its "&" and ";" stands for. Nothing: it is an entity of the document's
// own, or no reference at all.
std::optional<char32_t> ReferredCharacter(std::string_view reference);

// A text as it is written between tags, and in an attribute's value, whatever its quotes.
std::string EscapedText(std::string_view text);
std::string EscapedValue(std::string_view text);

// The text between tags, and of a CDATA section, as readers receive it.
std::string ResolveText(std::string_view raw, XmlVersion version);
std::string ResolveCData(std::string_view raw, XmlVersion version);

struct ResolvedValue {
  std::string text;
  bool isKnown;  // false: it refers to entities of the document's own, which are left out
};
ResolvedValue ResolveValue(std::string_view raw, XmlVersion version);

}  // namespace tarnmf::check

#endif  // CHECK_REFERENCES_H
