// SPDX-License-Identifier: Apache-2.0
// The environment of the test's process.
#ifndef TESTS_SUPPORT_ENVIRONMENT_H
#define TESTS_SUPPORT_ENVIRONMENT_H

namespace tarnmf::test {

// Null takes the variable away.
void SetVariable(const char* name, const char* value);

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_ENVIRONMENT_H
