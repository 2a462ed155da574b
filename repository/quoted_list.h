// The lists of quoted strings in an installation's layout file.
#ifndef REPOSITORY_QUOTED_LIST_H
#define REPOSITORY_QUOTED_LIST_H

#include <cstdint>

#include "support/growable_array.h"

namespace tarnmf {

// Characters of a layout file. Only ASCII counts, whatever the locale is.
inline bool IsLayoutSpace(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}
inline bool IsLayoutLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
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
struct QuotedList {
  GrowableArray<char*, 2, DeletesText> strings;
  bool outOfMemory = false;  // the last scan ended because memory could not be had
};

// Reads strings in double quotes, separated by commas, into `list`, whose earlier strings are
// released; stops at the end of the text, in front of a "|" or behind the `maxItems`-th string.
// Leaves `*cursor` where it stopped. False when something else stands there, which may be the "}"
// that the caller expects. A quoted string has no escapes and may hold line ends.
bool ParseQuotedList(const char** cursor, const char* end, std::int32_t maxItems, QuotedList& list);

}  // namespace tarnmf

#endif  // REPOSITORY_QUOTED_LIST_H
