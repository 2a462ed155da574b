// SPDX-License-Identifier: Apache-2.0
#include "xml/argument_text.h"

#include "platform/runtime.h"

namespace tarnmf {
namespace {

constexpr btkWChar kSpace = BTK_W(' ');
constexpr btkWChar kQuotedSpace = BTK_W('\t');  // stands for white space inside quotes

bool IsBlank(const btkWChar* text) {
  while (*text == kSpace || *text == BTK_W('\t') || *text == BTK_W('\r') || *text == BTK_W('\n'))
    ++text;
  return *text == 0;
}

bool IsQuote(btkWChar unit) {
  return unit == BTK_W('"') || unit == BTK_W('\'');
}

// Rewrites the text so that spaces stand between the arguments and nowhere else. Returns how many
// arguments begin in it; a quoted one may turn out to be empty.
std::int32_t SeparateArguments(btkWChar* text) {
  std::int32_t count = 0;
  bool inArgument = false;
  btkWChar quote = 0;  // the one that ends the quoted argument at hand
  for (btkWChar* unit = text; *unit != 0; ++unit) {
    if (quote != 0 && *unit != quote) {
      if (btk_iswspace(*unit)) *unit = kQuotedSpace;
    } else if (quote != 0) {
      *unit = kSpace;
      quote = 0;
    } else if (btk_iswspace(*unit)) {
      *unit = kSpace;
      inArgument = false;
    } else if (!inArgument) {
      ++count;
      inArgument = !IsQuote(*unit);
      if (!inArgument) quote = std::exchange(*unit, kSpace);
    }
  }
  return count;
}

// Cuts the next piece off `rest`; null at the end of the text.
btkWChar* NextPiece(btkWChar*& rest) {
  while (*rest == kSpace)
    ++rest;
  if (*rest == 0) return nullptr;
  btkWChar* const piece = rest;
  for (; *rest != 0 && *rest != kSpace; ++rest) {
    if (*rest == kQuotedSpace) *rest = kSpace;
  }
  if (*rest != 0) *rest++ = 0;
  return piece;
}

}  // namespace

BtkErrorT AppendWholeArgument(WideText text, ArgList& args) {
  if (!args.ReserveMore(1)) return kBtkNoMemory;
  if (!IsBlank(text.get())) args.AppendReserved(text.release());
  return kBtkOk;
}

BtkErrorT AppendArguments(WideText text, ArgList& args) {
  if (!args.ReserveMore(SeparateArguments(text.get()))) return kBtkNoMemory;
  btkWChar* rest = text.get();
  while (const btkWChar* piece = NextPiece(rest)) {
    btkWChar* const copy = btk_wcsdup(piece);
    if (copy == nullptr) return kBtkNoMemory;
    args.AppendReserved(copy);
  }
  return kBtkOk;
}

}  // namespace tarnmf
