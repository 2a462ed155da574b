// SPDX-License-Identifier: Apache-2.0
// What is said about a document as a whole.
#ifndef CHECK_DOCUMENT_RULES_H
#define CHECK_DOCUMENT_RULES_H

#include "check/judge.h"
#include "check/manifest.h"

namespace tarnmf::check {

void CheckEncoding(Manifest& manifest);
// Also finds out whether the manifest depends on what is outside of it.
void CheckDocumentType(Manifest& manifest, const Verdict& verdict);

}  // namespace tarnmf::check

#endif  // CHECK_DOCUMENT_RULES_H
