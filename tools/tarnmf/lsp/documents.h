// SPDX-License-Identifier: Apache-2.0
// The documents that are open in the editor.
#ifndef TOOLS_TARNMF_LSP_DOCUMENTS_H
#define TOOLS_TARNMF_LSP_DOCUMENTS_H

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/tarnmf/lsp/text_document.h"

namespace tool::lsp {

struct OpenDocument {
  std::string uri;
  std::string path;  // as the workspace writes it
  std::int64_t version = 0;
  TextDocument text;
};

class Documents {
 public:
  // One that is open already is replaced.
  OpenDocument& Open(OpenDocument document);
  void Close(std::string_view uri);

  // Null when it is not open.
  OpenDocument* Find(std::string_view uri);
  // Those of one file, which links may give more than one name.
  std::vector<const OpenDocument*> OfPath(std::string_view path) const;
  const std::map<std::string, OpenDocument, std::less<>>& All() const { return documents_; }

 private:
  std::map<std::string, OpenDocument, std::less<>> documents_;  // by URI
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_DOCUMENTS_H
