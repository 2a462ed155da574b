// SPDX-License-Identifier: Apache-2.0
#include "repository/quoted_list.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace tarnmf {
namespace {

// Appends a copy of the bytes from `begin` to `end`.
BtkErrorT AppendCopy(QuotedList& list, const char* begin, const char* end) {
  if (!list.ReserveMore(1)) return kBtkNoMemory;
  const auto length = static_cast<std::size_t>(end - begin);
  char* const copy = new (std::nothrow) char[length + 1];
  if (copy == nullptr) return kBtkNoMemory;
  std::memcpy(copy, begin, length);
  copy[length] = '\0';
  list.AppendReserved(copy);
  return kBtkOk;
}

// Steps over the comma between two strings; false when none follows, or nothing after it.
bool StepOverComma(const char** cursor, const char* end) {
  if (**cursor != ',') return false;
  *cursor = SkipSpace(*cursor + 1, end);
  return *cursor != end;
}

// Reads the string whose opening quote the cursor stands on.
BtkErrorT ReadQuoted(const char** cursor, const char* end, QuotedList& list) {
  const char* const begin = *cursor + 1;
  *cursor = std::find(begin, end, '"');
  if (*cursor == end) return kBtkMalformed;
  if (BtkErrorT e = AppendCopy(list, begin, *cursor)) return e;
  ++*cursor;
  return kBtkOk;
}

}  // namespace

BtkErrorT ParseQuotedList(const char** cursor, const char* end, std::int32_t maxItems,
                          QuotedList& list) {
  list.ReleaseElements();
  while (list.Count() < maxItems) {
    *cursor = SkipSpace(*cursor, end);
    if (*cursor == end) return kBtkOk;
    const bool isFirst = list.Empty();
    if (!isFirst) {
      if (**cursor == '|') return kBtkOk;
      if (!StepOverComma(cursor, end)) return kBtkMalformed;
    }
    if (**cursor != '"') return isFirst && **cursor == '|' ? kBtkOk : kBtkMalformed;
    if (BtkErrorT e = ReadQuoted(cursor, end, list)) return e;
  }
  return kBtkOk;
}

}  // namespace tarnmf
