// One manifest file, read and checked by itself.
#ifndef CHECK_MANIFEST_H
#define CHECK_MANIFEST_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
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
  // Where the well-formed part ends: what stands after it is not judged.
  std::size_t trustedEnd = SIZE_MAX;
  // Whether what is read depends on files or addresses outside the document.
  bool isExternal = false;
};

// Findings and the document point to the source inside, so that the manifest stays where it is.
std::unique_ptr<const Manifest> ReadManifest(std::string path, std::string bytes);

// Steps of it, in their order; each appends what it finds.
void ParseDocument(Manifest& manifest);  // places, well-formedness, doctype and entities
void CheckElements(Manifest& manifest);  // elements, attributes, values and content

}  // namespace tarnmf::check

#endif  // CHECK_MANIFEST_H
