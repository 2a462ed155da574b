// SPDX-License-Identifier: Apache-2.0
// How the bytes of a manifest become text. The encoding is found as the XML library finds it.
#ifndef CHECK_ENCODING_H
#define CHECK_ENCODING_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "check/source.h"

namespace tarnmf::check {

struct DecodedText {
  std::string encoding;  // as it is told to people
  std::string text;      // in UTF-8, without the byte order mark
  std::size_t markSize = 0;
  bool isKnown = true;  // false: the text is good for places alone
  bool isUtf8 = false;  // the text is the bytes after the mark
  std::optional<DecodingFault> fault;
};

DecodedText Decode(std::string_view bytes);

// Of a text that somebody else has decoded to UTF-8: what it declares is taken for its encoding.
DecodedText DecodeEdited(std::string_view text);

// Whether the encoding's name says that the text is written in units of two or four bytes, and
// nothing about their order.
bool NamesWideUnits(std::string_view encoding);

// Where "version", "encoding" or "standalone" stands in the XML declaration that a text begins with,
// between its quotes; an empty span where it is not given.
Span DeclaredValue(std::string_view text, std::string_view name);

}  // namespace tarnmf::check

#endif  // CHECK_ENCODING_H
