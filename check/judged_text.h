// The text that decides whether a document is well-formed.
#ifndef CHECK_JUDGED_TEXT_H
#define CHECK_JUDGED_TEXT_H

#include <string>
#include <string_view>

#include "check/references.h"

namespace tarnmf::check {

// Of XML 1.1 a text of XML 1.0 that is well-formed exactly when `text` is, each thing at the place
// where it was: line ends that only 1.1 knows are blanks, letters of names are ASCII ones, references
// to control characters are references to tabs, and characters that have to be written as references
// in 1.1 are none in 1.0 either. Of XML 1.0 the text itself.
std::string JudgedText(std::string_view text, XmlVersion version);

}  // namespace tarnmf::check

#endif  // CHECK_JUDGED_TEXT_H
