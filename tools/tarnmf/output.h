// SPDX-License-Identifier: Apache-2.0
// Standard output and standard error, whatever becomes of what they lead to.
#ifndef TOOLS_TARNMF_OUTPUT_H
#define TOOLS_TARNMF_OUTPUT_H

#include <string_view>

namespace tool {

// To standard error, which may be nobody's.
void WriteError(std::string_view text);

// Whether everything has arrived that was written to either stream. For an output that is full, or is
// none, a sentence is told; one whose reader has had enough ends in silence.
bool OutputHasArrived();

}  // namespace tool

#endif  // TOOLS_TARNMF_OUTPUT_H
