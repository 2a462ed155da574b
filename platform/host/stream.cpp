#include "platform/stream.h"

#include <algorithm>
#include <limits>

#include "platform/host/file_status.h"
#include "platform/runtime.h"

class btkIOSerializer {};

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
  file_ = std::fopen(path, "rb");
  if (file_ == nullptr) return kBtkMissing;
  // Who reads a stream has a buffer of its own.
  std::setvbuf(file_, nullptr, _IONBF, 0);
  // The C library opens a directory and fails only when it is read.
  if (!IsDirectory(file_)) return kBtkOk;
  Close();
  return kBtkMissing;
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
