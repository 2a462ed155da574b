// SPDX-License-Identifier: Apache-2.0
// The lists of quoted strings in an installation's layout file.
#ifndef REPOSITORY_QUOTED_LIST_H
#define REPOSITORY_QUOTED_LIST_H

#include <cstdint>

#include "platform/errors.h"
#include "support/growable_array.h"

namespace tarnmf {

// White space of a layout file: ASCII's, whatever the locale is.
inline bool IsLayoutSpace(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}
inline const char* SkipSpace(const char* cursor, const char* end) {
  while (cursor != end && IsLayoutSpace(*cursor))
    ++cursor;
  return cursor;
}

struct DeletesText {
  static void Release(char* text) { delete[] text; }
};

// The strings of one list, NUL-terminated copies of the bytes between the quotes.
using QuotedList = GrowableArray<char*, 2, DeletesText>;

// Reads strings in double quotes, separated by commas, into `list`, whose earlier strings are
// released; stops at the end of the text, in front of a "|" or after the `maxItems`-th string.
// Leaves `*cursor` where it stopped. A quoted string has no escapes and may hold line ends. Codes:
// kBtkOk; kBtkNoMemory; kBtkMalformed when something else stands there, which may be the "}" that the
// caller expects.
BtkErrorT ParseQuotedList(const char** cursor, const char* end, std::int32_t maxItems,
                          QuotedList& list);

}  // namespace tarnmf

#endif  // REPOSITORY_QUOTED_LIST_H
