// SPDX-License-Identifier: Apache-2.0
// Names that the system has for machines, and what it puts around the names of files with code.
#ifndef PLATFORM_HOST_SYSTEM_NAMES_H
#define PLATFORM_HOST_SYSTEM_NAMES_H

struct SystemNames {
  const char* nativeMachine;
  const char* otherMachine;
  const char* libraryPrefix;
  const char* librarySuffix;
  const char* programSuffix;
};

extern const SystemNames kSystemNames;

#endif  // PLATFORM_HOST_SYSTEM_NAMES_H
