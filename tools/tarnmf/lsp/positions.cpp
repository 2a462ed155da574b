// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/positions.h"

#include <algorithm>

#include "tools/tarnmf/printable.h"

namespace tool::lsp {
namespace {

// Units of UTF-16 that the character with this first byte takes.
std::uint32_t Utf16Units(char first) {
  return static_cast<unsigned char>(first) >= 0xF0U ? 2 : 1;
}

std::size_t CharacterEnd(std::string_view text, std::size_t begin) {
  std::size_t end = begin + 1;
  while (end < text.size() && Continues(text[end]))
    ++end;
  return end;
}

}  // namespace

std::uint32_t UnitsIn(std::string_view text, PositionEncoding encoding) {
  if (encoding == PositionEncoding::kUtf8) return static_cast<std::uint32_t>(text.size());
  std::uint32_t units = 0;
  for (const char byte : text) {
    if (!Continues(byte)) units += Utf16Units(byte);
  }
  return units;
}

std::size_t ByteAfter(std::string_view line, std::uint32_t units, PositionEncoding encoding) {
  if (encoding == PositionEncoding::kUtf8) {
    std::size_t byte = std::min<std::size_t>(units, line.size());
    while (byte > 0 && byte < line.size() && Continues(line[byte]))
      --byte;
    return byte;
  }
  std::size_t byte = 0;
  while (byte < line.size()) {
    const std::uint32_t taken = Utf16Units(line[byte]);
    if (taken > units) break;
    units -= taken;
    byte = CharacterEnd(line, byte);
  }
  return byte;
}

Position PositionAt(const tarnmf::check::Source& source, std::size_t offset,
                    PositionEncoding encoding) {
  const std::size_t line = source.At(offset).line;
  const tarnmf::check::Span whole = source.Line(line);
  const std::size_t end = std::clamp<std::size_t>(offset, whole.begin, whole.end);
  return {static_cast<std::uint32_t>(line - 1), UnitsIn(source.Text({whole.begin, end}), encoding)};
}

Position ReadPosition(const Json& json) {
  return {Count(Member(json, "line")), Count(Member(json, "character"))};
}

Range ReadRange(const Json& json) {
  return {ReadPosition(Member(json, "start")), ReadPosition(Member(json, "end"))};
}

Json ToJson(Position position) {
  return {{"line", position.line}, {"character", position.character}};
}

Json ToJson(Range range) {
  return {{"start", ToJson(range.start)}, {"end", ToJson(range.end)}};
}

}  // namespace tool::lsp
