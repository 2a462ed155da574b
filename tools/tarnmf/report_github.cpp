// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/report_github.h"

#include <fmt/format.h>
#include <iterator>
#include <string_view>

namespace tool {
namespace {

using namespace tarnmf::check;

constexpr std::string_view kCommands[] = {"debug", "notice", "warning", "error"};  // by Severity

// Replaces each of the characters by its percent form.
std::string Escaped(std::string_view text, std::string_view characters) {
  std::string escaped;
  for (const char character : text) {
    if (characters.find(character) == characters.npos) {
      escaped += character;
    } else {
      fmt::format_to(std::back_inserter(escaped), "%{:02X}", static_cast<unsigned>(character));
    }
  }
  return escaped;
}

std::string Message(std::string_view text) {
  return Escaped(text, "%\r\n");
}
std::string Property(std::string_view text) {
  return Escaped(text, "%\r\n:,");
}

}  // namespace

std::string GitHubReport(const Verdict& verdict) {
  std::string text;
  for (const Finding& finding : verdict.findings) {
    const Source& source = *finding.place.source;
    const Position at = source.At(finding.place.span.begin);
    fmt::format_to(std::back_inserter(text), "::{} file={},line={},col={},title={}::{}\n",
                   kCommands[static_cast<std::size_t>(finding.severity)], Property(source.Path()),
                   at.line, at.column, Property(Describe(finding.rule).name),
                   Message(finding.message));
  }
  return text;
}

}  // namespace tool
