/// @file
/// A string that an object owns. It is nothing but a pointer and inline code, so that a library and
/// its users may be compiled with different standard libraries, or different modes of one.
#ifndef PLATFORM_OWNED_TEXT_H
#define PLATFORM_OWNED_TEXT_H

#include <cstddef>

/// A string of its own, of narrow or wide characters.
template <class Char>
class btkOwnedTextT {
 public:
  /// The empty text.
  btkOwnedTextT() = default;
  /// A copy of the first `length` characters of `text`.
  btkOwnedTextT(const Char* text, std::size_t length) {
    if (length == 0) return;
    text_ = new Char[length + 1];
    for (std::size_t i = 0; i < length; ++i)
      text_[i] = text[i];
    text_[length] = 0;
  }
  /// A copy of `text`; null counts as empty.
  explicit btkOwnedTextT(const Char* text) : btkOwnedTextT(text, LengthOf(text)) {}
  /// A copy.
  btkOwnedTextT(const btkOwnedTextT& other) : btkOwnedTextT(other.text_) {}
  /// Leaves the other one empty.
  btkOwnedTextT(btkOwnedTextT&& other) noexcept : text_(other.text_) { other.text_ = nullptr; }
  /// Takes a copy, or what is moved into it.
  btkOwnedTextT& operator=(btkOwnedTextT other) noexcept {
    Char* const text = text_;
    text_ = other.text_;
    other.text_ = text;
    return *this;
  }
  ~btkOwnedTextT() { delete[] text_; }

  /// Never null; valid until this object changes.
  const Char* Text() const { return text_ != nullptr ? text_ : kEmpty; }

 private:
  static constexpr Char kEmpty[1] = {};

  static std::size_t LengthOf(const Char* text) {
    std::size_t length = 0;
    while (text != nullptr && text[length] != 0)
      ++length;
    return length;
  }

  Char* text_ = nullptr;  // null: empty
};

#endif  // PLATFORM_OWNED_TEXT_H
