// SPDX-License-Identifier: Apache-2.0
// What the system knows about this process.
#ifndef PLATFORM_HOST_PROCESS_FACTS_H
#define PLATFORM_HOST_PROCESS_FACTS_H

#include <string>

#include "platform/types.h"

// The path of the running program.
std::basic_string<btkWChar> RealExecutable();

// The value of an environment variable as UTF-8, or null. Valid until the environment changes.
const char* EnvironmentValue(const char* name);

// Tells a process from the one that it was forked from, which has the same memory.
unsigned ForkGeneration();

#endif  // PLATFORM_HOST_PROCESS_FACTS_H
