// Reads the text of an attribute, one function per kind of value. Texts are taken as they are
// written: nothing is trimmed. A null text is 432.
#ifndef XML_VALUE_READERS_H
#define XML_VALUE_READERS_H

#include <cstdint>
#include <xercesc/util/XercesDefs.hpp>

#include "tarnmf/list.h"

#include "platform/errors.h"
#include "platform/unique_id.h"
#include "support/owned.h"
#include "xml/keywords.h"

namespace tarnmf {

// 432 for a text that is none of the table's words, or too long to be one.
BtkErrorT ReadKeyword(const XMLCh* text, const KeywordTableT& table, std::int32_t& number);

// "yes", "true", "no" or "false"; else 432.
BtkErrorT ReadBoolean(const XMLCh* text, bool& value);

// A decimal number of at most 15 characters: leading white space and a sign are allowed, what
// follows the digits is not looked at, and a text without digits is 0. 432 for an empty text and
// for a number outside the signed 32-bit range.
BtkErrorT ReadDecimal(const XMLCh* text, std::int32_t& number);

// The same from 0 to 32767; 66 for other numbers.
BtkErrorT ReadDecimal16(const XMLCh* text, std::int16_t& number);

// An id of 36 or 32 characters, stored only when it can be read; else 432.
BtkErrorT ReadUniqueId(const XMLCh* text, UniIdT& id);

BtkErrorT ReadUtf8(const XMLCh* text, Utf8Text& value);
BtkErrorT ReadWide(const XMLCh* text, WideText& value);

// The words between ";" characters, appended to `words`; empty ones are passed over. 432 when there
// is none. After 112 `words` is empty and what it held has been released.
BtkErrorT ReadWords(const XMLCh* text, MfListT<char>& words);

}  // namespace tarnmf

#endif  // XML_VALUE_READERS_H
