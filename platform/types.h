/// @file
/// Basic types of the platform and the macro that marks what its libraries export.
#ifndef PLATFORM_TYPES_H
#define PLATFORM_TYPES_H

#include <cstddef>
#include <cstdint>

/// @def BTK_API
/// Stands in front of what the platform's libraries export.
#if defined(_WIN32)
#if defined(BTK_BUILDING_HOST)
#define BTK_API __declspec(dllexport)
#else
#define BTK_API __declspec(dllimport)
#endif
#else
#define BTK_API __attribute__((visibility("default")))
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
