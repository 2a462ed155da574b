// Input streams of the base library.
#ifndef PLATFORM_STREAM_H
#define PLATFORM_STREAM_H

#include <cstdio>

#include "platform/errors.h"
#include "platform/types.h"

// Counted references. An object starts with none; Release of the last one destroys it. Both
// operations return the new count and may be called from several threads.
class BTK_API btkRefCounted {
 public:
  virtual std::int32_t AddRef();
  virtual std::int32_t Release();

 protected:
  btkRefCounted() = default;
  btkRefCounted(const btkRefCounted&) = delete;
  btkRefCounted& operator=(const btkRefCounted&) = delete;
  virtual ~btkRefCounted() = default;

 private:
  std::int32_t references_ = 0;
};

// State bits of a stream. Reaching the end of the input is not a failure and sets no bit.
enum btkStreamStateT : std::uint32_t { kBtkStreamFailed = 0x1 };

class BTK_API btkStreamBase : public btkRefCounted {
 public:
  virtual void Close() = 0;
  std::uint32_t State() const { return state_; }

 protected:
  std::uint32_t state_ = 0;
};

class BTK_API btkIStream : public btkStreamBase {
 public:
  // Reads up to `size` bytes. Returns the number of bytes read, 0 at the end of the input, a
  // negative number when reading failed (kBtkStreamFailed is then set).
  virtual std::int32_t Read(void* buffer, std::size_t size) = 0;
};

// How a stream turns bytes into text; streams that are only read as bytes take the ASCII one.
class btkIOSerializer;
BTK_API btkIOSerializer* btkGetAsciiSerializer();

// Open modes of a file stream.
enum btkOpenModeT : int { kBtkOpenRead = 1 };

class BTK_API btkFileStream final : public btkIStream {
 public:
  btkFileStream() = default;
  ~btkFileStream() override;

  // Opens the file at the narrow `path`. Codes: 0, kBtkMissing when it does not exist, is not a
  // file or may not be read.
  BtkErrorT Open(const char* path, int mode, btkIOSerializer* serializer);
  std::int32_t Read(void* buffer, std::size_t size) override;
  void Close() override;

 private:
  std::FILE* file_ = nullptr;
};

#endif  // PLATFORM_STREAM_H
