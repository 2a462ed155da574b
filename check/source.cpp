// SPDX-License-Identifier: Apache-2.0
#include "check/source.h"

#include <algorithm>
#include <utility>

#include "check/encoding.h"

namespace tarnmf::check {
namespace {

constexpr std::size_t kStretch = 1024;

bool BeginsCodePoint(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::vector<std::uint32_t> LineBegins(std::string_view text) {
  std::vector<std::uint32_t> begins{0};
  std::size_t feed = text.find('\n');
  std::size_t carriage = text.find('\r');
  while (feed != carriage) {  // both are npos at the end
    const std::size_t end = std::min(feed, carriage);
    const std::size_t next = end == carriage && feed == carriage + 1 ? end + 2 : end + 1;
    begins.push_back(static_cast<std::uint32_t>(next));
    if (feed < next) feed = text.find('\n', next);
    if (carriage < next) carriage = text.find('\r', next);
  }
  begins.shrink_to_fit();
  return begins;
}

}  // namespace

Source::Source(std::string path, std::string bytes)
    : path_(std::move(path)), bytes_(std::move(bytes)) {}

Source Source::OfManifest(std::string path, std::string bytes) {
  Source source(std::move(path), std::move(bytes));
  source.Take(Decode(source.bytes_));
  return source;
}

Source Source::OfEditedManifest(std::string path, std::string text) {
  Source source(std::move(path), std::move(text));
  source.Take(DecodeEdited(source.bytes_));
  return source;
}

Source Source::OfText(std::string path, std::string bytes) {
  Source source(std::move(path), std::move(bytes));
  source.text_ = std::exchange(source.bytes_, {});
  source.encoding_ = "UTF-8";
  source.IndexText();
  return source;
}

Source Source::OfDirectory(std::string path) {
  return OfText(std::move(path), {});
}

void Source::Take(DecodedText decoded) {
  text_ = std::move(decoded.text);
  encoding_ = std::move(decoded.encoding);
  fault_ = std::move(decoded.fault);
  markSize_ = decoded.markSize;
  isDecoded_ = decoded.isKnown;
  isUtf8_ = decoded.isUtf8;
  if (isUtf8_ && markSize_ == 0) {
    text_ = std::exchange(bytes_, {});
    text_.shrink_to_fit();
  }
  IndexText();
}

void Source::IndexText() {
  lines_ = LineBegins(text_);
  std::uint32_t count = 0;
  codePoints_.reserve(text_.size() / kStretch + 2);
  for (std::size_t begin = 0; begin < text_.size(); begin += kStretch) {
    codePoints_.push_back(count);
    const auto first = text_.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto size = static_cast<std::ptrdiff_t>(std::min(kStretch, text_.size() - begin));
    count += static_cast<std::uint32_t>(std::count_if(first, first + size, BeginsCodePoint));
  }
  codePoints_.push_back(count);
}

std::size_t Source::CodePointsBefore(std::size_t offset) const {
  const std::size_t stretch = offset / kStretch;
  const auto first = text_.begin() + static_cast<std::ptrdiff_t>(stretch * kStretch);
  const auto last = text_.begin() + static_cast<std::ptrdiff_t>(offset);
  return codePoints_[stretch] +
         static_cast<std::size_t>(std::count_if(first, last, BeginsCodePoint));
}

Position Source::At(std::size_t offset) const {
  offset = std::min(offset, text_.size());
  const auto next = std::upper_bound(lines_.begin(), lines_.end(), offset);
  const std::size_t begin = *(next - 1);
  return {static_cast<std::size_t>(next - lines_.begin()),
          CodePointsBefore(offset) - CodePointsBefore(begin) + 1};
}

Span Source::Line(std::size_t line) const {
  const std::size_t begin = lines_[line - 1];
  std::size_t end = line < lines_.size() ? lines_[line] : text_.size();
  while (end > begin && (text_[end - 1] == '\n' || text_[end - 1] == '\r'))
    --end;
  return {begin, end};
}

}  // namespace tarnmf::check
