// SPDX-License-Identifier: Apache-2.0
// A scan as JSON.
#ifndef TOOLS_TARNMF_SCAN_JSON_H
#define TOOLS_TARNMF_SCAN_JSON_H

#include "tools/tarnmf/record_json.h"
#include "tools/tarnmf/scan_view.h"

namespace tool {

// The keys of json_format::kScan. Among its steps are one for the process's own load point and one per
// installation.
// "code" is that of the first step that failed, 0 when none did, null for an exception.
// The same for every scan of the same load points.
Json ToJson(const ScanView& view);

Json ToJson(const LoadResult& result);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_JSON_H
