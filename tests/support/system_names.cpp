// SPDX-License-Identifier: Apache-2.0
#include "tests/support/system_names.h"

#include <regex>

#include "platform/filesystem.h"
#include "platform/host/btkhost.h"
#include "platform/host/system_names.h"

namespace tarnmf::test {
namespace {

// Made at the start, so that it counts for no test.
const std::regex kNames(R"((linux|windows)-x(?=64|86)|\blib([\w+.&-]*)\.so\b)");

}  // namespace

std::string InSystemNames(const std::string& text) {
  static const bool isTheSame = std::string(kSystemNames.librarySuffix) == ".so";
  if (isTheSame) return text;
  std::string result;
  auto rest = text.begin();
  for (std::sregex_iterator name(text.begin(), text.end(), kNames), end; name != end; ++name) {
    result.append(rest, (*name)[0].first);
    rest = (*name)[0].second;
    const std::string machine = (*name)[1];
    if (!machine.empty()) {
      result += machine == "linux" ? "windows-x" : "linux-x";
    } else {
      const std::string plain = InSystemNames((*name)[2]);
      result += kSystemNames.libraryPrefix + plain + kSystemNames.librarySuffix;
    }
  }
  return result.append(rest, text.end());
}

void RunAs(const std::string& program) {
  const std::string path = "/bin/" + program + kSystemNames.programSuffix;
  btkHostSetExecutablePath(btkFSPath(path.c_str()).WideText());
}

}  // namespace tarnmf::test
