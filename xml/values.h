// SPDX-License-Identifier: Apache-2.0
// Reads the text of an attribute, one function per kind of value. Texts are taken as they are
// written: nothing is trimmed. A null text is kBtkMalformed.
#ifndef XML_VALUES_H
#define XML_VALUES_H

#include <cstdint>

#include "tarnmf/list.h"

#include "grammar/words.h"
#include "platform/errors.h"
#include "platform/unique_id.h"
#include "support/owned.h"

namespace tarnmf {

// kBtkMalformed for a text that is not one of the words, or too long to be one.
BtkErrorT ReadKeyword(const btkWChar* text, const grammar::Words& words, std::int32_t& number);

// One of the words of grammar::kBooleanWords; else kBtkMalformed.
BtkErrorT ReadBoolean(const btkWChar* text, bool& value);

// A decimal number of at most 15 characters: leading white space and a sign are allowed, what
// follows the digits is not looked at, and a text without digits is 0. kBtkMalformed for an
// empty text and for a number outside the signed 32-bit range.
BtkErrorT ReadDecimal(const btkWChar* text, std::int32_t& number);

// The same from 0 to 32767; kBtkOutOfRange for other numbers.
BtkErrorT ReadDecimal16(const btkWChar* text, std::int16_t& number);

// An id of 36 or 32 characters, stored only when it can be read; else kBtkMalformed.
BtkErrorT ReadUniqueId(const btkWChar* text, UniIdT& id);

// A copy of the text.
BtkErrorT ReadText(const btkWChar* text, Utf8Text& value);
BtkErrorT ReadText(const btkWChar* text, WideText& value);

// The number of the word that the text is; null when it is none of them.
const std::int32_t* FindWord(const char* text, const grammar::Words& words);

// The words between ";" characters, appended to `words`; empty ones are passed over.
// kBtkMalformed when there is none. After kBtkNoMemory `words` is empty and what it held has been
// released.
BtkErrorT ReadWords(const btkWChar* text, MfListT<char>& words);

}  // namespace tarnmf

#endif  // XML_VALUES_H
