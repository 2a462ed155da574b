// SPDX-License-Identifier: Apache-2.0
// Wide texts as values.
#ifndef TESTS_SUPPORT_WIDE_STRING_H
#define TESTS_SUPPORT_WIDE_STRING_H

#include <string>

#include "platform/types.h"

namespace tarnmf::test {

using WideString = std::basic_string<btkWChar>;

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_WIDE_STRING_H
