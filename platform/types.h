// SPDX-License-Identifier: Apache-2.0
/// @file
/// Basic types of the platform and the macro that marks what its libraries export.
#ifndef PLATFORM_TYPES_H
#define PLATFORM_TYPES_H

#include <cstddef>
#include <cstdint>

/// @def BTK_EXPORTED
/// Marks what a library exports, while the library itself is built.
/// @def BTK_IMPORTED
/// Marks the same for those who use the library.
#if defined(_WIN32)
#define BTK_EXPORTED __declspec(dllexport)
#define BTK_IMPORTED __declspec(dllimport)
#else
#define BTK_EXPORTED __attribute__((visibility("default")))
#define BTK_IMPORTED BTK_EXPORTED
#endif

/// @def BTK_API
/// Stands in front of what the platform's libraries export. BTK_STATIC is defined where they are part
/// of the same file.
#if defined(BTK_BUILDING_HOST)
#define BTK_API BTK_EXPORTED
#elif defined(BTK_STATIC)
#define BTK_API
#else
#define BTK_API BTK_IMPORTED
#endif

/// @typedef btkWChar
/// The element of a wide string: always 16 bits, always UTF-16. The C library's wcs... functions
/// must not be used on wide strings where wchar_t is wider.

/// @def BTK_W
/// A wide literal: `BTK_W("text")`.

#if defined(_WIN32)
using btkWChar = wchar_t;
#define BTK_W(literal) L##literal
#else
using btkWChar = char16_t;
#define BTK_W(literal) u##literal
#endif
static_assert(sizeof(btkWChar) == 2);

/// Stands for "up to the terminating NUL" wherever an operation takes a text with its length.
inline constexpr std::size_t kBtkWholeText = static_cast<std::size_t>(-1);

#endif  // PLATFORM_TYPES_H
