#include "tools/tarnmf/lsp/uri.h"

#include <charconv>
#include <fmt/format.h>

namespace tool::lsp {
namespace {

constexpr std::string_view kScheme = "file://";

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

}  // namespace

std::optional<std::string> PathOfUri(std::string_view uri) {
  if (!uri.starts_with(kScheme)) return std::nullopt;
  uri.remove_prefix(kScheme.size());
  const std::string_view host = uri.substr(0, uri.find('/'));
  if (!host.empty() && host != "localhost") return std::nullopt;
  uri.remove_prefix(host.size());
  if (uri.empty()) return std::nullopt;
  std::string path;
  for (std::size_t at = 0; at < uri.size(); ++at) {
    if (uri[at] == '\0') return std::nullopt;
    if (uri[at] != '%') {
      path += uri[at];
      continue;
    }
    const std::optional<char> byte = Decoded(uri.substr(at, 3));
    if (!byte) return std::nullopt;
    path += *byte;
    at += 2;
  }
  return path;
}

std::string UriOfPath(std::string_view path) {
  std::string uri(kScheme);
  for (const char c : path) {
    if (IsPlain(c)) {
      uri += c;
    } else {
      uri += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
  }
  return uri;
}

}  // namespace tool::lsp
