// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/documents.h"

#include <utility>

namespace tool::lsp {

OpenDocument& Documents::Open(OpenDocument document) {
  std::string uri = document.uri;
  return documents_.insert_or_assign(std::move(uri), std::move(document)).first->second;
}

void Documents::Close(std::string_view uri) {
  if (const auto found = documents_.find(uri); found != documents_.end()) documents_.erase(found);
}

OpenDocument* Documents::Find(std::string_view uri) {
  const auto found = documents_.find(uri);
  return found != documents_.end() ? &found->second : nullptr;
}

std::vector<const OpenDocument*> Documents::OfPath(std::string_view path) const {
  std::vector<const OpenDocument*> found;
  for (const auto& [uri, document] : documents_) {
    if (document.path == path) found.push_back(&document);
  }
  return found;
}

}  // namespace tool::lsp
