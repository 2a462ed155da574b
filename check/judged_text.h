// SPDX-License-Identifier: Apache-2.0
// The text that decides whether a document is well-formed.
#ifndef CHECK_JUDGED_TEXT_H
#define CHECK_JUDGED_TEXT_H

#include <string>
#include <string_view>

#include "check/references.h"

namespace tarnmf::check {

// A text of XML 1.0 that the judge takes as well-formed exactly when the XML library takes `text` so,
// each thing at the place where it was. The judge knows fewer letters than the library: those of names
// are ASCII ones. Of XML 1.1 also, line ends that only 1.1 knows are blanks, references to control
// characters are references to tabs, and characters that have to be written as references in 1.1 are
// none in 1.0 either.
std::string JudgedText(std::string_view text, XmlVersion version);

}  // namespace tarnmf::check

#endif  // CHECK_JUDGED_TEXT_H
