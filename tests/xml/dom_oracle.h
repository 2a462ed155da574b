// SPDX-License-Identifier: Apache-2.0
// Reads documents the slow way, to compare with: through the DOM of an ordinary parser.
#ifndef TESTS_XML_DOM_ORACLE_H
#define TESTS_XML_DOM_ORACLE_H

#include <string>

namespace tarnmf::test {

// What came of a document: the dump of its records, a code, or what was thrown. Fresh ids are left
// out. `readLimit` is the most that one read of the stream hands out.
std::string Outcome(const std::string& document, std::size_t readLimit);

// The same with the readers walking a tree made of the XML library's DOM.
std::string OutcomeByDom(const std::string& document, std::size_t readLimit);

}  // namespace tarnmf::test

#endif  // TESTS_XML_DOM_ORACLE_H
