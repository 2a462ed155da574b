// SPDX-License-Identifier: Apache-2.0
// Values of attributes, read as the library reads them.
#ifndef CHECK_VALUES_H
#define CHECK_VALUES_H

#include <cstdint>
#include <optional>
#include <string>

#include "grammar/grammar.h"
#include "platform/unique_id.h"

namespace tarnmf::check {

std::optional<std::int32_t> ReadKeyword(const std::string& text, const grammar::Words& words);
std::optional<bool> ReadBoolean(const std::string& text);
std::optional<UniIdT> ReadId(const std::string& text);

struct Decimal {
  std::int32_t number = 0;
  bool isWhole = true;  // nothing but the number stands there
};
// Nothing for an empty or long text and for numbers that need more than 32 bits.
std::optional<Decimal> ReadDecimal(const std::string& text);

// Whether there is a word between the separators.
bool HasWord(const std::string& text);

// kBtkOk, or the code of the library for this value. That what is not admitted at all is refused,
// whatever its value, counts here, too.
BtkErrorT CodeOf(const std::string& text, const grammar::AttributeT& attribute);

}  // namespace tarnmf::check

#endif  // CHECK_VALUES_H
