// What the system's paths look like.
#ifndef PLATFORM_HOST_PATH_RULES_H
#define PLATFORM_HOST_PATH_RULES_H

#include <initializer_list>
#include <string>
#include <string_view>

template <class Char>
constexpr bool IsPathSeparator(Char unit) {
#if defined(_WIN32)
  return unit == Char{'/'} || unit == Char{'\\'};
#else
  return unit == Char{'/'};
#endif
}

// The components one below the other; empty ones are left out. What stands below another one cannot
// lead out of it by being absolute.
std::string JoinPath(std::initializer_list<std::string_view> components);

#endif  // PLATFORM_HOST_PATH_RULES_H
