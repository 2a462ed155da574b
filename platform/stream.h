// SPDX-License-Identifier: Apache-2.0
/// @file
/// Input streams of the base library.
#ifndef PLATFORM_STREAM_H
#define PLATFORM_STREAM_H

#include <cstddef>
#include <cstdint>

#include "platform/errors.h"
#include "platform/types.h"

/// Counted references. An object starts with none. Both operations may be called from several
/// threads.
class BTK_API btkRefCounted {
 public:
  /// Takes a reference; returns the new count.
  virtual std::int32_t AddRef();
  /// Gives a reference back; the last one destroys the object. Returns the new count.
  virtual std::int32_t Release();

 protected:
  btkRefCounted() = default;
  btkRefCounted(const btkRefCounted&) = delete;
  btkRefCounted& operator=(const btkRefCounted&) = delete;
  virtual ~btkRefCounted() = default;

 private:
  std::int32_t references_ = 0;
};

/// State bits of a stream. Reaching the end of the input is not a failure and sets no bit.
enum btkStreamStateT : std::uint32_t { kBtkStreamFailed = 0x1 };

/// What input and output streams have in common.
class BTK_API btkStreamBase : public btkRefCounted {
 public:
  /// Ends the use of what the stream reads from or writes to.
  virtual void Close() = 0;
  /// Its btkStreamStateT bits.
  std::uint32_t State() const { return state_; }

 protected:
  std::uint32_t state_ = 0;  ///< btkStreamStateT
};

/// An input stream.
class BTK_API btkIStream : public btkStreamBase {
 public:
  /// Reads up to `size` bytes. Returns the number of bytes read, 0 at the end of the input, a
  /// negative number when reading failed (kBtkStreamFailed is then set).
  virtual std::int32_t Read(void* buffer, std::size_t size) = 0;
};

/// How a stream turns bytes into text; streams that are only read as bytes take the ASCII one.
class btkIOSerializer;
/// The serializer of ASCII text; it lives as long as the process.
BTK_API btkIOSerializer* btkGetAsciiSerializer();

/// Open modes of a file stream.
enum btkOpenModeT : int { kBtkOpenRead = 1 };

/// A file as an input stream.
class BTK_API btkFileStream final : public btkIStream {
 public:
  btkFileStream() = default;
  ~btkFileStream() override;

  /// Opens the file at the narrow `path`. Codes: kBtkOk; kBtkMissing when it does not exist, is not
  /// a regular file (see btkHostAdmitSpecialFile) or may not be read.
  BtkErrorT Open(const char* path, int mode, btkIOSerializer* serializer);
  std::int32_t Read(void* buffer, std::size_t size) override;
  /// Closes the file; reads fail from then on.
  void Close() override;

 private:
  static constexpr int kClosed = -1;

  int descriptor_ = kClosed;
  bool isAtEnd_ = false;
};

#endif  // PLATFORM_STREAM_H
