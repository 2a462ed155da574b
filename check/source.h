// SPDX-License-Identifier: Apache-2.0
// The text of one file as it is checked: decoded to UTF-8, with the places of its lines.
#ifndef CHECK_SOURCE_H
#define CHECK_SOURCE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnmf::check {

// Bytes of a source's text, the end not included. Every place that is remembered is such a span;
// lines and columns are made of them only to be shown.
struct Span {
  // Half as large as sizes: a document has many, and larger texts are not read, see Files.
  std::uint32_t begin = 0;
  std::uint32_t end = 0;

  constexpr Span() = default;
  constexpr Span(std::size_t first, std::size_t last)
      : begin(static_cast<std::uint32_t>(first)), end(static_cast<std::uint32_t>(last)) {}

  std::size_t Size() const { return end - begin; }
  bool operator==(const Span&) const = default;
};

// Both start at 1; columns count code points.
struct Position {
  std::size_t line = 1;
  std::size_t column = 1;

  bool operator==(const Position&) const = default;
};

// The first thing in a file that its encoding does not admit.
struct DecodingFault {
  Span span;  // in the text, where a U+FFFD stands for each byte that is none
  std::string message;
};

struct DecodedText;

class Source {
 public:
  // A manifest: its encoding is found as the XML library finds it.
  static Source OfManifest(std::string path, std::string bytes);
  // A manifest in an editor, which has decoded it and will encode it as the manifest declares.
  static Source OfEditedManifest(std::string path, std::string text);
  // A plain text of bytes, such as a layout file.
  static Source OfText(std::string path, std::string bytes);
  // A directory, about which something is to be said.
  static Source OfDirectory(std::string path);

  const std::string& Path() const { return path_; }
  // As they stand in the file.
  const std::string& Bytes() const { return bytes_.empty() ? text_ : bytes_; }
  // In UTF-8, without the byte order mark.
  const std::string& Text() const { return text_; }
  std::string_view Text(Span span) const {
    return std::string_view(text_).substr(span.begin, span.Size());
  }

  // The encoding's name as it is told to people, such as "UTF-16LE".
  const std::string& Encoding() const { return encoding_; }
  // False: nobody here can decode it. Its text then holds the bytes as far as they are ASCII, for
  // the places that are told, and nothing is made of it.
  bool IsDecoded() const { return isDecoded_; }
  // Text and bytes are the same, but for a byte order mark of MarkSize() bytes before them.
  bool IsUtf8() const { return isUtf8_; }
  std::size_t MarkSize() const { return markSize_; }
  const std::optional<DecodingFault>& Fault() const { return fault_; }

  // A line feed, a carriage return or both together end a line. An offset past the end is the end.
  Position At(std::size_t offset) const;
  std::size_t LineCount() const { return lines_.size(); }
  // Without its end.
  Span Line(std::size_t line) const;

 private:
  Source(std::string path, std::string bytes);

  void Take(DecodedText decoded);
  void IndexText();
  std::size_t CodePointsBefore(std::size_t offset) const;

  std::string path_;
  std::string bytes_;  // empty: they are the text
  std::string text_;
  std::string encoding_;
  std::optional<DecodingFault> fault_;
  std::vector<std::uint32_t> lines_;  // where each begins
  // The code points before every stretch of the text, so that a place in a line of megabytes costs
  // no more than one in a short line.
  std::vector<std::uint32_t> codePoints_;
  std::size_t markSize_ = 0;
  bool isDecoded_ = true;
  bool isUtf8_ = true;
};

}  // namespace tarnmf::check

#endif  // CHECK_SOURCE_H
