// SPDX-License-Identifier: Apache-2.0
// Standard input, output and error as the system has them.
#ifndef TOOLS_TARNMF_STANDARD_STREAMS_H
#define TOOLS_TARNMF_STANDARD_STREAMS_H

namespace tool {

// Before anything is opened or written. A stream that is closed stays one that cannot be written to,
// rather than lend its number to the next file that is opened. A reader that goes away is a failure
// to write, and no signal. Bytes go through as they are, and a console takes them for UTF-8.
void PrepareStreams();

// Whether what has just failed to be written has no reader any more.
bool ReaderIsGone();

// Whether standard output is a terminal that understands the usual colours.
bool TerminalShowsColors();

}  // namespace tool

#endif  // TOOLS_TARNMF_STANDARD_STREAMS_H
