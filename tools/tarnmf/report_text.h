// SPDX-License-Identifier: Apache-2.0
// What check found, for people.
#ifndef TOOLS_TARNMF_REPORT_TEXT_H
#define TOOLS_TARNMF_REPORT_TEXT_H

#include <cstddef>
#include <string>

#include "check/verdict.h"

namespace tool {

struct TextForm {
  std::size_t most = 10;  // findings of one rule
  bool isColored = false;
};

// The findings with their lines, and how many there are at the end; empty without any.
std::string TextReport(const tarnmf::check::Verdict& verdict, const TextForm& form);

// "3 errors, 1 warning".
std::string CountText(const tarnmf::check::Verdict& verdict);

// Whether what goes to the standard output may be coloured.
bool OutputIsColored();

}  // namespace tool

#endif  // TOOLS_TARNMF_REPORT_TEXT_H
