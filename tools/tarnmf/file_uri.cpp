// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/file_uri.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>

namespace tool {
namespace {

constexpr std::string_view kScheme = "file://";

bool BeginsWithDrive(std::string_view path) {
  return path.size() > 1 && path[1] == ':' &&
         ((path[0] >= 'a' && path[0] <= 'z') || (path[0] >= 'A' && path[0] <= 'Z'));
}

// Characters that stand for themselves in a path.
bool IsPlain(char c) {
  const bool isAlphanumeric =
      (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
  return isAlphanumeric || std::string_view("/-._~").find(c) != std::string_view::npos;
}

// The byte of "%41". Nothing for what is no such thing, and for NUL, which no path holds.
std::optional<char> Decoded(std::string_view escape) {
  if (escape.size() != 3) return std::nullopt;
  unsigned byte = 0;
  const auto [end, failure] = std::from_chars(escape.data() + 1, escape.data() + 3, byte, 16);
  if (failure != std::errc() || end != escape.data() + 3 || byte == 0) return std::nullopt;
  return static_cast<char>(byte);
}

// Nothing for what no path holds.
std::optional<std::string> Unescaped(std::string_view text) {
  std::string path;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\0') return std::nullopt;
    if (text[at] != '%') {
      path += text[at];
      continue;
    }
    const std::optional<char> byte = Decoded(text.substr(at, 3));
    if (!byte) return std::nullopt;
    path += *byte;
    at += 2;
  }
  return path;
}

std::string Escaped(std::string_view path) {
  std::string text;
  for (const char c : path) {
    if (IsPlain(c)) {
      text += c;
    } else {
      text += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
  }
  return text;
}

}  // namespace

std::optional<std::string> PathOfUri(std::string_view uri, bool hasDrives) {
  if (!uri.starts_with(kScheme)) return std::nullopt;
  uri.remove_prefix(kScheme.size());
  const std::size_t slash = uri.find('/');
  if (slash == uri.npos) return std::nullopt;
  const std::string_view host = uri.substr(0, slash);
  const bool isLocal = host.empty() || host == "localhost";
  if (!isLocal && !hasDrives) return std::nullopt;
  std::optional<std::string> path = Unescaped(isLocal ? uri.substr(slash) : uri);
  if (path && !isLocal) return "//" + *path;
  if (path && hasDrives && BeginsWithDrive(std::string_view(*path).substr(1))) path->erase(0, 1);
  return path;
}

std::string UriOfPath(std::string_view path, bool hasDrives) {
  if (!hasDrives) return (path.starts_with('/') ? std::string(kScheme) : "") + Escaped(path);
  std::string slashed(path);
  std::replace(slashed.begin(), slashed.end(), '\\', '/');
  if (slashed.starts_with("//")) return "file:" + Escaped(slashed);
  if (slashed.starts_with('/')) return std::string(kScheme) + Escaped(slashed);
  if (!BeginsWithDrive(slashed)) return Escaped(slashed);
  return fmt::format("{}/{}{}", kScheme, slashed.substr(0, 2), Escaped(slashed.substr(2)));
}

}  // namespace tool
