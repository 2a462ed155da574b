// SPDX-License-Identifier: Apache-2.0
/// @file
/// A string that an object owns. It is nothing but a pointer and inline code, so that a library and
/// its users may be compiled with different standard libraries, or different modes of one.
#ifndef PLATFORM_OWNED_TEXT_H
#define PLATFORM_OWNED_TEXT_H

#include <cstddef>
#include <cstring>

/// A string of its own, of narrow or wide characters. A short one needs no memory but the object.
template <class Char>
class btkOwnedTextT {
 public:
  /// The empty text.
  btkOwnedTextT() = default;
  /// A copy of the first `length` characters of `text`.
  btkOwnedTextT(const Char* text, std::size_t length) {
    if (length >= kShort) long_ = new Char[length + 1];
    Char* const copy = long_ != nullptr ? long_ : short_;
    if (length > 0) std::memcpy(copy, text, length * sizeof(Char));
    copy[length] = 0;
  }
  /// A copy of `text`; null counts as empty.
  explicit btkOwnedTextT(const Char* text) : btkOwnedTextT(text, LengthOf(text)) {}
  /// A copy.
  btkOwnedTextT(const btkOwnedTextT& other) : btkOwnedTextT(other.Text()) {}
  /// Leaves the other one empty.
  btkOwnedTextT(btkOwnedTextT&& other) noexcept { Take(other); }
  /// Takes a copy, or what is moved into it.
  btkOwnedTextT& operator=(btkOwnedTextT other) noexcept {
    delete[] long_;
    Take(other);
    return *this;
  }
  ~btkOwnedTextT() { delete[] long_; }

  /// Never null; valid until this object changes or is moved.
  const Char* Text() const { return long_ != nullptr ? long_ : short_; }

 private:
  static constexpr std::size_t kShort = 16;  // with its NUL

  static std::size_t LengthOf(const Char* text) {
    if (text == nullptr) return 0;
    if constexpr (sizeof(Char) == 1) return std::strlen(text);
    std::size_t length = 0;
    while (text[length] != 0)
      ++length;
    return length;
  }

  void Take(btkOwnedTextT& other) {
    long_ = other.long_;
    std::memcpy(short_, other.short_, sizeof short_);
    other.long_ = nullptr;
    other.short_[0] = 0;
  }

  Char* long_ = nullptr;  // null: the text is in short_
  Char short_[kShort] = {};
};

#endif  // PLATFORM_OWNED_TEXT_H
