#include "repository/quoted_list.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace tarnmf {
namespace {

// Appends a copy of the bytes from `begin` to `end`.
bool AppendCopy(QuotedList& list, const char* begin, const char* end) {
  const auto length = static_cast<std::size_t>(end - begin);
  char* const copy = list.strings.ReserveMore(1) ? new (std::nothrow) char[length + 1] : nullptr;
  list.outOfMemory = copy == nullptr;
  if (copy == nullptr) return false;
  std::memcpy(copy, begin, length);
  copy[length] = '\0';
  list.strings.AppendReserved(copy);
  return true;
}

// Steps over the comma between two strings; false when none follows, or nothing behind it.
bool StepOverComma(const char** cursor, const char* end) {
  if (**cursor != ',') return false;
  *cursor = SkipSpace(*cursor + 1, end);
  return *cursor != end;
}

// Reads the string whose opening quote the cursor stands on.
bool ReadQuoted(const char** cursor, const char* end, QuotedList& list) {
  const char* const begin = *cursor + 1;
  const char* const close = std::find(begin, end, '"');
  *cursor = close;
  if (close == end || !AppendCopy(list, begin, close)) return false;
  *cursor = close + 1;
  return true;
}

}  // namespace

bool ParseQuotedList(const char** cursor, const char* end, std::int32_t maxItems,
                     QuotedList& list) {
  list.strings.ReleaseElements();
  list.outOfMemory = false;
  while (list.strings.Count() < maxItems) {
    *cursor = SkipSpace(*cursor, end);
    if (*cursor == end) return true;
    if (!list.strings.Empty()) {
      if (**cursor == '|') return true;
      if (!StepOverComma(cursor, end)) return false;
    }
    if (**cursor != '"') return **cursor == '|' && list.strings.Empty();
    if (!ReadQuoted(cursor, end, list)) return false;
  }
  return true;
}

}  // namespace tarnmf
