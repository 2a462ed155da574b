// SPDX-License-Identifier: Apache-2.0
#include "tests/support/environment.h"

#include <cstdlib>

namespace tarnmf::test {

void SetVariable(const char* name, const char* value) {
  _putenv_s(name, value != nullptr ? value : "");
}

}  // namespace tarnmf::test
