// SPDX-License-Identifier: Apache-2.0
// A library that a service may have to find loaded when it starts.
#include "platform/types.h"

extern "C" BTK_EXPORTED const char* LibraryName() {
  return LIBRARY_NAME;
}
