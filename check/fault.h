// SPDX-License-Identifier: Apache-2.0
// What is said about a document that is not well-formed.
#ifndef CHECK_FAULT_H
#define CHECK_FAULT_H

#include "check/document.h"
#include "check/finding.h"
#include "check/judge.h"

namespace tarnmf::check {

// Finds out what the judge stumbled over, and where it is: often elsewhere.
Finding ExplainRefusal(const Document& document, Refusal refusal);

// A finding of the rule not-well-formed.
Finding NotWellFormed(Place place, std::string_view message);

}  // namespace tarnmf::check

#endif  // CHECK_FAULT_H
