#include "xml/argument_text.h"

#include "platform/runtime.h"
#include "support/owned.h"

namespace tarnmf {
namespace {

struct Piece {
  const btkWChar* begin;
  const btkWChar* end;
};

bool IsBlank(btkWChar unit) {
  return unit == BTK_W(' ') || unit == BTK_W('\t') || unit == BTK_W('\r') || unit == BTK_W('\n');
}

// Takes the next piece off `cursor`; false at the end of the text. A quoted piece may be empty.
bool NextPiece(const btkWChar*& cursor, Piece& piece) {
  while (btk_iswspace(*cursor))
    ++cursor;
  if (*cursor == 0) return false;
  const btkWChar first = *cursor;
  if (first == BTK_W('"') || first == BTK_W('\'')) {
    piece.begin = ++cursor;
    while (*cursor != 0 && *cursor != first)
      ++cursor;
    piece.end = cursor;
    if (*cursor != 0) ++cursor;
    return true;
  }
  piece.begin = cursor;
  while (*cursor != 0 && !btk_iswspace(*cursor))
    ++cursor;
  piece.end = cursor;
  return true;
}

WideText CopyPiece(const Piece& piece) {
  const auto length = static_cast<std::size_t>(piece.end - piece.begin);
  WideText copy(static_cast<btkWChar*>(btkReAlloc(nullptr, (length + 1) * sizeof(btkWChar))));
  if (!copy) return copy;
  for (std::size_t i = 0; i < length; ++i) {
    copy.get()[i] = btk_iswspace(piece.begin[i]) ? BTK_W(' ') : piece.begin[i];
  }
  copy.get()[length] = 0;
  return copy;
}

BtkErrorT AppendCopy(WideText copy, ArgList& args) {
  if (!copy || !args.Append(copy.get())) return kBtkNoMemory;
  copy.release();
  return kBtkOk;
}

}  // namespace

BtkErrorT AppendWholeArgument(const btkWChar* text, ArgList& args) {
  const btkWChar* unit = text;
  while (IsBlank(*unit))
    ++unit;
  if (*unit == 0) return kBtkOk;
  return AppendCopy(WideText(btk_wcsdup(text)), args);
}

BtkErrorT AppendArguments(const btkWChar* text, ArgList& args) {
  Piece piece;
  while (NextPiece(text, piece)) {
    if (piece.begin == piece.end) continue;
    if (BtkErrorT e = AppendCopy(CopyPiece(piece), args)) return e;
  }
  return kBtkOk;
}

}  // namespace tarnmf
