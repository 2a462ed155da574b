// SPDX-License-Identifier: Apache-2.0
// A library of the class "Filter"; how much it brightens says whoever builds it.
#include <new>

#include "filter.h"
#include "platform/types.h"

namespace {

class Brighten final : public Filter {
 public:
  int Apply(int brightness) const override { return brightness * FILTER_PERCENT / 100; }
  void Dispose() override { delete this; }
};

}  // namespace

extern "C" BTK_EXPORTED Filter* CreateFilter() {
  return new (std::nothrow) Brighten;
}
