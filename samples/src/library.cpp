// SPDX-License-Identifier: Apache-2.0
// A library of the sample installations: small, but real enough to be resolved and loaded.
#include "platform/types.h"

extern "C" BTK_EXPORTED const char* SampleModuleId() {
  return SAMPLE_MODULE_ID;
}
