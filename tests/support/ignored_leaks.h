// SPDX-License-Identifier: Apache-2.0
// Blocks that other libraries lose are not reported while an IgnoredLeaks lives.
#ifndef TESTS_SUPPORT_IGNORED_LEAKS_H
#define TESTS_SUPPORT_IGNORED_LEAKS_H

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace tarnmf::test {

#if defined(__SANITIZE_ADDRESS__)
using IgnoredLeaks = __lsan::ScopedDisabler;
#else
struct IgnoredLeaks {
  IgnoredLeaks() {}
};
#endif

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_IGNORED_LEAKS_H
