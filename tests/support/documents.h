// Manifest documents of tests, written short.
#ifndef TESTS_SUPPORT_DOCUMENTS_H
#define TESTS_SUPPORT_DOCUMENTS_H

#include <string>

namespace tarnmf::test {

// "$1" to "$9" stand for ids.
inline std::string WithIds(std::string text) {
  for (std::size_t at = 0; (at = text.find('$', at)) != std::string::npos;) {
    const char digit = text[at + 1];
    text.replace(at, 2, std::string(8, digit) + "-1111-2222-3333-444444444444");
  }
  return text;
}

inline std::string InRoot(const std::string& fragment) {
  return "<tarnmanifest version=\"1\">" + fragment + "</tarnmanifest>";
}

// The document of a case: a text that does not start with a root or a declaration stands below the
// root of a mixed document.
inline std::string DocumentOf(const std::string& input) {
  const bool isWhole = input.starts_with("<tarn") || input.starts_with("<?xml");
  return WithIds(isWhole ? input : InRoot(input));
}

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_DOCUMENTS_H
