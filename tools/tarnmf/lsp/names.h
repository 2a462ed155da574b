// SPDX-License-Identifier: Apache-2.0
// The names by which manifests refer to each other, wherever they are declared or used.
#ifndef TOOLS_TARNMF_LSP_NAMES_H
#define TOOLS_TARNMF_LSP_NAMES_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/manifest.h"

namespace tool::lsp {

// The manifests of each load point of one process, in the order of the load points.
using LoadPoints = std::vector<std::vector<std::shared_ptr<const tarnmf::check::Manifest>>>;

enum class NameKind {
  kModule,       // ids of modules
  kService,      // ids of services
  kServiceName,  // common names of services
  kClass,        // ids of classes
};

// An attribute's value that is a name.
struct Occurrence {
  NameKind kind = NameKind::kModule;
  std::string name;  // ids as 36 characters in lower case
  bool isDeclaration = false;
  std::size_t loadpoint = 0;  // number in LoadPoints
  std::shared_ptr<const tarnmf::check::Manifest> manifest;
  tarnmf::check::Span span;  // of the value
  tarnmf::check::NodeId node = tarnmf::check::kNoNode;

  std::string_view Path() const { return manifest->source.Path(); }
};

// All of them, manifest by manifest.
std::vector<Occurrence> NamesIn(const LoadPoints& loadpoints);

// The name at a place of the file, or null.
const Occurrence* NameAt(const std::vector<Occurrence>& names, std::string_view path,
                         std::size_t offset);

// Those that mean the same: declarations first. A module is known in its own load point; what refers
// to one that is not declared there means those of the other load points, as a runnable may.
std::vector<const Occurrence*> SameName(const std::vector<Occurrence>& names,
                                        const Occurrence& name);

// The element that holds a declaration, named as people know it: module "codecs".
std::string Described(const Occurrence& declaration);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_NAMES_H
