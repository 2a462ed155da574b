// SPDX-License-Identifier: Apache-2.0
// What the XML library's own DOM parser takes: what the library's reading is compared with.
#ifndef BENCH_BARE_DOM_H
#define BENCH_BARE_DOM_H

#include <string>

#include "platform/stream.h"

namespace tarnmf::bench {

// With the parser's defaults and to the end of the parser's life. Throw when there is no document.
void ParseBareDom(btkIStream& stream);
void ParseBareDom(const std::string& file);

}  // namespace tarnmf::bench

#endif  // BENCH_BARE_DOM_H
