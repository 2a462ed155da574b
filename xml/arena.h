// SPDX-License-Identifier: Apache-2.0
// Memory for a document's tree.
#ifndef XML_ARENA_H
#define XML_ARENA_H

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <utility>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "platform/types.h"

namespace tarnmf {

// Hands out pieces of blocks that it takes from the XML library's memory manager, so that a failure
// is that library's OutOfMemoryException, and gives the blocks back, the newest first, when it is
// destroyed. What is made in it is never destroyed by itself.
class Arena {
 public:
  Arena() = default;
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;
  ~Arena() {
    while (newest_ != nullptr)
      Memory().deallocate(std::exchange(newest_, newest_->older));
  }

  void* Allocate(std::size_t bytes) {
    const std::size_t rounded = (bytes + kAlignment - 1) / kAlignment * kAlignment;
    if (rounded > static_cast<std::size_t>(end_ - next_)) AddBlock(rounded);
    return std::exchange(next_, next_ + rounded);
  }

  template <class T>
  T* AllocateArray(std::size_t count) {
    return static_cast<T*>(Allocate(count * sizeof(T)));
  }

  const btkWChar* CopyText(const btkWChar* text) {
    const std::size_t units = std::char_traits<btkWChar>::length(text) + 1;
    auto* const copy = AllocateArray<btkWChar>(units);
    std::copy_n(text, units, copy);
    return copy;
  }

 private:
  struct Block {
    Block* older;
  };
  static constexpr std::size_t kAlignment = alignof(void*);  // nothing in a tree needs more
  static constexpr std::size_t kFirstBlock = 4096;
  static constexpr std::size_t kLargeBlock = 262144;

  static xercesc::MemoryManager& Memory() { return *xercesc::XMLPlatformUtils::fgMemoryManager; }

  void AddBlock(std::size_t least) {
    constexpr std::size_t header = sizeof(Block);
    const std::size_t size = std::max(blockSize_, header + least);
    char* const block = static_cast<char*>(Memory().allocate(size));
    newest_ = new (block) Block{newest_};
    next_ = block + header;
    end_ = block + size;
    // Blocks that are large beside the heap's other ones are mapped one by one and leave no holes
    // when they are given back.
    total_ += size;
    blockSize_ = std::max(std::min(blockSize_ * 2, kLargeBlock), total_ / 4);
  }

  Block* newest_ = nullptr;
  char* next_ = nullptr;
  char* end_ = nullptr;
  std::size_t blockSize_ = kFirstBlock;
  std::size_t total_ = 0;
};

}  // namespace tarnmf

#endif  // XML_ARENA_H
