// SPDX-License-Identifier: Apache-2.0
// Wrong usage of the command line, in words.
#ifndef TOOLS_TARNMF_USAGE_ERROR_H
#define TOOLS_TARNMF_USAGE_ERROR_H

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

// One sentence about a command line that `app` has refused with `error`.
std::string UsageSentence(const CLI::App& app, const CLI::ParseError& error);

// Empty for a whole number without a sign.
std::string CountProblem(const std::string& text);

}  // namespace tool

#endif  // TOOLS_TARNMF_USAGE_ERROR_H
