// SPDX-License-Identifier: Apache-2.0
#include "tests/support/environment.h"

#include <cstdlib>

namespace tarnmf::test {

void SetVariable(const char* name, const char* value) {
  if (value != nullptr) {
    setenv(name, value, 1);
  } else {
    unsetenv(name);
  }
}

}  // namespace tarnmf::test
