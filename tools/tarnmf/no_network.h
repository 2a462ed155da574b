// SPDX-License-Identifier: Apache-2.0
// Documents open no connections.
#ifndef TOOLS_TARNMF_NO_NETWORK_H
#define TOOLS_TARNMF_NO_NETWORK_H

namespace tool {

// Takes away what the XML library fetches "http:" and "ftp:" addresses with, for the whole process: a
// document that asks for one is refused at once. A program decides that for itself; the library never
// changes what all users of the XML library share.
void ForbidConnections();

}  // namespace tool

#endif  // TOOLS_TARNMF_NO_NETWORK_H
