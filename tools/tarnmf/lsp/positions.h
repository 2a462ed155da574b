// SPDX-License-Identifier: Apache-2.0
// Places in texts as editors count them: lines and characters from 0, characters in units of UTF-16 or
// in bytes of UTF-8.
#ifndef TOOLS_TARNMF_LSP_POSITIONS_H
#define TOOLS_TARNMF_LSP_POSITIONS_H

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "check/source.h"
#include "tools/tarnmf/lsp/protocol.h"

namespace tool::lsp {

enum class PositionEncoding { kUtf16, kUtf8 };

struct Position {
  std::uint32_t line = 0;
  std::uint32_t character = 0;

  bool operator==(const Position&) const = default;
};
struct Range {
  Position start;
  Position end;
};

// The text is UTF-8.
std::uint32_t UnitsIn(std::string_view text, PositionEncoding encoding);
// The byte of a line before which that many units stand: the line's end when it has fewer, and the
// beginning of a character that they would split.
std::size_t ByteAfter(std::string_view line, std::uint32_t units, PositionEncoding encoding);

Position PositionAt(const tarnmf::check::Source& source, std::size_t offset,
                    PositionEncoding encoding);

// Throw RequestError for what is none.
Position ReadPosition(const Json& json);
Range ReadRange(const Json& json);
Json ToJson(Position position);
Json ToJson(Range range);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_POSITIONS_H
