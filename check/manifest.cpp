// SPDX-License-Identifier: Apache-2.0
#include "check/manifest.h"

#include <algorithm>
#include <utility>

namespace tarnmf::check {

std::unique_ptr<const Manifest> ReadManifest(Source source) {
  auto manifest = std::make_unique<Manifest>(std::move(source));
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
