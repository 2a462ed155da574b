// SPDX-License-Identifier: Apache-2.0
#include "platform/stream.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <set>
#include <string>

#include "platform/host/btkhost.h"
#include "platform/host/file_status.h"
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
  // Who reads a stream has a buffer of its own.
  file_ = OpenForReading(path, AdmittedSpecialFiles().contains(path));
  return file_ != nullptr ? kBtkOk : kBtkMissing;
}

std::int32_t btkFileStream::Read(void* buffer, std::size_t size) {
  if (file_ == nullptr) {
    state_ |= kBtkStreamFailed;
    return -1;
  }
  if (std::feof(file_) != 0) return 0;
  constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
  const std::size_t bytes = std::fread(buffer, 1, std::min(size, kMost), file_);
  if (std::ferror(file_) != 0) {
    state_ |= kBtkStreamFailed;
    return -1;
  }
  return static_cast<std::int32_t>(bytes);
}

void btkFileStream::Close() {
  if (file_ != nullptr) std::fclose(file_);
  file_ = nullptr;
}
