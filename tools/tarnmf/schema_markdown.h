// SPDX-License-Identifier: Apache-2.0
// The grammar as tables for the documentation.
#ifndef TOOLS_TARNMF_SCHEMA_MARKDOWN_H
#define TOOLS_TARNMF_SCHEMA_MARKDOWN_H

#include <string>

namespace tool {

// The kinds of values, then one part for each element, with a heading.
std::string MarkdownSchema();

}  // namespace tool

#endif  // TOOLS_TARNMF_SCHEMA_MARKDOWN_H
