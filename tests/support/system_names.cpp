#include "tests/support/system_names.h"

#include <regex>

#include "platform/host/system_names.h"

namespace tarnmf::test {

std::string InSystemNames(const std::string& text) {
  static const bool isTheSame = std::string(kSystemNames.librarySuffix) == ".so";
  if (isTheSame) return text;
  static const std::regex names(R"(linux-x64|linux-x86|\blib([\w+.-]*)\.so\b)");
  std::string result;
  auto rest = text.begin();
  for (std::sregex_iterator name(text.begin(), text.end(), names), end; name != end; ++name) {
    result.append(rest, (*name)[0].first);
    rest = (*name)[0].second;
    if ((*name)[1].matched) {
      result +=
          kSystemNames.libraryPrefix + InSystemNames((*name)[1].str()) + kSystemNames.librarySuffix;
    } else {
      result += name->str() == "linux-x64" ? kSystemNames.nativeMachine : kSystemNames.otherMachine;
    }
  }
  return result.append(rest, text.end());
}

}  // namespace tarnmf::test
