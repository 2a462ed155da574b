// SPDX-License-Identifier: Apache-2.0
// The grammar as a RELAX NG schema in XML syntax.
#ifndef TOOLS_TARNMF_SCHEMA_RNG_H
#define TOOLS_TARNMF_SCHEMA_RNG_H

#include <string>

namespace tool {

std::string RngSchema();

}  // namespace tool

#endif  // TOOLS_TARNMF_SCHEMA_RNG_H
