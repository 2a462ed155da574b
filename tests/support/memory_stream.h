// SPDX-License-Identifier: Apache-2.0
// An input stream over a text.
#ifndef TESTS_SUPPORT_MEMORY_STREAM_H
#define TESTS_SUPPORT_MEMORY_STREAM_H

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/stream.h"

namespace tarnmf::test {

class MemoryStream final : public btkIStream {
 public:
  explicit MemoryStream(std::string text) : text_(std::move(text)) { AddRef(); }

  // From byte `offset` on, Read throws or answers `code`.
  void ThrowFrom(std::size_t offset) { throwFrom_ = offset; }
  void FailFrom(std::size_t offset, std::int32_t code = -1) {
    failFrom_ = offset;
    failCode_ = code;
  }
  // One Read hands out at most `size` bytes.
  void LimitReads(std::size_t size) { readLimit_ = size; }

  // Lives on a test's stack, so references are only counted. The test's own is 1.
  std::int32_t AddRef() override { return ++references_; }
  std::int32_t Release() override { return --references_; }
  std::int32_t References() const { return references_; }
  bool Closed() const { return closed_; }

  std::int32_t Read(void* buffer, std::size_t size) override {
    if (position_ >= throwFrom_) throw std::runtime_error("read failure");
    if (position_ >= failFrom_) {
      state_ |= kBtkStreamFailed;
      return failCode_;
    }
    const std::size_t stop = std::min({text_.size(), throwFrom_, failFrom_});
    const std::size_t bytes = std::min({size, readLimit_, stop - position_});
    std::memcpy(buffer, text_.data() + position_, bytes);
    position_ += bytes;
    return static_cast<std::int32_t>(bytes);
  }
  void Close() override { closed_ = true; }

 private:
  static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

  std::string text_;
  std::size_t position_ = 0;
  std::size_t throwFrom_ = kNever;
  std::size_t failFrom_ = kNever;
  std::int32_t failCode_ = -1;
  std::size_t readLimit_ = kNever;
  std::int32_t references_ = 0;
  bool closed_ = false;
};

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_MEMORY_STREAM_H
