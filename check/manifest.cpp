#include "check/manifest.h"

#include <algorithm>
#include <utility>

namespace tarnmf::check {

std::unique_ptr<const Manifest> ReadManifest(std::string path, std::string bytes) {
  auto manifest = std::make_unique<Manifest>(Source::OfManifest(std::move(path), std::move(bytes)));
  ParseDocument(*manifest);
  CheckElements(*manifest);
  manifest->declarations = Declare(manifest->document);
  std::stable_sort(manifest->findings.begin(), manifest->findings.end(),
                   [](const Finding& left, const Finding& right) {
                     return left.place.span.begin < right.place.span.begin;
                   });
  return manifest;
}

}  // namespace tarnmf::check
