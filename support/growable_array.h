// SPDX-License-Identifier: Apache-2.0
// The growable array: a count, a capacity and one block of elements, all 32-bit signed.
#ifndef SUPPORT_GROWABLE_ARRAY_H
#define SUPPORT_GROWABLE_ARRAY_H

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

#include "platform/memory.h"

namespace tarnmf {

// Where an array's block comes from.
struct RuntimeHeap {
  static void* Resize(void* block, std::size_t bytes) { return btkReAlloc(block, bytes); }
  static void Free(void* block) { btkFree(block); }
};
struct ProcessHeap {
  static void* Resize(void* block, std::size_t bytes) { return btkSysReAlloc(block, bytes); }
  static void Free(void* block) { btkSysFree(block); }
};

// What becomes of an array's elements when the array is cleared.
struct BorrowsElements {
  template <class T>
  static void Release(T&) {}
};
struct DestroysElements {
  template <class T>
  static void Release(T& element) {
    element.~T();
  }
};
struct DeletesElements {
  template <class T>
  static void Release(T* record) {
    delete record;
  }
};
struct FreesStrings {
  template <class Char>
  static void Release(Char* text) {
    btkStrFree(text);
  }
};

// Whether an element may change its place as bytes. To be specialised for types that own something
// and yet know nothing of their own address.
template <class T>
inline constexpr bool kMovesAsBytes = std::is_trivially_copyable_v<T>;

// Elements are moved as bytes. The capacity is always a multiple of Step, room that was made is
// zero-filled, and a growth that fails leaves the array as it was.
template <class T, std::int32_t Step, class Owner = BorrowsElements, class Heap = RuntimeHeap>
class GrowableArray {
  static_assert(kMovesAsBytes<T> && Step > 0);

 public:
  GrowableArray() = default;
  GrowableArray(const GrowableArray&) = delete;
  GrowableArray& operator=(const GrowableArray&) = delete;
  ~GrowableArray() { Clear(); }

  std::int32_t Count() const { return count_; }
  bool Empty() const { return count_ == 0; }
  T* begin() const { return items_; }
  T* end() const { return items_ + count_; }
  T& operator[](std::int32_t index) const { return items_[index]; }
  T& Last() const { return items_[count_ - 1]; }

  // Makes room for `need` elements in all.
  [[nodiscard]] bool Reserve(std::int64_t need) {
    if (need <= capacity_) return true;
    const std::int64_t steps = (need - capacity_ + Step - 1) / Step;
    const std::int64_t capacity = capacity_ + Step * steps;
    if (capacity > std::numeric_limits<std::int32_t>::max()) return false;
    void* block = Heap::Resize(items_, static_cast<std::size_t>(capacity) * sizeof(T));
    if (block == nullptr) return false;
    items_ = static_cast<T*>(block);
    // An adopted list has more elements than capacity.
    const std::int32_t used = count_ > capacity_ ? count_ : capacity_;
    std::memset(static_cast<void*>(items_ + used), 0,
                static_cast<std::size_t>(capacity - used) * sizeof(T));
    capacity_ = static_cast<std::int32_t>(capacity);
    return true;
  }

  [[nodiscard]] bool ReserveMore(std::int32_t more) { return Reserve(std::int64_t{count_} + more); }

  [[nodiscard]] bool Append(const T& element) {
    if (!ReserveMore(1)) return false;
    AppendReserved(element);
    return true;
  }

  // The ...Reserved operations cannot fail.
  // REQUIRES: room was made before.
  void AppendReserved(const T& element) { items_[count_++] = element; }

  void InsertReserved(std::int32_t place, const T& element) { *OpenGap(place) = element; }

  // Inserts a value-initialised element.
  T& EmplaceReserved(std::int32_t place) { return *new (OpenGap(place)) T{}; }

  [[nodiscard]] bool Insert(std::int32_t place, const T& element) {
    if (!ReserveMore(1)) return false;
    InsertReserved(place, element);
    return true;
  }

  // Takes the last element out.
  T TakeLast() { return items_[--count_]; }

  // Forgets the elements without releasing them and keeps the room.
  void Forget() { count_ = 0; }

  void Swap(GrowableArray& other) {
    std::swap(count_, other.count_);
    std::swap(capacity_, other.capacity_);
    std::swap(items_, other.items_);
  }

  // Takes over an exactly sized list, a pointer `items` and a `count`, and leaves it empty.
  // REQUIRES: this array is empty.
  template <class List>
  void Adopt(List& list) {
    assert(items_ == nullptr && count_ == 0);
    items_ = list.count > 0 ? list.items : nullptr;
    count_ = list.count > 0 ? list.count : 0;
    capacity_ = 0;
    list = {};
  }

  // Makes the block as large as its elements need. It keeps its size when it cannot be shrunk.
  void Fit() {
    if (count_ == 0) Clear();
    if (capacity_ <= count_) return;
    void* block = Heap::Resize(items_, static_cast<std::size_t>(count_) * sizeof(T));
    if (block != nullptr) items_ = static_cast<T*>(block);
  }

  // Hands the elements over to such a list, in the block as it is, and is empty afterwards. What the
  // list showed before is not looked at. Cannot fail.
  template <class List>
  void HandOverFitted(List& list) {
    list.items = std::exchange(items_, nullptr);
    list.count = std::exchange(count_, 0);
    capacity_ = 0;
  }

  // Hands the elements over to such a list, exactly sized.
  template <class List>
  void HandOver(List& list) {
    Fit();
    HandOverFitted(list);
  }

  // Releases the elements, the last one first, and keeps the room.
  void ReleaseElements() {
    while (count_ > 0)
      Owner::Release(items_[--count_]);
  }

  // Releases the elements and then the block.
  void Clear() {
    ReleaseElements();
    capacity_ = 0;
    if (items_ != nullptr) Heap::Free(std::exchange(items_, nullptr));
  }

 private:
  T* OpenGap(std::int32_t place) {
    T* at = items_ + place;
    std::memmove(static_cast<void*>(at + 1), static_cast<const void*>(at),
                 static_cast<std::size_t>(count_ - place) * sizeof(T));
    ++count_;
    return at;
  }

  std::int32_t count_ = 0;
  std::int32_t capacity_ = 0;
  T* items_ = nullptr;
};

}  // namespace tarnmf

#endif  // SUPPORT_GROWABLE_ARRAY_H
