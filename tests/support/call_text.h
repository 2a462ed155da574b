// SPDX-License-Identifier: Apache-2.0
// The line that stands for a call: the operation and its arguments. Texts are quoted, non-ASCII units
// written as \uXXXX; a null pointer is null.
#ifndef TESTS_SUPPORT_CALL_TEXT_H
#define TESTS_SUPPORT_CALL_TEXT_H

#include <cstdint>
#include <cstdio>
#include <string>
#include <type_traits>

#include "platform/dlm.h"
#include "platform/env_command.h"
#include "tests/support/ids.h"

namespace tarnmf::test {

inline std::string Hex(const char* format, unsigned value) {
  char text[16];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

template <class Char>
std::string Ascii(const Char* text) {
  std::string result;
  for (; *text != 0; ++text) {
    if constexpr (sizeof(Char) == 1) {
      result += *text;
    } else {
      const auto unit = static_cast<unsigned>(*text);
      result += unit < 0x80 ? std::string(1, static_cast<char>(unit)) : Hex("\\u%04X", unit);
    }
  }
  return result;
}

template <class Char>
requires(std::is_same_v<Char, char> || std::is_same_v<Char, btkWChar>) std::string
    Shown(const Char* text) {
  return text == nullptr ? "null" : '"' + Ascii(text) + '"';
}
inline std::string Shown(const UniIdT* id) {
  return id == nullptr ? "null" : IdText(*id);
}
inline std::string Shown(const void* pointer) {
  return pointer == nullptr ? "null" : "pointer";
}
inline std::string Shown(bool value) {
  return value ? "true" : "false";
}
template <class Number>
requires std::is_integral_v<Number> std::string Shown(Number value) {
  return std::to_string(value);
}
inline std::string Shown(const std::string& shown) {
  return shown;
}

// A list of texts that ends with a null pointer.
inline std::string Shown(const btkWChar* const* list) {
  if (list == nullptr) return "null";
  std::string line;
  for (; *list != nullptr; ++list)
    line += (line.empty() ? "" : ", ") + Shown(*list);
  return '[' + line + ']';
}

template <class First, class... Rest>
std::string List(const First& first, const Rest&... rest) {
  std::string line = Shown(first);
  ((line += ", " + Shown(rest)), ...);
  return line;
}

template <class... Arguments>
std::string Line(const char* operation, const Arguments&... arguments) {
  return operation + ('(' + List(arguments...) + ')');
}

inline std::string EnvText(const EnvCmdT* env, std::int32_t count) {
  std::string line;
  for (std::int32_t i = 0; i < count; ++i) {
    line +=
        '{' + List(static_cast<int>(env[i].action), env[i].flags, env[i].name, env[i].value) + '}';
  }
  return '[' + line + ']';
}

inline std::string VersionText(const btkModuleVersionT* version) {
  if (version == nullptr) return "null";
  std::string line = "v";
  for (std::uint32_t word : version->version)
    line += std::to_string(word) + '.';
  return line + "api" + std::to_string(version->apilevel);
}

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_CALL_TEXT_H
