// SPDX-License-Identifier: Apache-2.0
#include "platform/stream.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <set>
#include <string>

#include "platform/host/btkhost.h"
#include "platform/host/input_file.h"
#include "platform/runtime.h"

class btkIOSerializer {};

namespace {

std::set<std::string, std::less<>>& AdmittedSpecialFiles() {
  static std::set<std::string, std::less<>> paths;
  return paths;
}

}  // namespace

void btkHostAdmitSpecialFile(const char* path) {
  AdmittedSpecialFiles().emplace(path);
}

btkIOSerializer* btkGetAsciiSerializer() {
  static btkIOSerializer serializer;
  return &serializer;
}

std::int32_t btkRefCounted::AddRef() {
  return btkAoInc32(&references_);
}

std::int32_t btkRefCounted::Release() {
  const std::int32_t left = btkAoDec32(&references_);
  if (left == 0) delete this;
  return left;
}

btkFileStream::~btkFileStream() {
  btkFileStream::Close();
}

BtkErrorT btkFileStream::Open(const char* path, int /*mode*/, btkIOSerializer* /*serializer*/) {
  Close();
  state_ = 0;
  descriptor_ = OpenInputFile(path, AdmittedSpecialFiles().contains(path));
  return descriptor_ != kClosed ? kBtkOk : kBtkMissing;
}

// Once at its end, it stays there: a terminal would ask for more.
std::int32_t btkFileStream::Read(void* buffer, std::size_t size) {
  constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
  if (isAtEnd_) return 0;
  const std::ptrdiff_t bytes =
      descriptor_ != kClosed ? ReadInputFile(descriptor_, buffer, std::min(size, kMost)) : -1;
  if (bytes < 0) state_ |= kBtkStreamFailed;
  isAtEnd_ = bytes == 0 && size > 0;
  return static_cast<std::int32_t>(bytes);
}

void btkFileStream::Close() {
  if (descriptor_ != kClosed) CloseInputFile(descriptor_);
  descriptor_ = kClosed;
  isAtEnd_ = false;
}
