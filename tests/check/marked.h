// SPDX-License-Identifier: Apache-2.0
// What is found in a text, in the notation of case files.
#ifndef TESTS_CHECK_MARKED_H
#define TESTS_CHECK_MARKED_H

#include <algorithm>
#include <string>
#include <vector>

#include "check/finding.h"

namespace tarnmf::test {

// The rules with their codes, and the text with a "^" before the place of each.
inline std::string Marked(const check::Source& source,
                          const std::vector<check::Finding>& findings) {
  std::string text = source.Text();
  std::string rules;
  std::vector<std::size_t> places;
  for (const check::Finding& finding : findings) {
    if (!rules.empty()) rules += " / ";
    rules += check::Describe(finding.rule).name;
    if (finding.code != kBtkOk) rules += " " + std::to_string(finding.code);
    places.push_back(finding.place.span.begin);
  }
  std::sort(places.rbegin(), places.rend());
  for (const std::size_t place : places)
    text.insert(place, "^");
  return (rules.empty() ? "nothing" : rules) + " <= " + text;
}

inline std::string Unmarked(std::string text) {
  std::erase(text, '^');
  return text;
}

}  // namespace tarnmf::test

#endif  // TESTS_CHECK_MARKED_H
