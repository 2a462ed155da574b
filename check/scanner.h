// SPDX-License-Identifier: Apache-2.0
// Finds the parts of a document.
#ifndef CHECK_SCANNER_H
#define CHECK_SCANNER_H

#include <string_view>

#include "check/document.h"

namespace tarnmf::check {

// Fills a document that has nothing but its source. Whatever the text is, its parts are found: a tag
// that is not finished ends where the next one begins, an end tag ends the nearest open element of
// its name and is passed over when there is none, and what is not ended ends with the text. Takes
// time linear in the text, however deep elements are nested.
//
// `text` is the source's or a copy with the same places, see JudgedText.
void Scan(std::string_view text, Document& document);

}  // namespace tarnmf::check

#endif  // CHECK_SCANNER_H
