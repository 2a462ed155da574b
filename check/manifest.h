// SPDX-License-Identifier: Apache-2.0
// One manifest file, read and checked by itself.
#ifndef CHECK_MANIFEST_H
#define CHECK_MANIFEST_H

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "check/declarations.h"
#include "check/document.h"
#include "check/finding.h"
#include "check/source.h"

namespace tarnmf::check {

struct Manifest {
  Source source;
  Document document;
  Declarations declarations;
  // Those that need no other file, in the order of their places, before any allowance.
  std::vector<Finding> findings;
  bool isWellFormed = false;
  // Where the document stops being trusted: of one that is not well-formed only nodes that begin
  // before it, elements with all of their start tag, are judged.
  std::size_t trustedEnd = 0;
  // Whether what is read depends on files or addresses outside the document, or grows so much that
  // it is not to be loaded just to compare.
  bool isExternal = false;

  explicit Manifest(Source text) : source(std::move(text)) {}
  Manifest(const Manifest&) = delete;
  Manifest& operator=(const Manifest&) = delete;
};

// Findings and the document point to the source inside, so that the manifest stays where it is.
std::unique_ptr<const Manifest> ReadManifest(Source source);
inline std::unique_ptr<const Manifest> ReadManifest(std::string path, std::string bytes) {
  return ReadManifest(Source::OfManifest(std::move(path), std::move(bytes)));
}

// Steps of it, in their order; each appends what it finds.
void ParseDocument(Manifest& manifest);  // places, well-formedness, doctype and entities
void CheckElements(Manifest& manifest);  // elements, attributes, values and content

}  // namespace tarnmf::check

#endif  // CHECK_MANIFEST_H
