// SPDX-License-Identifier: Apache-2.0
/// @file
/// Conversion between the platform's text encodings. Narrow text is UTF-8, wide text UTF-16.
///
/// Input lengths are in elements; kBtkWholeText reads up to the NUL. Where `length` is not null it
/// receives the length of the result in elements without its NUL. The ...Alloc forms store a new
/// string in `out`, released with btkStrFree; on failure `out` receives null. Codes: kBtkOk;
/// kBtkTooLong when the result with its NUL does not fit; kBtkBadText for input that is not valid
/// in its encoding; kBtkNullArgument for a null input; kBtkNoMemory.
#ifndef PLATFORM_TEXT_H
#define PLATFORM_TEXT_H

#include "platform/errors.h"
#include "platform/types.h"

/// The letters A to Z in lower case; every other character as it is.
template <class Char>
constexpr Char btkAsciiToLower(Char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<Char>(character - 'A' + 'a')
                                              : character;
}

/// Wide text as narrow text, in a buffer of `size` elements.
BTK_API BtkErrorT btkStrUtf16ToUtf8(char* buffer, std::size_t size, std::size_t* length,
                                    const btkWChar* in, std::size_t inLength);
/// Wide text as a narrow string.
BTK_API BtkErrorT btkStrUtf16ToUtf8Alloc(char** out, std::size_t* length, const btkWChar* in,
                                         std::size_t inLength);

/// A copy with the letters A to Z in lower case; every other character stays as it is.
BTK_API BtkErrorT btkStrUtf8ToLowerAlloc(char** out, std::size_t* length, const char* in,
                                         std::size_t inLength);

/// Narrow text as a wide string.
BTK_API BtkErrorT btkStrMultibyteToWideAlloc(btkWChar** out, std::size_t* length, const char* in,
                                             std::size_t inLength);

#endif  // PLATFORM_TEXT_H
