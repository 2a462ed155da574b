// SPDX-License-Identifier: Apache-2.0
#include "platform/runtime.h"

#include <atomic>
#include <cstring>

#include "platform/host/path_rules.h"
#include "platform/host/process_facts.h"
#include "platform/text.h"

namespace {

// True at the end of a path, where one separator may stand; a root keeps its own.
bool IsEnd(const btkWChar* path, std::size_t at) {
  return path[at] == 0 ||
         (IsPathSeparator(path[at]) && path[at + 1] == 0 && at >= RootLength(path));
}

// How two keys stand of which one is null: null sorts first.
bool HasNull(const void* left, const void* right, int& order) {
  order = (left != nullptr) - (right != nullptr);
  return left == nullptr || right == nullptr;
}

}  // namespace

int btk_strcasecmp(const char* left, const char* right) {
  while (*left != '\0' && btkAsciiToLower(*left) == btkAsciiToLower(*right)) {
    ++left;
    ++right;
  }
  return static_cast<unsigned char>(btkAsciiToLower(*left)) -
         static_cast<unsigned char>(btkAsciiToLower(*right));
}

bool btk_iswspace(btkWChar character) {
  switch (character) {
    case 0x20:
    case 0x85:
    case 0xa0:
    case 0x1680:
    case 0x2028:
    case 0x2029:
    case 0x202f:
    case 0x205f:
    case 0x3000:
      return true;
    default:
      return (character >= 0x09 && character <= 0x0d) ||
             (character >= 0x2000 && character <= 0x200a);
  }
}

const char* btk_getenv(const char* name) {
  return EnvironmentValue(name);
}

std::int32_t btkAoInc32(std::int32_t* counter) {
  return ++std::atomic_ref(*counter);
}
std::int32_t btkAoDec32(std::int32_t* counter) {
  return --std::atomic_ref(*counter);
}

int CmpCase_cStrings_Safe(const char* const* left, const char* const* right) {
  int order = 0;
  return HasNull(*left, *right, order) ? order : std::strcmp(*left, *right);
}

int Cmp_cWPaths_Safe(const btkWChar* const* left, const btkWChar* const* right) {
  int order = 0;
  if (HasNull(*left, *right, order)) return order;
  const btkWChar* const first = *left;
  const btkWChar* const second = *right;
  std::size_t at = 0;
  while (first[at] != 0 &&
         (first[at] == second[at] || FoldedInPath(first[at]) == FoldedInPath(second[at])))
    ++at;
  const bool firstEnds = IsEnd(first, at);
  const bool secondEnds = IsEnd(second, at);
  if (firstEnds || secondEnds) return secondEnds - firstEnds;
  return FoldedInPath(first[at]) - FoldedInPath(second[at]);
}
