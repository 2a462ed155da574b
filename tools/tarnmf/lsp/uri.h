// Files as editors name them.
#ifndef TOOLS_TARNMF_LSP_URI_H
#define TOOLS_TARNMF_LSP_URI_H

#include <optional>
#include <string>
#include <string_view>

namespace tool::lsp {

// Nothing for a URI that names no file of this machine, such as that of a text without a name.
std::optional<std::string> PathOfUri(std::string_view uri);

// The path is absolute.
std::string UriOfPath(std::string_view path);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_URI_H
