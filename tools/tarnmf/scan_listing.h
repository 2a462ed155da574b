// SPDX-License-Identifier: Apache-2.0
// Everything that a scan has met, as text for people.
#ifndef TOOLS_TARNMF_SCAN_LISTING_H
#define TOOLS_TARNMF_SCAN_LISTING_H

#include "tools/tarnmf/scan_view.h"

namespace tool {

void PrintListing(const ScanView& view);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_LISTING_H
